#include "wizard/frmActividadAlumno.h"

#include "session/WizardRun.h"
#include "session/cCentroApi.h"
#include "util/OfficeDetector.h"
#include "util/VbFormat.h"
#include "wizard/CertificatePrinter.h"
#include "wizard/DeclarationGenerator.h"
#include "wizard/DonorGridBuilder.h"
#include "wizard/DonorGridEditor.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/DonorWorkSaver.h"
#include "wizard/FormSetup.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelCursos.h"

frmActividadAlumno::frmActividadAlumno(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &deducciones)
    : Form(run.ui(), QStringLiteral("frmActividadAlumno"),
           QStringLiteral("Datos de los Alumnos en las Actividades Seleccionadas")),
      m_run(run), m_cursos(cursos), m_deducciones(deducciones), m_editor(std::make_unique<DonorGridEditor>(*this))
{
    msgMod182.Click = [this] { msgMod182_Click(); };
    msgMod182.Scroll = [this] { msgMod182_Scroll(); };
    msgMod182.GotFocus = [this] { msgMod182_Scroll(); };
    txtValor.KeyPress = [this](int &keyAscii) { txtValor_KeyPress(keyAscii); };
    txtValor.LostFocus = [this] { txtValor_LostFocus(); };
    cmdAnterior.Click = [this] { cmdAnterior_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
    cmdGuardar.Click = [this] { cmdGuardar_Click(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCarta.Click = [this] { cmdCarta_Click(); };
    VersionOffice = ObtenerVersionOffice;
    txtValor.SetVisible(false);
    fraAlumnos.SetVisible(false);
}

frmActividadAlumno::~frmActividadAlumno() = default;

QList<ControlBase *> frmActividadAlumno::MandatoryControls()
{
    return {&msgMod182};
}

void frmActividadAlumno::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
    msgMod182.Clear();
    auto api = m_run.Componentes().CreateObjectAs<cCentroApi>(QString::fromLatin1(cCentroApi::ProgId));
    strRutaInformes = api->desarrollo() ? QStringLiteral("/QXInformes/Informes .rpt/") : QStringLiteral("/Informes/");
}

void frmActividadAlumno::Form_Activate()
{
    // Every return to the step starts again from the host data and the
    // saved work.
    DonorGridBuilder(*this).Build();
}

void frmActividadAlumno::Form_Unload(int &cancel)
{
    (void)cancel;
    colAlumnos.Clear();
}

void frmActividadAlumno::msgMod182_Click()
{
    m_editor->Click();
}

void frmActividadAlumno::msgMod182_Scroll()
{
    txtValor.SetVisible(false);
}

void frmActividadAlumno::txtValor_KeyPress(int &keyAscii)
{
    m_editor->KeyPress(keyAscii);
}

void frmActividadAlumno::txtValor_LostFocus()
{
    m_editor->Commit();
}

void frmActividadAlumno::cmdCancelar_Click()
{
    m_run.blnSalir = true;
    Unload();
}

void frmActividadAlumno::MostrarTotal()
{
    lblTotal.SetCaption(DonorGridLayout::kTotalPrefix
                        + FormatNumber(dblTotal, QStringLiteral("#,###,##0.00"), m_run.Locale()));
}

bool frmActividadAlumno::DeduccionPorComunidad() const
{
    return m_deducciones.chkComunidad.Value() == 1;
}

// Saving the step's work ------------------------------------------------

void frmActividadAlumno::cmdGuardar_Click()
{
    // An amount still being typed counts as written.
    txtValor_LostFocus();
    DonorWorkSaver(*this).Save();
}

// The declaration and the certificates ----------------------------------

void frmActividadAlumno::cmdAceptar_Click()
{
    // An amount still being typed counts as written.
    txtValor_LostFocus();
    DeclarationGenerator(*this).Generate();
}

void frmActividadAlumno::cmdCarta_Click()
{
    CertificatePrinter(*this).Print();
}
