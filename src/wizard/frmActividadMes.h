#pragma once

#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "wizard/TwoListForm.h"

class frmSelCursos;
class WizardRun;

// Third step: for each chosen activity, the months whose fees count. Only
// months in which the activity has fees are offered; the choice is kept as
// the activity's twelve-character month mask.
class frmActividadMes : public TwoListForm
{
public:
    frmActividadMes(WizardRun &run, frmSelCursos &cursos);

    static QString MonthName(int mes); // 1 = "Enero" ... 12 = "Diciembre"

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Actividades del Curso Escolar")};
    ComboBox cboActCurEsc{this, QStringLiteral("cboActCurEsc")};
    Frame fraActual{this, QStringLiteral("fraActual"), QStringLiteral("Meses de Facturación de la Actividad")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("<- Anterior")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Siguiente ->")};

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void cboActCurEsc_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click() { Unload(); }

    // Rebuilds the mask of the activity listed as `etiqueta` from the
    // chosen months ("000000000000" when none).
    void StoreMonths(const QString &etiqueta);

private:
    WizardRun &m_run;
    frmSelCursos &m_cursos;
    qint16 m_shownIndex = 0;
};
