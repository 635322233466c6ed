#include "data/Connection.h"

#include "data/DatabaseError.h"
#include "data/JetDialect.h"
#include "data/NestedJoins.h"
#include "data/PostgresDialect.h"
#include "data/PreparedStatements.h"
#include "data/SqlProviders.h"
#include "data/SqlStatement.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <atomic>
#include <sqlite3.h>

namespace {

using namespace SqlProviders;

const QString kCopyAlias = QStringLiteral("m182_origen");

// Qt keeps its connections by name, once per process; the program and the
// add-in it loads each carry their own copy of this code, so the name holds
// the object's address besides a counter.
QString NextQtName(const void *connection)
{
    static std::atomic<int> counter{0};
    return QStringLiteral("m182_connection_") + QString::number(quintptr(connection), 16) + QLatin1Char('_')
           + QString::number(++counter);
}

bool WantsReadOnly(const QString &mode)
{
    // ADO's Mode attribute: "Read", "ReadWrite", "Share Deny Write", ...,
    // possibly combined with "|".
    bool read = false;
    const QStringList tokens = mode.split(QLatin1Char('|'));
    for (const QString &token : tokens) {
        const QString t = token.trimmed();
        if (t.compare(QLatin1String("Read"), Qt::CaseInsensitive) == 0)
            read = true;
        else if (t.compare(QLatin1String("ReadWrite"), Qt::CaseInsensitive) == 0
                 || t.compare(QLatin1String("Write"), Qt::CaseInsensitive) == 0)
            return false;
    }
    return read;
}

struct Result
{
    Recordset rows;
    int affected = 0;
};

// A server's whole numbers come back as 64-bit integers, as SQLite's do,
// so the reader sees the same values whichever provider holds the data.
QVariant AsSQLiteReadsIt(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
        return value.isNull() ? QVariant(QMetaType(QMetaType::LongLong)) : QVariant(value.toLongLong());
    default:
        return value;
    }
}

// The database named in a failure's message, worked out only then: the
// path is resolved from the connection string, and most statements succeed.
using LazyText = std::function<QString()>;

// The rows of an executed query, or the count of rows it changed.
Result Collect(QSqlQuery &query, sqlite3 *handle, qint64 totalBefore, const QString &original, const LazyText &database)
{
    Result result;
    if (query.isSelect()) {
        const QSqlRecord record = query.record();
        QStringList names;
        names.reserve(record.count());
        for (int i = 0; i < record.count(); ++i)
            names.append(record.fieldName(i));
        QList<QVariantList> rows;
        while (query.next()) {
            QVariantList row;
            row.reserve(names.size());
            for (int i = 0; i < names.size(); ++i)
                row.append(handle ? query.value(i) : AsSQLiteReadsIt(query.value(i)));
            rows.append(std::move(row));
        }
        // A failure while stepping (a lock, a broken page) ends next() too.
        if (query.lastError().isValid())
            throw DatabaseError(StatementFailure(query.lastError(), database()), original, ErrorText(query.lastError()));
        result.rows = Recordset(names, rows);
        return result;
    }

    if (handle) {
        // sqlite3_changes keeps the count of the last INSERT/UPDATE/DELETE
        // across other statements, so a CREATE or a DELETE that matched
        // nothing would report stale numbers: count only when rows changed.
        result.affected = sqlite3_total_changes64(handle) == totalBefore ? 0 : sqlite3_changes(handle);
    } else {
        result.affected = qMax(0, query.numRowsAffected());
    }
    result.rows = Recordset(QStringList(), QList<QVariantList>());
    return result;
}

Result Run(QSqlDatabase &db, const QString &text, const QString &original, const LazyText &database)
{
    sqlite3 *handle = SQLiteHandle(db);
    const qint64 totalBefore = handle ? sqlite3_total_changes64(handle) : 0;

    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(text))
        throw DatabaseError(StatementFailure(query.lastError(), database()), original, ErrorText(query.lastError()));
    return Collect(query, handle, totalBefore, original, database);
}

} // namespace

Connection::Connection() : m_qtName(NextQtName(this))
{
}

Connection::Connection(const QString &connectionString) : m_connectionString(connectionString), m_qtName(NextQtName(this))
{
}

Connection::~Connection()
{
    try {
        Close();
    } catch (...) {
        // A destructor must not throw; Close already released the handle.
    }
}

QString Connection::BaseFolder() const
{
    return m_baseFolder.isEmpty() ? QDir::currentPath() : m_baseFolder;
}

QString Connection::ResolvePath(const QString &path, const QString &baseFolder)
{
    if (path.isEmpty())
        return path;
    if (QDir::isAbsolutePath(path))
        return QDir::cleanPath(path);
    const QString base = baseFolder.isEmpty() ? QDir::currentPath() : baseFolder;
    return QDir::cleanPath(QDir(base).absoluteFilePath(path));
}

QString Connection::ResolvePath(const QString &path) const
{
    return ResolvePath(path, m_baseFolder);
}

QString Connection::DataSourcePath() const
{
    if (KindOf(Property(QStringLiteral("Provider"))) != Kind::SQLite)
        return QString();
    return ResolvePath(Property(QStringLiteral("Data Source")));
}

void Connection::SetConnectionString(const QString &text)
{
    // Takes effect at the next Open, as the host's connections do.
    m_connectionString = ::ConnectionString(text);
}

QString Connection::Property(const QString &name) const
{
    return m_connectionString.Value(name);
}

void Connection::SetProperty(const QString &name, const QString &value)
{
    m_connectionString.SetValue(name, value);
}

int Connection::State() const
{
    return m_open ? adStateOpen : adStateClosed;
}

QSqlDatabase Connection::Database() const
{
    if (!m_open)
        return QSqlDatabase();
    return QSqlDatabase::database(m_qtName, false);
}

void Connection::Open(const QString &connectionString)
{
    if (m_open) {
        throw DatabaseError(QStringLiteral("La conexión ya está abierta."), ConnectionString());
    }
    if (!connectionString.isEmpty())
        SetConnectionString(connectionString);
    OpenDatabase(false);
}

std::shared_ptr<Connection> Connection::CreateSQLite(const QString &path, const QString &provider)
{
    auto connection = std::make_shared<Connection>();
    ::ConnectionString text;
    text.SetValue(QStringLiteral("Provider"), provider);
    text.SetValue(QStringLiteral("Data Source"), path);
    connection->SetConnectionString(text.ToString());
    connection->OpenDatabase(true);
    return connection;
}

void Connection::OpenDatabase(bool mayCreate)
{
    const QString provider = Property(QStringLiteral("Provider"));
    switch (KindOf(provider)) {
    case Kind::SQLite: {
        const QString source = Property(QStringLiteral("Data Source")).trimmed();
        if (source.isEmpty())
            throw DatabaseError(QStringLiteral("La cadena de conexión no indica la base de datos (Data Source)."),
                                ConnectionString());
        SQLiteOpen how;
        how.path = ResolvePath(source);
        how.mayCreate = mayCreate;
        how.readOnly = !mayCreate && WantsReadOnly(Property(QStringLiteral("Mode")));
        how.busyTimeout = m_busyTimeout;
        OpenSQLite(m_qtName, how, ConnectionString());
        m_open = true;
        m_sqlite = true;
        return;
    }
    case Kind::PostgreSQL:
        if (mayCreate)
            break;
        OpenPostgreSQL(m_qtName, m_connectionString);
        m_open = true;
        m_sqlite = false;
        return;
    case Kind::Unknown:
        break;
    }
    throw DatabaseError(QStringLiteral("Proveedor desconocido: ")
                            + (provider.trimmed().isEmpty() ? QStringLiteral("la cadena de conexión no indica ninguno")
                                                            : provider),
                        ConnectionString());
}

void Connection::ForgetPrepared()
{
    m_prepared.reset();
}

void Connection::Discard()
{
    ForgetPrepared();
    {
        PendingConnection release(m_qtName);
    }
    m_open = false;
    m_sqlite = false;
    m_inTransaction = false;
}

void Connection::Close()
{
    if (!m_open)
        return;
    if (m_inTransaction) {
        // Closing with work pending drops it, as ADO does.
        QSqlDatabase db = Database();
        db.rollback();
    }
    Discard();
}

void Connection::Notify(const QString &statement) const
{
    if (m_observer)
        m_observer(*this, statement);
}

Recordset Connection::Execute(const SqlStatement &statement)
{
    if (m_observer)
        Notify(statement.ToString());
    if (!m_open || !m_sqlite)
        return Send(statement.ToString());

    m_recordsAffected = 0;
    if (!m_prepared)
        m_prepared = std::make_unique<PreparedStatements>(SQLiteHandle(Database()));
    const QString &shape = statement.Shape();
    try {
        const QString sql = m_prepared->Has(shape)
                                ? QString()
                                : JetDialect::ReplaceBooleanLiterals(JetDialect::FlattenNestedJoins(shape));
        PreparedStatements::Outcome outcome = m_prepared->Run(shape, sql, statement.Values());
        m_recordsAffected = outcome.affected;
        return outcome.rows;
    } catch (const PreparedStatements::Failure &failure) {
        throw DatabaseError(StatementFailure(failure.error, DatabaseName()), statement.ToString(), ErrorText(failure.error));
    }
}

Recordset Connection::Execute(const QString &sql)
{
    Notify(sql);
    return Send(sql);
}

Recordset Connection::Send(const QString &sql)
{
    m_recordsAffected = 0;
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), sql);

    QSqlDatabase db = Database();
    const LazyText database = [this] { return DatabaseName(); };
    if (!m_sqlite) {
        Result result = Run(db, PostgresDialect::Adapt(sql), sql, database);
        m_recordsAffected = result.affected;
        return result.rows;
    }

    if (const auto copy = JetDialect::ParseCrossDatabaseCopy(sql)) {
        const QString source = ResolvePath(copy->sourceFile);
        const QFileInfo info(source);
        if (!info.isFile())
            throw DatabaseError(QStringLiteral("No existe la base de datos «%1».").arg(source), sql);
        Run(db, JetDialect::AttachStatement(FileUri(source, true), kCopyAlias), sql, database);
        int copied = 0;
        try {
            // The target keeps the source's column definitions; without
            // them CREATE TABLE AS would drop the text collation.
            const Result definition = Run(db, JetDialect::SourceDefinitionQuery(*copy, kCopyAlias), sql, database);
            const auto statements = definition.rows.Rows().isEmpty()
                                        ? std::nullopt
                                        : JetDialect::CopyWithDefinition(*copy, kCopyAlias,
                                                                         definition.rows.Rows().at(0).value(0).toString());
            if (statements) {
                // Both or neither: a failed fill leaves no empty table.
                Run(db, QStringLiteral("SAVEPOINT m182_copia"), sql, database);
                try {
                    for (const QString &statement : *statements)
                        Run(db, statement, sql, database);
                } catch (...) {
                    QSqlQuery(db).exec(QStringLiteral("ROLLBACK TO m182_copia"));
                    QSqlQuery(db).exec(QStringLiteral("RELEASE m182_copia"));
                    throw;
                }
                Run(db, QStringLiteral("RELEASE m182_copia"), sql, database);
            } else {
                Run(db, JetDialect::CreateTableAsStatement(*copy, kCopyAlias), sql, database);
            }
            const Result count = Run(db, QStringLiteral("SELECT COUNT(*) FROM [") + copy->targetTable + QStringLiteral("]"),
                                     sql, database);
            copied = count.rows.Rows().value(0).value(0).toInt();
        } catch (...) {
            QSqlQuery(db).exec(JetDialect::DetachStatement(kCopyAlias));
            throw;
        }
        Run(db, JetDialect::DetachStatement(kCopyAlias), sql, database);
        m_recordsAffected = copied;
        return Recordset(QStringList(), QList<QVariantList>());
    }

    Result result = Run(db, JetDialect::ReplaceBooleanLiterals(JetDialect::FlattenNestedJoins(sql)), sql, database);
    m_recordsAffected = result.affected;
    return result.rows;
}

void Connection::BeginTrans()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), QStringLiteral("BEGIN"));
    if (m_inTransaction) {
        throw DatabaseError(QStringLiteral("Ya hay una transacción abierta en esta conexión."), QStringLiteral("BEGIN"));
    }
    QSqlDatabase db = Database();
    const QString database = DatabaseName();
    if (!db.transaction())
        throw DatabaseError(StatementFailure(db.lastError(), database), QStringLiteral("BEGIN"), ErrorText(db.lastError()));
    m_inTransaction = true;
}

void Connection::CommitTrans()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), QStringLiteral("COMMIT"));
    if (!m_inTransaction)
        throw DatabaseError(QStringLiteral("No hay ninguna transacción abierta que confirmar."), QStringLiteral("COMMIT"));
    QSqlDatabase db = Database();
    const QString database = DatabaseName();
    if (!db.commit())
        throw DatabaseError(StatementFailure(db.lastError(), database), QStringLiteral("COMMIT"), ErrorText(db.lastError()));
    m_inTransaction = false;
}

void Connection::RollbackTrans()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), QStringLiteral("ROLLBACK"));
    if (!m_inTransaction)
        throw DatabaseError(QStringLiteral("No hay ninguna transacción abierta que deshacer."), QStringLiteral("ROLLBACK"));
    QSqlDatabase db = Database();
    const QString database = DatabaseName();
    const bool ok = db.rollback();
    m_inTransaction = false;
    if (!ok)
        throw DatabaseError(StatementFailure(db.lastError(), database), QStringLiteral("ROLLBACK"),
                            ErrorText(db.lastError()));
}

QString Connection::DatabaseName() const
{
    if (m_sqlite || KindOf(Property(QStringLiteral("Provider"))) == Kind::SQLite)
        return DataSourcePath();
    return Property(QStringLiteral("Database"));
}

Connection::Transaction::Transaction(Connection &connection, bool wanted) : m_connection(connection)
{
    if (!wanted || connection.InTransaction())
        return;
    connection.BeginTrans();
    m_active = true;
}

Connection::Transaction::~Transaction()
{
    if (!m_active || !m_connection.InTransaction())
        return;
    try {
        m_connection.RollbackTrans();
    } catch (...) {
        // A destructor must not throw; the connection is closed or broken.
    }
}

void Connection::Transaction::Commit()
{
    if (!m_active)
        return;
    m_connection.CommitTrans();
    m_active = false;
}
