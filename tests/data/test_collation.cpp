// Spanish text order and case-blind equality: the comparison and the
// collation ES_CI that the text columns of our SQLite schemas declare.
#include "data/SpanishCollation.h"

#include "test_data.h"
#include "util/VbFormat.h"

using namespace data_test;

namespace {

int Sign(const QString &a, const QString &b)
{
    const int v = SpanishCompare(a, b);
    return (v > 0) - (v < 0);
}

TEST(SpanishCompare, IgnoresCaseOnlyAndPutsEnyeAfterN)
{
    const struct
    {
        const char *a, *b;
        int sign;
    } cases[] = {
        {"ÁLVAREZ", "álvarez", 0},        {"MUÑOZ", "muñoz", 0},      {"GÜELL", "güell", 0},
        {"a\u0301lvarez", "Álvarez", 0},  {"alvarez", "álvarez", -1}, {"Muñoz", "Munoz", 1}, // an accent makes another word
        {"Álvarez", "Blanco", -1},        {"Alonso", "Álvarez", -1},  {"Álvarez", "Alvaro", -1}, // with its base letter
        {"Nuñez", "Ñuñez", -1},           {"Ñuñez", "Ortega", -1},    {"Nuzman", "Ñuñez", -1},
        {"Penalva", "Peña", -1},          {"canon", "canón", -1},     {"canón", "cañon", -1}, // accents only break a tie
        {"Martín López", "Martínez", -1}, {"2º B", "Álava", -1},      {"Sanz", "Sanz Gil", -1},
    };
    QStringList words;
    for (const auto &c : cases) {
        EXPECT_EQ(Sign(c.a, c.b), c.sign) << c.a << " / " << c.b;
        words << c.a << c.b;
    }
    for (const QString &a : words)
        for (const QString &b : words)
            ASSERT_EQ(Sign(a, b), -Sign(b, a)) << a << " / " << b;
}

TEST(SpanishCollationSql, OrdersAndComparesOnEveryConnectionAndByName)
{
    QTemporaryDir dir;
    auto c = Connection::CreateSQLite(dir.filePath("centro.db"));
    c->Execute("CREATE TABLE Alumno (ID INTEGER PRIMARY KEY, Apellido TEXT COLLATE ES_CI)");
    int id = 0;
    for (const char *name : {"Ortega", "Ñuñez", "Blanco", "ÁLVAREZ", "Nuñez", "Muñoz", "Munoz", "álvarez", "Alvarez"})
        c->Execute(QString("INSERT INTO Alumno VALUES (%1, '%2')").arg(++id).arg(name));
    c->Close();
    Connection later("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + dir.filePath("centro.db"));
    later.Open();
    EXPECT_EQ(Rows(later, "SELECT Apellido FROM Alumno ORDER BY Apellido, ID"),
              QStringList({"Alvarez", "ÁLVAREZ", "álvarez", "Blanco", "Munoz", "Muñoz", "Nuñez", "Ñuñez", "Ortega"}));
    EXPECT_EQ(Rows(later, "SELECT ID FROM Alumno WHERE Apellido='álvarez' ORDER BY ID"), QStringList({"4", "8"}));
    EXPECT_EQ(Rows(later, "SELECT ID FROM Alumno WHERE Apellido='muñoz'"), QStringList{"6"});
    EXPECT_EQ(Rows(later, "SELECT Apellido FROM Alumno WHERE Apellido='ÑUÑEZ'"), QStringList{"Ñuñez"});
    EXPECT_EQ(Value(later, "SELECT COUNT(DISTINCT Apellido) FROM Alumno"), "8");
    EXPECT_EQ(Rows(later, "SELECT x FROM (SELECT 'b' AS x UNION ALL SELECT 'Ñ' UNION ALL SELECT 'N' UNION ALL SELECT 'o')"
                          " ORDER BY x COLLATE ES_CI"),
              QStringList({"b", "N", "Ñ", "o"}));
}

// The files hold UTF-8 text, and SQLite calls the collation's UTF-8 form on
// them: every pair must compare as the comparison itself says, in a UTF-8
// and in a UTF-16 database, first letters alike or not, plain or not.
TEST(SpanishCollationSql, EveryEncodingComparesEveryPairAsTheComparisonDoes)
{
    const QStringList words{"Álvarez",  "alvarez", "ALVAREZ",      "Blanco",  "blanco", "Nuñez", "Ñuñez",
                            "n\u0303u", "Ortega",  "ortega",       "2º B",    " Sanz",  "Sanz",  "",
                            "Émile",    "émile",   "Zapata",       "zorro",   "Ñ",      "N",     "o",
                            "Øster",    "ß",       "Martín López", "Martínez"};
    for (const char *encoding : {"UTF-8", "UTF-16le"}) {
        QTemporaryDir dir;
        auto c = Connection::CreateSQLite(dir.filePath("textos.db"));
        c->Execute(QStringLiteral("PRAGMA encoding='") + encoding + "'");
        c->Execute("CREATE TABLE Texto (ID INTEGER PRIMARY KEY, t TEXT COLLATE ES_CI)");
        for (int i = 0; i < words.size(); ++i)
            c->Execute(QString("INSERT INTO Texto VALUES (%1, %2)").arg(i).arg(SqlText(words.at(i))));
        ASSERT_EQ(Value(*c, "PRAGMA encoding"), encoding);
        const QStringList pairs = Rows(*c, "SELECT a.ID, b.ID, (a.t > b.t) - (a.t < b.t) FROM Texto a, Texto b");
        ASSERT_EQ(pairs.size(), words.size() * words.size());
        for (const QString &pair : pairs) {
            const QStringList f = pair.split('|');
            const QString &a = words.at(f.at(0).toInt()), &b = words.at(f.at(1).toInt());
            EXPECT_EQ(f.at(2).toInt(), Sign(a, b)) << encoding << ": " << a << " / " << b;
        }
    }
}

} // namespace
