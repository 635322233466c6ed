// The add-in's entry points, as the host finds them in the loaded library.

#include "ExternalComponents.h"
#include "catalogue/CatalogueComponents.h"
#include "gui/QtUi.h"
#include "session/WizardRun.h"
#include "session/modPrincipal.h"
#include "wizard/cAsignarDatos.h"

#include <QtGlobal>

extern "C" {

// Creates the add-in's public class; its windows are shown with Qt.
Q_DECL_EXPORT cAsignarDatos *CrearAsignarDatos()
{
    // One front end for the library's lifetime; each add-in object starts
    // its own wizard run on it, with the catalogue window the deduction
    // step opens.
    static QtUi *ui = new QtUi(modPrincipal::LoadResString(100));
    return new cAsignarDatos(*ui, [](WizardRun &run) {
        RegisterCatalogueWindows(run.Componentes());
        ExternalComponents::Install(run);
    });
}

Q_DECL_EXPORT void DestruirAsignarDatos(cAsignarDatos *addin)
{
    delete addin;
}

} // extern "C"
