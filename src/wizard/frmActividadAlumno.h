#pragma once

#include "controls/Controls.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "data/Declarante.h"
#include "wizard/Registros.h"

#include <QDate>
#include <functional>
#include <memory>

class DonorGridEditor;
class frmActividadPonderacion;
class frmSelCursos;
class WizardRun;

// Last step: the donors of the declaration. The grid msgMod182 holds one row
// per student and paying family member and one amount column per chosen
// school year and activity; it is built anew on every activation, edited in
// place, saved, and turned into the declaration and the certificates. The
// window only wires its controls: each action lives in its own class.
class frmActividadAlumno : public Form
{
public:
    frmActividadAlumno(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &deducciones);
    ~frmActividadAlumno() override;

    FlexGrid msgMod182{this, QStringLiteral("msgMod182")};
    TextBox txtValor{this, QStringLiteral("txtValor")};
    Label lblTotal{this, QStringLiteral("lblTotal")};
    Frame fraAlumnos{this, QStringLiteral("fraAlumnos"), QStringLiteral("Generando Datos")};
    Label lblCursos{this, QStringLiteral("lblCursos")};
    ProgressBar pbCursos{this, QStringLiteral("pbCursos")};
    Label lblActividades{this, QStringLiteral("lblActividades")};
    ProgressBar pbActividades{this, QStringLiteral("pbActividades")};
    Label lblAlumnos{this, QStringLiteral("lblAlumnos")};
    ProgressBar pbAlumnos{this, QStringLiteral("pbAlumnos")};
    ProgressBar ProgressBar1{this, QStringLiteral("ProgressBar1")};
    CommandButton cmdGuardar{this, QStringLiteral("cmdGuardar"), QStringLiteral("Guardar")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Generar Modelo 182")};
    CommandButton cmdCarta{this, QStringLiteral("cmdCarta"), QStringLiteral("Certificados")};
    CommandButton cmdAnterior{this, QStringLiteral("cmdAnterior"), QStringLiteral("<- Anterior")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Salir")};

    // What the grid's build leaves besides the grid.
    double dblTotal = 0;          // the running total shown in lblTotal
    ColAlumnos colAlumnos;        // one donor record per grid row
    ColDatosCobro colDatosCobro;  // saved payments without a grid row
    Declarante declarante;        // the school, from the latest school year
    qlonglong lngUltimoCurso = 0; // that school year's key
    QString strRutaInformes;      // "/Informes/" or the development folder

    // The declaration and the certificates: today's date (the declaration
    // is for the year before), the installed Office version, and the
    // generator's summary of the last declaration. Tests set their own.
    std::function<QDate()> Hoy = [] { return QDate::currentDate(); };
    std::function<QString()> VersionOffice;
    QString UltimaGeneracion;
    void cmdAceptar_Click();
    void cmdCarta_Click();

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(int &cancel) override;
    void msgMod182_Click();
    void msgMod182_Scroll();
    void txtValor_KeyPress(int &keyAscii);
    void txtValor_LostFocus();
    void cmdAnterior_Click() { Unload(); }
    // Closes the whole wizard: every window below closes itself when
    // control returns to it.
    void cmdCancelar_Click();
    // Stores the wizard's choices and the grid as the saved work.
    void cmdGuardar_Click();

    // Writes lblTotal from the running total.
    void MostrarTotal();

    WizardRun &Run() const { return m_run; }
    frmSelCursos &Cursos() const { return m_cursos; }
    // Whether regional percentages apply (the deduction step's check box).
    bool DeduccionPorComunidad() const;

private:
    WizardRun &m_run;
    frmSelCursos &m_cursos;
    frmActividadPonderacion &m_deducciones;
    std::unique_ptr<DonorGridEditor> m_editor;
};
