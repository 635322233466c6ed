// Spanish text order and case-blind equality: the comparison itself and the
// collation ES_CI that the text columns of our SQLite schemas declare.

#include "data/SpanishCollation.h"

#include "test_data.h"

using namespace data_test;

namespace {

int Sign(const QString &a, const QString &b)
{
    const int v = SpanishCompare(a, b);
    return (v > 0) - (v < 0);
}

TEST(SpanishCompare, IgnoresCaseOnlyAndPutsEnyeAfterN)
{
    const struct { const char *a, *b; int sign; } cases[] = {
        // Case never separates, accented capitals and decomposed letters included.
        {"ÁLVAREZ", "álvarez", 0}, {"MUÑOZ", "muñoz", 0}, {"Pérez", "PÉREZ", 0}, {"GÜELL", "güell", 0},
        {"de la Fuente", "De La FUENTE", 0}, {"", "", 0},
        {"a\u0301lvarez", "Álvarez", 0}, {"MUN\u0303OZ", "muñoz", 0},
        // An accent makes another word, as in Access's general order.
        {"alvarez", "álvarez", -1}, {"ALVAREZ", "Álvarez", -1}, {"Muñoz", "Munoz", 1},
        // An accented letter sorts with its base letter.
        {"Alonso", "Álvarez", -1}, {"Álvarez", "Blanco", -1}, {"Álvarez", "Alvaro", -1}, {"Güell", "Guerra", -1},
        {"Ávila", "Azcona", -1},
        // Ñ is a letter of its own between N and O.
        {"Nuñez", "Ñuñez", -1}, {"Ñuñez", "Ortega", -1}, {"Nuzman", "Ñuñez", -1}, {"Munoz", "Muñoz", -1},
        {"Muñoz", "Muoz", -1}, {"Muñoz", "Muzquiz", -1}, {"Penalva", "Peña", -1}, {"Pena", "Penalva", -1},
        // Accents only break a tie of the letters.
        {"canon", "canón", -1}, {"canón", "cañon", -1}, {"Ramon", "Ramón", -1}, {"Ramón", "Ramos", -1},
        // Blanks and digits come before letters; a prefix first.
        {"Martín López", "Martínez", -1}, {"2º B", "Álava", -1}, {"", "a", -1}, {"Sanz", "Sanz Gil", -1},
    };
    QStringList words;
    for (const auto &c : cases) {
        EXPECT_EQ(Sign(c.a, c.b), c.sign) << c.a << " / " << c.b;
        words << c.a << c.b;
    }
    // Antisymmetric over every pair of the words above.
    for (const QString &a : words) {
        for (const QString &b : words)
            ASSERT_EQ(Sign(a, b), -Sign(b, a)) << a.toStdString() << " / " << b.toStdString();
    }
}

class SpanishCollationSql : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_c = Connection::CreateSQLite(Path("centro.db"));
        m_c->Execute("CREATE TABLE Alumno (ID INTEGER PRIMARY KEY, Apellido TEXT COLLATE ES_CI)");
        int id = 0;
        for (const char *name : {"Ortega", "Ñuñez", "Blanco", "ÁLVAREZ", "Nuñez", "Muzquiz", "Alonso", "Muñoz", "Munoz",
                                 "álvarez", "Alvarez"})
            m_c->Execute(QString("INSERT INTO Alumno VALUES (%1, '%2')").arg(++id).arg(name));
    }

    ConnectionPtr m_c;
};

TEST_F(SpanishCollationSql, OrderWhereDistinctAndUniqueFollowIt)
{
    // ÁLVAREZ (4) and álvarez (10) are equal and keep the ID order.
    EXPECT_EQ(Rows(*m_c, "SELECT Apellido FROM Alumno ORDER BY Apellido, ID"),
              QStringList({"Alonso", "Alvarez", "ÁLVAREZ", "álvarez", "Blanco", "Munoz", "Muñoz", "Muzquiz", "Nuñez",
                           "Ñuñez", "Ortega"}));
    EXPECT_EQ(Rows(*m_c, "SELECT ID FROM Alumno WHERE Apellido='álvarez' ORDER BY ID"), QStringList({"4", "10"}));
    EXPECT_EQ(Rows(*m_c, "SELECT ID FROM Alumno WHERE Apellido='MUÑOZ'"), QStringList{"8"});
    EXPECT_EQ(Rows(*m_c, "SELECT ID FROM Alumno WHERE Apellido='alvarez'"), QStringList{"11"});
    EXPECT_EQ(Rows(*m_c, "SELECT ID FROM Alumno WHERE Apellido='ortega'"), QStringList{"1"});
    EXPECT_EQ(Value(*m_c, "SELECT COUNT(DISTINCT Apellido) FROM Alumno"), "10");
    m_c->Execute("CREATE TABLE TipoDonativos (TipoDonativo TEXT COLLATE ES_CI UNIQUE)");
    m_c->Execute("INSERT INTO TipoDonativos VALUES ('Donación')");
    EXPECT_EQ(ExpectDatabaseError([&] { m_c->Execute("INSERT INTO TipoDonativos VALUES ('DONACIÓN')"); }).Message(),
              "UNIQUE constraint failed: TipoDonativos.TipoDonativo");
}

TEST_F(SpanishCollationSql, IsThereOnEveryConnectionOpenedLaterAndByNameInAQuery)
{
    m_c->Close();
    Connection c("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + Path("centro.db"));
    c.Open();
    EXPECT_EQ(Rows(c, "SELECT Apellido FROM Alumno WHERE Apellido='ÑUÑEZ'"), QStringList{"Ñuñez"});
    EXPECT_EQ(Rows(c, "SELECT x FROM (SELECT 'b' AS x UNION ALL SELECT 'Ñ' UNION ALL SELECT 'N' UNION ALL SELECT 'o') "
                      "ORDER BY x COLLATE ES_CI"),
              QStringList({"b", "N", "Ñ", "o"}));
}

} // namespace
