#pragma once
// Shared set-up of the data-access tests: a temporary folder per test, the
// process-wide settings of Connection put back afterwards, and readers that
// turn rows into "a|b|NULL" texts.
#include "RowTexts.h"

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

using test_support::ExpectDatabaseError;
using test_support::OpenConnection;
using test_support::Rows;
using test_support::Value;

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
