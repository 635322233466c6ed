// The Access behaviour the add-in's statements rely on, on both providers of
// the host's databases: the same statements, the same rows, worked out by
// hand. The PostgreSQL cases skip themselves without a server.
#include "ServerTest.h"

#include "data/DonorQuery.h"
#include "data/Installation.h"
#include "data/Schema.h"

using namespace server_test;

namespace {

INSTANTIATE_TEST_SUITE_P(Providers, BothEngines, ::testing::Values(Engine::SQLite, Engine::PostgreSQL), EngineName);

TEST_P(BothEngines, TextEqualityIgnoresCaseButNotAccentsAndOrderingIsSpanishWithNullsFirst)
{
    ConnectionPtr c = Fresh("curso");
    Schema::CreateYearDatabase(*c);
    c->Execute(QString::fromUtf8(
        "INSERT INTO Alumno (IDAlumno, Apellido_1, Nombre) VALUES (1, 'Ortega', 'a'), (2, 'Álvarez', 'b'), "
        "(3, 'alvarez', 'c'), (4, 'ÁLVAREZ', 'd'), (5, 'Alonso', 'e'), (6, 'Ñuñez', 'f'), (7, 'Nuñez', 'g'), "
        "(8, 'Muñoz', 'h'), (9, 'Munoz', 'i'), (10, NULL, 'j'), (11, 'ALVAREZ', 'k')"));

    const struct
    {
        const char *sql;
        QStringList ids;
    } cases[] = {
        {"SELECT IDAlumno FROM Alumno WHERE Apellido_1='álvarez' ORDER BY IDAlumno", {"2", "4"}},
        {"SELECT IDAlumno FROM Alumno WHERE Apellido_1='ALVAREZ' ORDER BY IDAlumno", {"3", "11"}},
        {"SELECT IDAlumno FROM Alumno WHERE Apellido_1='muÑoz'", {"8"}},
        {"SELECT IDAlumno FROM Alumno WHERE [Apellido_1]<>'ortega' AND Nombre='A' OR Nombre='B'", {"2"}},
        // Equal names (differing in case only) keep the order of the second key.
        {"SELECT IDAlumno FROM Alumno ORDER BY Apellido_1, IDAlumno",
         {"10", "5", "3", "11", "2", "4", "9", "8", "7", "6", "1"}},
        {"SELECT IDAlumno FROM Alumno ORDER BY Apellido_1 DESC, IDAlumno",
         {"1", "6", "7", "8", "9", "2", "4", "3", "11", "5", "10"}},
    };
    for (const auto &k : cases) {
        SCOPED_TRACE(k.sql);
        EXPECT_EQ(Rows(*c, QString::fromUtf8(k.sql)), k.ids);
    }
}

TEST_P(BothEngines, MonthFlagsAreMinusOneAndZeroSoTheMonthQuerySumsThemAndKeysAreNumbered)
{
    ConnectionPtr c = Fresh("curso");
    Schema::CreateYearDatabase(*c);
    c->Execute("INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, enero, febrero, marzo) VALUES "
               "(1, 7, True, True, NULL), (2, 7, True, False, NULL), (3, 7, False, False, NULL), (4, 8, True, True, True)");
    // The month step's statement, as it sends it.
    EXPECT_EQ(Rows(*c, "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) AS Campo3, "
                       "sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) AS Campo7, "
                       "sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                       "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=7"),
              QStringList{"-2|-1|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL"});
    Recordset named = c->Execute("SELECT sum(enero) AS Campo0 FROM Alumno_actividad_miembro WHERE codactividad=8");
    EXPECT_EQ(named.Fields("Campo0").toInt(), -1);
    EXPECT_EQ(Value(*c, "SELECT COUNT(*) FROM Alumno_Actividad_Miembro WHERE enero=True"), "3");
    EXPECT_EQ(Rows(*c, "SELECT IDAlumnoActividadMiembro FROM Alumno_Actividad_Miembro ORDER BY codAlumno"),
              (QStringList{"1", "2", "3", "4"}));
    c->Execute("DELETE FROM Alumno_Actividad_Miembro WHERE codActividad=7");
    EXPECT_EQ(c->RecordsAffected(), 3);
}

// Enrolments of one activity: a student with a payer without an address, a
// payer with one, and no payer at all; another student whose payer's address
// has no province.
InstallationDescription DonorSchool()
{
    InstallationDescription d;
    d.school.id = 1;
    d.school.name = QStringLiteral("Colegio");
    YearDescription y;
    y.id = 1;
    y.name = QStringLiteral("2024-2025");
    y.activities = {{5, QStringLiteral("Ajedrez"), 20.0}, {6, QStringLiteral("Robótica"), 30.0}};
    y.members = {
        {101, QStringLiteral("García"), QStringLiteral("Pérez"), QStringLiteral("Juan"), 1, QStringLiteral("12345678Z"),
         AddressDescription{QStringLiteral("Calle Mayor 1"), QStringLiteral("Madrid"), QStringLiteral("28001"),
                            QStringLiteral("Madrid")}},
        {102, QStringLiteral("Ñúñez"), QStringLiteral("López"), QStringLiteral("Ana"), 1, QStringLiteral("X1234567L"),
         std::nullopt},
        {103, QStringLiteral("Álvarez"), QString(), QStringLiteral("Eva"), 2, QString(),
         AddressDescription{QStringLiteral("Carrer d'Aragó 3"), QStringLiteral("Lleida"), QStringLiteral("25001"),
                            QStringLiteral("")}},
    };
    y.students = {{201, QStringLiteral("García"), QStringLiteral("López"), QStringLiteral("Lucía"), 1},
                  {202, QStringLiteral("Alonso"), QStringLiteral("Ruiz"), QStringLiteral("Pablo"), 2}};
    y.enrolments = {{201, 5, 102, 20.0, Months({10, 11})},
                    {201, 5, 101, 20.0, SchoolMonths()},
                    {201, 5, 0, 10.0, SchoolMonths()},
                    {202, 5, 103, std::nullopt, Months({1})},
                    {202, 6, 103, 30.0, SchoolMonths()}};
    d.years = {y};
    return d;
}

TEST_P(BothEngines, TheDonorQueryGivesEveryEnrolmentOrderedByStudentThenPayerWithNullsForWhatIsMissing)
{
    const InstallationPaths paths = BuildInstallation(dir.path(), OnEngine(DonorSchool()));
    ConnectionPtr year = Open(paths.years.at(0).connectionString, paths.root);
    Recordset rs = year->Execute(DonorQuery(5));
    QStringList rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList values;
        for (const char *field :
             {"Apellido_1", "Nombre", "PrecioEuros", "Apellido1", "Nombre1", "codFamilia", "DNI", "direccion",
              "codigopostal", "descripcion", "dato1", "dato10", "IDAlumno", "IDMiembroFamilia"}) {
            const QVariant v = rs.Fields(QString::fromLatin1(field));
            values << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        }
        rows << values.join(QLatin1Char('|'));
    }
    EXPECT_EQ(rows, (QStringList{
                        "Alonso|Pablo|NULL|Álvarez|Eva|2|NULL|Carrer d'Aragó 3|25001|NULL|-1|0|202|103",
                        "García|Lucía|10|NULL|NULL|NULL|NULL|NULL|NULL|NULL|-1|-1|201|NULL",
                        "García|Lucía|20|García|Juan|1|12345678Z|Calle Mayor 1|28001|Madrid|-1|-1|201|101",
                        "García|Lucía|20|Ñúñez|Ana|1|X1234567L|NULL|NULL|NULL|0|-1|201|102",
                    }));
}

} // namespace
