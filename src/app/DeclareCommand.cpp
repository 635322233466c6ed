#include "DeclareCommand.h"

#include "ConsoleUi.h"

#include "addin/ExternalComponents.h"
#include "data/DatabaseError.h"
#include "data/MailMergeDatabase.h"
#include "session/SessionSettings.h"
#include "session/WizardRun.h"
#include "wizard/DeclarationGenerator.h"
#include "wizard/cAsignarDatos.h"
#include "wizard/frmActividadAlumno.h"
#include "wizard/frmActividadMes.h"
#include "wizard/frmActividadPonderacion.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QFileInfo>

namespace {

// Stops the run: the reason has been printed already.
struct Stop
{
};

class HeadlessDeclaration
{
public:
    explicit HeadlessDeclaration(ConsoleUi &ui) : m_ui(ui), m_addin(ui, ExternalComponents::Install) {}
    ~HeadlessDeclaration()
    {
        // The windows close as "Salir" closes them.
        if (WizardRun *run = m_addin.Run())
            run->blnSalir = true;
        while (Form *top = m_ui.Stack().Top()) {
            const int before = m_ui.Stack().Count();
            m_ui.Unload(*top);
            if (m_ui.Stack().Count() == before)
                break;
        }
    }

    void Run(const SesionHostPtr &session)
    {
        m_addin.ObtenerDatos(session);
        m_addin.ActivarFormulario(0);
        WizardRun &run = *m_addin.Run();

        frmSelCursos &first = Top<frmSelCursos>();
        if (first.cboCentro.ListCount() > 0)
            first.cboCentro.SetListIndex(0);
        m_ui.Print(QStringLiteral("Cargando los datos guardados..."));
        Press(first.cmdCargar);
        if (first.colCursosEscolares.IsEmpty())
            Fail(QStringLiteral(
                "No hay trabajo guardado en la base de datos del centro. Abra el asistente, prepare la "
                "declaración y pulse «Guardar»; después vuelva a ejecutar «modelo182 declarar». Una instalación de "
                "demostración anterior a esta versión se vuelve a crear con «modelo182 demo CARPETA»."));

        Press(first.cmdAceptar);
        Press(Top<frmSelActividad>().cmdAceptar);
        Press(Top<frmActividadMes>().cmdAceptar);
        Press(Top<frmActividadPonderacion>().cmdSiguiente);
        frmActividadAlumno &donors = Top<frmActividadAlumno>();
        m_ui.Print(QStringLiteral("Donantes en la tabla: ") + QString::number(donors.msgMod182.Rows() - 1));

        m_ui.Print(QStringLiteral("Generando el modelo 182..."));
        const int before = m_ui.Refusals().size();
        donors.cmdAceptar.Press();
        if (m_ui.Refusals().size() > before) {
            const auto invalid = DeclarationGenerator::InvalidIdentifiers(donors.msgMod182);
            for (int i = 1; i < invalid.size(); ++i)
                m_ui.PrintError(QStringLiteral("  alumno: ") + invalid[i].alumno + QStringLiteral("; miembro de familia: ")
                                + invalid[i].miembro + QStringLiteral("; CIF-NIF: ") + invalid[i].nif);
            throw Stop{};
        }
        const QString informes = run.Configuracion().datossesion()->Text(QStringLiteral("rutaaplicacion"))
                                 + donors.strRutaInformes;
        const QString cartaDonantes = informes + QString::fromLatin1(MailMergeDatabase::kFileName);

        m_ui.Print(QStringLiteral("Combinando los certificados..."));
        donors.cmdCarta.Press();
        const QString merged = m_ui.Opened().isEmpty() ? QString() : m_ui.Opened().last();
        if (merged.isEmpty() || !merged.endsWith(QStringLiteral(".docx")))
            Fail(QStringLiteral("No se han podido combinar los certificados: compruebe que la plantilla «")
                 + CertificateTemplateHint(informes) + QStringLiteral("» está en la carpeta de informes."));

        Summary(run, donors, cartaDonantes, merged);
    }

private:
    template <typename T> T &Top()
    {
        auto *form = dynamic_cast<T *>(m_ui.Stack().Top());
        if (!form)
            throw Stop{};
        return *form;
    }

    void Press(CommandButton &button)
    {
        const int before = m_ui.Refusals().size();
        button.Press();
        if (m_ui.Refusals().size() > before)
            throw Stop{};
    }

    [[noreturn]] void Fail(const QString &text)
    {
        m_ui.PrintError(text);
        throw Stop{};
    }

    static QString CertificateTemplateHint(const QString &informes)
    {
        return informes + QStringLiteral("Certificado de Donaciones97.doc");
    }

    void Summary(WizardRun &run, frmActividadAlumno &donors, const QString &cartaDonantes, const QString &merged)
    {
        Connection &m182 = run.OpenM182();
        Recordset declarante = m182.Execute(QStringLiteral("SELECT nombre, nif, ejercicio FROM Declarantes"));
        Recordset donantes = m182.Execute(QStringLiteral("SELECT COUNT(*) AS n FROM CartaDonantes"));
        Recordset filas = m182.Execute(QStringLiteral("SELECT COUNT(*) AS n FROM Donantes"));
        m_ui.Print(QString());
        m_ui.Print(QStringLiteral("Resumen"));
        if (!declarante.Eof())
            m_ui.Print(QStringLiteral("  Declarante: ") + declarante.Fields(QStringLiteral("nombre")).toString()
                       + QStringLiteral(" (") + declarante.Fields(QStringLiteral("nif")).toString().trimmed()
                       + QStringLiteral("), ejercicio ") + declarante.Fields(QStringLiteral("ejercicio")).toString());
        m_ui.Print(QStringLiteral("  Donantes con certificado: ") + donantes.Fields(QStringLiteral("n")).toString());
        m_ui.Print(QStringLiteral("  Filas de donantes en la declaración: ") + filas.Fields(QStringLiteral("n")).toString());
        for (const QString &line : donors.UltimaGeneracion.split(QLatin1Char('\n')))
            if (line.startsWith(QStringLiteral("Registros")) || line.startsWith(QStringLiteral("Importe")))
                m_ui.Print(QStringLiteral("  ") + line);
        m_ui.Print(QStringLiteral("  Ficheros escritos:"));
        for (const QString &line : donors.UltimaGeneracion.split(QLatin1Char('\n')))
            if (line.startsWith(QStringLiteral("Fichero: ")))
                m_ui.Print(QStringLiteral("    ") + line.mid(9));
        m_ui.Print(QStringLiteral("    ") + cartaDonantes);
        m_ui.Print(QStringLiteral("    ") + merged);
    }

    ConsoleUi &m_ui;
    cAsignarDatos m_addin;
};

} // namespace

int RunDeclaration(const QString &sessionFile)
{
    ConsoleUi ui;
    if (!QFileInfo::exists(sessionFile)) {
        ui.PrintError(QStringLiteral("No existe el fichero de sesión «") + sessionFile
                      + QStringLiteral("». Cree la instalación de demostración con: modelo182 demo CARPETA"));
        return 1;
    }
    try {
        const SessionSettings settings = SessionSettings::Load(sessionFile);
        QLocale::setDefault(settings.Program().locale);
        const SesionHostPtr session = settings.BuildSession();
        HeadlessDeclaration declaration(ui);
        declaration.Run(session);
        return 0;
    } catch (const Stop &) {
        return 1;
    } catch (const DatabaseError &error) {
        ui.PrintError(QStringLiteral("Error de base de datos: ") + error.Describe());
        return 1;
    } catch (const std::exception &error) {
        ui.PrintError(QString::fromUtf8(error.what()));
        return 1;
    }
}
