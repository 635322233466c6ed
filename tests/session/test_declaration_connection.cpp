#include "session/ObjectFactory.h"
#include "session/cCentroApi.h"
#include "session/denM182.h"

#include <QLocale>
#include <gtest/gtest.h>

TEST(DeclarationConnection, ThePathIsPlainConcatenation)
{
    cConfiguracion c;
    c.set_RutaBD("/srv/datos/"); // a trailing separator is not removed
    EXPECT_EQ(denM182::DataSourceFor(c, "/opt/addin"), "/srv/datos//Modelo182.mdb");
    c.blnSQLServer = true;
    EXPECT_EQ(denM182::DataSourceFor(c, "/opt/addin"), "/opt/addin/Informes/Modelo182.mdb");
    EXPECT_FALSE(AddinBinaryFolder().isEmpty()); // the folder of the binary holding the code
}

TEST(HostApi, IsCreatedByItsProgrammaticIdAndUnknownIdsAreRefused)
{
    ObjectFactory factory, other;
    cCentroApi::Register(factory, true);
    EXPECT_TRUE(factory.CreateObjectAs<cCentroApi>(QStringLiteral("QXApi.cCentroApi"))->desarrollo());
    EXPECT_NE(factory.CreateObjectAs<cCentroApi>(QStringLiteral("qxapi.ccentroapi")), nullptr);
    EXPECT_FALSE(other.IsRegistered(QStringLiteral("QXApi.cCentroApi"))); // each run has its own components
    try {
        factory.CreateObject(QStringLiteral("QModelo182.cNoExiste"));
        FAIL();
    } catch (const ComponentError &error) {
        EXPECT_STREQ(error.what(), "No se puede crear el componente «QModelo182.cNoExiste»: no está instalado.");
    }
}

TEST(HostApi, VerificarEurosLetsAmountsThrough)
{
    cCentroApi api;
    const QLocale es(QLocale::Spanish, QLocale::Spain);
    const QLocale en(QLocale::English, QLocale::UnitedStates);
    struct Case
    {
        int key;
        const char *text;
        const QLocale *locale;
        int expected;
    };
    const Case cases[] = {
        {'7', "", &es, '7'},     {'a', "12", &es, 0},    {'.', "12", &es, ','}, {',', "12", &en, '.'}, {',', "12,5", &es, 0},
        {'3', "12,5", &es, '3'}, {'3', "12,50", &es, 0}, {8, "12,50", &es, 8},  {'-', "", &es, 0},     {' ', "1", &es, 0},
    };
    for (const Case &c : cases)
        EXPECT_EQ(api.VerificarEuros(c.key, QString::fromUtf8(c.text), *c.locale), c.expected)
            << "key " << c.key << " after \"" << c.text << "\"";
}
