#include "generator/SqliteStatement.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

namespace Aeat {

namespace {

sqlite3 *Handle(Connection &connection)
{
    const QSqlDatabase db = connection.Database();
    if (!db.isValid() || !db.driver())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

} // namespace

SqliteStatement::SqliteStatement(Connection &connection, const QString &sql) : m_db(Handle(connection)), m_sql(sql)
{
    if (!m_db) {
        throw DatabaseError(QStringLiteral("La base de datos de la declaración no está abierta como fichero SQLite."), sql);
    }
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &m_statement, nullptr) != SQLITE_OK)
        Fail();
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

bool SqliteStatement::Step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result == SQLITE_DONE)
        return false;
    Fail();
}

void SqliteStatement::Reset()
{
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
}

void SqliteStatement::Bind(int index, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    if (sqlite3_bind_text(m_statement, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT) != SQLITE_OK)
        Fail();
}

void SqliteStatement::Bind(int index, QByteArrayView utf8)
{
    if (sqlite3_bind_text(m_statement, index, utf8.data(), int(utf8.size()), SQLITE_TRANSIENT) != SQLITE_OK)
        Fail();
}

void SqliteStatement::Bind(int index, qint64 value)
{
    if (sqlite3_bind_int64(m_statement, index, value) != SQLITE_OK)
        Fail();
}

QString SqliteStatement::Text(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return text ? QString::fromUtf8(text, sqlite3_column_bytes(m_statement, column)) : QString();
}

QByteArrayView SqliteStatement::Utf8(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return text ? QByteArrayView(text, sqlite3_column_bytes(m_statement, column)) : QByteArrayView();
}

qint64 SqliteStatement::Integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

void SqliteStatement::Fail() const
{
    throw DatabaseError(QString::fromUtf8(sqlite3_errmsg(m_db)), m_sql);
}

} // namespace Aeat
