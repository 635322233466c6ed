#include "session/SesionHost.h"

#include <QLocale>
#include <cmath>

SessionError::SessionError(const QString &message) : std::runtime_error(message.toStdString()), m_message(message)
{
}

namespace {

QString Describe(const SesionHost::Value &value)
{
    if (auto text = std::get_if<QString>(&value))
        return *text;
    if (auto number = std::get_if<qlonglong>(&value))
        return QString::number(*number);
    if (auto flag = std::get_if<bool>(&value))
        return *flag ? QStringLiteral("Verdadero") : QStringLiteral("Falso");
    if (std::holds_alternative<ConnectionPtr>(value))
        return QStringLiteral("(conexión)");
    return QStringLiteral("(sesión)");
}

SessionError TypeMismatch(const QString &name, const SesionHost::Value &value, const QString &expected)
{
    return SessionError(
        QStringLiteral("La propiedad de sesión «%1» vale «%2», que no es %3.").arg(name, Describe(value), expected));
}

// The host hands numbers over as text often enough; read them as the
// platform would, with a "." or the C locale's reading.
bool ParseNumber(const QString &text, double &out)
{
    bool ok = false;
    out = QLocale::c().toDouble(text.trimmed(), &ok);
    return ok;
}

} // namespace

void SesionHost::Set(const QString &name, Value value)
{
    m_values.insert(name, std::move(value));
}

const SesionHost::Value &SesionHost::Get(const QString &name) const
{
    auto it = m_values.constFind(name);
    if (it == m_values.constEnd())
        throw SessionError(QStringLiteral("La sesión no tiene la propiedad «%1».").arg(name));
    return it.value();
}

QString SesionHost::Text(const QString &name) const
{
    const Value &value = Get(name);
    if (std::holds_alternative<ConnectionPtr>(value) || std::holds_alternative<SelfReference>(value))
        throw TypeMismatch(name, value, QStringLiteral("un texto"));
    if (auto flag = std::get_if<bool>(&value))
        return *flag ? QStringLiteral("True") : QStringLiteral("False");
    return Describe(value);
}

qlonglong SesionHost::Integer(const QString &name) const
{
    const Value &value = Get(name);
    if (auto number = std::get_if<qlonglong>(&value))
        return *number;
    if (auto flag = std::get_if<bool>(&value))
        return *flag ? -1 : 0;
    if (auto text = std::get_if<QString>(&value)) {
        double parsed = 0;
        if (ParseNumber(*text, parsed) && std::abs(parsed) < 9.2e18)
            return qlonglong(std::nearbyint(parsed)); // the default rounding mode: half to even
    }
    throw TypeMismatch(name, value, QStringLiteral("un número entero"));
}

bool SesionHost::Boolean(const QString &name) const
{
    const Value &value = Get(name);
    if (auto flag = std::get_if<bool>(&value))
        return *flag;
    if (auto number = std::get_if<qlonglong>(&value))
        return *number != 0;
    if (auto text = std::get_if<QString>(&value)) {
        const QString t = text->trimmed().toLower();
        if (t == QLatin1String("true") || t == QLatin1String("verdadero"))
            return true;
        if (t == QLatin1String("false") || t == QLatin1String("falso"))
            return false;
        double parsed = 0;
        if (ParseNumber(t, parsed))
            return parsed != 0;
    }
    throw TypeMismatch(name, value, QStringLiteral("un valor lógico"));
}

ConnectionPtr SesionHost::ConnectionValue(const QString &name) const
{
    const Value &value = Get(name);
    if (auto connection = std::get_if<ConnectionPtr>(&value); connection && *connection)
        return *connection;
    throw TypeMismatch(name, value, QStringLiteral("una conexión"));
}

std::shared_ptr<SesionHost> SesionHost::Session(const QString &name) const
{
    const Value &value = Get(name);
    if (std::holds_alternative<SelfReference>(value))
        return std::const_pointer_cast<SesionHost>(shared_from_this());
    throw TypeMismatch(name, value, QStringLiteral("una sesión"));
}
