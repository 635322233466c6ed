#include "controls/cCentroApi.h"
#include "session/ObjectFactory.h"
#include "session/denM182.h"

#include <QLocale>
#include <gtest/gtest.h>

TEST(DeclarationConnection, IsThePasswordProtectedJetConnectionWithItsAttributesInOrder)
{
    EXPECT_EQ(denM182::conM182().ConnectionString(),
              QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=;Persist Security Info=False;"
                             "Jet OLEDB:Database Password=zq417tev"));
    EXPECT_EQ(&denM182::conM182(), &denM182::conM182());
}

TEST(DeclarationConnection, DataSourceFollowsTheServerFlag)
{
    cConfiguracion c;
    c.set_RutaBD(QStringLiteral("/srv/datos"));
    EXPECT_EQ(denM182::DataSourceFor(c), QStringLiteral("/srv/datos/Modelo182.mdb"));
    c.blnSQLServer = true;
    denM182::SetAddinFolder(QStringLiteral("/opt/addin"));
    EXPECT_EQ(denM182::DataSourceFor(c), QStringLiteral("/opt/addin/Informes/Modelo182.mdb"));
    denM182::SetAddinFolder(QString());
    EXPECT_FALSE(denM182::AddinFolder().isEmpty());
    // A trailing separator is not removed: the path is plain concatenation.
    c.blnSQLServer = false;
    c.set_RutaBD(QStringLiteral("/srv/datos/"));
    EXPECT_EQ(denM182::DataSourceFor(c), QStringLiteral("/srv/datos//Modelo182.mdb"));
}

TEST(HostApi, IsCreatedByItsProgrammaticIdAndUnknownIdsAreRefused)
{
    cCentroApi::Register();
    EXPECT_NE(ObjectFactory::CreateObjectAs<cCentroApi>(QStringLiteral("QXApi.cCentroApi")), nullptr);
    EXPECT_NE(ObjectFactory::CreateObjectAs<cCentroApi>(QStringLiteral("qxapi.ccentroapi")), nullptr);
    try {
        ObjectFactory::CreateObject(QStringLiteral("QModelo182.cNoExiste"));
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
    struct Case { int key; const char *text; const QLocale *locale; int expected; };
    const Case cases[] = {
        {'7', "", &es, '7'},      {'a', "12", &es, 0},     {'.', "12", &es, ','}, {',', "12", &en, '.'},
        {',', "12,5", &es, 0},    {'3', "12,5", &es, '3'}, {'3', "12,50", &es, 0}, {8, "12,50", &es, 8},
        {'-', "", &es, 0},        {' ', "1", &es, 0},
    };
    for (const Case &c : cases)
        EXPECT_EQ(api.VerificarEuros(c.key, QString::fromUtf8(c.text), *c.locale), c.expected)
            << "key " << c.key << " after \"" << c.text << "\"";
}
