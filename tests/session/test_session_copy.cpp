#include "data/Connection.h"
#include "session/SesionHost.h"
#include "session/SessionCopy.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// The host's session as a host would hand it over: every property the
// add-in reads, with connections already open.
class SessionCopyTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        for (const char *name : {"conexionBORRADOlocalCENTRO", "conexionlocalCENTRO", "conexionAppEntrada"}) {
            connections[name] = Connection::CreateSQLite(dir.filePath(QString(name) + ".db"));
            session->Set(name, connections[name]);
        }
        const QList<QPair<const char *, SesionHost::Value>> values = {{"rutaaplicacion", QString("/opt/host")},
                                                                      {"RutaBD", QString("/srv/datos")},
                                                                      {"Activa", true},
                                                                      {"Accion", qlonglong(3)},
                                                                      {"lngRowData", qlonglong(70000)},
                                                                      {"IDPerfil", qlonglong(2)},
                                                                      {"IDUsuario",
                                                                       QString("12")}, // numbers may come as text
                                                                      {"IDCentro", qlonglong(7)},
                                                                      {"idCursoEscolar", qlonglong(4)},
                                                                      {"NombreUsuario", QString("secretaria")},
                                                                      {"NombreCentro", QString("Colegio Ñandú")},
                                                                      {"Pesetas", false},
                                                                      {"MTP", QString("True")},
                                                                      {"RutaIcono", QString("/opt/host/icono.ico")},
                                                                      {"sqlserver", false}};
        for (const auto &[name, value] : values)
            session->Set(name, value);
    }

    QTemporaryDir dir;
    QMap<QString, ConnectionPtr> connections;
    SesionHostPtr session = std::make_shared<SesionHost>();
    cConfiguracion c;
    QString helpFile;
};

TEST_F(SessionCopyTest, EveryPropertyLandsInItsTypedField)
{
    c.set_intCodCurso(5); // not filled from the session: kept
    CopySession(session, c, helpFile);
    EXPECT_FALSE(c.blnSQLServer);
    EXPECT_EQ(c.intIDPerfil(), 2);
    EXPECT_EQ(c.intIDUsuario(), 12);
    EXPECT_EQ(c.strNombreUsuario(), "secretaria");
    EXPECT_EQ(c.intIdCentro(), 7);
    EXPECT_EQ(c.strNombreCentro(), "Colegio Ñandú");
    EXPECT_EQ(c.intIDCursoEscolar(), 4);
    EXPECT_EQ(c.intCodCurso(), 5);
    EXPECT_EQ(c.intTipoEnsenanza(), 0);
    EXPECT_EQ(c.conLocalBorradoCentro(), connections["conexionBORRADOlocalCENTRO"]);
    EXPECT_EQ(c.conLocalCentro(), connections["conexionlocalCENTRO"]);
    EXPECT_EQ(c.conLocalAppEntrada(), connections["conexionAppEntrada"]);
    EXPECT_EQ(c.lngRowData(), 70000);
    EXPECT_EQ(c.bytAccion(), 3);
    EXPECT_FALSE(c.blnPesetas());
    EXPECT_TRUE(c.Activa());
    EXPECT_FALSE(c.blnDatosMedicos());
    EXPECT_TRUE(c.MTP());
    EXPECT_EQ(c.RutaIcono(), "/opt/host/icono.ico");
    EXPECT_EQ(c.datossesion(), session);
    EXPECT_EQ(c.RutaBD(), "/srv/datos");
    EXPECT_EQ(helpFile, "/opt/host/vendelar.chm");
}

TEST_F(SessionCopyTest, AMissingOrUnconvertiblePropertyAbortsAndEarlierOnesKeepTheirNewValues)
{
    c.set_intIdCentro(1);
    c.set_strNombreUsuario("antes");
    struct Case
    {
        const char *name;
        SesionHost::Value value;
        const char *message;
    };
    const Case cases[] = {
        {"IDCentro", qlonglong(32768),
         "Desbordamiento: la propiedad de sesión «IDCentro» vale 32768, fuera del intervalo -32768 a 32767."},
        {"conexionlocalCENTRO", QString("Provider=SQLite;Data Source=centro.db"),
         "La propiedad de sesión «conexionlocalCENTRO» vale «Provider=SQLite;Data Source=centro.db», que no es una "
         "conexión."},
        {"Accion", qlonglong(256), "Desbordamiento: la propiedad de sesión «Accion» vale 256, fuera del intervalo 0 a 255."},
    };
    for (const Case &bad : cases) {
        auto broken = std::make_shared<SesionHost>(*session);
        broken->Set(bad.name, bad.value);
        try {
            CopySession(broken, c, helpFile);
            ADD_FAILURE() << bad.name;
        } catch (const SessionError &error) {
            EXPECT_EQ(error.Message(), bad.message);
        }
    }
    EXPECT_EQ(c.RutaBD(), "/srv/datos"); // read before the failures
    EXPECT_EQ(c.conLocalBorradoCentro(), connections["conexionBORRADOlocalCENTRO"]);
    EXPECT_EQ(c.intIdCentro(), 1); // after them: untouched
    EXPECT_EQ(c.strNombreUsuario(), "antes");

    // Names are case-sensitive: "idcentro" is not "IDCentro".
    auto renamed = std::make_shared<SesionHost>();
    for (const QString &name : session->Names()) {
        const QString target = name == "IDCentro" ? "idcentro" : name;
        if (name.startsWith("conexion"))
            renamed->Set(target, session->ConnectionValue(name));
        else
            renamed->Set(target, session->Text(name));
    }
    try {
        CopySession(renamed, c, helpFile);
        FAIL();
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), "La sesión no tiene la propiedad «IDCentro».");
    }
    session->Set("IDCentro", -32768); // the limits themselves fit
    EXPECT_NO_THROW(CopySession(session, c, helpFile));
}

TEST(SesionHostTest, ConversionsFollowTheHostsLateBoundReads)
{
    SesionHost s;
    s.Set("n", "12.5");
    s.Set("m", "13.5");
    s.Set("t", true);
    s.Set("x", "doce");
    EXPECT_EQ(s.Integer("n"), 12); // half to even
    EXPECT_EQ(s.Integer("m"), 14);
    EXPECT_EQ(s.Integer("t"), -1);
    EXPECT_TRUE(s.Boolean("n"));
    EXPECT_EQ(s.Text("t"), "True");
    EXPECT_THROW(s.Integer("x"), SessionError);
    EXPECT_THROW(s.Boolean("x"), SessionError);
    EXPECT_THROW(s.ConnectionValue("n"), SessionError);
}
