#pragma once

// Shared set-up of the data-access tests: a temporary folder per test, the
// process-wide settings of Connection put back afterwards, and readers that
// turn what a statement returns into text that compares and prints well.

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

namespace data_test {

// Every row of a statement, each as its values (or the named columns) joined
// by "|", a null as "NULL".
inline QStringList Rows(Connection &c, const QString &sql, const QStringList &columns = {})
{
    QStringList rows;
    for (Recordset rs = c.Execute(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList values;
        const int count = columns.isEmpty() ? rs.FieldCount() : int(columns.size());
        for (int i = 0; i < count; ++i) {
            const QVariant v = columns.isEmpty() ? rs.Fields(i) : rs.Fields(columns.at(i));
            values << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        }
        rows << values.join(QLatin1Char('|'));
    }
    return rows;
}

inline QString Value(Connection &c, const QString &sql) { return Rows(c, sql).value(0); }
inline qint64 Count(Connection &c, const QString &table) { return Value(c, "SELECT COUNT(*) FROM " + table).toLongLong(); }
inline int UserVersion(Connection &c) { return Value(c, "PRAGMA user_version").toInt(); }
inline QStringList Columns(Connection &c, const QString &table)
{
    return Rows(c, "SELECT name FROM pragma_table_info('" + table + "')");
}
inline QStringList Tables(Connection &c)
{
    return Rows(c, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%' ORDER BY name");
}
inline ConnectionPtr OpenConnection(const QString &connectionString)
{
    auto c = std::make_shared<Connection>();
    c->Open(connectionString);
    return c;
}

// The DatabaseError the code throws (fails the test when nothing is thrown).
template <typename F>
DatabaseError ExpectDatabaseError(F &&code)
{
    try {
        code();
    } catch (const DatabaseError &error) {
        return error;
    }
    ADD_FAILURE() << "no DatabaseError was thrown";
    return DatabaseError(QString());
}

class DataTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_busyTimeout = Connection::BusyTimeout();
    }

    void TearDown() override
    {
        Connection::SetBaseFolder(QString());
        Connection::SetGlobalObserver(nullptr);
        Connection::SetBusyTimeout(m_busyTimeout);
    }

    QString Path(const QString &name) const { return m_dir.filePath(name); }
    static QString SQLite(const QString &path) { return "Provider=SQLite;Data Source=" + path; }

    // An SQLite file (closed again) holding what the statements make.
    QString MakeDatabase(const QString &name, const QStringList &statements)
    {
        auto c = Connection::CreateSQLite(Path(name));
        for (const QString &sql : statements)
            c->Execute(sql);
        return Path(name);
    }

    QTemporaryDir m_dir;
    int m_busyTimeout = 0;
};

} // namespace data_test
