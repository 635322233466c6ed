#include "AeatCommand.h"

#include "data/DatabaseError.h"
#include "data/SessionKeys.h"
#include "generator/Modelo182Writer.h"
#include "session/SessionSettings.h"
#include "session/cConfiguracion.h"
#include "session/denM182.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString Quoted(const QString &text)
{
    return QStringLiteral("«") + QDir::toNativeSeparators(text) + QStringLiteral("»");
}

// A [Sesion] value by its name, compared as the host compares property names.
QString SessionValue(const SessionSettings &settings, QLatin1String name)
{
    for (const auto &[key, value] : settings.Values()) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value.trimmed();
    }
    return QString();
}

bool IsTrue(const QString &text)
{
    const QString t = text.toLower();
    return t == QLatin1String("true") || t == QLatin1String("1") || t == QLatin1String("-1");
}

Modelo182Options::Tipo TipoOf(AeatArguments::Tipo tipo)
{
    switch (tipo) {
    case AeatArguments::Tipo::Complementaria:
        return Modelo182Options::Tipo::Complementaria;
    case AeatArguments::Tipo::Sustitutiva:
        return Modelo182Options::Tipo::Sustitutiva;
    case AeatArguments::Tipo::Normal:
        break;
    }
    return Modelo182Options::Tipo::Normal;
}

} // namespace

AeatCommand::AeatCommand(QString defaultSession) : m_defaultSession(std::move(defaultSession))
{
}

int AeatCommand::Run(const QStringList &words)
{
    m_output.clear();
    m_errors.clear();
    QString error;
    const std::optional<AeatArguments> args = AeatArguments::Parse(words, m_defaultSession, error);
    if (!args)
        return Refuse(error + QStringLiteral("\nUso:\n") + QString::fromUtf8(kAeatUsage).chopped(1));

    Modelo182Options options;
    options.today = m_today;
    options.tipo = TipoOf(args->tipo);
    options.justificanteAnterior = args->justificanteAnterior;
    QString database;
    const bool found = args->database.isEmpty() ? FromSession(*args, options, database)
                                                : FromDatabase(*args, options, database);
    if (!found || !ChooseOutput(*args, options))
        return kCommandRefused;
    if (!QFileInfo(database).isFile()) {
        return Refuse(QStringLiteral("No existe la base de datos de la declaración ") + Quoted(database)
                      + QStringLiteral(": genere antes la declaración desde el asistente, o indique la base de datos "
                                       "con --db."));
    }
    return Generate(database, options);
}

bool AeatCommand::FromSession(const AeatArguments &args, Modelo182Options &options, QString &database)
{
    if (!QFileInfo(args.session).isFile()) {
        Refuse(QStringLiteral("No existe el fichero de sesión ") + Quoted(args.session)
               + QStringLiteral(": indique el suyo con --session, o cree la instalación de demostración con "
                                "«modelo182 demo CARPETA»."));
        return false;
    }
    SessionSettings settings;
    try {
        settings = SessionSettings::Load(args.session);
    } catch (const SessionError &error) {
        Refuse(error.Message());
        return false;
    }
    const ProgramSettings &program = settings.Program();
    options.locale = program.locale;
    options.numeroJustificante = args.justificante.isEmpty() ? program.numeroJustificante : args.justificante;
    QString error;
    if (!args.CheckIds(options.numeroJustificante, error)) {
        // A wrong id from the file: say where it came from.
        if (args.justificante.isEmpty() && !IsDeclarationId(options.numeroJustificante)) {
            error += QStringLiteral(" (NumeroJustificante del fichero de sesión ") + Quoted(settings.File())
                     + QStringLiteral("; corríjalo allí o indique el número con --justificante)");
        }
        Refuse(error);
        return false;
    }

    // Paths as the session object makes them: relative to the file's folder.
    const QDir folder(settings.Folder());
    const QString rutaAplicacion = SessionValue(settings, SessionKeys::kRutaAplicacion);
    const QString rutaBD = SessionValue(settings, SessionKeys::kRutaBD);
    cConfiguracion configuracion;
    configuracion.blnSQLServer = IsTrue(SessionValue(settings, SessionKeys::kSqlServer));
    if (rutaAplicacion.isEmpty() || (rutaBD.isEmpty() && !configuracion.blnSQLServer)) {
        Refuse(QStringLiteral("Al fichero de sesión ") + Quoted(settings.File())
               + QStringLiteral(" le falta rutaaplicacion o RutaBD en la sección [Sesion]: añádalos."));
        return false;
    }
    configuracion.set_RutaBD(QDir::cleanPath(folder.absoluteFilePath(rutaBD)));
    database = denM182::DataSourceFor(configuracion, AddinBinaryFolder());
    options.reportsFolder = QDir::cleanPath(folder.absoluteFilePath(rutaAplicacion))
                            + (program.desarrollo ? QStringLiteral("/QXInformes/Informes .rpt/")
                                                  : QStringLiteral("/Informes/"));
    return true;
}

bool AeatCommand::FromDatabase(const AeatArguments &args, Modelo182Options &options, QString &database)
{
    // Without a settings file the amounts are read in the environment's
    // locale, as the wizard does when the file names none.
    options.locale = QLocale::system();
    options.numeroJustificante = args.justificante;
    const QFileInfo info(args.database);
    database = info.absoluteFilePath();
    options.reportsFolder = info.absolutePath();
    return true;
}

bool AeatCommand::ChooseOutput(const AeatArguments &args, Modelo182Options &options)
{
    if (args.out.isEmpty())
        return true;
    const QFileInfo info(args.out);
    if (info.isDir()) {
        Refuse(QStringLiteral("--out ") + Quoted(args.out)
               + QStringLiteral(" es una carpeta: indique el nombre del fichero que quiere escribir."));
        return false;
    }
    options.outputFile = info.absoluteFilePath();
    return true;
}

int AeatCommand::Generate(const QString &database, const Modelo182Options &options)
{
    try {
        denM182 environment;
        environment.conM182().SetProperty(QStringLiteral("Data Source"), database);
        Connection &connection = environment.Open();
        const Modelo182Result result = EscribirModelo182(connection, options, *m_progress);
        if (!result.generado) {
            m_errors = result.Resumen(options.locale) + QLatin1Char('\n');
            return kDataRefused;
        }
        m_output = result.Resumen(options.locale) + QLatin1Char('\n');
        return kWritten;
    } catch (const DatabaseError &error) {
        m_errors = QStringLiteral("No se ha generado el fichero del modelo 182.\n") + error.Describe() + QLatin1Char('\n');
    } catch (const std::exception &error) {
        m_errors = QStringLiteral("No se ha generado el fichero del modelo 182: ") + QString::fromUtf8(error.what())
                   + QLatin1Char('\n');
    }
    return kDataRefused;
}

int AeatCommand::Refuse(const QString &message)
{
    m_errors = message + QLatin1Char('\n');
    return kCommandRefused;
}
