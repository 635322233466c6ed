#include "data/Connection.h"
#include "data/Installation.h"
#include "session/SessionSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class SessionSettingsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }
    void TearDown() override { Connection::SetBaseFolder(QString()); }
    QTemporaryDir dir;
};

TEST_F(SessionSettingsTest, BuildsTheHostSessionWithOpenConnectionsAndAbsolutePaths)
{
    InstallationDescription d;
    d.school.id = 7;
    d.school.name = QStringLiteral("Colegio Prueba");
    YearDescription year;
    year.id = 3;
    year.name = QStringLiteral("2024-2025");
    d.years = {year};
    d.session.desarrollo = true;
    d.session.numeroJustificante = QStringLiteral("1820000000001");
    const InstallationPaths paths = BuildInstallation(dir.path(), d);

    const SessionSettings settings = SessionSettings::Load(paths.iniFile);
    const SesionHostPtr session = settings.BuildSession();
    EXPECT_EQ(session->Text(QStringLiteral("RutaBD")), paths.rutaBD);
    EXPECT_EQ(session->Text(QStringLiteral("rutaaplicacion")), paths.rutaAplicacion);
    EXPECT_EQ(session->Text(QStringLiteral("RutaIcono")), paths.iconFile);
    EXPECT_EQ(session->Integer(QStringLiteral("IDCentro")), 7);
    EXPECT_EQ(session->Text(QStringLiteral("NombreCentro")), QStringLiteral("Colegio Prueba"));
    EXPECT_FALSE(session->Boolean(QStringLiteral("sqlserver")));

    ConnectionPtr entrada = session->ConnectionValue(QStringLiteral("conexionAppEntrada"));
    EXPECT_EQ(entrada->State(), Connection::adStateOpen);
    EXPECT_EQ(entrada->ConnectionString(), paths.conexionAppEntrada);
    Recordset rs = entrada->Execute(QStringLiteral("SELECT BD FROM CursoEscolar WHERE idcursoescolar=3"));
    ASSERT_FALSE(rs.Eof());
    // The year's relative string opens against the settings file's folder.
    Connection yearDatabase;
    EXPECT_NO_THROW(yearDatabase.Open(rs.Fields(QStringLiteral("BD")).toString()));

    EXPECT_TRUE(settings.Program().desarrollo);
    EXPECT_EQ(settings.Program().numeroJustificante, QStringLiteral("1820000000001"));
    EXPECT_EQ(settings.Program().locale.name(), QStringLiteral("es_ES"));
}

TEST_F(SessionSettingsTest, AMissingFileOrSectionIsAClearError)
{
    try {
        SessionSettings::Load(dir.filePath(QStringLiteral("no.ini")));
        FAIL();
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), QStringLiteral("No se encuentra el fichero de sesión «%1».").arg(dir.filePath(QStringLiteral("no.ini"))));
    }
    QFile empty(dir.filePath(QStringLiteral("vacio.ini")));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.write("[Otra]\nx=1\n");
    empty.close();
    EXPECT_THROW(SessionSettings::Load(empty.fileName()), SessionError);
}

TEST_F(SessionSettingsTest, AConnectionToAMissingDatabaseFailsWithoutCreatingIt)
{
    QFile ini(dir.filePath(QStringLiteral("s.ini")));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[Sesion]\nconexionAppEntrada=\"Provider=SQLite;Data Source=datos/no.db\"\n");
    ini.close();
    const SessionSettings settings = SessionSettings::Load(ini.fileName());
    EXPECT_ANY_THROW(settings.BuildSession());
    EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("datos/no.db"))));
}
