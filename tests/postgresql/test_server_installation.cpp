// The installation builder and the demo with the host's databases on a
// PostgreSQL server: the connection strings the session and CursoEscolar
// hold, the declaration database where the add-in looks for it, databases
// made again without doubling their rows, and a database that is not ours
// left alone.
#include "ServerTest.h"

#include "data/Demo.h"
#include "data/Installation.h"
#include "data/PostgresServer.h"
#include "data/SettingsFile.h"

#include <QFileInfo>

using namespace server_test;

namespace {

using ServerInstallation = ServerTest;

InstallationDescription TwoYears()
{
    InstallationDescription d;
    d.school.id = 7;
    d.school.name = QStringLiteral("Colegio San Prueba");
    for (int id : {3, 4}) {
        YearDescription y;
        y.id = id;
        y.name = id == 3 ? QStringLiteral("2023-2024") : QStringLiteral("2024-2025");
        y.activities = {{1, QStringLiteral("Comedor"), 90.0}};
        y.students = {{201, QStringLiteral("García"), QStringLiteral("López"), QStringLiteral("Lucía"), 1}};
        y.enrolments = {{201, 1, 0, 90.0, SchoolMonths()}};
        d.years.append(y);
    }
    d.server.connectionString = TestServer();
    d.server.prefix = TestDatabasePrefix();
    d.session.sqlServer = true;
    return d;
}

// The test server's connection string naming another database, written out
// by hand in the order of M182_PG.
QString ServerString(const QString &database)
{
    return "Provider=PostgreSQL;Host=" + ServerValue("Host") + ";Port=" + ServerValue("Port") + ";Database=" + database
           + ";User ID=" + ServerValue("User ID") + ";Password=" + ServerValue("Password");
}

bool DatabaseExists(const QString &name)
{
    ConnectionPtr server = Open(TestServer());
    return Value(*server, "SELECT COUNT(*) FROM pg_database WHERE datname='" + name + "'") == "1";
}

TEST_F(ServerInstallation, TheSessionAndTheYearsNameTheServersDatabasesAndModelo182LiesBelowTheAddin)
{
    InstallationDescription d = TwoYears();
    d.addinFolder = dir.filePath("complemento");
    const InstallationPaths paths = BuildInstallation(dir.filePath("inst"), d);
    const QString prefix = TestDatabasePrefix();

    EXPECT_EQ(paths.conexionAppEntrada, ServerString(prefix + "_entrada"));
    EXPECT_EQ(paths.conexionLocalCentro, ServerString(prefix + "_centro"));
    EXPECT_EQ(paths.conexionBorradoLocalCentro, ServerString(prefix + "_borrado"));
    EXPECT_EQ(paths.entradaFile, "");
    EXPECT_EQ(paths.years.at(1).connectionString, ServerString(prefix + "_curso4"));
    EXPECT_EQ(paths.modelo182File, dir.filePath("complemento/Informes/Modelo182.mdb"));
    EXPECT_TRUE(QFileInfo(paths.modelo182File).isFile());
    EXPECT_FALSE(QFileInfo::exists(dir.filePath("inst/datos/Modelo182.mdb")));

    const SettingsFile ini = SettingsFile::Read(paths.iniFile);
    EXPECT_EQ(ini.Value("Sesion", "sqlserver"), "true");
    EXPECT_EQ(ini.Value("Sesion", "conexionAppEntrada"), ServerString(prefix + "_entrada"));
    EXPECT_EQ(ini.Value("Sesion", "conexionlocalCENTRO"), ServerString(prefix + "_centro"));
    EXPECT_EQ(ini.Value("Sesion", "conexionBORRADOlocalCENTRO"), ServerString(prefix + "_borrado"));

    ConnectionPtr entrada = Open(paths.conexionAppEntrada);
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, BD FROM CursoEscolar ORDER BY IDCursoEscolar"),
              (QStringList{"3|" + ServerString(prefix + "_curso3"), "4|" + ServerString(prefix + "_curso4")}));
    ConnectionPtr year = Open(paths.years.at(0).connectionString);
    EXPECT_EQ(Rows(*year, "SELECT Apellido_1, Nombre FROM Alumno"), QStringList{"García|Lucía"});
}

TEST_F(ServerInstallation, BuildingAgainReplacesTheRowsAndAYearWithoutDatabaseHasNoneOnTheServer)
{
    InstallationDescription d = TwoYears();
    BuildInstallation(dir.path(), d);
    d.years[0].students.append({202, QStringLiteral("Ruiz"), QString(), QStringLiteral("Eva"), 2});
    d.years[1].createDatabase = false;
    const InstallationPaths paths = BuildInstallation(dir.path(), d);
    ConnectionPtr year = Open(paths.years.at(0).connectionString);
    EXPECT_EQ(Rows(*year, "SELECT IDAlumno FROM Alumno ORDER BY IDAlumno"), (QStringList{"201", "202"}));
    EXPECT_EQ(Value(*year, "SELECT COUNT(*) FROM Alumno_Actividad_Miembro"), "1");
    EXPECT_TRUE(DatabaseExists(TestDatabasePrefix() + "_curso3"));
    EXPECT_FALSE(DatabaseExists(TestDatabasePrefix() + "_curso4"));
}

TEST_F(ServerInstallation, ADatabaseThatIsNotAnInstallationsIsRefusedAndKept)
{
    const QString name = TestDatabasePrefix() + "_entrada";
    {
        ConnectionPtr other = Open(EmptyTestDatabase("entrada"));
        other->Execute("CREATE TABLE nominas (id INTEGER)");
    }
    const DatabaseError error = ExpectDatabaseError([&] { BuildInstallation(dir.path(), TwoYears()); });
    EXPECT_EQ(error.Message(), "La base de datos «" + name
                                   + "» del servidor ya existe y no la creó este programa: no se borra. Elija otro "
                                     "nombre.");
    {
        ConnectionPtr other = Open(ServerString(name));
        EXPECT_EQ(Value(*other, "SELECT COUNT(*) FROM nominas"), "0");
    }
    PostgresServer::DropDatabase(TestServer(), name);
}

TEST_F(ServerInstallation, AServerConnectionOfAnotherProviderIsRefused)
{
    InstallationDescription d = TwoYears();
    d.server.connectionString = "Provider=SQLite;Data Source=datos/x.db";
    const DatabaseError error = ExpectDatabaseError([&] { BuildInstallation(dir.path(), d); });
    EXPECT_EQ(error.Message(), "La conexión del servidor debe ser del proveedor PostgreSQL "
                               "(Provider=PostgreSQL;Host=...;Port=...;User ID=...;Password=...).");
}

TEST_F(ServerInstallation, TheDemoOnTheServerNamesItsDatabasesAfterTheConnectionsDatabase)
{
    const QString name = TestDatabasePrefix() + "_demo";
    const InstallationPaths paths = CreateDemoInstallationOnServer(dir.filePath("demo"), ServerString(name),
                                                                   dir.filePath("bin"));
    EXPECT_EQ(paths.conexionLocalCentro, ServerString(name + "_centro"));
    EXPECT_EQ(paths.modelo182File, dir.filePath("bin/Informes/Modelo182.mdb"));
    EXPECT_EQ(SettingsFile::Read(paths.iniFile).Value("Sesion", "sqlserver"), "true");
    ConnectionPtr entrada = Open(paths.conexionAppEntrada);
    EXPECT_EQ(Rows(*entrada, "SELECT Nombre, BD FROM CursoEscolar ORDER BY IDCursoEscolar"),
              (QStringList{"2024-2025|" + ServerString(name + "_curso2024-2025"),
                           "2025-2026|" + ServerString(name + "_curso2025-2026")}));
    ConnectionPtr year = Open(ServerString(name + "_curso2025-2026"));
    EXPECT_GT(Value(*year, "SELECT COUNT(*) FROM Alumno").toInt(), 300);
}

TEST(ServerDescription, TheConnectionsDatabaseIsThePrefixAndTheServerIsReachedThroughPostgres)
{
    const HostServerDescription named = ServerOf("Provider=PostgreSQL;Host=db.colegio.local;Port=5433;"
                                                 "Database=colegio2025;User ID=secretaria;Password=x");
    EXPECT_EQ(named.prefix, "colegio2025");
    EXPECT_EQ(named.connectionString, "Provider=PostgreSQL;Host=db.colegio.local;Port=5433;Database=postgres;"
                                      "User ID=secretaria;Password=x");
    EXPECT_EQ(ServerOf("Provider=PostgreSQL;Host=h").prefix, "modelo182");
    EXPECT_EQ(ServerOf("Provider=PostgreSQL;Host=h").connectionString, "Provider=PostgreSQL;Host=h;Database=postgres");
}

} // namespace
