#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"

class frmSelCursos;

// Third step: for each chosen activity, the months whose fees count. Only
// months in which the activity has fees are offered; the choice is kept as
// the activity's twelve-character month mask.
class frmActividadMes : public Form
{
public:
    frmActividadMes(Ui &ui, frmSelCursos &cursos);

    static QString NombreMes(int mes); // 1 = "Enero" ... 12 = "Diciembre"

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Actividades del Curso Escolar")};
    ComboBox cboActCurEsc{this, QStringLiteral("cboActCurEsc")};
    Frame fraActual{this, QStringLiteral("fraActual"), QStringLiteral("Meses de Facturación de la Actividad")};
    Label lblDisponibles{this, QStringLiteral("lblDisponibles"), QStringLiteral("Disponibles:")};
    ListBox lstDisponibles{this, QStringLiteral("lstDisponibles")};
    Label lblSeleccionados{this, QStringLiteral("lblSeleccionados"), QStringLiteral("Seleccionados:")};
    ListBox lstSeleccionados{this, QStringLiteral("lstSeleccionados")};
    CommandButton cmdAgregarUno{this, QStringLiteral("cmdAgregarUno"), QStringLiteral("<- Agregar")};
    CommandButton cmdEliminarUno{this, QStringLiteral("cmdEliminarUno"), QStringLiteral("Quitar ->")};
    CommandButton cmdAgregarTodos{this, QStringLiteral("cmdAgregarTodos"), QStringLiteral("<<- Todos")};
    CommandButton cmdEliminarTodos{this, QStringLiteral("cmdEliminarTodos"), QStringLiteral("Todos ->>")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("<- Anterior")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Siguiente ->")};

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void cboActCurEsc_Click();
    void cmdAgregarUno_Click();
    void cmdEliminarUno_Click();
    void cmdAgregarTodos_Click();
    void cmdEliminarTodos_Click();
    void lstDisponibles_DblClick() { cmdAgregarUno_Click(); }
    void lstSeleccionados_DblClick() { cmdEliminarUno_Click(); }
    void cmdAceptar_Click();
    void cmdCancelar_Click() { Unload(); }

    // Rebuilds the mask of the activity listed as `etiqueta` from the
    // chosen months ("000000000000" when none).
    void GuardarMeses(const QString &etiqueta);

private:

    frmSelCursos &m_cursos;
    qint16 m_indiceMostrado = 0;
};
