// The demo school: a realistic, deterministic description and the
// installation built from it.

#include "test_schema_helpers.h"

#include "data/Connection.h"
#include "data/Declarante.h"
#include "data/Demo.h"
#include "data/DonorQuery.h"

#include <QDir>
#include <QMap>
#include <QRegularExpression>
#include <QSettings>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

using namespace schema_test;

namespace {

// The NIF / NIE check, worked out here from the published rule: the letter
// of the number modulo 23; an NIE's X, Y, Z stand for 0, 1, 2.
bool IsValidNifOrNie(const QString &text)
{
    static const QRegularExpression shape("^([XYZ0-9])([0-9]{7})([A-Z])$");
    const QRegularExpressionMatch match = shape.match(text);
    if (!match.hasMatch())
        return false;
    const QString first = match.captured(1);
    const int lead = first == "X" ? 0 : first == "Y" ? 1 : first == "Z" ? 2 : first.toInt();
    const qint64 number = lead * 10000000LL + match.captured(2).toLongLong();
    return QString("TRWAGMYFPDXBNJZSQVHLCKE").at(number % 23) == match.captured(3).at(0);
}

QString Text(const std::optional<double> &value)
{
    return value ? QString::number(*value) : QStringLiteral("NULL");
}

// Everything the description says, as one text, to compare two runs.
QString Fingerprint(const InstallationDescription &d)
{
    QStringList parts = {d.school.name, d.school.director, d.school.cif, d.school.phone};
    for (const YearDescription &y : d.years) {
        parts << QString::number(y.id) << y.name << y.fileName;
        for (const ActivityDescription &a : y.activities)
            parts << QString::number(a.id) << a.name << Text(a.price);
        for (const MemberDescription &m : y.members) {
            parts << QString::number(m.id) << m.surname1 << m.surname2 << m.name << QString::number(m.family)
                  << (m.dni.isNull() ? QStringLiteral("NULL") : m.dni);
            if (m.address)
                parts << m.address->street << m.address->town << m.address->postalCode << m.address->province;
        }
        for (const StudentDescription &s : y.students)
            parts << QString::number(s.id) << s.surname1 << s.surname2 << s.name << QString::number(s.family);
        for (const EnrolmentDescription &e : y.enrolments) {
            parts << QString::number(e.student) << QString::number(e.activity) << QString::number(e.payer)
                  << Text(e.price);
            for (const auto &flag : e.months)
                parts << QString::number(flag.value_or(99));
        }
    }
    return parts.join('|');
}

int MonthsSet(const MonthFlags &flags)
{
    int count = 0;
    for (const auto &flag : flags)
        count += flag.value_or(0) != 0;
    return count;
}

class DemoSchoolTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { s_demo = new InstallationDescription(DemoSchool()); }
    static void TearDownTestSuite()
    {
        delete s_demo;
        s_demo = nullptr;
    }

    static InstallationDescription *s_demo;
};

InstallationDescription *DemoSchoolTest::s_demo = nullptr;

} // namespace

// --- The description -------------------------------------------------------------------------

TEST_F(DemoSchoolTest, IsTheSameOnEveryCall)
{
    EXPECT_EQ(Fingerprint(DemoSchool()), Fingerprint(*s_demo));
}

TEST_F(DemoSchoolTest, SchoolIsAConcertadaWithAValidCif)
{
    const SchoolDescription &school = s_demo->school;
    EXPECT_TRUE(school.name.startsWith("Colegio "));
    // R + 2800347: odd places 2, 0, 3, 7 doubled give 4 + 0 + 6 + (1 + 4) = 15, even places
    // 8 + 0 + 4 = 12; 27 -> control 3 -> "C".
    EXPECT_EQ(school.cif, "R2800347C");
    EXPECT_EQ(school.director.split(' ').size(), 3);
    EXPECT_TRUE(QRegularExpression("^9[0-9]{8}$").match(school.phone).hasMatch());
    EXPECT_EQ(school.taxRegime, 1);
}

TEST_F(DemoSchoolTest, HasTwoSchoolYearsInTimeOrder)
{
    ASSERT_EQ(s_demo->years.size(), 2);
    EXPECT_EQ(s_demo->years.at(0).id, 1);
    EXPECT_EQ(s_demo->years.at(0).name, "2024-2025");
    EXPECT_EQ(s_demo->years.at(1).id, 2);
    EXPECT_EQ(s_demo->years.at(1).name, "2025-2026");
    EXPECT_EQ(s_demo->session.currentYear, 2);
}

TEST_F(DemoSchoolTest, EachYearHasASchoolsWorthOfPeopleAndActivities)
{
    for (const YearDescription &year : s_demo->years) {
        EXPECT_GE(year.students.size(), 350) << qPrintable(year.name);
        EXPECT_LE(year.students.size(), 450) << qPrintable(year.name);
        EXPECT_GE(year.members.size(), 550) << qPrintable(year.name);
        EXPECT_LE(year.members.size(), 650) << qPrintable(year.name);
        EXPECT_GE(year.activities.size(), 6) << qPrintable(year.name);
        QStringList names;
        for (const ActivityDescription &activity : year.activities)
            names << activity.name;
        EXPECT_TRUE(names.contains("Comedor"));
        EXPECT_TRUE(names.contains("Transporte escolar"));
        EXPECT_TRUE(names.contains("Aula matinal"));
    }
}

TEST_F(DemoSchoolTest, SiblingsShareTheirFamily)
{
    for (const YearDescription &year : s_demo->years) {
        QMap<int, int> studentsPerFamily;
        for (const StudentDescription &student : year.students)
            ++studentsPerFamily[student.family];
        int withSiblings = 0;
        for (int count : studentsPerFamily)
            withSiblings += count > 1;
        EXPECT_GT(withSiblings, 30) << qPrintable(year.name);
    }
}

TEST_F(DemoSchoolTest, FeesAreChargedFromSeptemberToJune)
{
    for (const YearDescription &year : s_demo->years) {
        int shorter = 0;
        for (const EnrolmentDescription &e : year.enrolments) {
            EXPECT_EQ(e.months[6], 0);
            EXPECT_EQ(e.months[7], 0);
            for (const auto &flag : e.months)
                EXPECT_TRUE(flag == -1 || flag == 0);
            shorter += MonthsSet(e.months) < 8;
        }
        EXPECT_GT(shorter, 10) << qPrintable(year.name);
        int fullYear = 0;
        for (const EnrolmentDescription &e : year.enrolments)
            fullYear += MonthsSet(e.months) == 10;
        EXPECT_GT(fullYear, int(year.enrolments.size()) / 2) << qPrintable(year.name);
    }
}

TEST_F(DemoSchoolTest, MostIdentifiersAreValidAndSomeAreNot)
{
    const YearDescription &year = s_demo->years.first();
    int valid = 0, nie = 0, wrong = 0, missing = 0;
    for (const MemberDescription &member : year.members) {
        if (member.dni.isEmpty()) {
            ++missing;
            continue;
        }
        if (IsValidNifOrNie(member.dni)) {
            ++valid;
            nie += QString("XYZ").contains(member.dni.at(0));
        } else if (QRegularExpression("^[0-9]{8}[A-Z]$").match(member.dni).hasMatch()) {
            ++wrong;
        }
    }
    EXPECT_GT(valid, int(year.members.size()) * 85 / 100);
    EXPECT_GE(nie, 3);
    EXPECT_GE(wrong, 3);
    EXPECT_GE(missing, 3);
}

TEST_F(DemoSchoolTest, NamesCarryAccentsEnyeAndApostrophes)
{
    QStringList names;
    for (const MemberDescription &member : s_demo->years.first().members)
        names << member.surname1 + " " + member.surname2 + ", " + member.name;
    for (const StudentDescription &student : s_demo->years.first().students)
        names << student.surname1 + " " + student.surname2 + ", " + student.name;
    const QString all = names.join('\n');
    EXPECT_TRUE(all.contains(QStringLiteral("ñ")));
    EXPECT_TRUE(all.contains(QRegularExpression(QStringLiteral("[áéíóúÁÉÍÓÚ]"))));
    EXPECT_TRUE(all.contains("'"));
    EXPECT_TRUE(all.contains(QStringLiteral("Mª")));
}

TEST_F(DemoSchoolTest, SomeEnrolmentsHaveNoPayerAndSomePayersNoAddress)
{
    for (const YearDescription &year : s_demo->years) {
        QSet<int> withoutAddress;
        for (const MemberDescription &member : year.members)
            if (!member.address)
                withoutAddress.insert(member.id);
        int noPayer = 0, payerWithoutAddress = 0;
        for (const EnrolmentDescription &e : year.enrolments) {
            noPayer += e.payer == 0;
            payerWithoutAddress += withoutAddress.contains(e.payer);
        }
        EXPECT_GE(noPayer, 3) << qPrintable(year.name);
        EXPECT_GE(payerWithoutAddress, 3) << qPrintable(year.name);
    }
}

TEST_F(DemoSchoolTest, AddressesLieInSeveralProvinces)
{
    QSet<QString> provinces;
    for (const MemberDescription &member : s_demo->years.first().members)
        if (member.address)
            provinces.insert(member.address->province);
    EXPECT_GE(provinces.size(), 8);
    EXPECT_TRUE(provinces.contains("Madrid"));
}

// --- The installation ------------------------------------------------------------------------

namespace {

class DemoInstallationTest : public ::testing::Test
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

    static ConnectionPtr Open(const QString &connectionString)
    {
        auto connection = std::make_shared<Connection>();
        connection->Open(connectionString);
        return connection;
    }

    BaseFolderGuard m_guard;
    static QTemporaryDir *s_dir;
    static InstallationPaths *s_paths;
    static InstallationDescription *s_demo;
};

QTemporaryDir *DemoInstallationTest::s_dir = nullptr;
InstallationPaths *DemoInstallationTest::s_paths = nullptr;
InstallationDescription *DemoInstallationTest::s_demo = nullptr;

} // namespace

TEST_F(DemoInstallationTest, EveryHostProvinceIsKnownToTheDeclaration)
{
    auto modelo182 = Open(s_paths->modelo182ConnectionString);
    for (const YearPaths &yearPaths : s_paths->years) {
        auto year = Open(yearPaths.connectionString);
        const QStringList names = Rows(*year, "SELECT DISTINCT descripcion FROM Provincia INNER JOIN Direccion "
                                              "ON Direccion.codProvincia=Provincia.IDProvincia");
        ASSERT_GE(names.size(), 8);
        for (const QString &name : names)
            EXPECT_EQ(Rows(*modelo182, "SELECT CodigoProvincia, CodigoComunidadAutonoma, IDComunidadAutonoma FROM "
                                       "Provincias INNER JOIN ComunidadesAutonomas ON "
                                       "Provincias.codComunidadAutonoma=ComunidadesAutonomas.IDComunidadAutonoma "
                                       "WHERE Provincia='" + QString(name).replace("'", "''") + "'")
                          .size(),
                      1)
                << qPrintable(name);
    }
}

TEST_F(DemoInstallationTest, DonorQueryGivesEveryEnrolmentOfEachActivity)
{
    for (const YearDescription &description : s_demo->years) {
        auto year = Open(s_paths->Year(description.id)->connectionString);
        for (const ActivityDescription &activity : description.activities) {
            int expected = 0;
            for (const EnrolmentDescription &e : description.enrolments)
                expected += e.activity == activity.id;
            ASSERT_GT(expected, 0) << qPrintable(activity.name);
            EXPECT_EQ(year->Execute(DonorQuery(activity.id)).RecordCount(), expected)
                << qPrintable(description.name) << " " << qPrintable(activity.name);
        }
    }
}

TEST_F(DemoInstallationTest, DatabasesHoldTheDescribedPeople)
{
    for (const YearDescription &description : s_demo->years) {
        auto year = Open(s_paths->Year(description.id)->connectionString);
        EXPECT_EQ(Count(*year, "Alumno"), description.students.size());
        EXPECT_EQ(Count(*year, "MiembroFamilia"), description.members.size());
        EXPECT_EQ(Count(*year, "Actividad"), description.activities.size());
    }
}

TEST_F(DemoInstallationTest, DiningRoomHasNoFeesInSummer)
{
    auto year = Open(s_paths->Year(1)->connectionString);
    const QStringList sums = Rows(*year, "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, "
                                         "sum(abril) AS Campo3, sum(mayo) AS Campo4, sum(junio) AS Campo5, "
                                         "sum(julio) AS Campo6, sum(agosto) AS Campo7, sum(septiembre) AS Campo8, "
                                         "sum(octubre) AS Campo9, sum(noviembre) AS Campo10, sum(diciembre) AS "
                                         "Campo11 FROM Alumno_actividad_miembro WHERE codactividad=1");
    ASSERT_EQ(sums.size(), 1);
    const QStringList months = sums.first().split('|');
    for (int i = 0; i < 12; ++i) {
        if (i == 6 || i == 7)
            EXPECT_EQ(months.at(i).toInt(), 0);
        else
            EXPECT_LT(months.at(i).toInt(), 0) << i;
    }
}

TEST_F(DemoInstallationTest, SchoolIsTheDeclarant)
{
    auto year = Open(s_paths->Year(2)->connectionString);
    const Declarante d = ReadDeclarante(*year);
    EXPECT_EQ(d.nombre, "COLEGIO SANTA TERESA DE LAS ACACIAS");
    EXPECT_EQ(d.pcNombre, "TERESA");
    EXPECT_EQ(d.pcApellido1, "GUTIÉRREZ");
    EXPECT_EQ(d.pcApellido2, "ALCAÑIZ");
    EXPECT_EQ(d.cif, "R2800347C");
    EXPECT_EQ(d.rFiscal, "1");
}

TEST_F(DemoInstallationTest, SessionPointsAtTheLatestYear)
{
    auto entrada = Open(s_paths->conexionAppEntrada);
    EXPECT_EQ(Rows(*entrada, "SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=1"),
              (QStringList{"1|2024-2025", "2|2025-2026"}));
    QSettings ini(s_paths->iniFile, QSettings::IniFormat);
    EXPECT_EQ(ini.value("Sesion/idCursoEscolar").toString(), "2");
    EXPECT_EQ(ini.value("Sesion/NombreCentro").toString(), "Colegio Santa Teresa de las Acacias");
    EXPECT_EQ(ini.value("Modelo182/Domicilio").toString(), "Calle de las Acacias, 12, 28045 Madrid");
}
