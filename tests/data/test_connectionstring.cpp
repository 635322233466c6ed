// Parsing and writing ADO connection strings.

#include "data/ConnectionString.h"

#include "test_connection_fixture.h"

#include <gtest/gtest.h>

namespace {

using connection_test::U8;

struct ParseCase
{
    const char *text;
    std::vector<std::pair<const char *, const char *>> pairs;
    const char *written;
};

class ConnectionStringParse : public ::testing::TestWithParam<ParseCase>
{
};

TEST_P(ConnectionStringParse, GivesThePairsInOrderAndWritesThemBack)
{
    const ParseCase &c = GetParam();
    const ConnectionString cs(QString::fromUtf8(c.text));
    const auto pairs = cs.Pairs();
    ASSERT_EQ(pairs.size(), qsizetype(c.pairs.size()));
    for (size_t i = 0; i < c.pairs.size(); ++i) {
        EXPECT_EQ(U8(pairs.at(i).first), c.pairs[i].first);
        EXPECT_EQ(U8(pairs.at(i).second), c.pairs[i].second);
    }
    EXPECT_EQ(U8(cs.ToString()), c.written);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ConnectionStringParse,
    ::testing::Values(
        ParseCase{"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/x/Modelo182.mdb;Persist Security Info=False;"
                  "Jet OLEDB:Database Password=zq417tev",
                  {{"Provider", "Microsoft.Jet.OLEDB.4.0"},
                   {"Data Source", "/x/Modelo182.mdb"},
                   {"Persist Security Info", "False"},
                   {"Jet OLEDB:Database Password", "zq417tev"}},
                  "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/x/Modelo182.mdb;Persist Security Info=False;"
                  "Jet OLEDB:Database Password=zq417tev"},
        // A trailing ";" and empty segments are dropped.
        ParseCase{"Provider=SQLite;;Data Source=a.db;", {{"Provider", "SQLite"}, {"Data Source", "a.db"}},
                  "Provider=SQLite;Data Source=a.db"},
        // Blanks around keys and values do not count; blanks inside do.
        ParseCase{"  Provider = SQLite ;  Data Source = mis datos/centro.db ",
                  {{"Provider", "SQLite"}, {"Data Source", "mis datos/centro.db"}},
                  "Provider=SQLite;Data Source=mis datos/centro.db"},
        // A value is split from its key at the first "=" only.
        ParseCase{"Password=a=b==c;User ID=yo", {{"Password", "a=b==c"}, {"User ID", "yo"}},
                  "Password=a=b==c;User ID=yo"},
        // A quoted value may hold ";"; it is written back quoted.
        ParseCase{"Data Source=\"/a;b/c.db\";Provider=SQLite", {{"Data Source", "/a;b/c.db"}, {"Provider", "SQLite"}},
                  "Data Source=\"/a;b/c.db\";Provider=SQLite"},
        // An empty value stays a key.
        ParseCase{"Provider=PostgreSQL;Password=;Host=127.0.0.1",
                  {{"Provider", "PostgreSQL"}, {"Password", ""}, {"Host", "127.0.0.1"}},
                  "Provider=PostgreSQL;Password=;Host=127.0.0.1"},
        ParseCase{"", {}, ""},
        ParseCase{" ; ;", {}, ""},
        // Accented text passes through.
        ParseCase{"Data Source=/datos/Año 2024/centro.db", {{"Data Source", "/datos/Año 2024/centro.db"}},
                  "Data Source=/datos/Año 2024/centro.db"}));

TEST(ConnectionStringLookup, IgnoresCaseOfTheKey)
{
    const ConnectionString cs(QStringLiteral("Provider=SQLite;Data Source=a.db"));
    EXPECT_EQ(U8(cs.Value(QStringLiteral("data source"))), "a.db");
    EXPECT_EQ(U8(cs.Value(QStringLiteral("DATA SOURCE"))), "a.db");
    EXPECT_TRUE(cs.Contains(QStringLiteral("provider")));
    EXPECT_FALSE(cs.Contains(QStringLiteral("Password")));
    EXPECT_EQ(U8(cs.Value(QStringLiteral("Password"))), "");
    EXPECT_FALSE(cs.IsEmpty());
    EXPECT_TRUE(ConnectionString(QString()).IsEmpty());
}

TEST(ConnectionStringLookup, RepeatedKeyKeepsItsFirstPlaceAndLastValue)
{
    const ConnectionString cs(QStringLiteral("Data Source=a.db;Provider=SQLite;data source=b.db"));
    EXPECT_EQ(U8(cs.ToString()), "Data Source=b.db;Provider=SQLite");
}

TEST(ConnectionStringSetValue, ReplacesInPlaceKeepingTheKeySpelling)
{
    ConnectionString cs(QStringLiteral(
        "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=;Persist Security Info=False;Jet OLEDB:Database Password=zq417tev"));
    cs.SetValue(QStringLiteral("data source"), QStringLiteral("/datos/Modelo182.mdb"));
    EXPECT_EQ(U8(cs.ToString()),
              "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/datos/Modelo182.mdb;Persist Security Info=False;"
              "Jet OLEDB:Database Password=zq417tev");
}

TEST(ConnectionStringSetValue, AppendsANewKeyAtTheEnd)
{
    ConnectionString cs(QStringLiteral("Provider=SQLite"));
    cs.SetValue(QStringLiteral("Data Source"), QStringLiteral("x.db"));
    EXPECT_EQ(U8(cs.ToString()), "Provider=SQLite;Data Source=x.db");
    EXPECT_EQ(U8(ConnectionString::Parse(cs.ToString()).Value(QStringLiteral("Data Source"))), "x.db");
}

} // namespace
