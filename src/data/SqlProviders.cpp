#include "data/SqlProviders.h"

#include "data/DatabaseError.h"
#include "data/PostgresErrors.h"
#include "data/PostgresSchema.h"
#include "data/SchemaVersion.h"
#include "data/SpanishCollation.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>
#include <sqlite3.h>

namespace SqlProviders {

namespace {

const QString kQtSQLite = QStringLiteral("QSQLITE");
const QString kQtPostgreSQL = QStringLiteral("QPSQL");

int SQLiteCode(const QSqlError &error)
{
    if (PostgresErrors::IsSqlState(error.nativeErrorCode()))
        return -1;
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    return ok ? (code & 0xff) : -1;
}

bool IsLockError(const QSqlError &error)
{
    const int code = SQLiteCode(error);
    return code == SQLITE_BUSY || code == SQLITE_LOCKED;
}

} // namespace

PendingConnection::~PendingConnection()
{
    if (m_keep)
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(m_name, false);
        if (db.isValid())
            db.close();
    }
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
}

Kind KindOf(const QString &provider)
{
    const QString p = provider.trimmed();
    if (p.compare(QLatin1String("Microsoft.Jet.OLEDB.4.0"), Qt::CaseInsensitive) == 0
        || p.compare(QLatin1String("SQLite"), Qt::CaseInsensitive) == 0)
        return Kind::SQLite;
    if (p.compare(QLatin1String("PostgreSQL"), Qt::CaseInsensitive) == 0)
        return Kind::PostgreSQL;
    return Kind::Unknown;
}

QString ErrorText(const QSqlError &error)
{
    const QString db = error.databaseText().trimmed();
    return db.isEmpty() ? error.text().trimmed() : db;
}

QString StatementFailure(const QSqlError &error, const QString &database)
{
    const QString server = PostgresErrors::StatementFailure(error.nativeErrorCode(), database);
    if (!server.isEmpty())
        return server;
    const QString where = QStringLiteral("«") + database + QStringLiteral("»");
    switch (SQLiteCode(error)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" está ocupada por otro programa o usuario. Espere a que termine y vuelva a intentarlo.");
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return QStringLiteral("No se puede escribir en la base de datos ") + where
               + QStringLiteral(": está abierta solo para lectura o el archivo está protegido. "
                                "Compruebe los permisos del archivo.");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" está dañada. Restaure una copia de seguridad.");
    case SQLITE_FULL:
        return QStringLiteral("No queda espacio en el disco para la base de datos ") + where
               + QStringLiteral(". Libere espacio y vuelva a intentarlo.");
    case SQLITE_CONSTRAINT:
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" ha rechazado un dato que incumple sus reglas (un valor repetido o que falta).");
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
        return QStringLiteral("No se puede leer o escribir la base de datos ") + where
               + QStringLiteral(". Compruebe que el disco o la unidad de red están disponibles.");
    default:
        break;
    }
    const QString text = ErrorText(error);
    if (text.startsWith(QLatin1String("no such table")) || text.startsWith(QLatin1String("no such column"))
        || text.contains(QLatin1String("does not exist")))
        return QStringLiteral("La base de datos ") + where
               + QStringLiteral(" no tiene la estructura que el programa espera (falta una tabla o una columna). "
                                "Compruebe que es la base de datos correcta.");
    return QStringLiteral("La base de datos ") + where
           + QStringLiteral(" no ha podido ejecutar una instrucción del programa.");
}

QString FileUri(const QString &path, bool readOnly)
{
    return QStringLiteral("file:") + QString::fromLatin1(QUrl::toPercentEncoding(path, "/"))
           + (readOnly ? QStringLiteral("?mode=ro") : QStringLiteral("?mode=rw"));
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

void OpenSQLite(const QString &name, const SQLiteOpen &how, const QString &connectionText)
{
    const QString &path = how.path;
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        throw DatabaseError(QStringLiteral("«") + path + QStringLiteral("» no es un archivo de base de datos."),
                            connectionText);
    if (!info.exists()) {
        if (!how.mayCreate)
            throw DatabaseError(QStringLiteral("No existe la base de datos «") + path + QStringLiteral("»."),
                                connectionText);
        if (!info.absoluteDir().exists())
            throw DatabaseError(QStringLiteral("No existe la carpeta «") + QDir::toNativeSeparators(info.absolutePath())
                                    + QStringLiteral("» donde crear la base de datos."),
                                connectionText);
    }

    PendingConnection pending(name);
    QSqlDatabase db = QSqlDatabase::addDatabase(kQtSQLite, name);
    if (!db.isValid())
        throw DatabaseError(QStringLiteral("El controlador de SQLite (QSQLITE) de Qt no está instalado."), connectionText);
    QStringList options{QStringLiteral("QSQLITE_BUSY_TIMEOUT=") + QString::number(how.busyTimeout)};
    if (how.mayCreate) {
        db.setDatabaseName(path);
    } else {
        options << QStringLiteral("QSQLITE_OPEN_URI");
        if (how.readOnly)
            options << QStringLiteral("QSQLITE_OPEN_READONLY");
        db.setDatabaseName(FileUri(path, how.readOnly));
    }
    db.setConnectOptions(options.join(QLatin1Char(';')));
    if (!db.open())
        throw DatabaseError(QStringLiteral("No se puede abrir la base de datos «") + path
                                + QStringLiteral("». Compruebe que el archivo existe y que tiene permiso para usarlo."),
                            connectionText, ErrorText(db.lastError()));

    sqlite3 *handle = SQLiteHandle(db);
    if (!handle || RegisterSpanishCollation(handle) != SQLITE_OK)
        throw DatabaseError(QStringLiteral("No se puede preparar la comparación de textos en «") + path
                                + QStringLiteral("»."),
                            connectionText);
    // SQLite opens anything; the first read tells a database from another
    // kind of file.
    QSqlQuery probe(db);
    if (!probe.exec(QStringLiteral("PRAGMA schema_version"))) {
        const QSqlError error = probe.lastError();
        if (IsLockError(error))
            throw DatabaseError(QStringLiteral("La base de datos «") + path
                                    + QStringLiteral("» está bloqueada por otra conexión. Espere a que termine y "
                                                     "vuelva a intentarlo."),
                                connectionText, ErrorText(error));
        throw DatabaseError(QStringLiteral("«") + path
                                + QStringLiteral("» no es una base de datos válida o está dañada. Compruebe que "
                                                 "ha indicado el archivo correcto."),
                            connectionText, ErrorText(error));
    }
    probe.finish();
    int version = 0;
    if (probe.exec(QStringLiteral("PRAGMA user_version")) && probe.next())
        version = probe.value(0).toInt();
    probe.finish();
    if (version > kSchemaVersion)
        throw DatabaseError(QStringLiteral("La base de datos «") + path
                                + QStringLiteral("» fue creada por una versión más reciente del programa (estructura ")
                                + QString::number(version) + QStringLiteral("; esta versión admite hasta la ")
                                + QString::number(kSchemaVersion) + QStringLiteral("). Actualice el programa para abrirla."),
                            connectionText);
    if (!probe.exec(QStringLiteral("PRAGMA foreign_keys=ON")))
        throw DatabaseError(StatementFailure(probe.lastError(), path), QStringLiteral("PRAGMA foreign_keys=ON"),
                            ErrorText(probe.lastError()));
    pending.Keep();
}

void OpenPostgreSQL(const QString &name, const ConnectionString &text)
{
    const QString connectionText = text.ToString();
    PendingConnection pending(name);
    QSqlDatabase db = QSqlDatabase::addDatabase(kQtPostgreSQL, name);
    if (!db.isValid())
        throw DatabaseError(QStringLiteral("El controlador de PostgreSQL (QPSQL) de Qt no está instalado."), connectionText);
    const QString host = text.Value(QStringLiteral("Host"));
    const QString port = text.Value(QStringLiteral("Port"));
    const QString database = text.Value(QStringLiteral("Database"));
    db.setHostName(host);
    if (!port.isEmpty()) {
        bool ok = false;
        const int number = port.toInt(&ok);
        if (!ok)
            throw DatabaseError(QStringLiteral("El puerto «") + port + QStringLiteral("» no es un número."), connectionText);
        db.setPort(number);
    }
    db.setDatabaseName(database);
    db.setUserName(text.Value(QStringLiteral("User ID")));
    db.setPassword(text.Value(QStringLiteral("Password")));
    // A server that does not answer must not freeze the office's screen.
    db.setConnectOptions(QStringLiteral("connect_timeout=5"));
    if (!db.open())
        throw DatabaseError(PostgresErrors::ConnectFailure(db.lastError(), {host, port, database, db.userName()}),
                            connectionText, ErrorText(db.lastError()));
    const int version = PostgresSchema::Version(db);
    if (version > kSchemaVersion)
        throw DatabaseError(QStringLiteral("La base de datos «") + database
                                + QStringLiteral("» fue creada por una versión más reciente del programa (estructura ")
                                + QString::number(version) + QStringLiteral("; esta versión admite hasta la ")
                                + QString::number(kSchemaVersion) + QStringLiteral("). Actualice el programa para abrirla."),
                            connectionText);
    // A row another user keeps locked fails the statement after a while
    // instead of freezing the window.
    // The server's notices (a table that already exists, ...) are not for
    // the office.
    QSqlQuery(db).exec(QStringLiteral("SET lock_timeout = 5000; SET client_min_messages = warning"));
    pending.Keep();
}

} // namespace SqlProviders
