#pragma once
// Shared set-up of the server tests: skipped without a PostgreSQL server,
// fresh databases on it, rows read as "a|b|NULL" texts.
#include "Providers.h"
#include "RowTexts.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace server_test {

using test_support::ExpectDatabaseError;
using test_support::Rows;
using test_support::Value;

inline ConnectionPtr Open(const QString &connectionString, const QString &baseFolder = QString())
{
    return test_support::OpenConnection(connectionString, baseFolder);
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
