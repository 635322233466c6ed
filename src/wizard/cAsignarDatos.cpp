#include "wizard/cAsignarDatos.h"

#include "controls/cCentroApi.h"
#include "session/SessionCopy.h"
#include "session/modPrincipal.h"
#include "wizard/frmSelCursos.h"

cAsignarDatos::cAsignarDatos(Ui &ui) : m_ui(ui)
{
    cCentroApi::Register();
}

void cAsignarDatos::ObtenerDatos(const SesionHostPtr &ObjDatosSesion)
{
    CopySession(ObjDatosSesion, modPrincipal::Configuracion());
}

void cAsignarDatos::ActivarFormulario(quint8 bytNodoSeleccionado)
{
    (void)bytNodoSeleccionado;
    m_ui.ShowModal(std::make_shared<frmSelCursos>(m_ui));
    m_ui.RunUntilClosed();
}
