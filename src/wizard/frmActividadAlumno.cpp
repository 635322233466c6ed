#include "wizard/frmActividadAlumno.h"

#include "wizard/FormSetup.h"
#include "session/WizardRun.h"
#include "wizard/frmSelCursos.h"

frmActividadAlumno::frmActividadAlumno(WizardRun &run, frmSelCursos &cursos)
    : Form(run.ui(), QStringLiteral("frmActividadAlumno"), QStringLiteral("Datos de los Alumnos en las Actividades Seleccionadas")),
      m_run(run),
      m_cursos(cursos)
{
    cmdAnterior.Click = [this] { cmdAnterior_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frmActividadAlumno::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
}

void frmActividadAlumno::cmdCancelar_Click()
{
    m_run.blnSalir = true;
    Unload();
}
