#include "data/Connection.h"

#include "data/DatabaseError.h"
#include "data/JetDialect.h"
#include "data/SchemaVersion.h"
#include "data/SpanishCollation.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUrl>
#include <atomic>
#include <sqlite3.h>

namespace {

const QString kQtSQLite = QStringLiteral("QSQLITE");
const QString kQtPostgreSQL = QStringLiteral("QPSQL");
const QString kCopyAlias = QStringLiteral("m182_origen");

QString &BaseFolderSetting()
{
    static QString folder;
    return folder;
}

int &BusyTimeoutSetting()
{
    static int milliseconds = 1000;
    return milliseconds;
}

Connection::Observer &GlobalObserver()
{
    static Connection::Observer observer;
    return observer;
}

QString NextQtName()
{
    static std::atomic<int> counter{0};
    return QStringLiteral("m182_connection_%1").arg(++counter);
}

enum class ProviderKind { SQLite, PostgreSQL, Unknown };

ProviderKind KindOf(const QString &provider)
{
    const QString p = provider.trimmed();
    if (p.compare(QLatin1String("Microsoft.Jet.OLEDB.4.0"), Qt::CaseInsensitive) == 0
        || p.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
        return ProviderKind::SQLite;
    if (p.compare(QLatin1String("PostgreSQL"), Qt::CaseInsensitive) == 0)
        return ProviderKind::PostgreSQL;
    return ProviderKind::Unknown;
}

// The database's own words where it gave some, else Qt's.
QString ErrorText(const QSqlError &error)
{
    const QString db = error.databaseText().trimmed();
    return db.isEmpty() ? error.text().trimmed() : db;
}

// SQLITE_BUSY or SQLITE_LOCKED (with any extended code).
bool IsLockError(const QSqlError &error)
{
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    return ok && ((code & 0xff) == SQLITE_BUSY || (code & 0xff) == SQLITE_LOCKED);
}

// An SQLite URI for a file: opening through "mode=rw"/"mode=ro" can never
// create the file, whatever happens between our existence check and the open.
QString FileUri(const QString &path, bool readOnly)
{
    return QStringLiteral("file:") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"))
        + (readOnly ? QStringLiteral("?mode=ro") : QStringLiteral("?mode=rw"));
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

sqlite3 *SQLiteHandle(const QSqlDatabase &db)
{
    if (!db.driver())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

struct Result
{
    Recordset rows;
    int affected = 0;
};

Result Run(QSqlDatabase &db, const QString &text, const QString &original)
{
    sqlite3 *handle = SQLiteHandle(db);
    const qint64 totalBefore = handle ? sqlite3_total_changes64(handle) : 0;

    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(text))
        throw DatabaseError(ErrorText(query.lastError()), original);

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
                row.append(query.value(i));
            rows.append(std::move(row));
        }
        // A failure while stepping (a lock, a broken page) ends next() too.
        if (query.lastError().isValid())
            throw DatabaseError(ErrorText(query.lastError()), original);
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

} // namespace

Connection::Connection()
    : m_qtName(NextQtName())
{
}

Connection::Connection(const QString &connectionString)
    : m_connectionString(connectionString)
    , m_qtName(NextQtName())
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

void Connection::SetBaseFolder(const QString &folder)
{
    BaseFolderSetting() = folder;
}

QString Connection::BaseFolder()
{
    const QString &folder = BaseFolderSetting();
    return folder.isEmpty() ? QDir::currentPath() : folder;
}

QString Connection::ResolvePath(const QString &path)
{
    if (path.isEmpty())
        return path;
    if (QDir::isAbsolutePath(path))
        return QDir::cleanPath(path);
    return QDir::cleanPath(QDir(BaseFolder()).absoluteFilePath(path));
}

QString Connection::DataSourcePath() const
{
    if (KindOf(Property(QStringLiteral("Provider"))) != ProviderKind::SQLite)
        return QString();
    return ResolvePath(Property(QStringLiteral("Data Source")));
}

void Connection::SetBusyTimeout(int milliseconds)
{
    BusyTimeoutSetting() = qMax(0, milliseconds);
}

int Connection::BusyTimeout()
{
    return BusyTimeoutSetting();
}

void Connection::SetGlobalObserver(Observer observer)
{
    GlobalObserver() = std::move(observer);
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
    case ProviderKind::SQLite:
        OpenSQLite(mayCreate);
        return;
    case ProviderKind::PostgreSQL:
        if (mayCreate)
            break;
        OpenPostgreSQL();
        return;
    case ProviderKind::Unknown:
        break;
    }
    throw DatabaseError(QStringLiteral("Proveedor desconocido: %1")
                            .arg(provider.trimmed().isEmpty()
                                     ? QStringLiteral("la cadena de conexión no indica ninguno")
                                     : provider),
                        ConnectionString());
}

void Connection::OpenSQLite(bool mayCreate)
{
    const QString connectionText = ConnectionString();
    const QString source = Property(QStringLiteral("Data Source")).trimmed();
    if (source.isEmpty()) {
        throw DatabaseError(QStringLiteral("La cadena de conexión no indica la base de datos (Data Source)."),
                            connectionText);
    }
    const QString path = ResolvePath(source);
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        throw DatabaseError(QStringLiteral("«%1» no es un archivo de base de datos.").arg(path), connectionText);
    }
    if (!info.exists()) {
        if (!mayCreate)
            throw DatabaseError(QStringLiteral("No existe la base de datos «%1».").arg(path), connectionText);
        if (!info.absoluteDir().exists()) {
            throw DatabaseError(QStringLiteral("No existe la carpeta «%1» donde crear la base de datos.")
                                    .arg(QDir::toNativeSeparators(info.absolutePath())),
                                connectionText);
        }
    }

    const bool readOnly = !mayCreate && WantsReadOnly(Property(QStringLiteral("Mode")));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(kQtSQLite, m_qtName);
        if (!db.isValid()) {
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_qtName);
            throw DatabaseError(QStringLiteral("El controlador de SQLite (QSQLITE) de Qt no está instalado."),
                                connectionText);
        }
        QStringList options;
        options << QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeout());
        if (mayCreate) {
            db.setDatabaseName(path);
        } else {
            options << QStringLiteral("QSQLITE_OPEN_URI");
            if (readOnly)
                options << QStringLiteral("QSQLITE_OPEN_READONLY");
            db.setDatabaseName(FileUri(path, readOnly));
        }
        db.setConnectOptions(options.join(QLatin1Char(';')));
        if (!db.open()) {
            const QString error = ErrorText(db.lastError());
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_qtName);
            throw DatabaseError(QStringLiteral("No se puede abrir la base de datos «%1»: %2").arg(path, error),
                                connectionText);
        }
    }
    m_open = true;
    m_sqlite = true;

    // From here on a failure must leave the connection closed.
    try {
        QSqlDatabase db = Database();
        sqlite3 *handle = SQLiteHandle(db);
        if (!handle || RegisterSpanishCollation(handle) != SQLITE_OK) {
            throw DatabaseError(QStringLiteral("No se puede preparar la comparación de textos en «%1».").arg(path),
                                connectionText);
        }
        // SQLite opens anything; the first read tells a database from
        // another kind of file.
        QSqlQuery probe(db);
        if (!probe.exec(QStringLiteral("PRAGMA schema_version"))) {
            const QSqlError error = probe.lastError();
            if (IsLockError(error)) {
                throw DatabaseError(QStringLiteral("La base de datos «%1» está bloqueada por otra conexión: %2")
                                        .arg(path, ErrorText(error)),
                                    connectionText);
            }
            throw DatabaseError(QStringLiteral("«%1» no es una base de datos válida: %2").arg(path, ErrorText(error)),
                                connectionText);
        }
        probe.finish();
        int version = 0;
        if (probe.exec(QStringLiteral("PRAGMA user_version")) && probe.next())
            version = probe.value(0).toInt();
        probe.finish();
        if (version > kSchemaVersion) {
            throw DatabaseError(QStringLiteral("La base de datos «%1» fue creada por una versión más reciente del "
                                               "programa (estructura %2; esta versión admite hasta la %3). "
                                               "Actualice el programa para abrirla.")
                                    .arg(path)
                                    .arg(version)
                                    .arg(kSchemaVersion),
                                connectionText);
        }
        if (!probe.exec(QStringLiteral("PRAGMA foreign_keys=ON"))) {
            throw DatabaseError(ErrorText(probe.lastError()), QStringLiteral("PRAGMA foreign_keys=ON"));
        }
    } catch (...) {
        Discard();
        throw;
    }
}

void Connection::OpenPostgreSQL()
{
    const QString connectionText = ConnectionString();
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(kQtPostgreSQL, m_qtName);
        if (!db.isValid()) {
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_qtName);
            throw DatabaseError(QStringLiteral("El controlador de PostgreSQL (QPSQL) de Qt no está instalado."),
                                connectionText);
        }
        const QString host = Property(QStringLiteral("Host"));
        const QString port = Property(QStringLiteral("Port"));
        const QString database = Property(QStringLiteral("Database"));
        db.setHostName(host);
        if (!port.isEmpty()) {
            bool ok = false;
            const int number = port.toInt(&ok);
            if (!ok) {
                db = QSqlDatabase();
                QSqlDatabase::removeDatabase(m_qtName);
                throw DatabaseError(QStringLiteral("El puerto «%1» no es un número.").arg(port), connectionText);
            }
            db.setPort(number);
        }
        db.setDatabaseName(database);
        db.setUserName(Property(QStringLiteral("User ID")));
        db.setPassword(Property(QStringLiteral("Password")));
        if (!db.open()) {
            const QString error = ErrorText(db.lastError());
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_qtName);
            throw DatabaseError(QStringLiteral("No se puede conectar con la base de datos «%1» del servidor «%2»: %3")
                                    .arg(database, host.isEmpty() ? QStringLiteral("localhost") : host, error),
                                connectionText);
        }
    }
    m_open = true;
    m_sqlite = false;
}

void Connection::Discard()
{
    {
        QSqlDatabase db = QSqlDatabase::database(m_qtName, false);
        if (db.isValid())
            db.close();
    }
    if (QSqlDatabase::contains(m_qtName))
        QSqlDatabase::removeDatabase(m_qtName);
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
    if (const Observer &global = GlobalObserver())
        global(*this, statement);
}

Recordset Connection::Execute(const QString &sql)
{
    Notify(sql);
    m_recordsAffected = 0;
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), sql);

    QSqlDatabase db = Database();
    if (!m_sqlite) {
        Result result = Run(db, sql, sql);
        m_recordsAffected = result.affected;
        return result.rows;
    }

    if (const auto copy = JetDialect::ParseCrossDatabaseCopy(sql)) {
        const QString source = ResolvePath(copy->sourceFile);
        const QFileInfo info(source);
        if (!info.isFile())
            throw DatabaseError(QStringLiteral("No existe la base de datos «%1».").arg(source), sql);
        Run(db, JetDialect::AttachStatement(FileUri(source, true), kCopyAlias), sql);
        int copied = 0;
        try {
            Run(db, JetDialect::CreateTableAsStatement(*copy, kCopyAlias), sql);
            const Result count = Run(db, QStringLiteral("SELECT COUNT(*) FROM [%1]").arg(copy->targetTable), sql);
            copied = count.rows.Rows().value(0).value(0).toInt();
        } catch (...) {
            QSqlQuery(db).exec(JetDialect::DetachStatement(kCopyAlias));
            throw;
        }
        Run(db, JetDialect::DetachStatement(kCopyAlias), sql);
        m_recordsAffected = copied;
        return Recordset(QStringList(), QList<QVariantList>());
    }

    Result result = Run(db, JetDialect::ReplaceBooleanLiterals(sql), sql);
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
    if (!db.transaction())
        throw DatabaseError(ErrorText(db.lastError()), QStringLiteral("BEGIN"));
    m_inTransaction = true;
}

void Connection::CommitTrans()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), QStringLiteral("COMMIT"));
    if (!m_inTransaction)
        throw DatabaseError(QStringLiteral("No hay ninguna transacción abierta que confirmar."), QStringLiteral("COMMIT"));
    QSqlDatabase db = Database();
    if (!db.commit())
        throw DatabaseError(ErrorText(db.lastError()), QStringLiteral("COMMIT"));
    m_inTransaction = false;
}

void Connection::RollbackTrans()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La conexión está cerrada."), QStringLiteral("ROLLBACK"));
    if (!m_inTransaction)
        throw DatabaseError(QStringLiteral("No hay ninguna transacción abierta que deshacer."), QStringLiteral("ROLLBACK"));
    QSqlDatabase db = Database();
    const bool ok = db.rollback();
    m_inTransaction = false;
    if (!ok)
        throw DatabaseError(ErrorText(db.lastError()), QStringLiteral("ROLLBACK"));
}
