#pragma once

#include <QString>

class QSqlError;

// Spanish sentences for what goes wrong with a PostgreSQL server, chosen
// from the server's error code where a statement failed, and from the
// client library's words (English or Spanish) where no connection came
// about, since a failed connection carries no code.
namespace PostgresErrors {

struct Server
{
    QString host; // "" means the local machine
    QString port; // "" means the default
    QString database;
    QString user;
};

// Why the connection could not be opened: the server does not answer, it
// refuses the user or password, the database does not exist, or else a
// general sentence. Each says what to check.
QString ConnectFailure(const QSqlError &error, const Server &server);

// True for a five-character SQLSTATE, the server's error codes (SQLite's
// codes are plain numbers of at most four digits).
bool IsSqlState(const QString &code);

// A sentence for a statement that failed on `database` with a SQLSTATE
// that says something the user can act on; "" for any other code.
QString StatementFailure(const QString &sqlState, const QString &database);

} // namespace PostgresErrors
