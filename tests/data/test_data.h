#pragma once
// Shared set-up of the data-access tests: a temporary folder per test, the
// process-wide settings of Connection put back afterwards, and readers that
// turn rows into "a|b|NULL" texts.
#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

inline std::ostream &operator<<(std::ostream &os, const QString &text)
{
    return os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << text;
}

namespace data_test {

inline QStringList Rows(Connection &c, const QString &sql, const QStringList &columns = {})
{
    QStringList rows;
    for (Recordset rs = c.Execute(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList values;
        for (int i = 0; i < (columns.isEmpty() ? rs.FieldCount() : int(columns.size())); ++i) {
            const QVariant v = columns.isEmpty() ? rs.Fields(i) : rs.Fields(columns.at(i));
            values << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        }
        rows << values.join(QLatin1Char('|'));
    }
    return rows;
}
inline QString Value(Connection &c, const QString &sql)
{
    return Rows(c, sql).value(0);
}
inline qint64 Count(Connection &c, const QString &table)
{
    return Value(c, "SELECT COUNT(*) FROM " + table).toLongLong();
}
inline int UserVersion(Connection &c)
{
    return Value(c, "PRAGMA user_version").toInt();
}
inline QStringList Tables(Connection &c)
{
    return Rows(c, "SELECT name FROM sqlite_master WHERE type='table' AND name NOT LIKE 'sqlite_%' ORDER BY name");
}
inline ConnectionPtr OpenConnection(const QString &connectionString, const QString &baseFolder = QString())
{
    auto c = std::make_shared<Connection>();
    c->SetBaseFolder(baseFolder);
    c->Open(connectionString);
    return c;
}

// The DatabaseError the code throws (fails the test when nothing is thrown).
template <typename F> DatabaseError ExpectDatabaseError(F &&code)
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
};

} // namespace data_test
