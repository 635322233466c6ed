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
    if (!m_run) {
        m_run = std::make_unique<WizardRun>(m_ui);
        if (m_installComponents)
            m_installComponents(*m_run);
    }
    m_run->CopySession(ObjDatosSesion);
}

void cAsignarDatos::ActivarFormulario(quint8 bytNodoSeleccionado)
{
    (void)bytNodoSeleccionado;
    // Without a session the first window refuses to load, with a message.
    if (!m_run)
        m_run = std::make_unique<WizardRun>(m_ui);
    m_ui.ShowModal(std::make_shared<frmSelCursos>(*m_run));
    m_ui.RunUntilClosed();
}
