// The add-in's entry points, as the host finds them in the loaded library.

#include "gui/QtUi.h"
#include "wizard/cAsignarDatos.h"

#include <QtGlobal>

extern "C" {

// Creates the add-in's public class; its windows are shown with Qt.
Q_DECL_EXPORT cAsignarDatos *CrearAsignarDatos()
{
    // One front end for the library's lifetime, like its session context.
    static QtUi *ui = new QtUi();
    return new cAsignarDatos(*ui);
}

Q_DECL_EXPORT void DestruirAsignarDatos(cAsignarDatos *addin)
{
    delete addin;
}

} // extern "C"
