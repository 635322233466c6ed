// Spanish text order and case-blind equality: the comparison itself and the
// collation that text columns of our SQLite schemas declare.

#include "data/SchemaVersion.h"
#include "data/SpanishCollation.h"

#include "test_connection_fixture.h"

#include <QString>
#include <gtest/gtest.h>

namespace {

using connection_test::DataFolderTest;
using connection_test::U8;

int Sign(int v)
{
    return (v > 0) - (v < 0);
}

int Compare(const QString &a, const QString &b)
{
    return Sign(SpanishCompare(a, b));
}

TEST(SpanishCompareEquality, CaseNeverSeparatesIncludingAccentedCapitals)
{
    EXPECT_EQ(Compare(QStringLiteral("ÁLVAREZ"), QStringLiteral("álvarez")), 0);
    EXPECT_EQ(Compare(QStringLiteral("MUÑOZ"), QStringLiteral("muñoz")), 0);
    EXPECT_EQ(Compare(QStringLiteral("Pérez"), QStringLiteral("PÉREZ")), 0);
    EXPECT_EQ(Compare(QStringLiteral("de la Fuente"), QStringLiteral("De La FUENTE")), 0);
    EXPECT_EQ(Compare(QStringLiteral("GÜELL"), QStringLiteral("güell")), 0);
    EXPECT_EQ(Compare(QString(), QString()), 0);
}

TEST(SpanishCompareEquality, AccentsDoSeparate)
{
    // Decided: as Access's general order, an accent makes another word.
    EXPECT_EQ(Compare(QStringLiteral("alvarez"), QStringLiteral("álvarez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("ALVAREZ"), QStringLiteral("Álvarez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Muñoz"), QStringLiteral("Munoz")), 1);
}

TEST(SpanishCompareEquality, DecomposedLettersEqualPrecomposedOnes)
{
    // "a" + combining acute, "N" + combining tilde.
    EXPECT_EQ(Compare(QString::fromUtf16(u"a\u0301lvarez"), QStringLiteral("Álvarez")), 0);
    EXPECT_EQ(Compare(QString::fromUtf16(u"MUN\u0303OZ"), QStringLiteral("muñoz")), 0);
}

TEST(SpanishCompareOrder, AccentedLetterSortsWithItsBaseLetter)
{
    EXPECT_EQ(Compare(QStringLiteral("Alonso"), QStringLiteral("Álvarez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Álvarez"), QStringLiteral("Blanco")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Álvarez"), QStringLiteral("Alvaro")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Güell"), QStringLiteral("Guerra")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Ávila"), QStringLiteral("Azcona")), -1);
}

TEST(SpanishCompareOrder, EnyeIsALetterAfterN)
{
    EXPECT_EQ(Compare(QStringLiteral("Nuñez"), QStringLiteral("Ñuñez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Ñuñez"), QStringLiteral("Ortega")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Nuzman"), QStringLiteral("Ñuñez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Munoz"), QStringLiteral("Muñoz")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Muñoz"), QStringLiteral("Muoz")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Muñoz"), QStringLiteral("Muzquiz")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Penalva"), QStringLiteral("Peña")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Pena"), QStringLiteral("Penalva")), -1);
}

TEST(SpanishCompareOrder, AccentsOnlyBreakATieOfTheLetters)
{
    EXPECT_EQ(Compare(QStringLiteral("canon"), QStringLiteral("canón")), -1);
    EXPECT_EQ(Compare(QStringLiteral("canón"), QStringLiteral("cañon")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Ramon"), QStringLiteral("Ramón")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Ramón"), QStringLiteral("Ramos")), -1);
}

TEST(SpanishCompareOrder, BlanksAndDigitsComeBeforeLetters)
{
    EXPECT_EQ(Compare(QStringLiteral("Martín López"), QStringLiteral("Martínez")), -1);
    EXPECT_EQ(Compare(QStringLiteral("2º B"), QStringLiteral("Álava")), -1);
    EXPECT_EQ(Compare(QString(), QStringLiteral("a")), -1);
    EXPECT_EQ(Compare(QStringLiteral("Sanz"), QStringLiteral("Sanz Gil")), -1);
}

TEST(SpanishCompareOrder, IsAntisymmetric)
{
    const QStringList words = {QStringLiteral("Álvarez"), QStringLiteral("alvarez"), QStringLiteral("ALONSO"),
                               QStringLiteral("Muñoz"), QStringLiteral("MUNOZ"), QStringLiteral("Ñuñez"),
                               QStringLiteral("nuñez"), QStringLiteral("Güell"), QStringLiteral("")};
    for (const QString &a : words) {
        for (const QString &b : words)
            EXPECT_EQ(Compare(a, b), -Compare(b, a)) << U8(a) << " / " << U8(b);
    }
}

class SpanishCollationSql : public DataFolderTest
{
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        m_connection = Connection::CreateSQLite(Path(QStringLiteral("centro.db")));
        m_connection->Execute(QStringLiteral("CREATE TABLE Alumno (ID INTEGER PRIMARY KEY, Apellido TEXT COLLATE " M182_TEXT_COLLATION ")"));
        const QStringList names = {QStringLiteral("Ortega"),  QStringLiteral("Ñuñez"),  QStringLiteral("Blanco"),
                                   QStringLiteral("ÁLVAREZ"), QStringLiteral("Nuñez"),  QStringLiteral("Muzquiz"),
                                   QStringLiteral("Alonso"),  QStringLiteral("Muñoz"),  QStringLiteral("Munoz"),
                                   QStringLiteral("álvarez"), QStringLiteral("Alvarez")};
        int id = 1;
        m_connection->BeginTrans();
        for (const QString &name : names)
            m_connection->Execute(QStringLiteral("INSERT INTO Alumno VALUES (%1, '%2')").arg(id++).arg(name));
        m_connection->CommitTrans();
    }

    std::shared_ptr<Connection> m_connection;
};

TEST_F(SpanishCollationSql, CollationNameIsTheOneTheSchemasUse)
{
    EXPECT_STREQ(M182_TEXT_COLLATION, "ES_CI");
}

TEST_F(SpanishCollationSql, OrderByIsSpanish)
{
    const QStringList got = Column(*m_connection, QStringLiteral("SELECT Apellido FROM Alumno ORDER BY Apellido, ID"));
    // ÁLVAREZ (id 4) and álvarez (id 10) are equal and keep the ID order.
    EXPECT_EQ(got, QStringList({QStringLiteral("Alonso"), QStringLiteral("Alvarez"), QStringLiteral("ÁLVAREZ"),
                                QStringLiteral("álvarez"), QStringLiteral("Blanco"), QStringLiteral("Munoz"),
                                QStringLiteral("Muñoz"), QStringLiteral("Muzquiz"), QStringLiteral("Nuñez"),
                                QStringLiteral("Ñuñez"), QStringLiteral("Ortega")}));
}

TEST_F(SpanishCollationSql, WhereIgnoresCaseIncludingAccentedCapitals)
{
    EXPECT_EQ(Column(*m_connection, QStringLiteral("SELECT ID FROM Alumno WHERE Apellido='álvarez' ORDER BY ID")),
              QStringList({QStringLiteral("4"), QStringLiteral("10")}));
    EXPECT_EQ(Column(*m_connection, QStringLiteral("SELECT ID FROM Alumno WHERE Apellido='MUÑOZ'")),
              QStringList({QStringLiteral("8")}));
    EXPECT_EQ(Column(*m_connection, QStringLiteral("SELECT ID FROM Alumno WHERE Apellido='alvarez'")),
              QStringList({QStringLiteral("11")}));
    EXPECT_EQ(Column(*m_connection, QStringLiteral("SELECT ID FROM Alumno WHERE Apellido='ortega'")),
              QStringList({QStringLiteral("1")}));
}

TEST_F(SpanishCollationSql, DistinctAndUniqueFollowTheSameEquality)
{
    EXPECT_EQ(Scalar(*m_connection, QStringLiteral("SELECT COUNT(DISTINCT Apellido) FROM Alumno")).toInt(), 10);
    m_connection->Execute(QStringLiteral("CREATE TABLE TipoDonativos (TipoDonativo TEXT COLLATE ES_CI UNIQUE)"));
    m_connection->Execute(QStringLiteral("INSERT INTO TipoDonativos VALUES ('Donación')"));
    const DatabaseError e = connection_test::ExpectDatabaseError(
        [&] { m_connection->Execute(QStringLiteral("INSERT INTO TipoDonativos VALUES ('DONACIÓN')")); });
    EXPECT_EQ(U8(e.Message()), "UNIQUE constraint failed: TipoDonativos.TipoDonativo");
}

TEST_F(SpanishCollationSql, IsAvailableOnEveryConnectionOpenedLater)
{
    const QString path = Path(QStringLiteral("centro.db"));
    m_connection->Close();
    Connection c(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + path);
    c.Open();
    EXPECT_EQ(Column(c, QStringLiteral("SELECT Apellido FROM Alumno WHERE Apellido='ÑUÑEZ'")),
              QStringList({QStringLiteral("Ñuñez")}));
    // And by name in a query, on an expression without a declared collation.
    EXPECT_EQ(Column(c, QStringLiteral("SELECT x FROM (SELECT 'b' AS x UNION ALL SELECT 'Ñ' UNION ALL SELECT 'N' "
                                       "UNION ALL SELECT 'o') ORDER BY x COLLATE ES_CI")),
              QStringList({QStringLiteral("b"), QStringLiteral("N"), QStringLiteral("Ñ"), QStringLiteral("o")}));
}

} // namespace
