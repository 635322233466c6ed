#include "wizard/DeclarationGenerator.h"

#include "data/DatabaseError.h"
#include "data/MailMergeDatabase.h"
#include "session/WizardRun.h"
#include "util/ConversionError.h"
#include "util/NifCif.h"
#include "wizard/CertificateFormat.h"
#include "wizard/DeclarationComponents.h"
#include "wizard/DonorDeclarationWriter.h"
#include "wizard/DonorGridLayout.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmSelCursos.h"

using namespace DonorGridLayout;

namespace {

bool ValidIdentifier(QString id)
{
    try {
        return ValidarNIFCIF(id);
    } catch (const ConversionError &) {
        // An identifier that breaks the CIF rule is simply not valid.
        return false;
    }
}

} // namespace

DeclarationGenerator::DeclarationGenerator(frmActividadAlumno &form) : m_form(form)
{
}

QList<DeclarationGenerator::InvalidRow> DeclarationGenerator::InvalidIdentifiers(const FlexGrid &grid)
{
    QList<InvalidRow> invalid;
    for (int r = 1; r < grid.Rows(); ++r) {
        if (grid.TextMatrix(r, kMostrar) == kNoDeclarado)
            continue;
        const QString nif = grid.TextMatrix(r, kDni);
        if (!ValidIdentifier(nif))
            invalid.append({r, grid.TextMatrix(r, kAlumno), grid.TextMatrix(r, kPagador), nif});
    }
    return invalid;
}

QString DeclarationGenerator::RefusalFor(const InvalidRow &row)
{
    return QStringLiteral("El CIF-NIF del miembro de familia ") + row.miembro + QStringLiteral(", del alumno ") + row.alumno
           + QStringLiteral(" no es válido");
}

bool DeclarationGenerator::Generate()
{
    if (!Validate())
        return false;
    // The progress panel stays up while the declaration is written.
    m_form.fraAlumnos.SetVisible(true);
    const bool written = WriteTables();
    if (written && FillMailMergeDatabase())
        CallGenerator();
    m_form.fraAlumnos.SetVisible(false);
    return written;
}

bool DeclarationGenerator::Validate()
{
    FlexGrid &grid = m_form.msgMod182;
    const QList<InvalidRow> invalid = InvalidIdentifiers(grid);
    // An identifier corrected since the last refusal is no longer marked.
    for (int r = 1; r < grid.Rows(); ++r)
        if (grid.CellForeColor(r, kDni) == kRed)
            grid.SetCellForeColor(r, kDni, -1);
    if (invalid.isEmpty())
        return true;
    // Every wrong identifier in red, the first one in view.
    for (const InvalidRow &row : invalid)
        grid.SetCellForeColor(row.row, kDni, kRed);
    grid.SetTopRow(invalid.first().row);
    m_form.ui().Beep();
    m_form.ui().MsgBox(RefusalFor(invalid.first()), vbExclamation);
    return false;
}

bool DeclarationGenerator::WriteTables()
{
    WizardRun &run = m_form.Run();
    frmSelCursos &cursos = m_form.Cursos();
    try {
        Connection &conexion = run.OpenM182();
        Connection::Transaction transaction(conexion);
        DonorDeclarationWriter writer(conexion,
                                      {m_form.msgMod182, m_form.colAlumnos, cursos.colCursosEscolares, cursos.colComAut,
                                       m_form.DeduccionPorComunidad(), m_form.declarante, run.Settings().delegacion,
                                       run.Settings().domicilio, m_form.Hoy(), run.Locale(), m_form.ProgressBar1});
        writer.Write();
        transaction.Commit();
        return true;
    } catch (const UnreadableAmountError &error) {
        m_form.ui().Beep();
        m_form.ui().MsgBox(error.Message(), vbExclamation);
    } catch (const DatabaseError &error) {
        Fail(QStringLiteral("No se han podido escribir los datos de la declaración en Modelo182.mdb; la declaración "
                            "anterior se conserva sin cambios. Compruebe que la base de datos no está abierta en otro "
                            "programa y vuelva a intentarlo."),
             error.Message());
    }
    return false;
}

bool DeclarationGenerator::FillMailMergeDatabase()
{
    WizardRun &run = m_form.Run();
    const QString ruta = run.Configuracion().datossesion()->Text(QStringLiteral("rutaaplicacion")) + m_form.strRutaInformes
                         + QString::fromLatin1(MailMergeDatabase::kFileName);
    try {
        Connection &declaracion = run.OpenM182();
        const CertificateFormat format = CertificateFormatFor(m_form.VersionOffice());
        ConnectionPtr carta = run.NewConnection();
        carta->SetConnectionString(MailMergeDatabase::Create(ruta, format.engineType, declaracion));
        carta->Open();
        carta->Execute(QStringLiteral("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [") + declaracion.DataSourcePath()
                       + QStringLiteral(";pwd=") + declaracion.Property(QStringLiteral("Jet OLEDB:Database Password"))
                       + QStringLiteral("].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre"));
        carta->Close();
        return true;
    } catch (const DatabaseError &error) {
        Fail(QStringLiteral("La declaración se ha guardado, pero no se ha podido preparar la base de datos de los "
                            "certificados «")
                 + ruta + QStringLiteral("». Cierre los programas que la tengan abierta y vuelva a generar el modelo 182."),
             error.Message());
    }
    return false;
}

void DeclarationGenerator::CallGenerator()
{
    WizardRun &run = m_form.Run();
    GeneracionModelo182 result;
    try {
        auto generador = run.Componentes().CreateObjectAs<Modelo182Componente>(Modelo182Componente::ProgId);
        bool generado = false;
        result = generador->GenerarModelo182(run.OpenM182(), generado, false,
                                             run.Configuracion().datossesion()->Text(QStringLiteral("rutaaplicacion")),
                                             run.AddinFolder(), QStringLiteral("Modelo182"), 0, QVariant(), true, QVariant(),
                                             false, false, QVariant(), 0, QVariant(), QString(), m_form.ProgressBar1);
    } catch (const DatabaseError &error) {
        Fail(QStringLiteral("La declaración se ha guardado, pero no se ha podido generar el fichero del modelo 182."),
             error.Message());
        return;
    } catch (const std::exception &error) {
        Fail(QStringLiteral("La declaración se ha guardado, pero no se ha podido generar el fichero del modelo 182."),
             QString::fromUtf8(error.what()));
        return;
    }
    m_form.fraAlumnos.SetVisible(false);
    m_form.UltimaGeneracion = result.resumen;
    m_form.ui().MsgBox(result.resumen, result.generado ? vbInformation : vbExclamation);
}

void DeclarationGenerator::Fail(const QString &what, const QString &detail)
{
    m_form.ui().Beep();
    m_form.ui().MsgBox(detail.isEmpty() ? what : what + QStringLiteral("\n\n") + detail, vbCritical);
}
