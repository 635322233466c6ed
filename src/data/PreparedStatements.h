#pragma once

#include "data/Recordset.h"

#include <QSqlError>
#include <QString>
#include <QVariantList>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

// Runs statements of a few shapes on one SQLite handle, each shape prepared
// once and then only bound and stepped: a look-up per grid row or an insert
// per amount costs a bind instead of a parse. Straight on SQLite's interface,
// as Qt's binding by position and its row cache cost more than the work.
//
// A statement is reset as soon as its rows are read, so none keeps the file
// locked. Values read back as Qt's SQLite driver gives them: whole numbers as
// 64-bit integers, reals as doubles, texts as QString, NULL as a null value.
class PreparedStatements
{
public:
    // The engine's failure, in the form the connection's messages read.
    struct Failure
    {
        QSqlError error;
    };

    struct Outcome
    {
        Recordset rows;
        int affected = 0; // rows changed (0 for a query)
    };

    explicit PreparedStatements(sqlite3 *db) : m_db(db) {}
    ~PreparedStatements();
    PreparedStatements(const PreparedStatements &) = delete;
    PreparedStatements &operator=(const PreparedStatements &) = delete;

    // Runs `shape` ("?" where each value goes) with `values` bound in order;
    // `sql` is the shape as SQLite must read it (its translation). Throws
    // Failure.
    Outcome Run(const QString &shape, const QString &sql, const QVariantList &values);
    // Whether `shape` is prepared already (its translation is not needed).
    bool Has(const QString &shape) const { return m_statements.count(shape) > 0; }

private:
    struct Prepared
    {
        sqlite3_stmt *statement = nullptr;
        QStringList names;
    };
    static constexpr size_t kLimit = 64;

    Prepared &Find(const QString &shape, const QString &sql);
    void Bind(sqlite3_stmt *statement, const QVariantList &values);
    [[noreturn]] void Fail(sqlite3_stmt *statement = nullptr);
    void FinalizeAll();

    sqlite3 *m_db;
    std::unordered_map<QString, Prepared> m_statements;
};
