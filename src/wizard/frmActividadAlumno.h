#pragma once

#include "controls/Controls.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"

class frmSelCursos;
class WizardRun;

// Last step: the donors of the declaration. For now it closes the wizard
// ("Salir") or goes back; the donor grid and its actions come next.
class frmActividadAlumno : public Form
{
public:
    frmActividadAlumno(WizardRun &run, frmSelCursos &cursos);

    FlexGrid msgMod182{this, QStringLiteral("msgMod182")};
    Label lblTotal{this, QStringLiteral("lblTotal")};
    CommandButton cmdAnterior{this, QStringLiteral("cmdAnterior"), QStringLiteral("<- Anterior")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Salir")};

    void Form_Load() override;
    void cmdAnterior_Click() { Unload(); }
    // Closes the whole wizard: every window below closes itself when
    // control returns to it.
    void cmdCancelar_Click();

private:
    WizardRun &m_run;
    frmSelCursos &m_cursos;
};
