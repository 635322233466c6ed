#include "data/Connection.h"
#include "session/SessionCopy.h"
#include "session/SesionHost.h"
#include "session/modPrincipal.h"

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
        for (const char *name : {"entrada.db", "centro.db", "borrado.db"})
            connections[QString::fromLatin1(name)] = Connection::CreateSQLite(dir.filePath(QString::fromLatin1(name)));
        session = std::make_shared<SesionHost>();
        session->Set(QStringLiteral("rutaaplicacion"), QStringLiteral("/opt/host"));
        session->Set(QStringLiteral("RutaBD"), QStringLiteral("/srv/datos"));
        session->Set(QStringLiteral("Activa"), true);
        session->Set(QStringLiteral("Accion"), 3);
        session->Set(QStringLiteral("lngRowData"), qlonglong(70000));
        session->Set(QStringLiteral("conexionBORRADOlocalCENTRO"), connections[QStringLiteral("borrado.db")]);
        session->Set(QStringLiteral("conexionlocalCENTRO"), connections[QStringLiteral("centro.db")]);
        session->Set(QStringLiteral("conexionAppEntrada"), connections[QStringLiteral("entrada.db")]);
        session->Set(QStringLiteral("IDPerfil"), 2);
        session->Set(QStringLiteral("IDUsuario"), QStringLiteral("12")); // numbers may come as text
        session->Set(QStringLiteral("IDCentro"), 7);
        session->Set(QStringLiteral("idCursoEscolar"), 4);
        session->Set(QStringLiteral("NombreUsuario"), QStringLiteral("secretaria"));
        session->Set(QStringLiteral("NombreCentro"), QStringLiteral("Colegio Ñandú"));
        session->Set(QStringLiteral("Pesetas"), false);
        session->Set(QStringLiteral("MTP"), QStringLiteral("True"));
        session->Set(QStringLiteral("RutaIcono"), QStringLiteral("/opt/host/icono.ico"));
        session->Set(QStringLiteral("sqlserver"), false);
    }

    QTemporaryDir dir;
    QMap<QString, ConnectionPtr> connections;
    SesionHostPtr session;
    cConfiguracion configuracion;
};

TEST_F(SessionCopyTest, EveryPropertyLandsInItsTypedField)
{
    CopySession(session, configuracion);
    EXPECT_FALSE(configuracion.blnSQLServer);
    EXPECT_EQ(configuracion.intIDPerfil(), 2);
    EXPECT_EQ(configuracion.intIDUsuario(), 12);
    EXPECT_EQ(configuracion.strNombreUsuario(), QStringLiteral("secretaria"));
    EXPECT_EQ(configuracion.intIdCentro(), 7);
    EXPECT_EQ(configuracion.strNombreCentro(), QStringLiteral("Colegio Ñandú"));
    EXPECT_EQ(configuracion.intIDCursoEscolar(), 4);
    EXPECT_EQ(configuracion.intCodCurso(), 0);
    EXPECT_EQ(configuracion.intTipoEnsenanza(), 0);
    EXPECT_EQ(configuracion.conLocalBorradoCentro(), connections[QStringLiteral("borrado.db")]);
    EXPECT_EQ(configuracion.conLocalCentro(), connections[QStringLiteral("centro.db")]);
    EXPECT_EQ(configuracion.conLocalAppEntrada(), connections[QStringLiteral("entrada.db")]);
    EXPECT_EQ(configuracion.lngRowData(), 70000);
    EXPECT_EQ(configuracion.bytAccion(), 3);
    EXPECT_FALSE(configuracion.blnPesetas());
    EXPECT_TRUE(configuracion.Activa());
    EXPECT_FALSE(configuracion.blnDatosMedicos());
    EXPECT_TRUE(configuracion.MTP());
    EXPECT_EQ(configuracion.RutaIcono(), QStringLiteral("/opt/host/icono.ico"));
    EXPECT_EQ(configuracion.datossesion(), session);
    EXPECT_EQ(configuracion.RutaBD(), QStringLiteral("/srv/datos"));
    EXPECT_EQ(modPrincipal::HelpFile, QStringLiteral("/opt/host/vendelar.chm"));
}

TEST_F(SessionCopyTest, PropertyNamesAreCaseSensitive)
{
    // The same session, but the school id under a differently cased name.
    auto other = std::make_shared<SesionHost>();
    for (const QString &name : session->Names()) {
        const QString target = name == QLatin1String("IDCentro") ? QStringLiteral("idcentro") : name;
        if (name.startsWith(QLatin1String("conexion")))
            other->Set(target, session->ConnectionValue(name));
        else
            other->Set(target, session->Text(name));
    }
    try {
        CopySession(other, configuracion);
        FAIL() << "a session without \"IDCentro\" must be refused";
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), QStringLiteral("La sesión no tiene la propiedad «IDCentro»."));
    }
}

TEST_F(SessionCopyTest, ASixteenBitIdAbove32767AbortsAndEarlierPropertiesKeepTheirNewValues)
{
    configuracion.set_intIdCentro(1);
    configuracion.set_strNombreUsuario(QStringLiteral("antes"));
    session->Set(QStringLiteral("IDCentro"), 32768);
    try {
        CopySession(session, configuracion);
        FAIL() << "32768 does not fit a 16-bit field";
    } catch (const SessionError &error) {
        EXPECT_TRUE(error.Message().startsWith(QStringLiteral("Desbordamiento: la propiedad de sesión «IDCentro» vale 32768")))
            << error.Message().toStdString();
    }
    // Read before the failure: stored. After it: untouched.
    EXPECT_EQ(configuracion.RutaBD(), QStringLiteral("/srv/datos"));
    EXPECT_EQ(configuracion.intIDUsuario(), 12);
    EXPECT_EQ(configuracion.intIdCentro(), 1);
    EXPECT_EQ(configuracion.strNombreUsuario(), QStringLiteral("antes"));

    session->Set(QStringLiteral("IDCentro"), 32767);
    EXPECT_NO_THROW(CopySession(session, configuracion));
    EXPECT_EQ(configuracion.intIdCentro(), 32767);
    session->Set(QStringLiteral("IDCentro"), -32768);
    EXPECT_NO_THROW(CopySession(session, configuracion));
}

TEST_F(SessionCopyTest, AConnectionPropertyHoldingTextIsRefused)
{
    session->Set(QStringLiteral("conexionlocalCENTRO"), QStringLiteral("Provider=SQLite;Data Source=centro.db"));
    try {
        CopySession(session, configuracion);
        FAIL() << "a connection string is not a connection";
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), QStringLiteral("La propiedad de sesión «conexionlocalCENTRO» vale "
                                                  "«Provider=SQLite;Data Source=centro.db», que no es una conexión."));
    }
    EXPECT_EQ(configuracion.conLocalBorradoCentro(), connections[QStringLiteral("borrado.db")]);
    EXPECT_EQ(configuracion.conLocalCentro(), nullptr);
}

TEST_F(SessionCopyTest, ASecondCallOverwritesFilledPropertiesOnly)
{
    CopySession(session, configuracion);
    configuracion.set_intCodCurso(5);
    session->Set(QStringLiteral("NombreCentro"), QStringLiteral("Otro"));
    session->Set(QStringLiteral("sqlserver"), true);
    CopySession(session, configuracion);
    EXPECT_EQ(configuracion.strNombreCentro(), QStringLiteral("Otro"));
    EXPECT_TRUE(configuracion.blnSQLServer);
    EXPECT_EQ(configuracion.intCodCurso(), 5);
}

TEST_F(SessionCopyTest, TheLibraryKeepsOneSessionContext)
{
    EXPECT_EQ(&modPrincipal::Configuracion(), &modPrincipal::Configuracion());
}

TEST(SesionHostTest, ConversionsFollowTheHostsLateBoundReads)
{
    SesionHost s;
    s.Set(QStringLiteral("n"), QStringLiteral("12.5"));
    s.Set(QStringLiteral("m"), QStringLiteral("13.5"));
    s.Set(QStringLiteral("t"), true);
    s.Set(QStringLiteral("x"), QStringLiteral("doce"));
    EXPECT_EQ(s.Integer(QStringLiteral("n")), 12); // half to even
    EXPECT_EQ(s.Integer(QStringLiteral("m")), 14);
    EXPECT_EQ(s.Integer(QStringLiteral("t")), -1);
    EXPECT_TRUE(s.Boolean(QStringLiteral("n")));
    EXPECT_EQ(s.Text(QStringLiteral("t")), QStringLiteral("True"));
    EXPECT_THROW(s.Integer(QStringLiteral("x")), SessionError);
    EXPECT_THROW(s.Boolean(QStringLiteral("x")), SessionError);
    EXPECT_THROW(s.ConnectionValue(QStringLiteral("n")), SessionError);
    EXPECT_THROW(s.Text(QStringLiteral("falta")), SessionError);
}
