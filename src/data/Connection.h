#pragma once

#include "data/ConnectionString.h"
#include "data/Recordset.h"

#include <QString>
#include <functional>
#include <memory>

class QSqlDatabase;
class SqlStatement;

// The ADO connection subset the add-in uses, over QtSql.
//
// Providers (the "Provider" key of the connection string):
//   Microsoft.Jet.OLEDB.4.0 and SQLite -> an SQLite 3 file at "Data Source";
//   PostgreSQL -> Host, Port, Database, User ID, Password.
// Opening never creates a database: a missing file is an error. Creation
// code uses Connection::CreateSQLite. "Mode=Read" (as in ADO) opens an SQLite
// file read-only. A file whose PRAGMA user_version is above kSchemaVersion is
// refused. Every SQLite connection has foreign keys on and the collation
// M182_TEXT_COLLATION registered.
//
// Every statement text that Execute receives is reported, before it runs,
// to the connection's observer (tests assert the exact texts; an observer
// that throws stops the statement, which is how tests inject failures).
class Connection
{
public:
    enum State { adStateClosed = 0, adStateOpen = 1 };
    using Observer = std::function<void(const Connection &, const QString &statement)>;

    Connection();
    explicit Connection(const QString &connectionString);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // Opens with the given string, or with the current one when empty.
    // Throws DatabaseError (message names the file / server) on failure, and
    // when the connection is already open (as ADO does).
    void Open(const QString &connectionString = QString());
    void Close();
    int State() const;

    QString ConnectionString() const { return m_connectionString.ToString(); }
    // Takes effect at the next Open (also when set while open).
    void SetConnectionString(const QString &text);

    // A connection-string attribute by name ("Data Source", "Provider", ...).
    QString Property(const QString &name) const;
    void SetProperty(const QString &name, const QString &value);

    // Runs one statement. Rows come back for a query, an empty recordset
    // otherwise. Throws DatabaseError carrying the database's message and the
    // statement. Jet forms the add-in relies on are translated first.
    Recordset Execute(const QString &sql);
    // The same for a statement written with its values apart: its text
    // (SqlStatement::ToString) is what the observer and messages see; on
    // SQLite its shape is prepared once per connection and only bound
    // afterwards.
    Recordset Execute(const SqlStatement &statement);
    // Rows changed by the last Execute (0 for a query or a CREATE; the rows
    // copied for a cross-database SELECT ... INTO).
    int RecordsAffected() const { return m_recordsAffected; }

    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();

    // One transaction around a batch of writes: committed by Commit(),
    // rolled back when the scope is left without it (an exception). Inside a
    // transaction the connection already runs, or when `wanted` is false, it
    // does nothing. Around many reads it is one snapshot, and spares each
    // statement taking and releasing the file's lock.
    class Transaction
    {
    public:
        explicit Transaction(Connection &connection, bool wanted = true);
        ~Transaction();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;
        void Commit();

    private:
        Connection &m_connection;
        bool m_active = false;
    };

    void SetObserver(Observer observer) { m_observer = std::move(observer); }
    const Observer &GetObserver() const { return m_observer; }

    // Creates (or opens, if present) an SQLite file for the creation routines:
    // the one place where a database file may come into being. The folder
    // must exist. The connection string is "Provider=<provider>;Data Source=<path>".
    static std::shared_ptr<Connection> CreateSQLite(const QString &path, const QString &provider = QStringLiteral("SQLite"));

    // A relative "Data Source" (and the file of a cross-database copy) is
    // taken from this folder; by default the process's current folder. The
    // connection string keeps the path as written.
    void SetBaseFolder(const QString &folder) { m_baseFolder = folder; }
    QString BaseFolder() const;
    // The absolute, cleaned path that a "Data Source" value names.
    QString ResolvePath(const QString &path) const;
    static QString ResolvePath(const QString &path, const QString &baseFolder);
    // The file this connection's "Data Source" names, resolved ("" for a
    // server connection).
    QString DataSourcePath() const;

    // How long a statement waits for another connection's lock before it
    // fails with "database is locked" (SQLite providers; milliseconds; takes
    // effect at the next Open).
    void SetBusyTimeout(int milliseconds) { m_busyTimeout = qMax(0, milliseconds); }
    int BusyTimeout() const { return m_busyTimeout; }

    // True between BeginTrans and CommitTrans/RollbackTrans.
    bool InTransaction() const { return m_inTransaction; }

    // The Qt connection (valid while open); for the schema routines.
    QSqlDatabase Database() const;

private:
    void OpenDatabase(bool mayCreate);
    void Discard();
    // The file or server database named in messages.
    QString DatabaseName() const;
    void Notify(const QString &statement) const;
    // Execute without telling the observer.
    Recordset Send(const QString &sql);
    // Drops the prepared shapes; before the Qt connection goes.
    void ForgetPrepared();

    ::ConnectionString m_connectionString;
    QString m_qtName; // QSqlDatabase connection name, unique per object
    bool m_open = false;
    bool m_sqlite = false;
    bool m_inTransaction = false;
    int m_recordsAffected = 0;
    int m_busyTimeout = 1000;
    QString m_baseFolder;
    Observer m_observer;
    // Statements prepared by shape (SQLite only), while open.
    std::unique_ptr<class PreparedStatements> m_prepared;
};

using ConnectionPtr = std::shared_ptr<Connection>;
