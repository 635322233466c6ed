#pragma once

#include "data/Connection.h"

#include <QString>
#include <memory>

// The host's databases on a PostgreSQL server, as the installation builder
// makes them. `server` is a connection string of the PostgreSQL provider
// that reaches the server; its Database is the one connected to while
// other databases are made or removed ("postgres" when it names none).
namespace PostgresServer {

// `server` with its Database set to `database`.
QString DatabaseConnectionString(const QString &server, const QString &database);

// A connection to the database the others are made from.
std::unique_ptr<Connection> OpenMaintenance(const QString &server);

// `database`, empty and open for the creation routines: created (UTF-8)
// when missing; emptied when it holds an earlier installation of this
// program (its version table tells). A database that holds tables of
// anything else is refused and left as it is. Throws DatabaseError.
ConnectionPtr OpenEmptyDatabase(Connection &maintenance, const QString &server, const QString &database);
// The same with a maintenance connection of its own, closed again.
void PrepareEmptyDatabase(const QString &server, const QString &database);

// Removes `database` from the server when it exists. Throws DatabaseError
// (for instance while somebody is connected to it).
void DropDatabase(Connection &maintenance, const QString &database);
void DropDatabase(const QString &server, const QString &database);

// A database name as an SQL identifier, quoted.
QString QuotedName(const QString &name);

} // namespace PostgresServer
