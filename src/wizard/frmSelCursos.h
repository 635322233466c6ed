#pragma once

#include "controls/Controls.h"
#include "controls/ListControls.h"
#include "wizard/Registros.h"
#include "wizard/TwoListForm.h"

// First step: the school and the school years of the declaration. Owns the
// choices of the whole wizard (colCursosEscolares, colComAut), which the
// later steps read and write through it.
class WizardRun;

class frmSelCursos : public TwoListForm
{
public:
    explicit frmSelCursos(WizardRun &run);

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Centro:")};
    ComboBox cboCentro{this, QStringLiteral("cboCentro")};
    Frame fraCursos{this, QStringLiteral("fraCursos"), QStringLiteral("Cursos Escolares:")};
    CommandButton cmdCargar{this, QStringLiteral("cmdCargar"), QStringLiteral("Cargar Datos")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Siguiente ->")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Salir")};

    // The wizard's shared choices.
    ColCursosEscolares colCursosEscolares;
    ColComAut colComAut;
    bool blnCargarDatos = false;
    bool blnCargarDatosComAut = false;

    QList<ControlBase *> MandatoryControls() override;

    void Form_Load() override;
    void cboCentro_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click() { Unload(); }
    // Replaces the wizard's choices with the saved work, after asking.
    void cmdCargar_Click();

private:
    WizardRun &Run() const { return m_run; }

private:
    // Drops the years moved back, adds the newly selected ones.
    void BuildChosenYears();

    WizardRun &m_run;
};
