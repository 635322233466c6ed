#pragma once

#include "data/ConnectionString.h"

#include <QSqlDatabase>
#include <QString>

class QSqlError;
struct sqlite3;

// The two database engines behind Connection: how each opens a Qt
// connection and how its errors read in Spanish.
namespace SqlProviders {

enum class Kind { SQLite, PostgreSQL, Unknown };
Kind KindOf(const QString &provider);

// Removes the Qt connection `name` when the scope is left without Keep():
// every failed open leaves nothing registered behind.
class PendingConnection
{
public:
    explicit PendingConnection(const QString &name) : m_name(name) {}
    ~PendingConnection();
    PendingConnection(const PendingConnection &) = delete;
    PendingConnection &operator=(const PendingConnection &) = delete;
    void Keep() { m_keep = true; }

private:
    QString m_name;
    bool m_keep = false;
};

struct SQLiteOpen
{
    QString path; // absolute
    bool mayCreate = false;
    bool readOnly = false;
    int busyTimeout = 1000;
};

// Opens the Qt connection `name` on an SQLite file: the Spanish collation
// registered, foreign keys on, a non-database or a newer schema refused.
// Throws DatabaseError naming the file; nothing stays registered on failure.
void OpenSQLite(const QString &name, const SQLiteOpen &how, const QString &connectionText);

// Opens the Qt connection `name` on a PostgreSQL server (Host, Port,
// Database, User ID, Password). Throws DatabaseError naming the server.
void OpenPostgreSQL(const QString &name, const ConnectionString &text);

// The database's own words where it gave some, else Qt's.
QString ErrorText(const QSqlError &error);

// A Spanish sentence for a failed statement on `database` (a file or a
// server's database), chosen from the engine's error code.
QString StatementFailure(const QSqlError &error, const QString &database);

// An SQLite URI that can never create the file.
QString FileUri(const QString &path, bool readOnly);

// The engine handle of an open SQLite Qt connection (null otherwise).
sqlite3 *SQLiteHandle(const QSqlDatabase &db);

} // namespace SqlProviders
