#include "data/Connection.h"
#include "data/Installation.h"
#include "session/SessionSettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class SessionSettingsTest : public ::testing::Test
{
protected:
    QString Write(const char *name, const char *text)
    {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    QTemporaryDir dir;
};

TEST_F(SessionSettingsTest, BuildsTheHostSessionWithOpenConnectionsAndAbsolutePaths)
{
    InstallationDescription d;
    d.school.id = 7;
    d.school.name = "Colegio Prueba";
    d.years = {YearDescription{}};
    d.years[0].id = 3;
    d.years[0].name = "2024-2025";
    d.session.desarrollo = true;
    const InstallationPaths paths = BuildInstallation(dir.path(), d);
    const SessionSettings settings = SessionSettings::Load(paths.iniFile);
    const SesionHostPtr session = settings.BuildSession();
    EXPECT_EQ(session->Text("RutaBD"), paths.rutaBD);
    EXPECT_EQ(session->Text("RutaIcono"), paths.iconFile);
    EXPECT_EQ(session->Integer("IDCentro"), 7);
    EXPECT_FALSE(session->Boolean("sqlserver"));
    EXPECT_TRUE(settings.Program().desarrollo);
    EXPECT_EQ(settings.Program().locale.name(), "es_ES");
    ConnectionPtr entrada = session->ConnectionValue("conexionAppEntrada");
    EXPECT_EQ(entrada->ConnectionString(), paths.conexionAppEntrada);
    // The year's relative string opens against the settings file's folder,
    // which the session hands over with this program's settings.
    EXPECT_EQ(session->Program().dataFolder, paths.root);
    EXPECT_EQ(session->Program().desarrollo, true);
    Recordset rs = entrada->Execute("SELECT BD FROM CursoEscolar WHERE idcursoescolar=3");
    Connection year;
    year.SetBaseFolder(session->Program().dataFolder);
    EXPECT_NO_THROW(year.Open(rs.Fields("BD").toString()));
}

TEST_F(SessionSettingsTest, AMissingFileSectionOrDatabaseIsAClearError)
{
    try {
        SessionSettings::Load(dir.filePath("no.ini"));
        FAIL();
    } catch (const SessionError &error) {
        EXPECT_EQ(error.Message(), "No se encuentra el fichero de sesión «" + dir.filePath("no.ini") + "».");
    }
    EXPECT_THROW(SessionSettings::Load(Write("otra.ini", "[Otra]\nx=1\n")), SessionError);
    const SessionSettings missing = SessionSettings::Load(
        Write("s.ini", "[Sesion]\nconexionAppEntrada=\"Provider=SQLite;Data Source=datos/no.db\"\n"));
    EXPECT_ANY_THROW(missing.BuildSession());
    EXPECT_FALSE(QFile::exists(dir.filePath("datos/no.db"))); // never created
}
