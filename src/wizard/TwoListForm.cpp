#include "wizard/TwoListForm.h"

#include "wizard/ListMoves.h"

TwoListForm::TwoListForm(Ui &ui, const QString &name, const QString &caption) : Form(ui, name, caption)
{
    lstDisponibles.DblClick = [this] { lstDisponibles_DblClick(); };
    lstSeleccionados.DblClick = [this] { lstSeleccionados_DblClick(); };
    cmdAgregarUno.Click = [this] { cmdAgregarUno_Click(); };
    cmdEliminarUno.Click = [this] { cmdEliminarUno_Click(); };
    cmdAgregarTodos.Click = [this] { cmdAgregarTodos_Click(); };
    cmdEliminarTodos.Click = [this] { cmdEliminarTodos_Click(); };
}

void TwoListForm::cmdAgregarUno_Click()
{
    MoveSelected(lstDisponibles, lstSeleccionados);
    EntriesMoved();
}

void TwoListForm::cmdEliminarUno_Click()
{
    MoveSelected(lstSeleccionados, lstDisponibles);
    EntriesMoved();
}

void TwoListForm::cmdAgregarTodos_Click()
{
    MoveAll(lstDisponibles, lstSeleccionados);
    EntriesMoved();
}

void TwoListForm::cmdEliminarTodos_Click()
{
    MoveAll(lstSeleccionados, lstDisponibles);
    EntriesMoved();
}
