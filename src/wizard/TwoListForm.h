#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"

// A window that picks entries by moving them between an "available" and a
// "selected" list, with the four move buttons and double clicks: the school
// years, the activities and the months are chosen this way.
class TwoListForm : public Form
{
public:
    TwoListForm(Ui &ui, const QString &name, const QString &caption);

    Label lblDisponibles{this, QStringLiteral("lblDisponibles"), QStringLiteral("Disponibles:")};
    ListBox lstDisponibles{this, QStringLiteral("lstDisponibles")};
    Label lblSeleccionados{this, QStringLiteral("lblSeleccionados"), QStringLiteral("Seleccionados:")};
    ListBox lstSeleccionados{this, QStringLiteral("lstSeleccionados")};
    CommandButton cmdAgregarUno{this, QStringLiteral("cmdAgregarUno"), QStringLiteral("<- Agregar")};
    CommandButton cmdEliminarUno{this, QStringLiteral("cmdEliminarUno"), QStringLiteral("Quitar ->")};
    CommandButton cmdAgregarTodos{this, QStringLiteral("cmdAgregarTodos"), QStringLiteral("<<- Todos")};
    CommandButton cmdEliminarTodos{this, QStringLiteral("cmdEliminarTodos"), QStringLiteral("Todos ->>")};

    // Move the highlighted entry (nothing when none is highlighted), or all.
    void cmdAgregarUno_Click();
    void cmdEliminarUno_Click();
    void cmdAgregarTodos_Click();
    void cmdEliminarTodos_Click();
    void lstDisponibles_DblClick() { cmdAgregarUno_Click(); }
    void lstSeleccionados_DblClick() { cmdEliminarUno_Click(); }

protected:
    // Runs after every move.
    virtual void EntriesMoved() {}
};
