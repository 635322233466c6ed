#include "wizard/frmActividadAlumno.h"

#include "controls/FormSetup.h"
#include "session/modPrincipal.h"
#include "wizard/frmSelCursos.h"

frmActividadAlumno::frmActividadAlumno(Ui &ui, frmSelCursos &cursos)
    : Form(ui, QStringLiteral("frmActividadAlumno"), QStringLiteral("Datos de los Alumnos en las Actividades Seleccionadas")),
      m_cursos(cursos)
{
    cmdAnterior.Click = [this] { cmdAnterior_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frmActividadAlumno::Form_Load()
{
    AplicarConfiguracionFormulario(*this);
}

void frmActividadAlumno::cmdCancelar_Click()
{
    modPrincipal::blnSalir = true;
    Unload();
}
