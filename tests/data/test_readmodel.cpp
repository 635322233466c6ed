// The school database read model: the donor statement run on a small year
// database, the month sums of an activity, and the declarant read from the
// Centro row.

#include "data/Declarante.h"
#include "data/DonorQuery.h"
#include "data/Schema.h"

#include "test_data.h"

using namespace data_test;

namespace {

// The six pieces of the donor statement, for the activity 37.
const QString kDonorQuery37 =
    "SELECT Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Alumno_Actividad_Miembro.PrecioEuros, "
    "Miembrofamilia.Apellido1, Miembrofamilia.Apellido2, Miembrofamilia.Nombre AS Nombre1, "
    "Miembrofamilia.codFamilia, Miembrofamilia.DNI, direccion.direccion, direccion.poblacion, "
    "direccion.codigopostal, provincia.descripcion,"
    "enero as dato1, febrero as dato2, marzo as dato3, abril as dato4, mayo as dato5, junio as dato6, "
    "julio as dato7, agosto as dato8, septiembre as dato9, octubre as dato10, noviembre as dato11, "
    "diciembre as dato12, IDAlumno, IDMiembroFamilia "
    "FROM Alumno INNER JOIN (Alumno_Actividad_Miembro LEFT JOIN (Miembrofamiliapagador LEFT JOIN "
    "(MiembroFamilia LEFT JOIN (Direccion LEFT JOIN Provincia ON Provincia.IDProvincia=Direccion.codProvincia) "
    "ON Direccion.IDDireccion=MiembroFamilia.codDireccion) ON "
    "MiembroFamilia.IDMiembroFamilia=MiembroFamiliaPagador.codMiembroFamilia) ON "
    "MiembroFamiliaPagador.idMiembroFamiliaPagador=Alumno_Actividad_Miembro.codMiembroFamiliaPagador) ON "
    "Alumno.IDAlumno=Alumno_Actividad_Miembro.codAlumno "
    "WHERE codActividad="
    "37"
    " ORDER BY Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Miembrofamilia.Apellido1, "
    "Miembrofamilia.Apellido2, Miembrofamilia.Nombre";

class ReadModelTest : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_db = Connection::CreateSQLite(Path("curso.db"));
        Schema::CreateYearDatabase(*m_db);
    }

    // A small school year: four students in activity 37, one in activity 38.
    void FillSchoolYear()
    {
        const QString enrol = "INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, codMiembroFamiliaPagador, "
                              "PrecioEuros, enero, febrero, marzo, abril, mayo, junio, julio, agosto, septiembre, "
                              "octubre, noviembre, diciembre) VALUES (%1)";
        const QString student = "INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (%1)";
        for (const QString &sql : {
                 QString("INSERT INTO Direccion VALUES (1, 'Calle Mayor, 1, 2º A', 'Madrid', '28013', 28)"),
                 QString("INSERT INTO Direccion VALUES (2, 'Calle Real, 5', 'Toledo', '45001', 45)"),
                 QString("INSERT INTO Direccion VALUES (3, 'Paseo del Revellín, 3', 'Ceuta', '51001', NULL)"),
                 QString("INSERT INTO MiembroFamilia VALUES (10, 'Zapata', 'Ruiz', 'Pedro', 1, '12345678Z', 1)"),
                 QString("INSERT INTO MiembroFamilia VALUES (11, 'Abad', 'Gil', 'Marta', 1, '87654321X', 2)"),
                 QString("INSERT INTO MiembroFamilia VALUES (12, 'Núñez', 'Peña', 'Luis', 2, NULL, NULL)"),
                 QString("INSERT INTO MiembroFamilia VALUES (13, 'D''Souza', '', 'Eva', 3, 'X1234567L', 3)"),
                 QString("INSERT INTO MiembroFamiliaPagador VALUES (501, 10)"),
                 QString("INSERT INTO MiembroFamiliaPagador VALUES (502, 11)"),
                 QString("INSERT INTO MiembroFamiliaPagador VALUES (503, 12)"),
                 QString("INSERT INTO MiembroFamiliaPagador VALUES (504, 13)"),
                 student.arg("1, 'Zapata', 'Abad', 'Irene'"), student.arg("2, 'Núñez', 'Díaz', 'Hugo'"),
                 student.arg("3, 'Álvarez', 'D''Souza', 'Sara'"), student.arg("4, 'Alonso', 'Pérez', 'Leo'"),
                 student.arg("5, 'Bravo', 'Gil', 'Ana'"),
                 // Irene is paid for by both parents; her father's row goes in first.
                 enrol.arg("1, 37, 501, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1"),
                 enrol.arg("1, 37, 502, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1"),
                 enrol.arg("2, 37, 503, 25.5, 0, 0, 0, 0, 0, 0, 0, 0, -1, -1, -1, -1"),
                 enrol.arg("3, 37, 504, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1"),
                 enrol.arg("4, 37, NULL, NULL, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NULL"),
                 enrol.arg("5, 38, 502, 18, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1")})
            m_db->Execute(sql);
    }

    // The declarant read from a Centro row with these values.
    QString DeclaranteOf(const QString &values)
    {
        m_db->Execute("DELETE FROM Centro");
        m_db->Execute("INSERT INTO Centro (IDCentro, Nombre, DirectorCentro, CIF, Telefono, RFiscal) VALUES (" + values + ")");
        const Declarante d = ReadDeclarante(*m_db);
        return QStringList({d.nombre, d.pcNombre, d.pcApellido1, d.pcApellido2, d.cif, d.telefono, d.rFiscal}).join('|');
    }

    ConnectionPtr m_db;
};

TEST_F(ReadModelTest, DonorQueryIsTheSixPiecesWithTheKeyAsPlainDigits)
{
    EXPECT_EQ(DonorQuery(37), kDonorQuery37);
    EXPECT_EQ(DonorQuery(12345), QString(kDonorQuery37).replace("codActividad=37 ", "codActividad=12345 "));
}

TEST_F(ReadModelTest, DonorRowsComeByStudentThenPayerWithNullsForWhatIsMissing)
{
    FillSchoolYear();
    EXPECT_EQ(m_db->Execute(DonorQuery(37)).FieldNames(),
              QStringList({"Apellido_1", "Apellido_2", "Nombre", "PrecioEuros", "Apellido1", "Apellido2", "Nombre1",
                           "codFamilia", "DNI", "direccion", "poblacion", "codigopostal", "descripcion", "dato1", "dato2",
                           "dato3", "dato4", "dato5", "dato6", "dato7", "dato8", "dato9", "dato10", "dato11", "dato12",
                           "IDAlumno", "IDMiembroFamilia"}));
    // Spanish order: Alonso < Álvarez < Núñez < Zapata; Irene's payers Abad < Zapata, adjacent.
    EXPECT_EQ(Rows(*m_db, DonorQuery(37),
                   {"Apellido_1", "Nombre", "PrecioEuros", "Apellido1", "Apellido2", "Nombre1", "codFamilia", "DNI",
                    "direccion", "poblacion", "codigopostal", "descripcion", "IDAlumno", "IDMiembroFamilia"}),
              QStringList({// without payer
                           "Alonso|Leo|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|4|NULL",
                           // an address without province
                           "Álvarez|Sara|30|D'Souza||Eva|3|X1234567L|Paseo del Revellín, 3|Ceuta|51001|NULL|3|13",
                           // a payer without address
                           "Núñez|Hugo|25.5|Núñez|Peña|Luis|2|NULL|NULL|NULL|NULL|NULL|2|12",
                           "Zapata|Irene|30|Abad|Gil|Marta|1|87654321X|Calle Real, 5|Toledo|45001|Toledo|1|11",
                           "Zapata|Irene|30|Zapata|Ruiz|Pedro|1|12345678Z|Calle Mayor, 1, 2º A|Madrid|28013|Madrid|1|10"}));
    // Month flags January to December.
    EXPECT_EQ(Rows(*m_db, DonorQuery(37), {"dato1", "dato2", "dato3", "dato4", "dato5", "dato6", "dato7", "dato8",
                                           "dato9", "dato10", "dato11", "dato12"}),
              QStringList({"-1|0|0|0|0|0|0|0|0|0|0|NULL", "-1|-1|-1|-1|-1|-1|0|0|-1|-1|-1|-1",
                           "0|0|0|0|0|0|0|0|-1|-1|-1|-1", "-1|-1|-1|-1|-1|-1|0|0|-1|-1|-1|-1",
                           "-1|-1|-1|-1|-1|-1|0|0|-1|-1|-1|-1"}));
    EXPECT_EQ(Rows(*m_db, DonorQuery(38), {"Nombre", "Nombre1"}), QStringList{"Ana|Marta"});
    EXPECT_TRUE(Rows(*m_db, DonorQuery(99)).isEmpty());
}

TEST_F(ReadModelTest, MonthSumsOfAnActivityAreMinusTheEnrolmentsCharged)
{
    FillSchoolYear();
    EXPECT_EQ(Rows(*m_db, "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, sum(abril) AS "
                          "Campo3, sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, sum(agosto) AS "
                          "Campo7, sum(septiembre) AS Campo8, sum(octubre) AS Campo9, sum(noviembre) AS Campo10, "
                          "sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro WHERE codactividad=37"),
              QStringList{"-4|-3|-3|-3|-3|-3|0|0|-4|-4|-4|-4"});
}

TEST_F(ReadModelTest, DeclarantIsTheFirstCentroRowCleanedUp)
{
    // Centro values -> name|contact name|surname 1|surname 2|CIF|telephone|tax regime
    const std::pair<const char *, const char *> cases[] = {
        {"1, 'Colegio Nª Sª de la Peña', 'Teresa Gutiérrez Alcañiz', 'r2800347c', '913 456 780 ext', 1",
         "COLEGIO N. S. DE LA PEÑA|TERESA|GUTIÉRREZ|ALCAÑIZ|R2800347C|913 456 780 EXT|1"},
        {"1, 'C', 'D', 'B123', '1', 1", "C|D|-|-|00000B123|1|1"},
        {"1, 'C', 'D', 'ESR2800347C', '1', 1", "C|D|-|-|R2800347C|1|1"},
        {"1, 'C', 'D', '12345678901', '1', 1", "C|D|-|-|345678901|1|1"},
        {"1, 'C', 'D', '', '1', 1", "C|D|-|-|000000000|1|1"},
        {"1, NULL, NULL, NULL, NULL, NULL", "|-|-|-|||"},
        // The tax regime is rounded half to even.
        {"1, 'C', 'D', 'B1', '1', 2.5", "C|D|-|-|0000000B1|1|2"},
        {"1, 'C', 'D', 'B1', '1', 3.5", "C|D|-|-|0000000B1|1|4"},
        {"1, 'C', 'D', 'B1', '1', '7'", "C|D|-|-|0000000B1|1|7"},
    };
    for (const auto &[values, expected] : cases)
        EXPECT_EQ(DeclaranteOf(values), QString(expected)) << values;

    m_db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (9, 'Segundo')");
    QStringList statements;
    m_db->SetObserver([&](const Connection &, const QString &sql) { statements << sql; });
    EXPECT_EQ(ReadDeclarante(*m_db).nombre, "C");
    EXPECT_EQ(statements, QStringList{"SELECT * FROM Centro"});
    m_db->Execute("DELETE FROM Centro");
    EXPECT_THROW(ReadDeclarante(*m_db), DatabaseError);
}

TEST(DirectorSplit, GivesANameAndTwoSurnamesInCapitalsOrDashes)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Juan García López", "JUAN|GARCÍA|LÓPEZ"}, {"Juan García", "JUAN|GARCÍA|-"}, {"Juan", "JUAN|-|-"},
        {"", "-|-|-"}, {"  Juan   García  López ", "JUAN|GARCÍA|LÓPEZ"}, {"Mª Ángeles Núñez", "M.|ÁNGELES|NÚÑEZ"},
        {"Juan García de la Fuente", "JUAN|GARCÍA|DE LA FUENTE"}, {"Ana D'Souza Íñiguez", "ANA|D'SOUZA|ÍÑIGUEZ"},
    };
    for (const auto &[director, expected] : cases) {
        const ContactName name = SplitDirector(director);
        EXPECT_EQ(name.nombre + "|" + name.apellido1 + "|" + name.apellido2, QString(expected)) << director;
    }
}

} // namespace
