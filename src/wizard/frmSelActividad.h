#pragma once

#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "wizard/TwoListForm.h"

class frmSelCursos;
class WizardRun;

// Second step: for each chosen school year, the activities whose fees count
// as donations. The choice is kept in each year's colActividades.
class frmSelActividad : public TwoListForm
{
public:
    frmSelActividad(WizardRun &run, frmSelCursos &cursos);

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Curso Escolar")};
    ComboBox cboCursoEscolar{this, QStringLiteral("cboCursoEscolar")};
    Frame fraActual{this, QStringLiteral("fraActual"), QStringLiteral("Actividades")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Siguiente ->")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("<- Anterior")};

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void cboCursoEscolar_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click() { Unload(); }

    // The year whose activities the lists show (0 before the first).
    qlonglong CursoMostrado() const { return m_shownYear; }

    // Writes the lists into the year: activities moved back leave its
    // colActividades, newly selected ones join it, the rest keep their
    // months and deductions. Throws CollectionKeyError for a year not chosen.
    void StoreActivities(qlonglong idCursoEscolar);

private:
    void EntriesMoved() override { FitListWidths(); }
    void FitListWidths();

    WizardRun &m_run;
    frmSelCursos &m_cursos;
    qlonglong m_shownYear = 0;
};
