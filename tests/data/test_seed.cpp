// The catalogue rows Modelo182.mdb is delivered with, read through the
// statements the wizard and the catalogue window send.

#include "test_schema_helpers.h"

#include "data/Connection.h"
#include "data/Schema.h"

#include <QDir>
#include <QMap>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace schema_test;

namespace {

class SeedTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_db = Connection::CreateSQLite(QDir(m_dir.path()).filePath("Modelo182.mdb"), "Microsoft.Jet.OLEDB.4.0");
        Schema::CreateDeclarationDatabase(*m_db);
    }

    // The declaration's province statement for one province name.
    QStringList ProvinceLookup(const QString &name)
    {
        return Rows(*m_db, "SELECT CodigoProvincia, CodigoComunidadAutonoma, IDComunidadAutonoma FROM Provincias "
                           "INNER JOIN ComunidadesAutonomas ON "
                           "Provincias.codComunidadAutonoma=ComunidadesAutonomas.IDComunidadAutonoma "
                           "WHERE Provincia='" + QString(name).replace("'", "''") + "'");
    }

    QTemporaryDir m_dir;
    ConnectionPtr m_db;
};

// The AEAT's community list for the regional deduction; the two foral
// communities and the autonomous cities have no code ("00").
const QList<QPair<QString, QString>> kCommunities = {
    {"Andalucía", "01"}, {"Aragón", "02"}, {"Principado de Asturias", "03"}, {"Illes Balears", "04"},
    {"Canarias", "05"}, {"Cantabria", "06"}, {"Castilla-La Mancha", "07"}, {"Castilla y León", "08"},
    {"Cataluña", "09"}, {"Extremadura", "10"}, {"Galicia", "11"}, {"Comunidad de Madrid", "12"},
    {"Región de Murcia", "13"}, {"La Rioja", "16"}, {"Comunitat Valenciana", "17"}, {"País Vasco", "00"},
    {"Comunidad Foral de Navarra", "00"}, {"Ceuta", "00"}, {"Melilla", "00"},
};

// Provinces of each community code, as the AEAT lists them.
const QMap<QString, QStringList> kProvincesOfCommunity = {
    {"01", {"04", "11", "14", "18", "21", "23", "29", "41"}},
    {"02", {"22", "44", "50"}},
    {"03", {"33"}},
    {"04", {"07"}},
    {"05", {"35", "38"}},
    {"06", {"39"}},
    {"07", {"02", "13", "16", "19", "45"}},
    {"08", {"05", "09", "24", "34", "37", "40", "42", "47", "49"}},
    {"09", {"08", "17", "25", "43"}},
    {"10", {"06", "10"}},
    {"11", {"15", "27", "32", "36"}},
    {"12", {"28"}},
    {"13", {"30"}},
    {"16", {"26"}},
    {"17", {"03", "12", "46"}},
    {"00", {"01", "20", "48", "31", "51", "52"}},
};

struct ProvinceCase
{
    const char *name;
    const char *code;
    const char *communityCode;
    const char *community;
};

const ProvinceCase kProvinceCases[] = {
    {"Araba/Álava", "01", "00", "País Vasco"},
    {"Alicante", "03", "17", "Comunitat Valenciana"},
    {"Ávila", "05", "08", "Castilla y León"},
    {"Illes Balears", "07", "04", "Illes Balears"},
    {"Barcelona", "08", "09", "Cataluña"},
    {"A Coruña", "15", "11", "Galicia"},
    {"Gipuzkoa", "20", "00", "País Vasco"},
    {"La Rioja", "26", "16", "La Rioja"},
    {"Madrid", "28", "12", "Comunidad de Madrid"},
    {"Murcia", "30", "13", "Región de Murcia"},
    {"Navarra", "31", "00", "Comunidad Foral de Navarra"},
    {"Asturias", "33", "03", "Principado de Asturias"},
    {"Santa Cruz de Tenerife", "38", "05", "Canarias"},
    {"Cantabria", "39", "06", "Cantabria"},
    {"Sevilla", "41", "01", "Andalucía"},
    {"Toledo", "45", "07", "Castilla-La Mancha"},
    {"Bizkaia", "48", "00", "País Vasco"},
    {"Zaragoza", "50", "02", "Aragón"},
    {"Ceuta", "51", "00", "Ceuta"},
    {"Melilla", "52", "00", "Melilla"},
};

} // namespace

// --- Communities and provinces ---------------------------------------------------------------

TEST_F(SeedTest, EveryAutonomousCommunityHasItsDeclarationCode)
{
    QStringList expected;
    for (const auto &[name, code] : kCommunities)
        expected << name + "|" + code;
    QStringList rows = Rows(*m_db, "SELECT ComunidadAutonoma, CodigoComunidadAutonoma FROM ComunidadesAutonomas");
    rows.sort();
    expected.sort();
    EXPECT_EQ(rows, expected);
}

TEST_F(SeedTest, CommunityListIsReadWithItsKeys)
{
    const QStringList rows = Rows(*m_db, "SELECT idcomunidadautonoma, comunidadautonoma FROM ComunidadesAutonomas");
    ASSERT_EQ(rows.size(), 19);
    QSet<QString> keys;
    for (const QString &row : rows)
        keys.insert(row.section('|', 0, 0));
    EXPECT_EQ(keys.size(), 19);
}

TEST_F(SeedTest, ProvincesResolveToCodeAndCommunity)
{
    for (const ProvinceCase &c : kProvinceCases) {
        const QStringList rows = ProvinceLookup(QString::fromUtf8(c.name));
        ASSERT_EQ(rows.size(), 1) << c.name;
        const QStringList fields = rows.first().split('|');
        EXPECT_EQ(fields.at(0), QString::fromLatin1(c.code)) << c.name;
        EXPECT_EQ(fields.at(1), QString::fromLatin1(c.communityCode)) << c.name;
        EXPECT_EQ(Rows(*m_db, "SELECT ComunidadAutonoma FROM ComunidadesAutonomas WHERE IDComunidadAutonoma="
                                  + fields.at(2)),
                  QStringList{QString::fromUtf8(c.community)})
            << c.name;
    }
}

TEST_F(SeedTest, AllFiftyTwoProvincesBelongToTheRightCommunity)
{
    const QStringList rows = Rows(*m_db, "SELECT CodigoProvincia, CodigoComunidadAutonoma FROM Provincias "
                                         "INNER JOIN ComunidadesAutonomas ON "
                                         "Provincias.codComunidadAutonoma=ComunidadesAutonomas.IDComunidadAutonoma");
    ASSERT_EQ(rows.size(), 52);
    QSet<QString> codes;
    for (const QString &row : rows) {
        const QString province = row.section('|', 0, 0);
        const QString community = row.section('|', 1, 1);
        codes.insert(province);
        EXPECT_TRUE(kProvincesOfCommunity.value(community).contains(province))
            << qPrintable(province) << " in " << qPrintable(community);
    }
    QSet<QString> expected;
    for (int code = 1; code <= 52; ++code)
        expected.insert(QStringLiteral("%1").arg(code, 2, 10, QLatin1Char('0')));
    EXPECT_EQ(codes, expected);
}

TEST_F(SeedTest, ProvinceNamesMatchWhateverTheirCase)
{
    EXPECT_EQ(ProvinceLookup("ÁVILA").value(0).section('|', 0, 0), "05");
    EXPECT_EQ(ProvinceLookup("a coruña").value(0).section('|', 0, 0), "15");
    EXPECT_TRUE(ProvinceLookup("Barna").isEmpty());
}

// --- Percentages and donation types ----------------------------------------------------------

TEST_F(SeedTest, DonationTypesOfferTheirPercentages)
{
    QStringList rows = Rows(*m_db, "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN "
                                   "(TipoDonativos_Deducciones INNER JOIN Deducciones ON "
                                   "TipoDonativos_Deducciones.codDeduccion=Deducciones.IDDeduccion) ON "
                                   "TipoDonativos.idTipoDonativo=TipoDonativos_Deducciones.codTipoDonativo");
    rows.sort();
    EXPECT_EQ(rows, (QStringList{"Actividad prioritaria de mecenazgo|40", "Actividad prioritaria de mecenazgo|45",
                                 "Actividad prioritaria de mecenazgo|80", "Cuota de socio|35", "Cuota de socio|40",
                                 "Cuota de socio|45", "Cuota de socio|80", "Donativo|35", "Donativo|40",
                                 "Donativo|45", "Donativo|80"}));
}

TEST_F(SeedTest, DonationCodeIsFoundByTypeName)
{
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Donativo'"),
              QStringList{"A"});
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo="
                          "'Actividad prioritaria de mecenazgo'"),
              QStringList{"B"});
}

TEST_F(SeedTest, CommunityPercentagesForMadridAndNoneForAndalucia)
{
    const QString madrid = Rows(*m_db, "SELECT IDComunidadAutonoma FROM ComunidadesAutonomas WHERE "
                                       "ComunidadAutonoma='Comunidad de Madrid'").value(0);
    const QString andalucia = Rows(*m_db, "SELECT IDComunidadAutonoma FROM ComunidadesAutonomas WHERE "
                                          "ComunidadAutonoma='Andalucía'").value(0);
    const QString valenciana = Rows(*m_db, "SELECT IDComunidadAutonoma FROM ComunidadesAutonomas WHERE "
                                           "ComunidadAutonoma='Comunitat Valenciana'").value(0);
    const QString community = "SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN "
                              "Deducciones ON ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion "
                              "WHERE codComunidadAutonoma=";
    EXPECT_EQ(Rows(*m_db, community + madrid), QStringList{"6|15"});
    QStringList valencian = Rows(*m_db, community + valenciana);
    valencian.sort();
    EXPECT_EQ(valencian, (QStringList{"7|20", "8|25"}));
    EXPECT_TRUE(Rows(*m_db, community + andalucia).isEmpty());

    const QString any = "SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=";
    EXPECT_FALSE(Rows(*m_db, any + madrid).isEmpty());
    EXPECT_TRUE(Rows(*m_db, any + andalucia).isEmpty());
}

TEST_F(SeedTest, CommunitiesWithoutCodeHaveNoRegionalPercentage)
{
    for (const char *name : {"País Vasco", "Comunidad Foral de Navarra", "Ceuta", "Melilla"})
        EXPECT_TRUE(Rows(*m_db, "SELECT codDeduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN "
                                "ComunidadesAutonomas ON ComunidadesAutonomas_Deducciones.codComunidadAutonoma="
                                "ComunidadesAutonomas.IDComunidadAutonoma WHERE ComunidadAutonoma='"
                                    + QString::fromUtf8(name) + "'")
                        .isEmpty())
            << name;
}

TEST_F(SeedTest, CatalogueWindowListsAreFilled)
{
    EXPECT_EQ(Rows(*m_db, "SELECT IDComunidadAutonoma, ComunidadAutonoma FROM ComunidadesAutonomas").size(), 19);
    EXPECT_EQ(Rows(*m_db, "SELECT IDTipoDonativo, TipoDonativo FROM TipoDonativos"),
              (QStringList{"1|Donativo", "2|Cuota de socio", "3|Actividad prioritaria de mecenazgo"}));
    EXPECT_EQ(Rows(*m_db, "SELECT IDDeduccion, Deduccion FROM Deducciones"),
              (QStringList{"1|80", "2|35", "3|40", "4|45", "5|10", "6|15", "7|20", "8|25"}));
    EXPECT_EQ(Rows(*m_db, "SELECT codTipoDonativo, codDeduccion, Deduccion FROM TipoDonativos_Deducciones INNER JOIN "
                          "Deducciones ON Deducciones.IDDeduccion=TipoDonativos_Deducciones.codDeduccion")
                  .size(),
              11);
    EXPECT_EQ(Rows(*m_db, "SELECT codComunidadAutonoma, codDeduccion, Deduccion FROM "
                          "ComunidadesAutonomas_Deducciones INNER JOIN Deducciones ON "
                          "Deducciones.IDDeduccion=ComunidadesAutonomas_Deducciones.codDeduccion")
                  .size(),
              14);
}

TEST_F(SeedTest, DuplicateChecksFindTheSeededRows)
{
    EXPECT_EQ(Rows(*m_db, "SELECT comunidadautonoma FROM comunidadesautonomas WHERE comunidadautonoma='CATALUÑA'"),
              QStringList{"Cataluña"});
    EXPECT_EQ(Rows(*m_db, "SELECT deduccion FROM deducciones WHERE deduccion=80"), QStringList{"80"});
    EXPECT_TRUE(Rows(*m_db, "SELECT deduccion FROM deducciones WHERE deduccion=12.5").isEmpty());
    EXPECT_EQ(Rows(*m_db, "SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='donativo'"),
              QStringList{"Donativo"});
}

TEST_F(SeedTest, LinksAreAddedAndRemovedPositionally)
{
    m_db->Execute("INSERT INTO ComunidadesAutonomas_Deducciones VALUES (1,5)");   // Andalucía, 10 %
    m_db->Execute("INSERT INTO TipoDonativos_Deducciones VALUES (3,2)");          // prioritaria, 35 %
    EXPECT_EQ(Rows(*m_db, "SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=1"),
              QStringList{"5"});
    m_db->Execute("DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=5 AND codComunidadAutonoma=1");
    m_db->Execute("DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=2 AND codTipoDonativo=3");
    EXPECT_TRUE(Rows(*m_db, "SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=1")
                    .isEmpty());
    EXPECT_EQ(Count(*m_db, "TipoDonativos_Deducciones"), 11);
}
