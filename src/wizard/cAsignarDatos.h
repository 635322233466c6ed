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
    // Registers, in each run's components, what the layers above the wizard
    // provide (the catalogue maintenance window).
    using ComponentSetup = std::function<void(ObjectFactory &)>;

    // The windows are shown through `ui` (the Qt front end, or a test's).
    explicit cAsignarDatos(Ui &ui, ComponentSetup setup = {});
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
    ComponentSetup m_setup;
    std::unique_ptr<WizardRun> m_run;
};
