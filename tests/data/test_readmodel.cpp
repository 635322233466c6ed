// The school database read model: the donor statement run on a small year
// database, and the declarant read from its Centro row.

#include "test_schema_helpers.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/Declarante.h"
#include "data/DonorQuery.h"
#include "data/Recordset.h"
#include "data/Schema.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace schema_test;

namespace {

// The six pieces of the donor statement, for the activity 37.
const QString kDonorQuery37 = QStringLiteral(
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
    "Miembrofamilia.Apellido2, Miembrofamilia.Nombre");

const QString kEnrol = QStringLiteral(
    "INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, codMiembroFamiliaPagador, PrecioEuros, "
    "enero, febrero, marzo, abril, mayo, junio, julio, agosto, septiembre, octubre, noviembre, diciembre) VALUES ");

class ReadModelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_db = Connection::CreateSQLite(QDir(m_dir.path()).filePath("curso.db"));
        Schema::CreateYearDatabase(*m_db);
    }

    // A small school year: four students in activity 37, one in activity 38.
    void FillSchoolYear()
    {
        Connection &db = *m_db;
        db.Execute("INSERT INTO Direccion VALUES (1, 'Calle Mayor, 1, 2º A', 'Madrid', '28013', 28)");
        db.Execute("INSERT INTO Direccion VALUES (2, 'Calle Real, 5', 'Toledo', '45001', 45)");
        db.Execute("INSERT INTO Direccion VALUES (3, 'Paseo del Revellín, 3', 'Ceuta', '51001', NULL)");
        db.Execute("INSERT INTO MiembroFamilia VALUES (10, 'Zapata', 'Ruiz', 'Pedro', 1, '12345678Z', 1)");
        db.Execute("INSERT INTO MiembroFamilia VALUES (11, 'Abad', 'Gil', 'Marta', 1, '87654321X', 2)");
        db.Execute("INSERT INTO MiembroFamilia VALUES (12, 'Núñez', 'Peña', 'Luis', 2, NULL, NULL)");
        db.Execute("INSERT INTO MiembroFamilia VALUES (13, 'D''Souza', '', 'Eva', 3, 'X1234567L', 3)");
        db.Execute("INSERT INTO MiembroFamiliaPagador VALUES (501, 10)");
        db.Execute("INSERT INTO MiembroFamiliaPagador VALUES (502, 11)");
        db.Execute("INSERT INTO MiembroFamiliaPagador VALUES (503, 12)");
        db.Execute("INSERT INTO MiembroFamiliaPagador VALUES (504, 13)");
        db.Execute("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (1, 'Zapata', 'Abad', 'Irene')");
        db.Execute("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (2, 'Núñez', 'Díaz', 'Hugo')");
        db.Execute("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (3, 'Álvarez', 'D''Souza', 'Sara')");
        db.Execute("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (4, 'Alonso', 'Pérez', 'Leo')");
        db.Execute("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (5, 'Bravo', 'Gil', 'Ana')");
        // Irene is paid for by both parents; her father's row goes in first.
        db.Execute(kEnrol + "(1, 37, 501, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1)");
        db.Execute(kEnrol + "(1, 37, 502, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1)");
        db.Execute(kEnrol + "(2, 37, 503, 25.5, 0, 0, 0, 0, 0, 0, 0, 0, -1, -1, -1, -1)");
        db.Execute(kEnrol + "(3, 37, 504, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1)");
        db.Execute(kEnrol + "(4, 37, NULL, NULL, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NULL)");
        db.Execute(kEnrol + "(5, 38, 502, 18, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1)");
    }

    // The values of one column over all rows ("NULL" for a null).
    static QStringList Column(Recordset rs, const QString &name)
    {
        QStringList values;
        rs.MoveFirst();
        while (!rs.Eof()) {
            const QVariant value = rs.Fields(name);
            values << (value.isNull() ? QStringLiteral("NULL") : value.toString());
            rs.MoveNext();
        }
        return values;
    }

    Declarante DeclaranteOf(const QString &values)
    {
        m_db->Execute("DELETE FROM Centro");
        m_db->Execute("INSERT INTO Centro (IDCentro, Nombre, DirectorCentro, CIF, Telefono, RFiscal) VALUES ("
                      + values + ")");
        return ReadDeclarante(*m_db);
    }

    QTemporaryDir m_dir;
    ConnectionPtr m_db;
};

} // namespace

// --- The donor statement ---------------------------------------------------------------------

TEST_F(ReadModelTest, DonorQueryIsTheSixPiecesJoined)
{
    EXPECT_EQ(DonorQuery(37), kDonorQuery37);
}

TEST_F(ReadModelTest, DonorQueryWritesTheActivityKeyAsPlainDigits)
{
    EXPECT_TRUE(DonorQuery(5).contains("WHERE codActividad=5 ORDER BY Alumno.Apellido_1,Alumno.Apellido_2,"));
    EXPECT_TRUE(DonorQuery(12345).contains("WHERE codActividad=12345 ORDER BY"));
}

TEST_F(ReadModelTest, DonorQueryGivesTheColumnsTheGridReads)
{
    FillSchoolYear();
    const Recordset rs = m_db->Execute(DonorQuery(37));
    EXPECT_EQ(rs.FieldNames(),
              (QStringList{"Apellido_1", "Apellido_2", "Nombre", "PrecioEuros", "Apellido1", "Apellido2", "Nombre1",
                           "codFamilia", "DNI", "direccion", "poblacion", "codigopostal", "descripcion", "dato1",
                           "dato2", "dato3", "dato4", "dato5", "dato6", "dato7", "dato8", "dato9", "dato10",
                           "dato11", "dato12", "IDAlumno", "IDMiembroFamilia"}));
}

TEST_F(ReadModelTest, DonorRowsComeOrderedByStudentThenPayer)
{
    FillSchoolYear();
    const Recordset rs = m_db->Execute(DonorQuery(37));
    // Spanish order: Alonso < Álvarez < Núñez < Zapata; Irene's payers Abad < Zapata.
    EXPECT_EQ(Column(rs, "Apellido_1"), (QStringList{"Alonso", "Álvarez", "Núñez", "Zapata", "Zapata"}));
    EXPECT_EQ(Column(rs, "IDAlumno"), (QStringList{"4", "3", "2", "1", "1"}));
    EXPECT_EQ(Column(rs, "IDMiembroFamilia"), (QStringList{"NULL", "13", "12", "11", "10"}));
}

TEST_F(ReadModelTest, TwoPayersOfOneStudentAreAdjacentRows)
{
    FillSchoolYear();
    const Recordset rs = m_db->Execute(DonorQuery(37));
    const QStringList payers = Column(rs, "Apellido1");
    EXPECT_EQ(payers.mid(3), (QStringList{"Abad", "Zapata"}));
    EXPECT_EQ(Column(rs, "Nombre1").mid(3), (QStringList{"Marta", "Pedro"}));
    EXPECT_EQ(Column(rs, "poblacion").mid(3), (QStringList{"Toledo", "Madrid"}));
    EXPECT_EQ(Column(rs, "descripcion").mid(3), (QStringList{"Toledo", "Madrid"}));
}

TEST_F(ReadModelTest, EnrolmentWithoutPayerGivesEmptyPayerColumns)
{
    FillSchoolYear();
    Recordset rs = m_db->Execute(DonorQuery(37));
    ASSERT_FALSE(rs.Eof());
    EXPECT_EQ(rs.Fields("Nombre").toString(), "Leo");
    for (const char *column : {"PrecioEuros", "Apellido1", "Apellido2", "Nombre1", "codFamilia", "DNI", "direccion",
                               "poblacion", "codigopostal", "descripcion", "IDMiembroFamilia"})
        EXPECT_TRUE(rs.Fields(column).isNull()) << column;
    EXPECT_EQ(rs.Fields("dato1").toInt(), -1);
    EXPECT_TRUE(rs.Fields("dato12").isNull());
}

TEST_F(ReadModelTest, PayerWithoutAddressGivesEmptyAddressColumns)
{
    FillSchoolYear();
    Recordset rs = m_db->Execute(DonorQuery(37));
    rs.MoveNext();
    rs.MoveNext();
    ASSERT_EQ(rs.Fields("Apellido1").toString(), "Núñez");
    EXPECT_EQ(rs.Fields("Nombre1").toString(), "Luis");
    EXPECT_EQ(rs.Fields("PrecioEuros").toDouble(), 25.5);
    EXPECT_TRUE(rs.Fields("DNI").isNull());
    for (const char *column : {"direccion", "poblacion", "codigopostal", "descripcion"})
        EXPECT_TRUE(rs.Fields(column).isNull()) << column;
    EXPECT_EQ(rs.Fields("IDMiembroFamilia").toInt(), 12);
}

TEST_F(ReadModelTest, AddressWithoutProvinceKeepsTheAddress)
{
    FillSchoolYear();
    Recordset rs = m_db->Execute(DonorQuery(37));
    rs.MoveNext();
    ASSERT_EQ(rs.Fields("Apellido1").toString(), "D'Souza");
    EXPECT_EQ(rs.Fields("Apellido2").toString(), "");
    EXPECT_EQ(rs.Fields("direccion").toString(), "Paseo del Revellín, 3");
    EXPECT_EQ(rs.Fields("codigopostal").toString(), "51001");
    EXPECT_TRUE(rs.Fields("descripcion").isNull());
    EXPECT_EQ(rs.Fields("DNI").toString(), "X1234567L");
}

TEST_F(ReadModelTest, MonthFlagsComeInCalendarOrder)
{
    FillSchoolYear();
    Recordset rs = m_db->Execute(DonorQuery(37));
    rs.MoveNext();
    rs.MoveNext();   // Hugo: September to December only
    QStringList flags;
    for (int month = 1; month <= 12; ++month)
        flags << rs.Fields(QStringLiteral("dato%1").arg(month)).toString();
    EXPECT_EQ(flags, (QStringList{"0", "0", "0", "0", "0", "0", "0", "0", "-1", "-1", "-1", "-1"}));
    EXPECT_EQ(rs.Fields("codFamilia").toInt(), 2);
}

TEST_F(ReadModelTest, OnlyTheActivitysEnrolmentsAreRead)
{
    FillSchoolYear();
    EXPECT_EQ(Column(m_db->Execute(DonorQuery(38)), "Nombre"), QStringList{"Ana"});
    EXPECT_TRUE(m_db->Execute(DonorQuery(99)).Eof());
}

// --- The declarant ---------------------------------------------------------------------------

TEST_F(ReadModelTest, DeclarantIsReadFromTheSchoolRow)
{
    const Declarante d = DeclaranteOf("1, 'Colegio Nª Sª de la Peña', 'Teresa Gutiérrez Alcañiz', 'r2800347c', "
                                      "'913 456 780 ext', 1");
    EXPECT_EQ(d.nombre, "COLEGIO N. S. DE LA PEÑA");
    EXPECT_EQ(d.pcNombre, "TERESA");
    EXPECT_EQ(d.pcApellido1, "GUTIÉRREZ");
    EXPECT_EQ(d.pcApellido2, "ALCAÑIZ");
    EXPECT_EQ(d.cif, "R2800347C");
    EXPECT_EQ(d.telefono, "913 456 780 EXT");
    EXPECT_EQ(d.rFiscal, "1");
}

TEST_F(ReadModelTest, ShortCifIsFilledWithZerosOnTheLeft)
{
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', 'B123', '1', 1").cif, "00000B123");
}

TEST_F(ReadModelTest, LongCifKeepsItsLastNineCharacters)
{
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', 'ESR2800347C', '1', 1").cif, "R2800347C");
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', '12345678901', '1', 1").cif, "345678901");
}

TEST_F(ReadModelTest, NullFieldsBecomeEmptyTexts)
{
    const Declarante d = DeclaranteOf("1, NULL, NULL, NULL, NULL, NULL");
    EXPECT_EQ(d.nombre, "");
    EXPECT_EQ(d.cif, "");
    EXPECT_EQ(d.telefono, "");
    EXPECT_EQ(d.rFiscal, "");
    EXPECT_EQ(d.pcNombre, "-");
    EXPECT_EQ(d.pcApellido1, "-");
    EXPECT_EQ(d.pcApellido2, "-");
}

TEST_F(ReadModelTest, EmptyCifIsAllZeros)
{
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', '', '1', 1").cif, "000000000");
}

TEST_F(ReadModelTest, TaxRegimeIsRoundedToAWholeNumberHalfToEven)
{
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', 'B1', '1', 2.5").rFiscal, "2");
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', 'B1', '1', 3.5").rFiscal, "4");
    EXPECT_EQ(DeclaranteOf("1, 'C', 'D', 'B1', '1', '7'").rFiscal, "7");
}

TEST_F(ReadModelTest, DeclarantComesFromTheFirstRow)
{
    m_db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (4, 'Primero')");
    m_db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (9, 'Segundo')");
    EXPECT_EQ(ReadDeclarante(*m_db).nombre, "PRIMERO");
}

TEST_F(ReadModelTest, DeclarantIsReadWithSelectStar)
{
    m_db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (4, 'Primero')");
    QStringList statements;
    m_db->SetObserver([&](const Connection &, const QString &sql) { statements << sql; });
    ReadDeclarante(*m_db);
    EXPECT_EQ(statements, QStringList{"SELECT * FROM Centro"});
}

TEST_F(ReadModelTest, SchoolWithoutRowIsAnError)
{
    EXPECT_THROW(ReadDeclarante(*m_db), DatabaseError);
}

struct DirectorCase
{
    const char *director;
    const char *nombre;
    const char *apellido1;
    const char *apellido2;
};

class DirectorSplitTest : public ::testing::TestWithParam<DirectorCase>
{
};

TEST_P(DirectorSplitTest, SplitsIntoNameAndTwoSurnames)
{
    const DirectorCase c = GetParam();
    const ContactName name = SplitDirector(QString::fromUtf8(c.director));
    EXPECT_EQ(name.nombre, QString::fromUtf8(c.nombre));
    EXPECT_EQ(name.apellido1, QString::fromUtf8(c.apellido1));
    EXPECT_EQ(name.apellido2, QString::fromUtf8(c.apellido2));
}

INSTANTIATE_TEST_SUITE_P(
    Directors, DirectorSplitTest,
    ::testing::Values(DirectorCase{"Juan García López", "JUAN", "GARCÍA", "LÓPEZ"},
                      DirectorCase{"Juan García", "JUAN", "GARCÍA", "-"},
                      DirectorCase{"Juan", "JUAN", "-", "-"},
                      DirectorCase{"", "-", "-", "-"},
                      DirectorCase{"  Juan   García  López ", "JUAN", "GARCÍA", "LÓPEZ"},
                      DirectorCase{"Mª Ángeles Núñez", "M.", "ÁNGELES", "NÚÑEZ"},
                      DirectorCase{"Juan García de la Fuente", "JUAN", "GARCÍA", "DE LA FUENTE"},
                      DirectorCase{"Ana D'Souza Íñiguez", "ANA", "D'SOUZA", "ÍÑIGUEZ"}));
