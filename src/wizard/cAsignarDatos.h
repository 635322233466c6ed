#pragma once

#include "session/SesionHost.h"

#include <functional>
#include <memory>

class ObjectFactory;
class Ui;
class WizardRun;

// The add-in's entry point, the one class the host creates. The host calls
// ObtenerDatos with its session, then ActivarFormulario to show the wizard.
class cAsignarDatos
{
public:
    // What the starter of the add-in puts into each run's factory (the
    // components the windows create by programmatic identifier).
    using ComponentInstaller = std::function<void(WizardRun &)>;

    // The windows are shown through `ui` (the Qt front end, or a test's).
    explicit cAsignarDatos(Ui &ui, ComponentInstaller installComponents = {});
    ~cAsignarDatos();

    // Starts this add-in's run and copies the host's session into it. A
    // missing or unconvertible property throws SessionError.
    void ObtenerDatos(const SesionHostPtr &ObjDatosSesion);

    // Shows the first wizard window modally and returns when the wizard is
    // closed. The argument (the host's menu node) is ignored. Opening it
    // again reuses the session copied by ObtenerDatos.
    void ActivarFormulario(quint8 bytNodoSeleccionado = 0);

    // The run the host's session started (null before ObtenerDatos).
    WizardRun *Run() const { return m_run.get(); }

private:
    // The run, started with its components on first use.
    WizardRun &EnsureRun();

    Ui &m_ui;
    ComponentInstaller m_installComponents;
    std::unique_ptr<WizardRun> m_run;
};
