#pragma once
// Shared set-up of the server tests: skipped without a PostgreSQL server,
// fresh databases on it, rows read as "a|b|NULL" texts.
#include "Providers.h"
#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace server_test {

inline QStringList Rows(Connection &c, const QString &sql)
{
    QStringList rows;
    for (Recordset rs = c.Execute(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList values;
        for (int i = 0; i < rs.FieldCount(); ++i) {
            const QVariant v = rs.Fields(i);
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

inline ConnectionPtr Open(const QString &connectionString, const QString &baseFolder = QString())
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

// A value of the test server's connection string ("Host", "Port", ...).
QString ServerValue(const QString &key);

class ServerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        if (const QString why = ServerUnavailable(); !why.isEmpty())
            GTEST_SKIP() << why.toStdString();
    }
    // An empty database <slot prefix>_<name> on the server, opened.
    ConnectionPtr Fresh(const QString &name) { return Open(EmptyTestDatabase(name)); }

    QTemporaryDir dir;
};

// The host databases' two providers: a test body run for each, with the
// same statements and the same expected rows.
enum class Engine { SQLite, PostgreSQL };
std::string EngineName(const ::testing::TestParamInfo<Engine> &info);

class BothEngines : public ::testing::TestWithParam<Engine>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        if (GetParam() == Engine::PostgreSQL)
            if (const QString why = ServerUnavailable(); !why.isEmpty())
                GTEST_SKIP() << why.toStdString();
    }
    // An empty host database of the engine: an SQLite file or a server database.
    ConnectionPtr Fresh(const QString &name);
    // The installation description on the engine.
    InstallationDescription OnEngine(InstallationDescription description) const;

    QTemporaryDir dir;
};

} // namespace server_test
