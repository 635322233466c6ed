#include "session/SessionSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

namespace {

// Session properties that name a folder or a file.
bool IsPathProperty(const QString &name)
{
    return name == QLatin1String("rutaaplicacion") || name == QLatin1String("RutaBD")
        || name == QLatin1String("RutaIcono");
}

bool IsConnectionProperty(const QString &name)
{
    return name.startsWith(QLatin1String("conexion"));
}

bool ReadBoolean(const QString &text, bool fallback)
{
    const QString t = text.trimmed().toLower();
    if (t == QLatin1String("true") || t == QLatin1String("1") || t == QLatin1String("-1") || t == QLatin1String("yes"))
        return true;
    if (t == QLatin1String("false") || t == QLatin1String("0") || t == QLatin1String("no"))
        return false;
    return fallback;
}

// QSettings turns a value with a comma into a list; a session value is
// always one text.
QString ReadText(const QVariant &value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(','));
    return value.toString();
}

} // namespace

SessionSettings SessionSettings::Load(const QString &iniFile)
{
    QFileInfo info(iniFile);
    if (!info.exists())
        throw SessionError(QStringLiteral("No se encuentra el fichero de sesión «%1».").arg(iniFile));

    SessionSettings result;
    result.m_file = info.absoluteFilePath();
    result.m_folder = info.absolutePath();

    QSettings ini(result.m_file, QSettings::IniFormat);
    ini.beginGroup(QStringLiteral("Sesion"));
    const QStringList keys = ini.childKeys();
    for (const QString &key : keys)
        result.m_values.append({key, ReadText(ini.value(key))});
    ini.endGroup();
    if (result.m_values.isEmpty())
        throw SessionError(QStringLiteral("El fichero de sesión «%1» no tiene la sección [Sesion].").arg(iniFile));

    ini.beginGroup(QStringLiteral("Modelo182"));
    const QString locale = ReadText(ini.value(QStringLiteral("Locale"))).trimmed();
    result.m_program.locale = locale.isEmpty() ? QLocale::system() : QLocale(locale);
    result.m_program.desarrollo = ReadBoolean(ReadText(ini.value(QStringLiteral("desarrollo"))), false);
    result.m_program.numeroJustificante = ReadText(ini.value(QStringLiteral("NumeroJustificante"))).trimmed();
    result.m_program.delegacion = ReadText(ini.value(QStringLiteral("Delegacion")));
    result.m_program.domicilio = ReadText(ini.value(QStringLiteral("Domicilio")));
    ini.endGroup();
    return result;
}

SesionHostPtr SessionSettings::BuildSession() const
{
    auto session = std::make_shared<SesionHost>();
    ProgramSettings program = m_program;
    program.dataFolder = m_folder;
    session->SetProgramSettings(program);
    static const QRegularExpression wholeNumber(QStringLiteral("^-?\\d+$"));
    const QDir folder(m_folder);
    for (const auto &[name, text] : m_values) {
        if (IsConnectionProperty(name)) {
            auto connection = std::make_shared<Connection>();
            connection->SetBaseFolder(m_folder);
            connection->Open(text);
            session->Set(name, connection);
        } else if (IsPathProperty(name)) {
            session->Set(name, text.isEmpty() ? text : QDir::cleanPath(folder.absoluteFilePath(text)));
        } else if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
            session->Set(name, true);
        } else if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
            session->Set(name, false);
        } else if (wholeNumber.match(text.trimmed()).hasMatch()) {
            session->Set(name, text.trimmed().toLongLong());
        } else {
            session->Set(name, text);
        }
    }
    return session;
}
