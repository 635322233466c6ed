#pragma once

#include <QByteArrayView>
#include <QString>

class Connection;
struct sqlite3;
struct sqlite3_stmt;

// The declaration generator's own pieces.
namespace Aeat {

// One statement stepped through SQLite itself on a connection's database
// (Modelo182.mdb is an SQLite file). The generic query layer costs a value
// object per cell, which for a declaration of hundreds of thousands of rows
// is most of the run; here a row costs what its texts cost.
// Every failure throws DatabaseError with SQLite's message and the statement.
class SqliteStatement
{
public:
    SqliteStatement(Connection &connection, const QString &sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    // True while there is a row; false once the statement is done.
    bool Step();
    // The statement ready to run again (with new bindings).
    void Reset();

    void Bind(int index, const QString &text); // 1-based, as SQLite counts
    void Bind(int index, qint64 value);
    void Bind(int index, QByteArrayView utf8);

    // A column of the current row (0-based); NULL gives a null QString.
    QString Text(int column) const;
    // The column's UTF-8 bytes as SQLite holds them, valid until the next
    // step; NULL gives a null view.
    QByteArrayView Utf8(int column) const;
    qint64 Integer(int column) const;

private:
    [[noreturn]] void Fail() const;

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_statement = nullptr;
    QString m_sql;
};

} // namespace Aeat
