#pragma once

#include "session/SesionHost.h"

class Ui;

// The add-in's entry point, the one class the host creates. The host calls
// ObtenerDatos with its session, then ActivarFormulario to show the wizard.
class cAsignarDatos
{
public:
    // The windows are shown through `ui` (the Qt front end, or a test's).
    explicit cAsignarDatos(Ui &ui);

    // Copies the host's session into the library's session context. A
    // missing or unconvertible property throws SessionError.
    void ObtenerDatos(const SesionHostPtr &ObjDatosSesion);

    // Shows the first wizard window modally and returns when the wizard is
    // closed. The argument (the host's menu node) is ignored.
    void ActivarFormulario(quint8 bytNodoSeleccionado = 0);

private:
    Ui &m_ui;
};
