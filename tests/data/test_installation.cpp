// The installation builder (files, the session settings file as our reader
// reads it back, the databases behind the connection strings it records)
// and the demo school built with it.
#include "data/Declarante.h"
#include "data/Demo.h"
#include "data/DonorQuery.h"
#include "data/Installation.h"
#include "data/SchemaVersion.h"
#include "data/SettingsFile.h"

#include "test_data.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace data_test;

namespace {

InstallationDescription SmallInstallation()
{
    InstallationDescription d;
    d.school = {7,
                "Colegio Peñalara, Sección Norte",
                "Mª Luisa O'Connor Ruiz",
                "R2800347C",
                "918 765 432",
                1,
                "Calle del Pinar, 3",
                "Cercedilla",
                "28470",
                "Madrid",
                "secretaria@penalara.es"};
    d.years.resize(3);
    YearDescription &first = d.years[0], &second = d.years[1], &missing = d.years[2];
    first.id = 3, first.name = "2023-2024", first.fileName = "curso 2023.db";
    first.activities = {{1, "Comedor", 110.0}};
    first.members = {
        {100, "García", "Núñez", "Pedro", 1, "12345678Z", AddressDescription{"Calle Mayor, 1", "Madrid", "28013", "Madrid"}},
        {102, "Peña", "Ruiz", "Luis", 2, QString(), std::nullopt},
        {104, "Ortiz", "Mora", "Rosa", 4, "", AddressDescription{"Calle Ancha", "Barcelona", "08001", "Barna"}},
    };
    first.students = {{1, "García", "D'Souza", "Ana", 1}, {2, "Peña", "López", "Hugo", 2}, {4, "Ortiz", "Vela", "Íker", 4}};
    first.enrolments = {{1, 1, 100, 110.0, SchoolMonths()},
                        {1, 1, 0, 30.0, SchoolMonths()},
                        {2, 1, 102, std::nullopt, Months({1, 2})},
                        {4, 1, 999, 12.5, SchoolMonths()}}; // 999: not on file
    second.id = 5, second.name = "2024-2025";
    missing.id = 4, missing.name = "2022-2023", missing.fileName = "perdido.db", missing.createDatabase = false;
    d.savedWork.activities = {{3, "2023-2024", "Provider=SQLite;Data Source=datos/curso 2023.db", 1, "Comedor", 12.5, "A",
                               "Donativo - 80%", "111111000111", true}};
    d.savedWork.payments = {{1, 100, 3, 1, 1100}};
    d.savedWork.donors = {{1, 100, "Pedro", "García", "Núñez", "12345678Z", false}};
    d.session.delegacion = "Madrid; Centro";
    d.session.domicilio = "Calle del Pinar, 3 = sede \"principal\"";
    return d;
}

// Every key of the settings file in the order of its lines, as "Group/key=value" with the value read back.
QStringList Settings(const QString &iniFile)
{
    const SettingsFile file = SettingsFile::Read(iniFile);
    QStringList entries;
    for (const SettingsSection &section : file.Sections())
        for (const SettingsEntry &entry : section.entries)
            entries << section.name + "/" + entry.key + "=" + entry.value;
    return entries;
}

class InstallationTest : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_paths = BuildInstallation(Path("instalación"), SmallInstallation());
    }

    InstallationPaths m_paths;
};

TEST_F(InstallationTest, SettingsFileIsReadBackExactlyAndPathsAreWhereItSays)
{
    EXPECT_EQ(Settings(m_paths.iniFile),
              QStringList({"Sesion/rutaaplicacion=app",
                           "Sesion/RutaBD=datos",
                           "Sesion/sqlserver=false",
                           "Sesion/IDPerfil=1",
                           "Sesion/IDUsuario=1",
                           "Sesion/NombreUsuario=secretaria",
                           "Sesion/IDCentro=7",
                           "Sesion/NombreCentro=Colegio Peñalara, Sección Norte",
                           "Sesion/idCursoEscolar=5", // the latest year
                           "Sesion/Activa=true",
                           "Sesion/Accion=0",
                           "Sesion/lngRowData=0",
                           "Sesion/Pesetas=false",
                           "Sesion/MTP=false",
                           "Sesion/RutaIcono=app/modelo182.ico",
                           "Sesion/conexionAppEntrada=Provider=SQLite;Data Source=datos/entrada.db",
                           "Sesion/conexionlocalCENTRO=Provider=SQLite;Data Source=datos/centro.db",
                           "Sesion/conexionBORRADOlocalCENTRO=Provider=SQLite;Data Source=datos/borrado.db",
                           "Modelo182/Locale=es_ES",
                           "Modelo182/desarrollo=false",
                           "Modelo182/NumeroJustificante=",
                           "Modelo182/Delegacion=Madrid; Centro",
                           "Modelo182/Domicilio=Calle del Pinar, 3 = sede \"principal\""}));
    const QString root = Path("instalación");
    EXPECT_EQ(m_paths.modelo182ConnectionString,
              "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + root
                  + "/datos/Modelo182.mdb;Persist Security Info=False;Jet OLEDB:Database Password=zq417tev");
    EXPECT_TRUE(QFileInfo(root + "/app/Informes").isDir());
    EXPECT_FALSE(QFileInfo::exists(root + "/datos/perdido.db"));
    InstallationDescription d = SmallInstallation();
    d.session.currentYear = 3, d.session.locale = "";
    const QString other = Settings(BuildInstallation(Path("otra"), d).iniFile).join('\n');
    EXPECT_TRUE(other.contains("Sesion/idCursoEscolar=3\n") && !other.contains("Locale"));
}

TEST_F(InstallationTest, HostDatabasesHoldTheDescriptionBehindTheRecordedConnectionStrings)
{
    auto entrada = OpenConnection(m_paths.conexionAppEntrada, m_paths.root);
    EXPECT_EQ(UserVersion(*entrada), kSchemaVersion);
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, Nombre, BD FROM CursoEscolar WHERE codcentro=7 ORDER BY 1"),
              QStringList({"3|2023-2024|Provider=SQLite;Data Source=datos/curso 2023.db",
                           "4|2022-2023|Provider=SQLite;Data Source=datos/perdido.db",
                           "5|2024-2025|Provider=SQLite;Data Source=datos/curso5.db"}));
    auto centro = OpenConnection(m_paths.conexionLocalCentro, m_paths.root);
    EXPECT_EQ(Rows(*centro, "SELECT * FROM CursoEscAct"),
              QStringList{"3|2023-2024|Provider=SQLite;Data Source=datos/curso 2023.db|1|Comedor|12.5|A|"
                          "Donativo - 80%|111111000111|-1"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM DatosModelo182"), QStringList{"1|100|3|1|1100"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM ALMFModelo182"), QStringList{"1|100|Pedro|García|Núñez|12345678Z|0"});
    EXPECT_EQ(Count(*OpenConnection(m_paths.modelo182ConnectionString, m_paths.root), "Provincias"), 52);
    auto year = OpenConnection(m_paths.Year(3)->connectionString, m_paths.root);
    EXPECT_EQ(Rows(*year, DonorQuery(1),
                   {"IDAlumno", "IDMiembroFamilia", "PrecioEuros", "DNI", "descripcion", "dato1", "dato3"}),
              QStringList({"1|NULL|30|NULL|NULL|-1|-1", "1|100|110|12345678Z|Madrid|-1|-1", "4|NULL|12.5|NULL|NULL|-1|-1",
                           "2|102|NULL|NULL|NULL|-1|0"}));
    // Payer roles are keyed apart from the members; an unknown province is added from 100 on; NULL and "" stay apart.
    EXPECT_EQ(Rows(*year, "SELECT * FROM MiembroFamiliaPagador ORDER BY 1"),
              QStringList({"5001|100", "5002|102", "5003|999"}));
    EXPECT_EQ(Rows(*year, "SELECT IDProvincia, descripcion FROM Provincia WHERE IDProvincia >= 100"),
              QStringList{"100|Barna"});
    EXPECT_EQ(Rows(*year, "SELECT DNI, codDireccion FROM MiembroFamilia WHERE IDMiembroFamilia IN (102, 104) ORDER BY 1"),
              QStringList({"NULL|NULL", "|2"}));
}

// The NIF / NIE check from the published rule: the letter of the number
// modulo 23; an NIE's X, Y, Z stand for 0, 1, 2.
bool IsValidNifOrNie(const QString &text)
{
    const QRegularExpressionMatch m = QRegularExpression("^([XYZ0-9])([0-9]{7})([A-Z])$").match(text);
    if (!m.hasMatch())
        return false;
    const qint64 number = QString("0123456789XYZ").indexOf(m.captured(1)) % 10 * 10000000LL + m.captured(2).toLongLong();
    return QString("TRWAGMYFPDXBNJZSQVHLCKE").at(number % 23) == m.captured(3).at(0);
}

class DemoSchoolTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_dir = new QTemporaryDir;
        s_paths = new InstallationPaths(CreateDemoInstallation(s_dir->path()));
        s_demo = new InstallationDescription(DemoSchool());
    }
    static void TearDownTestSuite() { delete s_demo, delete s_paths, delete s_dir; }

    static inline QTemporaryDir *s_dir = nullptr;
    static inline InstallationPaths *s_paths = nullptr;
    static inline InstallationDescription *s_demo = nullptr;
};

TEST_F(DemoSchoolTest, IsTheSameOnEveryCallAndWithinItsRanges)
{
    const auto people = [](const YearDescription &year) {
        QStringList all;
        for (const MemberDescription &m : year.members)
            all << m.surname1 + " " + m.surname2 + ", " + m.name + " " + m.dni;
        return all;
    };
    EXPECT_EQ(people(DemoSchool().years.last()), people(s_demo->years.last()));
    ASSERT_EQ(s_demo->years.size(), 2);
    for (const YearDescription &year : s_demo->years) {
        SCOPED_TRACE(year.name);
        EXPECT_TRUE(year.students.size() >= 350 && year.students.size() <= 450) << year.students.size();
        EXPECT_TRUE(year.members.size() >= 550 && year.members.size() <= 650) << year.members.size();
        EXPECT_TRUE(year.activities.size() >= 8 && year.activities.size() <= 9) << year.activities.size();
        int noPayer = 0;
        for (const EnrolmentDescription &e : year.enrolments) {
            noPayer += e.payer == 0;
            EXPECT_TRUE(e.months[6] == 0 && e.months[7] == 0); // no fees in July and August
        }
        EXPECT_GE(noPayer, 3);
    }
    int valid = 0, nie = 0, missing = 0, noAddress = 0;
    for (const MemberDescription &m : s_demo->years.first().members) {
        missing += m.dni.isEmpty();
        noAddress += !m.address;
        if (IsValidNifOrNie(m.dni))
            ++valid, nie += QString("XYZ").contains(m.dni.at(0));
    }
    EXPECT_GT(valid, int(s_demo->years.first().members.size()) * 85 / 100);
    EXPECT_LT(valid + missing, s_demo->years.first().members.size()); // some wrong ones
    EXPECT_GE(nie, 3);
    EXPECT_GE(missing, 3);
    EXPECT_GE(noAddress, 3);
    const QString names = people(s_demo->years.first()).join('\n');
    for (const char *text : {"ñ", "Mª", "'", "á"})
        EXPECT_TRUE(names.contains(text)) << text;
}

TEST_F(DemoSchoolTest, InstallationHoldsTheDescriptionWithProvincesKnownToTheDeclaration)
{
    auto modelo182 = OpenConnection(s_paths->modelo182ConnectionString, s_paths->root);
    for (const YearDescription &description : s_demo->years) {
        SCOPED_TRACE(description.name);
        auto year = OpenConnection(s_paths->Year(description.id)->connectionString, s_paths->root);
        EXPECT_EQ(Count(*year, "Alumno"), description.students.size());
        EXPECT_EQ(Count(*year, "MiembroFamilia"), description.members.size());
        const QStringList names = Rows(*year, "SELECT DISTINCT descripcion FROM Provincia INNER JOIN Direccion "
                                              "ON Direccion.codProvincia=Provincia.IDProvincia");
        EXPECT_GE(names.size(), 8);
        for (const QString &name : names)
            EXPECT_EQ(Rows(*modelo182, "SELECT CodigoProvincia FROM Provincias WHERE Provincia='"
                                           + QString(name).replace("'", "''") + "'")
                          .size(),
                      1)
                << name;
    }
    const Declarante d = ReadDeclarante(*OpenConnection(s_paths->Year(2)->connectionString, s_paths->root));
    EXPECT_EQ(QStringList({d.nombre, d.pcNombre, d.pcApellido1, d.pcApellido2, d.cif, d.rFiscal}).join('|'),
              "COLEGIO SANTA TERESA DE LAS ACACIAS|TERESA|GUTIÉRREZ|ALCAÑIZ|R2800347C|1");
    EXPECT_TRUE(Settings(s_paths->iniFile).contains("Sesion/idCursoEscolar=2"));
}

} // namespace
