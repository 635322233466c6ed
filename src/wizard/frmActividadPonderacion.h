#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"
#include "wizard/Registros.h"

class frmSelCursos;
class WizardRun;

// Fourth step: each activity's donation type and deduction percentage, and,
// when regional deductions apply, one percentage per autonomous community.
class frmActividadPonderacion : public Form
{
public:
    frmActividadPonderacion(WizardRun &run, frmSelCursos &cursos);

    static const QString kSeparadorPar; // " <-> " between an activity and its pair

    Label Label4{this, QStringLiteral("Label4"), QStringLiteral("Actividad")};
    ListBox lstActividad{this, QStringLiteral("lstActividad")};
    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Tipo de Donativo")};
    ComboBox cboTipoPorcentaje{this, QStringLiteral("cboTipoPorcentaje")};
    ListBox lstActPorc{this, QStringLiteral("lstActPorc")};
    CommandButton cmdAnadir{this, QStringLiteral("cmdAnadir"), QStringLiteral("Añadir")};
    CommandButton cmdEliminar{this, QStringLiteral("cmdEliminar"), QStringLiteral("Eliminar")};
    Frame fraDeduc{this, QStringLiteral("fraDeduc")};
    CheckBox chkComunidad{this, QStringLiteral("chkComunidad"),
                          QStringLiteral("Aplicar deducciones por comunidad autónoma")};
    Label Label2{this, QStringLiteral("Label2"), QStringLiteral("Comunidad Autónoma")};
    ComboBox cboComAut{this, QStringLiteral("cboComAut")};
    Label Label3{this, QStringLiteral("Label3"), QStringLiteral("Deducción")};
    ComboBox cboDeduccion{this, QStringLiteral("cboDeduccion")};
    CommandButton cmdConfigurar{this, QStringLiteral("cmdConfigurar"), QStringLiteral("Configurar Deducciones")};
    CommandButton cmdAnterior{this, QStringLiteral("cmdAnterior"), QStringLiteral("<- Anterior")};
    CommandButton cmdSiguiente{this, QStringLiteral("cmdSiguiente"), QStringLiteral("Siguiente ->")};

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void Form_Unload(int &cancel) override;
    void chkComunidad_Click();
    void cboComAut_Click();
    void cboDeduccion_Click();
    void cmdAnadir_Click();
    void cmdEliminar_Click();
    void cmdSiguiente_Click();
    void cmdAnterior_Click() { Unload(); }
    void cmdConfigurar_Click();

    // Refills the community and pair lists from the catalogue (on load, and
    // after the catalogue window was accepted).
    void LoadCatalogues();

    // The activity a line of lstActPorc stands for, and the pair after its
    // label. Activity names may hold " <-> " or end in blanks, so the line
    // is matched against every activity's label (the longest label that
    // starts the line wins; equal labels go to the first in order).
    struct ListedPair
    {
        ChosenActivity eleccion;
        QString par;
    };
    ListedPair FindListedPair(const QString &linea) const;

private:
    // A confirmed pair read for writing: its activity, type and percentage.
    struct PairToWrite
    {
        ChosenActivity eleccion;
        QString par;
        QString tipo;
        double porcentaje = 0;
    };
    // Reads every confirmed pair; the first that cannot be read is refused
    // with a message naming it, and nothing is written.
    bool ReadPairs(QList<PairToWrite> &pares);
    // Writes the confirmed pairs into the activity records.
    void WritePairs(const QList<PairToWrite> &pares);

    WizardRun &m_run;
    frmSelCursos &m_cursos;
};
