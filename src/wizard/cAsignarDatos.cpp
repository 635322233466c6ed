#include "wizard/cAsignarDatos.h"

#include "session/WizardRun.h"
#include "wizard/DeclarationComponents.h"
#include "wizard/frmSelCursos.h"

cAsignarDatos::cAsignarDatos(Ui &ui) : m_ui(ui)
{
}

cAsignarDatos::~cAsignarDatos() = default;

void cAsignarDatos::ObtenerDatos(const SesionHostPtr &ObjDatosSesion)
{
    if (!m_run) {
        m_run = std::make_unique<WizardRun>(m_ui);
        RegisterDeclarationComponents(*m_run);
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
