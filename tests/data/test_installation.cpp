// The installation builder (files and folders, the session settings file as
// QSettings reads it back, the databases reachable through the connection
// strings it records) and the demo school built with it.

#include "data/Declarante.h"
#include "data/Demo.h"
#include "data/DonorQuery.h"
#include "data/Installation.h"
#include "data/SchemaVersion.h"

#include "test_data.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QSettings>

#include <algorithm>

using namespace data_test;

namespace {

InstallationDescription SmallInstallation()
{
    InstallationDescription d;
    d.school = {7, "Colegio Peñalara, Sección Norte", "Mª Luisa O'Connor Ruiz", "R2800347C", "918 765 432", 1,
                "Calle del Pinar, 3", "Cercedilla", "28470", "Madrid", "secretaria@penalara.es"};
    d.otherSchools.append({8, "Colegio Vecino", "", "", "", 1, "", "", "", "", ""});
    d.years.resize(3);
    YearDescription &first = d.years[0], &second = d.years[1], &missing = d.years[2];
    first.id = 3, first.name = "2023-2024", first.fileName = "curso 2023.db";
    first.activities = {{1, "Comedor", 110.0}, {2, "Inglés", 30.0}};
    first.members = {
        {100, "García", "Núñez", "Pedro", 1, "12345678Z", AddressDescription{"Calle Mayor, 1", "Madrid", "28013", "Madrid"}},
        {101, "D'Souza", "", "Anita", 1, "X1234567L", AddressDescription{"Rúa Nova, 2", "Lugo", "27001", "Lugo"}},
        {102, "Peña", "Ruiz", "Luis", 2, QString(), std::nullopt},
        {103, "Sanz", "Gil", "Eva", 3, "", AddressDescription{"Calle Sin Provincia", "Nadie", "00000", ""}},
        {104, "Ortiz", "Mora", "Rosa", 4, "11111111H", AddressDescription{"Calle Ancha", "Barcelona", "08001", "Barna"}},
    };
    first.students = {{1, "García", "D'Souza", "Ana", 1}, {2, "Peña", "López", "Hugo", 2}, {3, "Sanz", "", "Noa", 3},
                      {4, "Ortiz", "Vela", "Íker", 4}};
    first.enrolments = {
        {1, 1, 100, 110.0, SchoolMonths()}, {1, 1, 101, 55.0, Months({1, 2, 3})}, {2, 1, 102, std::nullopt, SchoolMonths()},
        {3, 2, 103, 30.0, SchoolMonths()},  {4, 2, 0, 30.0, SchoolMonths()},
        {4, 1, 999, 12.5, SchoolMonths()},   // a payer that is not on file
    };
    second.id = 5, second.name = "2024-2025";
    second.activities = {{1, "Comedor", 115.0}};
    second.school = d.school;
    second.school->name = "Colegio Peñalara";
    missing.id = 4, missing.name = "2022-2023", missing.fileName = "perdido.db", missing.createDatabase = false;
    d.savedWork.activities = {{3, "2023-2024", "Provider=SQLite;Data Source=datos/curso 2023.db", 1, "Comedor", 12.5,
                               "A", "Donativo - 80%", "111111000111", true}};
    d.savedWork.communities = {{12, 6, 15}};
    d.savedWork.payments = {{1, 100, 3, 1, 1100}};
    d.savedWork.donors = {{1, 100, "Pedro", "García", "Núñez", "12345678Z", false}};
    d.session.delegacion = "Madrid; Centro";
    d.session.domicilio = "Calle del Pinar, 3 = sede \"principal\"";
    return d;
}

// Every key of the settings file in the order of its lines, with the value
// QSettings reads for it: "Group/key=value".
QStringList Settings(const QString &iniFile)
{
    QFile file(iniFile);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QSettings ini(iniFile, QSettings::IniFormat);
    EXPECT_EQ(ini.status(), QSettings::NoError);
    QStringList entries;
    QString group;
    for (const QString &line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith('['))
            group = line.mid(1, line.size() - 2);
        else
            entries << group + "/" + line.section('=', 0, 0);
    }
    for (QString &entry : entries)
        entry += "=" + ini.value(entry).toString();
    EXPECT_EQ(ini.allKeys().size(), entries.size());
    return entries;
}

class InstallationTest : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_paths = BuildInstallation(Path("instalación"), SmallInstallation());
        Connection::SetBaseFolder(m_paths.root);
    }

    InstallationPaths m_paths;
};

TEST_F(InstallationTest, ReportsAndMakesTheFilesAndFolders)
{
    const QString root = Path("instalación");
    const std::pair<QString, QString> paths[] = {
        {m_paths.root, root}, {m_paths.iniFile, root + "/modelo182.ini"}, {m_paths.rutaBD, root + "/datos"},
        {m_paths.rutaAplicacion, root + "/app"}, {m_paths.informes, root + "/app/Informes"},
        {m_paths.iconFile, root + "/app/modelo182.ico"}, {m_paths.entradaFile, root + "/datos/entrada.db"},
        {m_paths.centroFile, root + "/datos/centro.db"}, {m_paths.borradoFile, root + "/datos/borrado.db"},
        {m_paths.modelo182File, root + "/datos/Modelo182.mdb"},
        {m_paths.conexionAppEntrada, "Provider=SQLite;Data Source=datos/entrada.db"},
        {m_paths.conexionLocalCentro, "Provider=SQLite;Data Source=datos/centro.db"},
        {m_paths.conexionBorradoLocalCentro, "Provider=SQLite;Data Source=datos/borrado.db"},
        {m_paths.modelo182ConnectionString, "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + root
                                                + "/datos/Modelo182.mdb;Persist Security Info=False;"
                                                  "Jet OLEDB:Database Password=zq417tev"},
        {m_paths.years.value(0).connectionString, "Provider=SQLite;Data Source=datos/curso 2023.db"},
        {m_paths.years.value(1).connectionString, "Provider=SQLite;Data Source=datos/curso5.db"},
        {m_paths.years.value(2).databaseFile, root + "/datos/perdido.db"},
    };
    for (const auto &[got, expected] : paths)
        EXPECT_EQ(got, expected);
    ASSERT_EQ(m_paths.years.size(), 3);
    ASSERT_NE(m_paths.Year(5), nullptr);
    EXPECT_EQ(m_paths.Year(5)->name, "2024-2025");
    EXPECT_EQ(m_paths.Year(6), nullptr);
    for (const QString &file : {m_paths.iniFile, m_paths.entradaFile, m_paths.centroFile, m_paths.borradoFile,
                                m_paths.modelo182File, m_paths.years[0].databaseFile, m_paths.years[1].databaseFile})
        EXPECT_TRUE(QFileInfo(file).isFile()) << file.toStdString();
    EXPECT_TRUE(QFileInfo(m_paths.informes).isDir());
    EXPECT_FALSE(QFileInfo::exists(m_paths.years[2].databaseFile));
    EXPECT_FALSE(QFileInfo::exists(m_paths.iconFile));
}

TEST_F(InstallationTest, SettingsFileHoldsEverySessionPropertyInOrderUnderItsExactName)
{
    EXPECT_EQ(Settings(m_paths.iniFile),
              QStringList({"Sesion/rutaaplicacion=app", "Sesion/RutaBD=datos", "Sesion/sqlserver=false",
                           "Sesion/IDPerfil=1", "Sesion/IDUsuario=1", "Sesion/NombreUsuario=secretaria",
                           "Sesion/IDCentro=7", "Sesion/NombreCentro=Colegio Peñalara, Sección Norte",
                           "Sesion/idCursoEscolar=5",   // the latest year
                           "Sesion/Activa=true", "Sesion/Accion=0", "Sesion/lngRowData=0", "Sesion/Pesetas=false",
                           "Sesion/MTP=false", "Sesion/RutaIcono=app/modelo182.ico",
                           "Sesion/conexionAppEntrada=Provider=SQLite;Data Source=datos/entrada.db",
                           "Sesion/conexionlocalCENTRO=Provider=SQLite;Data Source=datos/centro.db",
                           "Sesion/conexionBORRADOlocalCENTRO=Provider=SQLite;Data Source=datos/borrado.db",
                           "Modelo182/Locale=es_ES", "Modelo182/desarrollo=false", "Modelo182/NumeroJustificante=",
                           "Modelo182/Delegacion=Madrid; Centro",
                           "Modelo182/Domicilio=Calle del Pinar, 3 = sede \"principal\""}));
    const QSettings ini(m_paths.iniFile, QSettings::IniFormat);
    EXPECT_FALSE(ini.value("Sesion/sqlserver").toBool());
    EXPECT_TRUE(ini.value("Sesion/Activa").toBool());

    InstallationDescription d = SmallInstallation();
    d.session.currentYear = 3;
    d.session.sqlServer = d.session.desarrollo = true;
    d.session.locale = "";
    d.session.userName = "jefa de estudios";
    const QStringList other = Settings(BuildInstallation(Path("otra"), d).iniFile);
    for (const char *entry : {"Sesion/idCursoEscolar=3", "Sesion/sqlserver=true", "Sesion/NombreUsuario=jefa de estudios",
                              "Modelo182/desarrollo=true"})
        EXPECT_TRUE(other.contains(entry)) << entry;
    EXPECT_FALSE(other.join('\n').contains("Locale"));
}

TEST_F(InstallationTest, HostDatabasesAnswerThroughTheRecordedConnectionStrings)
{
    auto entrada = OpenConnection(m_paths.conexionAppEntrada);
    EXPECT_EQ(UserVersion(*entrada), kSchemaVersion);
    EXPECT_EQ(Rows(*entrada, "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=7"),
              QStringList{"7|Colegio Peñalara, Sección Norte"});
    EXPECT_EQ(Rows(*entrada, "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=8"), QStringList{"8|Colegio Vecino"});
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=7"),
              QStringList({"3|2023-2024", "4|2022-2023", "5|2024-2025"}));
    auto year = OpenConnection(Value(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=3"));
    EXPECT_EQ(Rows(*year, "SELECT IDActividad, Nombre FROM Actividad"), QStringList({"1|Comedor", "2|Inglés"}));
    EXPECT_EQ(Rows(*year, "SELECT Nombre, DirectorCentro, CIF, Telefono, RFiscal FROM Centro"),
              QStringList{"Colegio Peñalara, Sección Norte|Mª Luisa O'Connor Ruiz|R2800347C|918 765 432|1"});
    auto own = OpenConnection(Value(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=5"));
    EXPECT_EQ(Rows(*own, "SELECT Nombre FROM Centro"), QStringList{"Colegio Peñalara"});
    EXPECT_EQ(Count(*own, "Alumno"), 0);
    const QString lost = Value(*entrada, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=4");
    EXPECT_EQ(lost, "Provider=SQLite;Data Source=datos/perdido.db");
    EXPECT_EQ(ExpectDatabaseError([&] { OpenConnection(lost); }).Message(),
              "No existe la base de datos «" + m_paths.years[2].databaseFile + "».");

    auto centro = OpenConnection(m_paths.conexionLocalCentro);
    EXPECT_EQ(Rows(*centro, "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"),
              QStringList{"3|2023-2024|Provider=SQLite;Data Source=datos/curso 2023.db|1|Comedor|12.5|A|"
                          "Donativo - 80%|111111000111|-1"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM ComDed"), QStringList{"12|6|15"});
    EXPECT_EQ(Rows(*centro, "SELECT * FROM DatosModelo182 WHERE IDCC=3 AND IDACT=1"), QStringList{"1|100|3|1|1100"});
    EXPECT_EQ(Rows(*centro, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=1 AND IDMF=100"),
              QStringList{"Pedro|García|Núñez|12345678Z|0"});
    EXPECT_EQ(UserVersion(*OpenConnection(m_paths.conexionBorradoLocalCentro)), kSchemaVersion);
    auto modelo182 = OpenConnection(m_paths.modelo182ConnectionString);
    EXPECT_EQ(Count(*modelo182, "Provincias"), 52);
    EXPECT_EQ(Count(*modelo182, "ComunidadesAutonomas"), 19);
    EXPECT_EQ(Count(*modelo182, "Declarantes"), 0);
}

TEST_F(InstallationTest, YearDatabaseHoldsTheDescribedPeopleAndEnrolments)
{
    auto year = OpenConnection(m_paths.Year(3)->connectionString);
    EXPECT_EQ(Rows(*year, DonorQuery(1), {"IDAlumno", "IDMiembroFamilia", "Nombre1", "PrecioEuros", "DNI", "poblacion",
                                          "descripcion", "dato1", "dato4", "dato7", "dato9"}),
              QStringList({"1|101|Anita|55|X1234567L|Lugo|Lugo|-1|0|0|0", "1|100|Pedro|110|12345678Z|Madrid|Madrid|-1|-1|0|-1",
                           "4|NULL|NULL|12.5|NULL|NULL|NULL|-1|-1|0|-1", "2|102|Luis|NULL|NULL|NULL|NULL|-1|-1|0|-1"}));
    EXPECT_EQ(Rows(*year, DonorQuery(2), {"IDAlumno", "IDMiembroFamilia", "direccion", "poblacion", "codigopostal",
                                          "descripcion"}),
              QStringList({"4|NULL|NULL|NULL|NULL|NULL", "3|103|Calle Sin Provincia|Nadie|00000|NULL"}));
    // Payer roles are keyed apart from the members.
    EXPECT_EQ(Rows(*year, "SELECT idMiembroFamiliaPagador, codMiembroFamilia FROM MiembroFamiliaPagador ORDER BY 1"),
              QStringList({"5001|100", "5002|101", "5003|102", "5004|103", "5005|999"}));
    // An unknown province name is added to the year's list.
    EXPECT_EQ(Rows(*year, "SELECT IDProvincia, descripcion FROM Provincia WHERE IDProvincia >= 100"),
              QStringList{"100|Barna"});
    EXPECT_EQ(Count(*year, "Provincia"), 53);
    // A null text and an empty one are kept apart.
    EXPECT_EQ(Rows(*year, "SELECT IDMiembroFamilia, DNI, codDireccion FROM MiembroFamilia WHERE IDMiembroFamilia "
                          "IN (102, 103) ORDER BY IDMiembroFamilia"),
              QStringList({"102|NULL|NULL", "103||3"}));
}

TEST_F(InstallationTest, BuildingAgainReplacesTheInstallation)
{
    InstallationDescription d = SmallInstallation();
    d.years[0].students.removeLast();
    d.years[0].enrolments.removeLast();
    d.years[0].enrolments.removeLast();
    d.years[2].connectionString = QString("");
    const InstallationPaths paths = BuildInstallation(m_paths.root, d);
    auto year = OpenConnection(paths.Year(3)->connectionString);
    EXPECT_EQ(Count(*year, "Alumno"), 3);
    EXPECT_EQ(Count(*year, "Alumno_Actividad_Miembro"), 4);
    auto entrada = OpenConnection(paths.conexionAppEntrada);
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, BD FROM CursoEscolar ORDER BY 1"),
              QStringList({"3|Provider=SQLite;Data Source=datos/curso 2023.db", "4|",
                           "5|Provider=SQLite;Data Source=datos/curso5.db"}));
    EXPECT_EQ(Count(*OpenConnection(paths.modelo182ConnectionString), "Provincias"), 52);
}

// The NIF / NIE check, worked out here from the published rule: the letter of
// the number modulo 23; an NIE's X, Y, Z stand for 0, 1, 2.
bool IsValidNifOrNie(const QString &text)
{
    static const QRegularExpression shape("^([XYZ0-9])([0-9]{7})([A-Z])$");
    const QRegularExpressionMatch m = shape.match(text);
    if (!m.hasMatch())
        return false;
    const qint64 number = QString("0123456789XYZ").indexOf(m.captured(1)) % 10 * 10000000LL + m.captured(2).toLongLong();
    return QString("TRWAGMYFPDXBNJZSQVHLCKE").at(number % 23) == m.captured(3).at(0);
}

// Everything the description says, as one text, to compare two runs.
QString Fingerprint(const InstallationDescription &d)
{
    QStringList parts = {d.school.name, d.school.director, d.school.cif, d.school.phone};
    const auto price = [](const std::optional<double> &v) { return v ? QString::number(*v) : "NULL"; };
    for (const YearDescription &y : d.years) {
        parts << QString::number(y.id) << y.name << y.fileName;
        for (const ActivityDescription &a : y.activities)
            parts << QString::number(a.id) << a.name << price(a.price);
        for (const MemberDescription &m : y.members) {
            parts << QString("%1 %2 %3 %4 %5 %6").arg(m.id).arg(m.surname1, m.surname2, m.name).arg(m.family).arg(
                m.dni.isNull() ? "NULL" : m.dni);
            if (m.address)
                parts << m.address->street << m.address->town << m.address->postalCode << m.address->province;
        }
        for (const StudentDescription &s : y.students)
            parts << QString("%1 %2 %3 %4 %5").arg(s.id).arg(s.surname1, s.surname2, s.name).arg(s.family);
        for (const EnrolmentDescription &e : y.enrolments) {
            parts << QString("%1 %2 %3").arg(e.student).arg(e.activity).arg(e.payer) << price(e.price);
            for (const auto &flag : e.months)
                parts << QString::number(flag.value_or(99));
        }
    }
    return parts.join('|');
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
    static void TearDownTestSuite()
    {
        delete s_demo;
        delete s_paths;
        delete s_dir;
    }
    void SetUp() override { Connection::SetBaseFolder(s_paths->root); }
    void TearDown() override { Connection::SetBaseFolder(QString()); }

    static inline QTemporaryDir *s_dir = nullptr;
    static inline InstallationPaths *s_paths = nullptr;
    static inline InstallationDescription *s_demo = nullptr;
};

TEST_F(DemoSchoolTest, IsTheSameOnEveryCallAndASchoolsWorth)
{
    EXPECT_EQ(Fingerprint(DemoSchool()), Fingerprint(*s_demo));
    // R + 2800347: odd places 2, 0, 3, 7 doubled give 4 + 0 + 6 + (1 + 4) = 15,
    // even places 8 + 0 + 4 = 12; 27 -> control 3 -> "C".
    EXPECT_EQ(s_demo->school.cif, "R2800347C");
    EXPECT_TRUE(s_demo->school.name.startsWith("Colegio "));
    EXPECT_EQ(s_demo->school.director.split(' ').size(), 3);
    EXPECT_TRUE(QRegularExpression("^9[0-9]{8}$").match(s_demo->school.phone).hasMatch());
    EXPECT_EQ(s_demo->school.taxRegime, 1);
    ASSERT_EQ(s_demo->years.size(), 2);   // their keys and names: see the entry database below
    for (const YearDescription &year : s_demo->years) {
        SCOPED_TRACE(year.name.toStdString());
        EXPECT_TRUE(year.students.size() >= 350 && year.students.size() <= 450) << year.students.size();
        EXPECT_TRUE(year.members.size() >= 550 && year.members.size() <= 650) << year.members.size();
        QStringList activities;
        for (const ActivityDescription &activity : year.activities)
            activities << activity.name;
        EXPECT_GE(activities.size(), 6);
        for (const char *name : {"Comedor", "Transporte escolar", "Aula matinal"})
            EXPECT_TRUE(activities.contains(name)) << name;
    }
}

TEST_F(DemoSchoolTest, PeopleAndEnrolmentsHaveTheCasesTheWizardMustHandle)
{
    for (const YearDescription &year : s_demo->years) {
        SCOPED_TRACE(year.name.toStdString());
        QMap<int, int> studentsPerFamily;
        for (const StudentDescription &student : year.students)
            ++studentsPerFamily[student.family];
        EXPECT_GT(std::count_if(studentsPerFamily.begin(), studentsPerFamily.end(), [](int n) { return n > 1; }), 30);
        QSet<int> withoutAddress;
        for (const MemberDescription &member : year.members)
            if (!member.address)
                withoutAddress.insert(member.id);
        int noPayer = 0, payerWithoutAddress = 0, shorter = 0, fullYear = 0;
        for (const EnrolmentDescription &e : year.enrolments) {
            noPayer += e.payer == 0;
            payerWithoutAddress += withoutAddress.contains(e.payer);
            int months = 0;
            for (const auto &flag : e.months) {
                EXPECT_TRUE(flag == -1 || flag == 0);
                months += flag.value_or(0) != 0;
            }
            EXPECT_TRUE(e.months[6] == 0 && e.months[7] == 0);   // no fees in July and August
            shorter += months < 8;
            fullYear += months == 10;
        }
        EXPECT_GE(noPayer, 3);
        EXPECT_GE(payerWithoutAddress, 3);
        EXPECT_GT(shorter, 10);
        EXPECT_GT(fullYear, int(year.enrolments.size()) / 2);
    }
    const YearDescription &year = s_demo->years.first();
    int valid = 0, nie = 0, wrong = 0, missing = 0;
    QSet<QString> provinces;
    QString names;
    for (const MemberDescription &m : year.members) {
        names += m.surname1 + " " + m.surname2 + ", " + m.name + "\n";
        if (m.address)
            provinces.insert(m.address->province);
        if (m.dni.isEmpty())
            ++missing;
        else if (IsValidNifOrNie(m.dni))
            ++valid, nie += QString("XYZ").contains(m.dni.at(0));
        else
            wrong += QRegularExpression("^[0-9]{8}[A-Z]$").match(m.dni).hasMatch();
    }
    EXPECT_GT(valid, int(year.members.size()) * 85 / 100);
    EXPECT_GE(nie, 3);
    EXPECT_GE(wrong, 3);
    EXPECT_GE(missing, 3);
    EXPECT_GE(provinces.size(), 8);
    EXPECT_TRUE(provinces.contains("Madrid"));
    for (const StudentDescription &s : year.students)
        names += s.surname1 + " " + s.surname2 + ", " + s.name + "\n";
    EXPECT_TRUE(names.contains("ñ"));
    EXPECT_TRUE(names.contains(QRegularExpression("[áéíóúÁÉÍÓÚ]")));
    EXPECT_TRUE(names.contains("'"));
    EXPECT_TRUE(names.contains("Mª"));
}

TEST_F(DemoSchoolTest, InstallationHoldsTheDescriptionAndEveryProvinceIsKnownToTheDeclaration)
{
    auto modelo182 = OpenConnection(s_paths->modelo182ConnectionString);
    for (const YearDescription &description : s_demo->years) {
        SCOPED_TRACE(description.name.toStdString());
        auto year = OpenConnection(s_paths->Year(description.id)->connectionString);
        EXPECT_EQ(Count(*year, "Alumno"), description.students.size());
        EXPECT_EQ(Count(*year, "MiembroFamilia"), description.members.size());
        EXPECT_EQ(Count(*year, "Actividad"), description.activities.size());
        for (const ActivityDescription &activity : description.activities) {
            const auto expected = std::count_if(description.enrolments.begin(), description.enrolments.end(),
                                                [&](const EnrolmentDescription &e) { return e.activity == activity.id; });
            ASSERT_GT(expected, 0) << activity.name.toStdString();
            EXPECT_EQ(year->Execute(DonorQuery(activity.id)).RecordCount(), expected) << activity.name.toStdString();
        }
        const QStringList names = Rows(*year, "SELECT DISTINCT descripcion FROM Provincia INNER JOIN Direccion "
                                              "ON Direccion.codProvincia=Provincia.IDProvincia");
        ASSERT_GE(names.size(), 8);
        for (const QString &name : names)
            EXPECT_EQ(Rows(*modelo182, "SELECT CodigoProvincia, CodigoComunidadAutonoma, IDComunidadAutonoma FROM "
                                       "Provincias INNER JOIN ComunidadesAutonomas ON Provincias.codComunidadAutonoma="
                                       "ComunidadesAutonomas.IDComunidadAutonoma WHERE Provincia='"
                                           + QString(name).replace("'", "''") + "'")
                          .size(),
                      1)
                << name.toStdString();
    }
    // The dining room charges every month but July and August.
    const QString sums = Value(*OpenConnection(s_paths->Year(1)->connectionString),
                               "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) "
                               "AS Campo3, sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) "
                               "AS Campo7, sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                               "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=1");
    const QStringList months = sums.split('|');
    ASSERT_EQ(months.size(), 12);
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(i == 6 || i == 7 ? months[i].toInt() == 0 : months[i].toInt() < 0) << i;
}

TEST_F(DemoSchoolTest, SchoolIsTheDeclarantAndTheSessionPointsAtTheLatestYear)
{
    const Declarante d = ReadDeclarante(*OpenConnection(s_paths->Year(2)->connectionString));
    EXPECT_EQ(QStringList({d.nombre, d.pcNombre, d.pcApellido1, d.pcApellido2, d.cif, d.rFiscal}).join('|'),
              "COLEGIO SANTA TERESA DE LAS ACACIAS|TERESA|GUTIÉRREZ|ALCAÑIZ|R2800347C|1");
    EXPECT_EQ(Rows(*OpenConnection(s_paths->conexionAppEntrada),
                   "SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=1"),
              QStringList({"1|2024-2025", "2|2025-2026"}));
    const QStringList settings = Settings(s_paths->iniFile);
    for (const char *entry : {"Sesion/idCursoEscolar=2", "Sesion/NombreCentro=Colegio Santa Teresa de las Acacias",
                              "Modelo182/Domicilio=Calle de las Acacias, 12, 28045 Madrid"})
        EXPECT_TRUE(settings.contains(entry)) << entry;
}

} // namespace
