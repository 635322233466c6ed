// The installation builder: files and folders, the session settings file
// as QSettings reads it back, and databases reachable through the
// connection strings the installation records.

#include "test_schema_helpers.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/DonorQuery.h"
#include "data/Installation.h"
#include "data/Schema.h"
#include "data/SchemaVersion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace schema_test;

namespace {

InstallationDescription SmallInstallation()
{
    InstallationDescription d;
    d.school = {7, "Colegio Peñalara, Sección Norte", "Mª Luisa O'Connor Ruiz", "R2800347C", "918 765 432", 1,
                "Calle del Pinar, 3", "Cercedilla", "28470", "Madrid", "secretaria@penalara.es"};
    d.otherSchools.append({8, "Colegio Vecino", "", "", "", 1, "", "", "", "", ""});

    YearDescription first;
    first.id = 3;
    first.name = "2023-2024";
    first.fileName = "curso 2023.db";
    first.activities = {{1, "Comedor", 110.0}, {2, "Inglés", 30.0}};
    first.members = {
        {100, "García", "Núñez", "Pedro", 1, "12345678Z", AddressDescription{"Calle Mayor, 1", "Madrid", "28013", "Madrid"}},
        {101, "D'Souza", "", "Anita", 1, "X1234567L", AddressDescription{"Rúa Nova, 2", "Lugo", "27001", "Lugo"}},
        {102, "Peña", "Ruiz", "Luis", 2, QString(), std::nullopt},
        {103, "Sanz", "Gil", "Eva", 3, "", AddressDescription{"Calle Sin Provincia", "Nadie", "00000", ""}},
        {104, "Ortiz", "Mora", "Rosa", 4, "11111111H", AddressDescription{"Calle Ancha", "Barcelona", "08001", "Barna"}},
    };
    first.students = {{1, "García", "D'Souza", "Ana", 1}, {2, "Peña", "López", "Hugo", 2},
                      {3, "Sanz", "", "Noa", 3}, {4, "Ortiz", "Vela", "Íker", 4}};
    first.enrolments = {
        {1, 1, 100, 110.0, SchoolMonths()},
        {1, 1, 101, 55.0, Months({1, 2, 3})},
        {2, 1, 102, std::nullopt, SchoolMonths()},
        {3, 2, 103, 30.0, SchoolMonths()},
        {4, 2, 0, 30.0, SchoolMonths()},
        {4, 1, 999, 12.5, SchoolMonths()},   // a payer that is not on file
    };

    YearDescription second;
    second.id = 5;
    second.name = "2024-2025";
    second.activities = {{1, "Comedor", 115.0}};
    second.school = d.school;
    second.school->name = "Colegio Peñalara";

    YearDescription missing;
    missing.id = 4;
    missing.name = "2022-2023";
    missing.fileName = "perdido.db";
    missing.createDatabase = false;

    d.years = {first, second, missing};

    d.savedWork.activities = {{3, "2023-2024", "Provider=SQLite;Data Source=datos/curso 2023.db", 1, "Comedor", 12.5,
                               "A", "Donativo - 80%", "111111000111", true}};
    d.savedWork.communities = {{12, 6, 15}};
    d.savedWork.payments = {{1, 100, 3, 1, 1100}};
    d.savedWork.donors = {{1, 100, "Pedro", "García", "Núñez", "12345678Z", false}};
    d.session.delegacion = "Madrid; Centro";
    d.session.domicilio = "Calle del Pinar, 3 = sede \"principal\"";
    return d;
}

class InstallationTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_root = QDir(m_dir.path()).filePath("instalación");
        m_paths = BuildInstallation(m_root, SmallInstallation());
        Connection::SetBaseFolder(m_paths.root);
    }

    ConnectionPtr Open(const QString &connectionString)
    {
        auto connection = std::make_shared<Connection>();
        connection->Open(connectionString);
        return connection;
    }

    QString Sesion(const QString &key)
    {
        QSettings ini(m_paths.iniFile, QSettings::IniFormat);
        return ini.value("Sesion/" + key).toString();
    }

    BaseFolderGuard m_guard;
    QTemporaryDir m_dir;
    QString m_root;
    InstallationPaths m_paths;
};

} // namespace

// --- Files and folders -----------------------------------------------------------------------

TEST_F(InstallationTest, ReportsWhereEverythingWent)
{
    const QString root = QDir(m_root).absolutePath();
    EXPECT_EQ(m_paths.root, root);
    EXPECT_EQ(m_paths.iniFile, root + "/modelo182.ini");
    EXPECT_EQ(m_paths.rutaBD, root + "/datos");
    EXPECT_EQ(m_paths.rutaAplicacion, root + "/app");
    EXPECT_EQ(m_paths.informes, root + "/app/Informes");
    EXPECT_EQ(m_paths.iconFile, root + "/app/modelo182.ico");
    EXPECT_EQ(m_paths.entradaFile, root + "/datos/entrada.db");
    EXPECT_EQ(m_paths.centroFile, root + "/datos/centro.db");
    EXPECT_EQ(m_paths.borradoFile, root + "/datos/borrado.db");
    EXPECT_EQ(m_paths.modelo182File, root + "/datos/Modelo182.mdb");
    EXPECT_EQ(m_paths.conexionAppEntrada, "Provider=SQLite;Data Source=datos/entrada.db");
    EXPECT_EQ(m_paths.conexionLocalCentro, "Provider=SQLite;Data Source=datos/centro.db");
    EXPECT_EQ(m_paths.conexionBorradoLocalCentro, "Provider=SQLite;Data Source=datos/borrado.db");
    EXPECT_EQ(m_paths.modelo182ConnectionString,
              "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + QDir::toNativeSeparators(root + "/datos/Modelo182.mdb")
                  + ";Persist Security Info=False;Jet OLEDB:Database Password=zq417tev");
    ASSERT_EQ(m_paths.years.size(), 3);
    EXPECT_EQ(m_paths.years.at(0).connectionString, "Provider=SQLite;Data Source=datos/curso 2023.db");
    EXPECT_EQ(m_paths.years.at(1).connectionString, "Provider=SQLite;Data Source=datos/curso5.db");
    EXPECT_EQ(m_paths.years.at(2).databaseFile, root + "/datos/perdido.db");
    ASSERT_NE(m_paths.Year(5), nullptr);
    EXPECT_EQ(m_paths.Year(5)->name, "2024-2025");
    EXPECT_EQ(m_paths.Year(6), nullptr);
}

TEST_F(InstallationTest, CreatesTheDatabasesAndFolders)
{
    for (const QString &file : {m_paths.iniFile, m_paths.entradaFile, m_paths.centroFile, m_paths.borradoFile,
                                m_paths.modelo182File, m_paths.years.at(0).databaseFile,
                                m_paths.years.at(1).databaseFile})
        EXPECT_TRUE(QFileInfo(file).isFile()) << qPrintable(file);
    EXPECT_TRUE(QFileInfo(m_paths.informes).isDir());
    EXPECT_FALSE(QFileInfo::exists(m_paths.years.at(2).databaseFile));
    EXPECT_FALSE(QFileInfo::exists(m_paths.iconFile));
}

// --- The session settings file ---------------------------------------------------------------

TEST_F(InstallationTest, SettingsFileHoldsEverySessionPropertyUnderItsExactName)
{
    QSettings ini(m_paths.iniFile, QSettings::IniFormat);
    ASSERT_EQ(ini.status(), QSettings::NoError);
    QStringList keys = ini.allKeys();
    keys.sort();
    QStringList expected = {"Sesion/rutaaplicacion", "Sesion/RutaBD", "Sesion/sqlserver", "Sesion/IDPerfil",
                            "Sesion/IDUsuario", "Sesion/NombreUsuario", "Sesion/IDCentro", "Sesion/NombreCentro",
                            "Sesion/idCursoEscolar", "Sesion/Activa", "Sesion/Accion", "Sesion/lngRowData",
                            "Sesion/Pesetas", "Sesion/MTP", "Sesion/RutaIcono", "Sesion/conexionAppEntrada",
                            "Sesion/conexionlocalCENTRO", "Sesion/conexionBORRADOlocalCENTRO", "Modelo182/Locale",
                            "Modelo182/desarrollo", "Modelo182/NumeroJustificante", "Modelo182/Delegacion",
                            "Modelo182/Domicilio"};
    expected.sort();
    EXPECT_EQ(keys, expected);
}

TEST_F(InstallationTest, SettingsValuesReadBackExactly)
{
    EXPECT_EQ(Sesion("rutaaplicacion"), "app");
    EXPECT_EQ(Sesion("RutaBD"), "datos");
    EXPECT_EQ(Sesion("sqlserver"), "false");
    EXPECT_EQ(Sesion("IDPerfil"), "1");
    EXPECT_EQ(Sesion("IDUsuario"), "1");
    EXPECT_EQ(Sesion("NombreUsuario"), "secretaria");
    EXPECT_EQ(Sesion("IDCentro"), "7");
    EXPECT_EQ(Sesion("NombreCentro"), "Colegio Peñalara, Sección Norte");
    EXPECT_EQ(Sesion("idCursoEscolar"), "5");   // the latest year
    EXPECT_EQ(Sesion("Activa"), "true");
    EXPECT_EQ(Sesion("Accion"), "0");
    EXPECT_EQ(Sesion("lngRowData"), "0");
    EXPECT_EQ(Sesion("Pesetas"), "false");
    EXPECT_EQ(Sesion("MTP"), "false");
    EXPECT_EQ(Sesion("RutaIcono"), "app/modelo182.ico");
    EXPECT_EQ(Sesion("conexionAppEntrada"), "Provider=SQLite;Data Source=datos/entrada.db");
    EXPECT_EQ(Sesion("conexionlocalCENTRO"), "Provider=SQLite;Data Source=datos/centro.db");
    EXPECT_EQ(Sesion("conexionBORRADOlocalCENTRO"), "Provider=SQLite;Data Source=datos/borrado.db");

    QSettings ini(m_paths.iniFile, QSettings::IniFormat);
    EXPECT_EQ(ini.value("Modelo182/Locale").toString(), "es_ES");
    EXPECT_EQ(ini.value("Modelo182/desarrollo").toString(), "false");
    EXPECT_EQ(ini.value("Modelo182/NumeroJustificante").toString(), "");
    EXPECT_EQ(ini.value("Modelo182/Delegacion").toString(), "Madrid; Centro");
    EXPECT_EQ(ini.value("Modelo182/Domicilio").toString(), "Calle del Pinar, 3 = sede \"principal\"");
    EXPECT_FALSE(ini.value("Sesion/sqlserver").toBool());
    EXPECT_TRUE(ini.value("Sesion/Activa").toBool());
}

TEST_F(InstallationTest, SettingsFileKeepsTheSessionOrder)
{
    QFile file(m_paths.iniFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    QStringList keys;
    for (const QString &line : lines)
        keys << line.section('=', 0, 0);
    EXPECT_EQ(keys.mid(0, 20),
              (QStringList{"[Sesion]", "rutaaplicacion", "RutaBD", "sqlserver", "IDPerfil", "IDUsuario",
                           "NombreUsuario", "IDCentro", "NombreCentro", "idCursoEscolar", "Activa", "Accion",
                           "lngRowData", "Pesetas", "MTP", "RutaIcono", "conexionAppEntrada", "conexionlocalCENTRO",
                           "conexionBORRADOlocalCENTRO", ""}));
    EXPECT_EQ(lines.at(20), "[Modelo182]");
    EXPECT_EQ(lines.at(2), "RutaBD=datos");
}

TEST_F(InstallationTest, SessionOptionsReachTheSettingsFile)
{
    InstallationDescription d = SmallInstallation();
    d.session.currentYear = 3;
    d.session.sqlServer = true;
    d.session.desarrollo = true;
    d.session.locale = "";
    d.session.userName = "jefa de estudios";
    QTemporaryDir other;
    const InstallationPaths paths = BuildInstallation(other.path(), d);
    QSettings ini(paths.iniFile, QSettings::IniFormat);
    EXPECT_EQ(ini.value("Sesion/idCursoEscolar").toString(), "3");
    EXPECT_EQ(ini.value("Sesion/sqlserver").toString(), "true");
    EXPECT_EQ(ini.value("Sesion/NombreUsuario").toString(), "jefa de estudios");
    EXPECT_EQ(ini.value("Modelo182/desarrollo").toString(), "true");
    EXPECT_FALSE(ini.contains("Modelo182/Locale"));
}

// --- The host's databases through the recorded connection strings ----------------------------

TEST_F(InstallationTest, EntryDatabaseListsTheSchoolAndItsYears)
{
    auto entrada = Open(Sesion("conexionAppEntrada"));
    EXPECT_EQ(Rows(*entrada, "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7"),
              QStringList{"7|Colegio Peñalara, Sección Norte"});
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=7"),
              (QStringList{"3|2023-2024", "4|2022-2023", "5|2024-2025"}));
    EXPECT_EQ(Rows(*entrada, "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=8"), QStringList{"8|Colegio Vecino"});
    EXPECT_EQ(Rows(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=3"),
              QStringList{"Provider=SQLite;Data Source=datos/curso 2023.db"});
    EXPECT_EQ(UserVersion(*entrada), kSchemaVersion);
}

TEST_F(InstallationTest, YearDatabaseOpensWithItsRecordedConnectionString)
{
    auto entrada = Open(Sesion("conexionAppEntrada"));
    const QString bd = Rows(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=3").value(0);
    auto year = Open(bd);
    EXPECT_EQ(Rows(*year, "SELECT IDActividad, Nombre FROM Actividad"), (QStringList{"1|Comedor", "2|Inglés"}));
    EXPECT_EQ(Rows(*year, "SELECT Nombre, DirectorCentro, CIF, Telefono, RFiscal FROM Centro"),
              QStringList{"Colegio Peñalara, Sección Norte|Mª Luisa O'Connor Ruiz|R2800347C|918 765 432|1"});
}

TEST_F(InstallationTest, YearCanCarryItsOwnSchoolRow)
{
    auto year = Open(m_paths.Year(5)->connectionString);
    EXPECT_EQ(Rows(*year, "SELECT Nombre FROM Centro"), QStringList{"Colegio Peñalara"});
    EXPECT_TRUE(Rows(*year, "SELECT IDAlumno FROM Alumno").isEmpty());
}

TEST_F(InstallationTest, MissingYearDatabaseFailsToOpen)
{
    auto entrada = Open(Sesion("conexionAppEntrada"));
    const QString bd = Rows(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=4").value(0);
    EXPECT_EQ(bd, "Provider=SQLite;Data Source=datos/perdido.db");
    Connection year;
    EXPECT_THROW(year.Open(bd), DatabaseError);
}

TEST_F(InstallationTest, DonorQueryReadsTheDescribedEnrolments)
{
    auto year = Open(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Pick(*year, DonorQuery(1), {"IDAlumno", "IDMiembroFamilia", "Nombre1", "PrecioEuros", "DNI",
                                          "poblacion", "descripcion", "dato1", "dato4", "dato7", "dato9"}),
              (QStringList{"1|101|Anita|55|X1234567L|Lugo|Lugo|-1|0|0|0",
                           "1|100|Pedro|110|12345678Z|Madrid|Madrid|-1|-1|0|-1",
                           "4|NULL|NULL|12.5|NULL|NULL|NULL|-1|-1|0|-1",
                           "2|102|Luis|NULL|NULL|NULL|NULL|-1|-1|0|-1"}));
}

TEST_F(InstallationTest, EnrolmentsWithoutPayerAndAddressesWithoutProvince)
{
    auto year = Open(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Pick(*year, DonorQuery(2),
                   {"IDAlumno", "IDMiembroFamilia", "direccion", "poblacion", "codigopostal", "descripcion"}),
              (QStringList{"4|NULL|NULL|NULL|NULL|NULL", "3|103|Calle Sin Provincia|Nadie|00000|NULL"}));
}

TEST_F(InstallationTest, PayerRolesAreKeyedApartFromMembers)
{
    auto year = Open(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Rows(*year, "SELECT idMiembroFamiliaPagador, codMiembroFamilia FROM MiembroFamiliaPagador "
                          "ORDER BY idMiembroFamiliaPagador"),
              (QStringList{"5001|100", "5002|101", "5003|102", "5004|103", "5005|999"}));
}

TEST_F(InstallationTest, UnknownProvinceNamesAreAddedToTheYear)
{
    auto year = Open(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Rows(*year, "SELECT IDProvincia, descripcion FROM Provincia WHERE IDProvincia >= 100"),
              QStringList{"100|Barna"});
    EXPECT_EQ(Count(*year, "Provincia"), 53);
}

TEST_F(InstallationTest, NullAndEmptyTextsAreKeptApart)
{
    auto year = Open(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Rows(*year, "SELECT IDMiembroFamilia, DNI, codDireccion FROM MiembroFamilia WHERE IDMiembroFamilia "
                          "IN (102, 103) ORDER BY IDMiembroFamilia"),
              (QStringList{"102|NULL|NULL", "103||3"}));
}

TEST_F(InstallationTest, SavedWorkIsInTheSchoolDatabase)
{
    auto centro = Open(Sesion("conexionlocalCENTRO"));
    EXPECT_EQ(Rows(*centro, "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"),
              QStringList{"3|2023-2024|Provider=SQLite;Data Source=datos/curso 2023.db|1|Comedor|12.5|A|"
                          "Donativo - 80%|111111000111|-1"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM ComDed"), QStringList{"12|6|15"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM DatosModelo182 WHERE IDCC=3 AND IDACT=1"),
              QStringList{"1|100|3|1|1100"});
    EXPECT_EQ(Rows(*centro, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=1 AND IDMF=100"),
              QStringList{"Pedro|García|Núñez|12345678Z|0"});
}

TEST_F(InstallationTest, DeletedRecordsDatabaseOpens)
{
    auto borrado = Open(Sesion("conexionBORRADOlocalCENTRO"));
    EXPECT_EQ(UserVersion(*borrado), kSchemaVersion);
}

TEST_F(InstallationTest, DeclarationDatabaseIsSeeded)
{
    auto modelo182 = Open(m_paths.modelo182ConnectionString);
    EXPECT_EQ(Count(*modelo182, "Provincias"), 52);
    EXPECT_EQ(Count(*modelo182, "ComunidadesAutonomas"), 19);
    EXPECT_EQ(Count(*modelo182, "Declarantes"), 0);
}

TEST_F(InstallationTest, BuildingAgainReplacesTheInstallation)
{
    InstallationDescription d = SmallInstallation();
    d.years.removeLast();
    d.years[0].students.removeLast();
    d.years[0].enrolments.removeLast();
    d.years[0].enrolments.removeLast();
    const InstallationPaths paths = BuildInstallation(m_root, d);
    auto year = Open(paths.Year(3)->connectionString);
    EXPECT_EQ(Count(*year, "Alumno"), 3);
    EXPECT_EQ(Count(*year, "Alumno_Actividad_Miembro"), 4);
    auto entrada = Open(paths.conexionAppEntrada);
    EXPECT_EQ(Count(*entrada, "CursoEscolar"), 2);
    auto modelo182 = Open(paths.modelo182ConnectionString);
    EXPECT_EQ(Count(*modelo182, "Provincias"), 52);
}

TEST_F(InstallationTest, YearWithAnExplicitConnectionString)
{
    InstallationDescription d = SmallInstallation();
    d.years[2].connectionString = QString("");
    QTemporaryDir other;
    const InstallationPaths paths = BuildInstallation(other.path(), d);
    Connection::SetBaseFolder(paths.root);
    auto entrada = Open(paths.conexionAppEntrada);
    EXPECT_EQ(Rows(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=4"), QStringList{""});
}

// --- Month helpers ---------------------------------------------------------------------------

TEST(MonthFlagsTest, SchoolMonthsAreSeptemberToJune)
{
    const MonthFlags flags = SchoolMonths();
    QList<int> values;
    for (const auto &flag : flags)
        values << flag.value_or(99);
    EXPECT_EQ(values, (QList<int>{-1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1}));
}

TEST(MonthFlagsTest, MonthsSetsOnlyTheNamedOnes)
{
    const MonthFlags flags = Months({2, 12});
    QList<int> values;
    for (const auto &flag : flags)
        values << flag.value_or(99);
    EXPECT_EQ(values, (QList<int>{0, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1}));
}
