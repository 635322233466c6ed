#include "wizard/cAsignarDatos.h"

#include "session/WizardRun.h"
#include "wizard/frmSelCursos.h"

cAsignarDatos::cAsignarDatos(Ui &ui, ComponentInstaller installComponents)
    : m_ui(ui), m_installComponents(std::move(installComponents))
{
}

cAsignarDatos::~cAsignarDatos() = default;

void cAsignarDatos::ObtenerDatos(const SesionHostPtr &ObjDatosSesion)
{
    EnsureRun().CopySession(ObjDatosSesion);
}

void cAsignarDatos::ActivarFormulario(quint8 bytNodoSeleccionado)
{
    (void)bytNodoSeleccionado;
    // Without a session the first window refuses to load, with a message.
    m_ui.ShowModal(std::make_shared<frmSelCursos>(EnsureRun()));
    m_ui.RunUntilClosed();
}

WizardRun &cAsignarDatos::EnsureRun()
{
    if (!m_run) {
        m_run = std::make_unique<WizardRun>(m_ui);
        if (m_installComponents)
            m_installComponents(*m_run);
    }
    return *m_run;
}
