#include "data/PostgresErrors.h"

#include <QSqlError>
#include <QStringList>

namespace PostgresErrors {

namespace {

bool ContainsAny(const QString &text, std::initializer_list<const char *> phrases)
{
    for (const char *phrase : phrases)
        if (text.contains(QString::fromUtf8(phrase), Qt::CaseInsensitive))
            return true;
    return false;
}

QString Quoted(const QString &text)
{
    return QStringLiteral("«") + text + QStringLiteral("»");
}

QString HostText(const Server &server)
{
    const QString host = server.host.isEmpty() ? QStringLiteral("localhost") : server.host;
    return server.port.isEmpty() ? Quoted(host)
                                 : Quoted(host) + QStringLiteral(" (puerto ") + server.port + QLatin1Char(')');
}

} // namespace

QString ConnectFailure(const QSqlError &error, const Server &server)
{
    const QString text = error.databaseText() + QLatin1Char(' ') + error.driverText();
    // The refused login first: its text also says the connection failed.
    if (ContainsAny(text, {"authentication failed", "no password supplied", "pg_hba.conf", "autentificación",
                           "autenticación", "no se entregó una contraseña"})
        || (ContainsAny(text, {"role \"", "el rol «"}) && ContainsAny(text, {"does not exist", "no existe"})))
        return QStringLiteral("El servidor de bases de datos ") + HostText(server)
               + QStringLiteral(" no ha aceptado el usuario ") + Quoted(server.user)
               + QStringLiteral(" con la contraseña indicada. Compruebe el usuario y la contraseña de la conexión.");
    if (ContainsAny(text, {"database \"", "la base de datos «"}) && ContainsAny(text, {"does not exist", "no existe"}))
        return QStringLiteral("No existe la base de datos ") + Quoted(server.database) + QStringLiteral(" en el servidor ")
               + HostText(server) + QStringLiteral(". Compruebe el nombre de la base de datos de la conexión.");
    if (ContainsAny(text, {"connection refused", "rehusada", "timeout expired", "tiempo de espera agotado",
                           "could not translate host name", "no se pudo traducir", "no route to host",
                           "network is unreachable", "could not connect", "no se pudo conectar",
                           "server closed the connection", "el servidor cerró la conexión"}))
        return QStringLiteral("El servidor de bases de datos ") + HostText(server)
               + QStringLiteral(" no responde. Compruebe que está en marcha y que este equipo llega a él por la red.");
    return QStringLiteral("No se puede conectar con la base de datos ") + Quoted(server.database)
           + QStringLiteral(" del servidor ") + HostText(server)
           + QStringLiteral(". Compruebe que el servidor está en marcha y que el usuario y la contraseña son correctos.");
}

bool IsSqlState(const QString &code)
{
    if (code.size() != 5)
        return false;
    for (QChar c : code)
        if (!(c.isDigit() || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))))
            return false;
    return true;
}

QString StatementFailure(const QString &sqlState, const QString &database)
{
    if (!IsSqlState(sqlState))
        return QString();
    const QString where = Quoted(database);
    const QString family = sqlState.left(2);
    if (family == QLatin1String("23"))
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" ha rechazado un dato que incumple sus reglas (un valor repetido o que falta).");
    if (family == QLatin1String("08") || sqlState == QLatin1String("57P01") || sqlState == QLatin1String("57P02")
        || sqlState == QLatin1String("57P03"))
        return QStringLiteral("Se ha perdido la conexión con el servidor de la base de datos ") + where
               + QStringLiteral(". Compruebe que el servidor sigue en marcha y vuelva a intentarlo.");
    if (sqlState == QLatin1String("40P01") || sqlState == QLatin1String("40001") || sqlState == QLatin1String("55P03")
        || sqlState == QLatin1String("57014"))
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" está ocupada por otro programa o usuario. Espere a que termine y vuelva a intentarlo.");
    if (sqlState == QLatin1String("42501"))
        return QStringLiteral("El usuario de la conexión no tiene permiso para esta operación en la base de datos ") + where
               + QStringLiteral(". Pida el permiso al administrador del servidor.");
    if (family == QLatin1String("53"))
        return QStringLiteral("Al servidor de la base de datos ") + where
               + QStringLiteral(" le faltan recursos (disco o memoria). Avise al administrador del servidor.");
    if (sqlState == QLatin1String("42P01") || sqlState == QLatin1String("42703"))
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" no tiene la estructura que el programa espera (falta una tabla o una columna). "
                                "Compruebe que es la base de datos correcta.");
    return QString();
}

} // namespace PostgresErrors
