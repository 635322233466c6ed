#include "wizard/TwoListForm.h"

#include "wizard/MoverEntradas.h"

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
    MoverSeleccionado(lstDisponibles, lstSeleccionados);
    EntradasMovidas();
}

void TwoListForm::cmdEliminarUno_Click()
{
    MoverSeleccionado(lstSeleccionados, lstDisponibles);
    EntradasMovidas();
}

void TwoListForm::cmdAgregarTodos_Click()
{
    MoverTodos(lstDisponibles, lstSeleccionados);
    EntradasMovidas();
}

void TwoListForm::cmdEliminarTodos_Click()
{
    MoverTodos(lstSeleccionados, lstDisponibles);
    EntradasMovidas();
}
