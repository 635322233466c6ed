// The school database read model: the donor statement run on a small year
// database, and the declarant read from the Centro row.
#include "data/Declarante.h"
#include "data/DonorQuery.h"
#include "data/Schema.h"

#include "test_data.h"

using namespace data_test;

namespace {

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
    "WHERE codActividad=37 ORDER BY Alumno.Apellido_1,Alumno.Apellido_2, Alumno.Nombre, Miembrofamilia.Apellido1, "
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
    // The declarant read from a Centro row with these values.
    QString DeclaranteOf(const QString &values)
    {
        m_db->Execute("DELETE FROM Centro");
        m_db->Execute("INSERT INTO Centro (IDCentro, Nombre, DirectorCentro, CIF, Telefono, RFiscal) VALUES (" + values
                      + ")");
        const Declarante d = ReadDeclarante(*m_db);
        return QStringList({d.nombre, d.pcNombre, d.pcApellido1, d.pcApellido2, d.cif, d.telefono, d.rFiscal}).join('|');
    }

    ConnectionPtr m_db;
};

TEST_F(ReadModelTest, DonorQueryIsTheExactTextWithTheKeyAsPlainDigits)
{
    EXPECT_EQ(DonorQuery(37), kDonorQuery37);
    EXPECT_EQ(DonorQuery(12345), QString(kDonorQuery37).replace("codActividad=37 ", "codActividad=12345 "));
}

TEST_F(ReadModelTest, DonorRowsComeByStudentThenPayerWithNullsForWhatIsMissing)
{
    const QString enrol = "INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, codMiembroFamiliaPagador, "
                          "PrecioEuros, enero, febrero, marzo, abril, mayo, junio, julio, agosto, septiembre, octubre, "
                          "noviembre, diciembre) VALUES ";
    for (const QString &sql :
         {QString("INSERT INTO Direccion VALUES (1, 'Calle Mayor, 1, 2º A', 'Madrid', '28013', 28), "
                  "(2, 'Calle Real, 5', 'Toledo', '45001', 45)"),
          QString("INSERT INTO MiembroFamilia VALUES (10, 'Zapata', 'Ruiz', 'Pedro', 1, '12345678Z', 1), "
                  "(11, 'Abad', 'Gil', 'Marta', 1, '87654321X', 2), (12, 'Núñez', 'Peña', 'Luis', 2, NULL, NULL)"),
          QString("INSERT INTO MiembroFamiliaPagador VALUES (501, 10), (502, 11), (503, 12)"),
          QString("INSERT INTO Alumno (IDAlumno, Apellido_1, Apellido_2, Nombre) VALUES (1, 'Zapata', 'Abad', 'Irene'), "
                  "(2, 'Núñez', 'Díaz', 'Hugo'), (4, 'Alonso', 'Pérez', 'Leo')"),
          // Irene is paid for by both parents, her father's row first.
          enrol
              + "(1, 37, 501, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1), "
                "(1, 37, 502, 30, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1), "
                "(2, 37, 503, 25.5, 0, 0, 0, 0, 0, 0, 0, 0, -1, -1, -1, -1), "
                "(4, 37, NULL, NULL, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NULL), "
                "(4, 38, 502, 18, -1, -1, -1, -1, -1, -1, 0, 0, -1, -1, -1, -1)"})
        m_db->Execute(sql);
    // Spanish order: Alonso < Núñez < Zapata; Irene's payers Abad < Zapata, adjacent.
    EXPECT_EQ(Rows(*m_db, DonorQuery(37),
                   {"Apellido_1", "Nombre", "PrecioEuros", "Apellido1", "Nombre1", "codFamilia", "DNI", "direccion",
                    "poblacion", "codigopostal", "descripcion", "IDAlumno", "IDMiembroFamilia", "dato1", "dato9", "dato12"}),
              QStringList(
                  {"Alonso|Leo|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|4|NULL|-1|0|NULL", // no payer
                   "Núñez|Hugo|25.5|Núñez|Luis|2|NULL|NULL|NULL|NULL|NULL|2|12|0|-1|-1",       // no address
                   "Zapata|Irene|30|Abad|Marta|1|87654321X|Calle Real, 5|Toledo|45001|Toledo|1|11|-1|-1|-1",
                   "Zapata|Irene|30|Zapata|Pedro|1|12345678Z|Calle Mayor, 1, 2º A|Madrid|28013|Madrid|1|10|-1|-1|-1"}));
    EXPECT_TRUE(Rows(*m_db, DonorQuery(99)).isEmpty());
}

TEST_F(ReadModelTest, DeclarantIsTheFirstCentroRowCleanedUp)
{
    // Centro values -> name|contact name|surname 1|surname 2|CIF|telephone|tax regime
    const std::pair<const char *, const char *> cases[] = {
        {"1, 'Colegio Nª Sª de la Peña', ' Mª Teresa  Alcañiz ', 'r2800347c', '913 456 780 ext', 1",
         "COLEGIO N. S. DE LA PEÑA|M.|TERESA|ALCAÑIZ|R2800347C|913 456 780 EXT|1"},
        {"1, 'C', 'Juan García', 'B123', '1', 2.5", "C|JUAN|GARCÍA|-|00000B123|1|2"}, // tax regime: half to even
        {"1, 'C', 'Juan García de la Fuente', '12345678901', '1', 3.5", "C|JUAN|GARCÍA|DE LA FUENTE|345678901|1|4"},
        {"1, NULL, NULL, NULL, NULL, NULL", "|-|-|-|||"},
    };
    for (const auto &[values, expected] : cases)
        EXPECT_EQ(DeclaranteOf(values), QString(expected)) << values;
    m_db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (9, 'Segundo')");
    QStringList statements;
    m_db->SetObserver([&](const Connection &, const QString &sql) { statements << sql; });
    EXPECT_EQ(ReadDeclarante(*m_db).nombre, "");
    EXPECT_EQ(statements, QStringList{"SELECT * FROM Centro"});
    m_db->Execute("DELETE FROM Centro");
    EXPECT_THROW(ReadDeclarante(*m_db), DatabaseError);
}

} // namespace
