#include "wizard/CertificatePrinter.h"

#include "data/MailMergeDatabase.h"
#include "session/WizardRun.h"
#include "wizard/CertificateFormat.h"
#include "wizard/DeclarationComponents.h"
#include "wizard/frmActividadAlumno.h"

#include <QFileInfo>

CertificatePrinter::CertificatePrinter(frmActividadAlumno &form) : m_form(form)
{
}

void CertificatePrinter::Print()
{
    Ui &ui = m_form.ui();
    WizardRun &run = m_form.Run();
    ui.SetMousePointer(vbHourglass);
    const CertificateFormat format = CertificateFormatFor(m_form.VersionOffice());
    const QString carpeta = run.Configuracion().datossesion()->Text(QStringLiteral("rutaaplicacion"))
                            + m_form.strRutaInformes;
    const QString cartaDonantes = carpeta + QString::fromLatin1(MailMergeDatabase::kFileName);
    if (!QFileInfo::exists(cartaDonantes)) {
        ui.SetMousePointer(vbDefault);
        ui.Beep();
        ui.MsgBox(QStringLiteral("Debe generar correctamente el modelo 182"), vbInformation);
        return;
    }
    const QString plantilla = carpeta + format.plantilla;
    QString documento;
    try {
        auto merge = run.Componentes().CreateObjectAs<CertificadosComponente>(CertificadosComponente::ProgId);
        documento = merge->DocumentoCombinado(plantilla);
        documento = merge->Combinar(plantilla, cartaDonantes, run.OpenM182(), m_form.Hoy());
    } catch (...) {
        // Whatever the merge could not do, the person sees in the document.
    }
    ui.DoEvents();
    ui.SetMousePointer(vbDefault);
    if (!documento.isEmpty() && QFileInfo::exists(documento))
        ui.ShellOpen(documento);
    else if (QFileInfo::exists(plantilla))
        ui.ShellOpen(plantilla);
}
