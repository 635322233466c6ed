#include "data/PostgresServer.h"

#include "data/ConnectionString.h"
#include "data/DatabaseError.h"
#include "data/PostgresSchema.h"
#include "data/SchemaSql.h"

#include <QSqlDatabase>

using namespace SchemaSql;

namespace PostgresServer {

namespace {

const QString kMaintenanceDatabase = QStringLiteral("postgres");

QString Literal(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

bool Exists(Connection &maintenance, const QString &database)
{
    QSqlDatabase db = maintenance.Database();
    return Scalar(db, QStringLiteral("SELECT 1 FROM pg_catalog.pg_database WHERE datname = ") + Literal(database)).isValid();
}

// Empties a database this program made before; refuses any other.
void Empty(Connection &connection, const QString &database)
{
    QSqlDatabase db = connection.Database();
    const int tables =
        Scalar(db, QStringLiteral("SELECT count(*) FROM pg_catalog.pg_tables WHERE schemaname = 'public'")).toInt();
    if (tables > 0 && PostgresSchema::Version(db) == 0)
        throw DatabaseError(QStringLiteral("La base de datos «") + database
                                + QStringLiteral("» del servidor ya existe y no la creó este programa: no se borra. "
                                                 "Elija otro nombre."),
                            connection.ConnectionString());
    Exec(db, QStringLiteral("DROP SCHEMA IF EXISTS public CASCADE"));
    Exec(db, QStringLiteral("CREATE SCHEMA public"));
}

} // namespace

QString DatabaseConnectionString(const QString &server, const QString &database)
{
    ConnectionString text(server);
    text.SetValue(QStringLiteral("Database"), database);
    return text.ToString();
}

QString QuotedName(const QString &name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
}

std::unique_ptr<Connection> OpenMaintenance(const QString &server)
{
    ConnectionString text(server);
    if (text.Value(QStringLiteral("Database")).trimmed().isEmpty())
        text.SetValue(QStringLiteral("Database"), kMaintenanceDatabase);
    auto connection = std::make_unique<Connection>();
    connection->Open(text.ToString());
    return connection;
}

ConnectionPtr OpenEmptyDatabase(Connection &maintenance, const QString &server, const QString &database)
{
    const bool existed = Exists(maintenance, database);
    if (!existed) {
        // template0, so that the encoding can be chosen whatever the
        // server's default; texts compare with their own collation.
        QSqlDatabase db = maintenance.Database();
        Exec(db, QStringLiteral("CREATE DATABASE ") + QuotedName(database)
                     + QStringLiteral(" TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C'"));
    }
    auto connection = std::make_shared<Connection>(DatabaseConnectionString(server, database));
    connection->Open();
    if (existed)
        Empty(*connection, database);
    return connection;
}

void PrepareEmptyDatabase(const QString &server, const QString &database)
{
    std::unique_ptr<Connection> maintenance = OpenMaintenance(server);
    OpenEmptyDatabase(*maintenance, server, database);
}

void DropDatabase(Connection &maintenance, const QString &database)
{
    QSqlDatabase db = maintenance.Database();
    Exec(db, QStringLiteral("DROP DATABASE IF EXISTS ") + QuotedName(database));
}

void DropDatabase(const QString &server, const QString &database)
{
    std::unique_ptr<Connection> maintenance = OpenMaintenance(server);
    DropDatabase(*maintenance, database);
}

} // namespace PostgresServer
