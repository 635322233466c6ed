#include "session/SessionSettings.h"

#include "data/SessionKeys.h"
#include "data/SettingsFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

using SessionKeys::Kind;

// A property not in the host's list is a connection when its name says so;
// otherwise its text decides.
std::optional<Kind> KindOf(const QString &name)
{
    if (const SessionKeys::Key *key = SessionKeys::Find(name))
        return key->kind;
    if (name.startsWith(QLatin1String("conexion")))
        return Kind::Connection;
    return std::nullopt;
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

// The value of a property that is neither a path nor a connection. A text
// that looks like a whole number must fit in 64 bits: it is refused, never
// read as 0; an integer property must hold a whole number.
SesionHost::Value Convert(const QString &name, const QString &text, const QString &file)
{
    const std::optional<Kind> kind = KindOf(name);
    if (kind == Kind::Text)
        return text;
    if (kind != Kind::Integer
        && (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
            || text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0))
        return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
    static const QRegularExpression wholeNumber(QStringLiteral("^-?\\d+$"));
    const QString trimmed = text.trimmed();
    bool ok = false;
    const qlonglong number = trimmed.toLongLong(&ok);
    if (ok && wholeNumber.match(trimmed).hasMatch())
        return number;
    if (kind == Kind::Integer || wholeNumber.match(trimmed).hasMatch())
        throw SessionError(QStringLiteral("El valor «") + text + QStringLiteral("» de «") + name
                           + QStringLiteral("» no es un número entero válido. Corrija el fichero de sesión «") + file
                           + QStringLiteral("»."));
    return text;
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

    SettingsFile ini;
    try {
        ini = SettingsFile::Read(result.m_file);
    } catch (const SettingsFileError &error) {
        throw SessionError(error.Message());
    }
    if (const SettingsSection *sesion = ini.Section(SessionKeys::kSesion))
        for (const SettingsEntry &entry : sesion->entries)
            result.m_values.append({entry.key, entry.value});
    if (result.m_values.isEmpty())
        throw SessionError(QStringLiteral("El fichero de sesión «%1» no tiene la sección [Sesion].").arg(iniFile));
    // Bad numbers are refused here, before any connection is opened.
    for (const auto &[name, text] : std::as_const(result.m_values))
        if (KindOf(name) != Kind::Path && KindOf(name) != Kind::Connection)
            Convert(name, text, result.m_file);

    const auto value = [&ini](QLatin1String key) { return ini.Value(SessionKeys::kModelo182, key); };
    const QString locale = value(SessionKeys::kLocale).trimmed();
    result.m_program.locale = locale.isEmpty() ? QLocale::system() : QLocale(locale);
    result.m_program.desarrollo = ReadBoolean(value(SessionKeys::kDesarrollo), false);
    result.m_program.numeroJustificante = value(SessionKeys::kNumeroJustificante).trimmed();
    result.m_program.delegacion = value(SessionKeys::kDelegacion);
    result.m_program.domicilio = value(SessionKeys::kDomicilio);
    return result;
}

SesionHostPtr SessionSettings::BuildSession() const
{
    auto session = std::make_shared<SesionHost>();
    ProgramSettings program = m_program;
    program.dataFolder = m_folder;
    session->SetProgramSettings(program);
    const QDir folder(m_folder);
    for (const auto &[name, text] : m_values) {
        const std::optional<Kind> kind = KindOf(name);
        if (kind == Kind::Connection) {
            auto connection = std::make_shared<Connection>();
            connection->SetBaseFolder(m_folder);
            connection->Open(text);
            session->Set(name, connection);
        } else if (kind == Kind::Path) {
            session->Set(name, text.isEmpty() ? text : QDir::cleanPath(folder.absoluteFilePath(text)));
        } else {
            session->Set(name, Convert(name, text, m_file));
        }
    }
    return session;
}
