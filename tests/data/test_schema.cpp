// The creation routines: tables, column order (positional inserts rely on
// it), the text collation, the schema version and idempotence.

#include "test_schema_helpers.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/Schema.h"
#include "data/SchemaVersion.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace schema_test;

namespace {

class SchemaTest : public ::testing::Test
{
protected:
    ConnectionPtr Create(const QString &name, const QString &provider = QStringLiteral("SQLite"))
    {
        return Connection::CreateSQLite(QDir(m_dir.path()).filePath(name), provider);
    }

    // Every column declared TEXT carries the Spanish case-insensitive collation.
    static void ExpectTextColumnsCollated(Connection &connection)
    {
        for (const QString &table : Tables(connection)) {
            const QString sql = TableSql(connection, table);
            for (const auto &[column, type] : ColumnTypes(connection, table)) {
                if (type.compare(QStringLiteral("TEXT"), Qt::CaseInsensitive) != 0)
                    continue;
                const QRegularExpression declared(QStringLiteral("\\b") + column
                                                  + QStringLiteral(" TEXT COLLATE ES_CI\\b"));
                EXPECT_TRUE(declared.match(sql).hasMatch())
                    << qPrintable(table) << "." << qPrintable(column) << " in " << qPrintable(sql);
            }
        }
    }

    QTemporaryDir m_dir;
};

const QStringList kMonths = {"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio",
                             "agosto", "septiembre", "octubre", "noviembre", "diciembre"};

} // namespace

// --- The host's entry database ---------------------------------------------------------------

TEST_F(SchemaTest, EntryDatabaseHasSchoolsAndSchoolYears)
{
    auto db = Create("entrada.db");
    Schema::CreateEntryDatabase(*db);

    EXPECT_EQ(Tables(*db), (QStringList{"Centro", "CursoEscolar"}));
    EXPECT_EQ(Columns(*db, "Centro").mid(0, 2), (QStringList{"IDCentro", "Nombre"}));
    EXPECT_EQ(Columns(*db, "CursoEscolar"), (QStringList{"IDCursoEscolar", "Nombre", "codcentro", "BD"}));
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
    ExpectTextColumnsCollated(*db);
}

TEST_F(SchemaTest, EntryDatabaseAnswersTheSchoolYearQueries)
{
    auto db = Create("entrada.db");
    Schema::CreateEntryDatabase(*db);
    db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (3, 'Colegio Peñalara')");
    db->Execute("INSERT INTO CursoEscolar VALUES (7, '2024-2025', 3, 'Provider=SQLite;Data Source=datos/c7.db')");

    EXPECT_EQ(Rows(*db, "SELECT IDCentro, Nombre FROM Centro WHERE IDCentro=3"),
              QStringList{"3|Colegio Peñalara"});
    EXPECT_EQ(Rows(*db, "SELECT IDCursoEscolar, Nombre FROM CursoEscolar WHERE codcentro=3"),
              QStringList{"7|2024-2025"});
    EXPECT_EQ(Rows(*db, "SELECT BD FROM CursoEscolar WHERE idcursoescolar=7"),
              QStringList{"Provider=SQLite;Data Source=datos/c7.db"});
}

TEST_F(SchemaTest, EntryDatabaseCreatedTwiceKeepsItsRows)
{
    auto db = Create("entrada.db");
    Schema::CreateEntryDatabase(*db);
    db->Execute("INSERT INTO Centro (IDCentro, Nombre) VALUES (1, 'Colegio')");
    Schema::CreateEntryDatabase(*db);

    EXPECT_EQ(Count(*db, "Centro"), 1);
    EXPECT_EQ(Columns(*db, "CursoEscolar"), (QStringList{"IDCursoEscolar", "Nombre", "codcentro", "BD"}));
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
}

// --- The host's school database: saved work --------------------------------------------------

TEST_F(SchemaTest, SavedWorkTablesHaveTheColumnOrderOfTheirPositionalInserts)
{
    auto db = Create("centro.db");
    Schema::CreateSchoolDatabase(*db);

    EXPECT_EQ(Tables(*db), (QStringList{"ALMFModelo182", "ComDed", "CursoEscAct", "DatosModelo182"}));
    EXPECT_EQ(Columns(*db, "CursoEscAct"),
              (QStringList{"IDCursoEscolar", "Nombre", "conBD", "IDActividad", "ActNom", "Deduc", "TipoDon",
                           "TipoDonDed", "Meses", "DeducComAut"}));
    EXPECT_EQ(Columns(*db, "ComDed"), (QStringList{"IDComAut", "IDDeduc", "Valor"}));
    EXPECT_EQ(Columns(*db, "DatosModelo182"), (QStringList{"IDAL", "IDMF", "IDCC", "IDAct", "Pago"}));
    EXPECT_EQ(Columns(*db, "ALMFModelo182"),
              (QStringList{"IDAL", "IDMF", "Nombre", "AP1", "AP2", "NIF", "Mostrar"}));
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
    ExpectTextColumnsCollated(*db);
}

TEST_F(SchemaTest, SavedWorkRoundTripsThroughPositionalInserts)
{
    auto db = Create("centro.db");
    Schema::CreateSchoolDatabase(*db);
    db->Execute("INSERT INTO CursoEscAct VALUES (2,'2025-2026','Provider=SQLite;Data Source=datos/b.db',4,"
                "'Inglés',12.5,'A','Donativo - 80%','000000000111',-1)");
    db->Execute("INSERT INTO CursoEscAct VALUES (1,'2024-2025','Provider=SQLite;Data Source=datos/a.db',9,"
                "'Comedor',80,'A','Donativo - 80%','111111000111',-1)");
    db->Execute("INSERT INTO CursoEscAct VALUES (1,'2024-2025','Provider=SQLite;Data Source=datos/a.db',3,"
                "'Ajedrez',35,'A','Donativo - 35%','100000000000',-1)");
    db->Execute("INSERT INTO ComDed VALUES (12,6,15)");
    db->Execute("INSERT INTO ALMFModelo182 VALUES (15,1003,'Ana','D''Souza','-','12345678Z',0)");
    db->Execute("INSERT INTO DatosModelo182 VALUES (15,1003,1,9,12.5)");

    EXPECT_EQ(Rows(*db, "SELECT IDCursoEscolar, IDActividad, ActNom, Deduc, Meses, DeducComAut "
                        "FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"),
              (QStringList{"1|3|Ajedrez|35|100000000000|-1", "1|9|Comedor|80|111111000111|-1",
                           "2|4|Inglés|12.5|000000000111|-1"}));
    EXPECT_EQ(Rows(*db, "SELECT DeducComAut FROM CursoEscAct").value(0), "-1");
    EXPECT_EQ(Rows(*db, "SELECT * FROM ComDed"), QStringList{"12|6|15"});
    EXPECT_EQ(Rows(*db, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=15 AND IDMF=1003"),
              QStringList{"Ana|D'Souza|-|12345678Z|0"});
    EXPECT_EQ(Rows(*db, "SELECT Pago FROM DatosModelo182 WHERE IDCC=1 AND IDAct=9 AND IDAL=15"),
              QStringList{"12.5"});
}

TEST_F(SchemaTest, SchoolDatabaseCreatedTwiceKeepsItsRows)
{
    auto db = Create("centro.db");
    Schema::CreateSchoolDatabase(*db);
    db->Execute("INSERT INTO ComDed VALUES (1,2,3)");
    Schema::CreateSchoolDatabase(*db);
    EXPECT_EQ(Rows(*db, "SELECT * FROM ComDed"), QStringList{"1|2|3"});
    EXPECT_EQ(Tables(*db).size(), 4);
}

// --- The deleted-records database ------------------------------------------------------------

TEST_F(SchemaTest, DeletedRecordsDatabaseOnlyRecordsTheVersion)
{
    auto db = Create("borrado.db");
    Schema::CreateDeletedRecordsDatabase(*db);
    Schema::CreateDeletedRecordsDatabase(*db);
    EXPECT_TRUE(Tables(*db).isEmpty());
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
}

// --- A school year's database ----------------------------------------------------------------

TEST_F(SchemaTest, YearDatabaseHasTheTablesTheDonorQueryJoins)
{
    auto db = Create("curso.db");
    Schema::CreateYearDatabase(*db);

    EXPECT_EQ(Tables(*db), (QStringList{"Actividad", "Alumno", "Alumno_Actividad_Miembro", "Centro",
                                        "Direccion", "MiembroFamilia", "MiembroFamiliaPagador", "Provincia"}));
    for (const char *column : {"Nombre", "DirectorCentro", "CIF", "Telefono", "RFiscal"})
        EXPECT_TRUE(Columns(*db, "Centro").contains(column)) << column;
    EXPECT_EQ(Columns(*db, "Actividad").mid(0, 2), (QStringList{"IDActividad", "Nombre"}));
    EXPECT_EQ(Columns(*db, "Alumno").mid(0, 4), (QStringList{"IDAlumno", "Apellido_1", "Apellido_2", "Nombre"}));
    QStringList enrolment = Columns(*db, "Alumno_Actividad_Miembro");
    EXPECT_EQ(enrolment.mid(enrolment.indexOf("codAlumno")),
              QStringList({"codAlumno", "codActividad", "codMiembroFamiliaPagador", "PrecioEuros"}) + kMonths);
    EXPECT_EQ(Columns(*db, "MiembroFamiliaPagador"), (QStringList{"idMiembroFamiliaPagador", "codMiembroFamilia"}));
    EXPECT_EQ(Columns(*db, "MiembroFamilia"),
              (QStringList{"IDMiembroFamilia", "Apellido1", "Apellido2", "Nombre", "codFamilia", "DNI",
                           "codDireccion"}));
    EXPECT_EQ(Columns(*db, "Direccion"),
              (QStringList{"IDDireccion", "direccion", "poblacion", "codigopostal", "codProvincia"}));
    EXPECT_EQ(Columns(*db, "Provincia"), (QStringList{"IDProvincia", "descripcion"}));
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
    ExpectTextColumnsCollated(*db);
}

TEST_F(SchemaTest, YearDatabaseComesWithTheProvinces)
{
    auto db = Create("curso.db");
    Schema::CreateYearDatabase(*db);
    EXPECT_EQ(Count(*db, "Provincia"), 52);
    EXPECT_EQ(Rows(*db, "SELECT descripcion FROM Provincia WHERE IDProvincia=8"), QStringList{"Barcelona"});
    EXPECT_EQ(Rows(*db, "SELECT descripcion FROM Provincia WHERE IDProvincia=15"), QStringList{"A Coruña"});
    EXPECT_EQ(Rows(*db, "SELECT descripcion FROM Provincia WHERE IDProvincia=52"), QStringList{"Melilla"});
}

TEST_F(SchemaTest, YearDatabaseCreatedTwiceKeepsItsRows)
{
    auto db = Create("curso.db");
    Schema::CreateYearDatabase(*db);
    db->Execute("INSERT INTO Actividad (IDActividad, Nombre) VALUES (1, 'Comedor')");
    Schema::CreateYearDatabase(*db);
    EXPECT_EQ(Count(*db, "Provincia"), 52);
    EXPECT_EQ(Rows(*db, "SELECT IDActividad, Nombre FROM Actividad"), QStringList{"1|Comedor"});
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
}

TEST_F(SchemaTest, YearDatabaseSumsMonthFlagsStoredAsMinusOne)
{
    auto db = Create("curso.db");
    Schema::CreateYearDatabase(*db);
    db->Execute("INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, PrecioEuros, enero, febrero, "
                "marzo, abril, mayo, junio, julio, agosto, septiembre, octubre, noviembre, diciembre) "
                "VALUES (1, 4, 30, -1, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, -1)");
    db->Execute("INSERT INTO Alumno_Actividad_Miembro (codAlumno, codActividad, PrecioEuros, enero, febrero, "
                "marzo, abril, mayo, junio, julio, agosto, septiembre, octubre, noviembre, diciembre) "
                "VALUES (2, 4, 30, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NULL)");
    EXPECT_EQ(Rows(*db, "SELECT sum(enero) AS Campo0, sum(febrero) AS Campo1, sum(marzo) AS Campo2, "
                        "sum(abril) AS Campo3, sum(mayo) AS Campo4, sum(junio) AS Campo5, sum(julio) AS Campo6, "
                        "sum(agosto) AS Campo7, sum(septiembre) AS Campo8, sum(octubre) AS Campo9, "
                        "sum(noviembre) AS Campo10, sum(diciembre) AS Campo11 FROM Alumno_actividad_miembro "
                        "WHERE codactividad=4"),
              QStringList{"-2|-1|0|0|0|0|0|0|0|0|0|-1"});
}

TEST_F(SchemaTest, TextComparisonIgnoresCaseIncludingAccentedCapitals)
{
    auto db = Create("curso.db");
    Schema::CreateYearDatabase(*db);
    db->Execute("INSERT INTO MiembroFamilia (IDMiembroFamilia, Apellido1) VALUES (1, 'ÁLVAREZ')");
    db->Execute("INSERT INTO MiembroFamilia (IDMiembroFamilia, Apellido1) VALUES (2, 'Alvarez')");
    EXPECT_EQ(Rows(*db, "SELECT IDMiembroFamilia FROM MiembroFamilia WHERE Apellido1='álvarez'"),
              QStringList{"1"});
}

// --- The declaration database ----------------------------------------------------------------

TEST_F(SchemaTest, DeclarationDatabaseHasCatalogueAndDeclarationTables)
{
    auto db = Create("Modelo182.mdb", "Microsoft.Jet.OLEDB.4.0");
    Schema::CreateDeclarationDatabase(*db);

    QStringList tables = Tables(*db);
    EXPECT_EQ(tables, (QStringList{"CartaDonantes", "ComunidadesAutonomas", "ComunidadesAutonomas_Deducciones",
                                   "Declarantes", "Deducciones", "Donantes", "Provincias", "TipoDonativos",
                                   "TipoDonativos_Deducciones"}));
    EXPECT_EQ(Columns(*db, "ComunidadesAutonomas"),
              (QStringList{"IDComunidadAutonoma", "ComunidadAutonoma", "CodigoComunidadAutonoma"}));
    EXPECT_EQ(Columns(*db, "Deducciones"), (QStringList{"IDDeduccion", "Deduccion"}));
    EXPECT_EQ(Columns(*db, "TipoDonativos"), (QStringList{"IDTipoDonativo", "TipoDonativo", "CodigoDonativo"}));
    EXPECT_EQ(Columns(*db, "ComunidadesAutonomas_Deducciones"),
              (QStringList{"codComunidadAutonoma", "codDeduccion"}));
    EXPECT_EQ(Columns(*db, "TipoDonativos_Deducciones"), (QStringList{"codTipoDonativo", "codDeduccion"}));
    EXPECT_EQ(Columns(*db, "Provincias"), (QStringList{"CodigoProvincia", "codComunidadAutonoma", "Provincia"}));
    EXPECT_EQ(Columns(*db, "Declarantes"),
              (QStringList{"IDDeclarante", "ejercicio", "nombre", "nif", "pcnombre", "pcapellido1", "pcapellido2",
                           "pctelefono", "regimenfiscal", "delegacion", "domicilio"}));
    EXPECT_EQ(Columns(*db, "Donantes"),
              (QStringList{"codDeclarante", "nombre", "apellido1", "apellido2", "nif", "nifrepresentante",
                           "codigoprovincia", "clave", "deduccion", "importe", "donativoenespecie", "ComunidadAut",
                           "DeduccionCAut", "TipoPersona"}));
    EXPECT_EQ(Columns(*db, "CartaDonantes"),
              (QStringList{"Apellido1", "Apellido2", "Nombre", "NIF", "Importe", "Poblacion", "Direccion", "CodPos",
                           "Provincia"}));
    EXPECT_EQ(UserVersion(*db), kSchemaVersion);
    ExpectTextColumnsCollated(*db);
}

TEST_F(SchemaTest, DeclarationDatabaseCreatedTwiceKeepsSeedsAndRows)
{
    auto db = Create("Modelo182.mdb", "Microsoft.Jet.OLEDB.4.0");
    Schema::CreateDeclarationDatabase(*db);
    db->Execute("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('Nueva','99')");
    db->Execute("INSERT INTO CartaDonantes VALUES ('A','B','C','D','1,00',' ',' ',' ',' ')");
    Schema::CreateDeclarationDatabase(*db);

    EXPECT_EQ(Count(*db, "ComunidadesAutonomas"), 20);
    EXPECT_EQ(Count(*db, "Provincias"), 52);
    EXPECT_EQ(Count(*db, "Deducciones"), 8);
    EXPECT_EQ(Count(*db, "TipoDonativos"), 3);
    EXPECT_EQ(Count(*db, "TipoDonativos_Deducciones"), 11);
    EXPECT_EQ(Count(*db, "ComunidadesAutonomas_Deducciones"), 14);
    EXPECT_EQ(Count(*db, "CartaDonantes"), 1);
}

TEST_F(SchemaTest, DeletingTheDeclarantDeletesItsDonors)
{
    auto db = Create("Modelo182.mdb", "Microsoft.Jet.OLEDB.4.0");
    Schema::CreateDeclarationDatabase(*db);
    db->Execute("INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,pctelefono,"
                "regimenfiscal,delegacion,domicilio) VALUES ('2024','COLEGIO','R2800347C','TERESA','GUTIÉRREZ',"
                "'ALCAÑIZ','913456780','1','','')");
    const QString key = Rows(*db, "SELECT MAX(IDDeclarante) as Maximo FROM Declarantes").value(0);
    for (const char *nif : {"12345678Z", "87654321X"})
        db->Execute("INSERT INTO Donantes (codDeclarante, nombre, apellido1, apellido2, nif, nifrepresentante, "
                    "codigoprovincia, clave, deduccion, importe, donativoenespecie, ComunidadAut, DeduccionCAut, "
                    "TipoPersona) VALUES (" + key + ",'ANA','D''SOUZA','-','" + QString::fromLatin1(nif)
                    + "','','28','A','08000','1.234,50','','12','01500','F')");
    ASSERT_EQ(Count(*db, "Donantes"), 2);
    EXPECT_EQ(Rows(*db, "SELECT apellido1, importe, deduccion FROM Donantes").value(0), "D'SOUZA|1.234,50|08000");

    db->Execute("DELETE FROM Declarantes");

    EXPECT_EQ(Count(*db, "Declarantes"), 0);
    EXPECT_EQ(Count(*db, "Donantes"), 0);
}

TEST_F(SchemaTest, NewDeclarantGetsAFreshKeyAndKeepsOnlyItsDonors)
{
    auto db = Create("Modelo182.mdb", "Microsoft.Jet.OLEDB.4.0");
    Schema::CreateDeclarationDatabase(*db);
    const QString insert = "INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,"
                           "pctelefono,regimenfiscal,delegacion,domicilio) VALUES ('2024','C','X','N','A','B',"
                           "'9','1','','')";
    db->Execute(insert);
    db->Execute("INSERT INTO Donantes (codDeclarante, nombre) VALUES (1, 'PRIMERO')");
    db->Execute("DELETE FROM Declarantes");
    db->Execute(insert);
    const QString key = Rows(*db, "SELECT MAX(IDDeclarante) as Maximo FROM Declarantes").value(0);
    EXPECT_EQ(key, "2");   // an auto-number is never reused
    db->Execute("INSERT INTO Donantes (codDeclarante, nombre) VALUES (" + key + ", 'SEGUNDO')");
    EXPECT_EQ(Rows(*db, "SELECT codDeclarante, nombre FROM Donantes"), QStringList{"2|SEGUNDO"});
}

TEST_F(SchemaTest, CatalogueKeysAreAssignedByTheDatabase)
{
    auto db = Create("Modelo182.mdb", "Microsoft.Jet.OLEDB.4.0");
    Schema::CreateDeclarationDatabase(*db);
    db->Execute("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('Tabarca','37')");
    db->Execute("INSERT INTO deducciones (deduccion) VALUES (12.5)");
    db->Execute("INSERT INTO TipoDonativos (TipoDonativo,CodigoDonativo) VALUES ('Donativo de O''Brien','A')");

    EXPECT_EQ(Rows(*db, "SELECT MAX(IDComunidadAutonoma) FROM comunidadesautonomas"), QStringList{"20"});
    EXPECT_EQ(Rows(*db, "SELECT MAX(IDDeduccion) FROM Deducciones"), QStringList{"9"});
    EXPECT_EQ(Rows(*db, "SELECT MAX(IDTipoDonativo) FROM TipoDonativos"), QStringList{"4"});
    EXPECT_EQ(Rows(*db, "SELECT deduccion FROM deducciones WHERE deduccion=12.5"), QStringList{"12.5"});
    EXPECT_EQ(Rows(*db, "SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='Donativo de O''Brien'"),
              QStringList{"Donativo de O'Brien"});
}

TEST_F(SchemaTest, AFailedCreationLeavesNoHalfBuiltTables)
{
    auto db = Create("curso.db");
    // A table of the same name but another shape makes the index creation fail
    // after the first tables were created in the same transaction.
    db->Execute("CREATE TABLE Alumno_Actividad_Miembro (otra INTEGER)");
    EXPECT_THROW(Schema::CreateYearDatabase(*db), DatabaseError);
    EXPECT_EQ(Tables(*db), QStringList{"Alumno_Actividad_Miembro"});
    EXPECT_EQ(UserVersion(*db), 0);
}
