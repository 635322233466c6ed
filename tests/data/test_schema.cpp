// The creation routines (tables, the column order positional inserts rely
// on, the text collation, the schema version, idempotence) and the catalogue
// rows Modelo182.mdb is delivered with, read through the statements the
// wizard and the catalogue window send.

#include "data/Schema.h"
#include "data/SchemaVersion.h"

#include "test_data.h"

#include <QMap>
#include <QRegularExpression>

using namespace data_test;

namespace {

const char kMonths[] = "enero,febrero,marzo,abril,mayo,junio,julio,agosto,septiembre,octubre,noviembre,diciembre";

using SchemaTest = DataTest;

TEST_F(SchemaTest, EachDatabaseHasItsTablesAndColumnsAndIsCreatedTwiceWithoutLoss)
{
    // Columns: "=" before the list when it is the whole table in order (positional
    // inserts rely on it); otherwise the named columns in this order among others.
    struct Case
    {
        const char *file;
        void (*create)(Connection &);
        const char *insert;   // a row that creating again must keep
        QList<std::pair<const char *, QString>> tables;
    };
    const Case cases[] = {
        {"entrada.db", Schema::CreateEntryDatabase, "INSERT INTO Centro (IDCentro, Nombre) VALUES (1, 'Colegio')",
         {{"Centro", "IDCentro,Nombre"}, {"CursoEscolar", "=IDCursoEscolar,Nombre,codcentro,BD"}}},
        {"centro.db", Schema::CreateSchoolDatabase, "INSERT INTO ComDed VALUES (1,2,3)",
         {{"ALMFModelo182", "=IDAL,IDMF,Nombre,AP1,AP2,NIF,Mostrar"},
          {"ComDed", "=IDComAut,IDDeduc,Valor"},
          {"CursoEscAct", "=IDCursoEscolar,Nombre,conBD,IDActividad,ActNom,Deduc,TipoDon,TipoDonDed,Meses,DeducComAut"},
          {"DatosModelo182", "=IDAL,IDMF,IDCC,IDAct,Pago"}}},
        {"borrado.db", Schema::CreateDeletedRecordsDatabase, nullptr, {}},
        {"curso.db", Schema::CreateYearDatabase, "INSERT INTO Actividad (IDActividad, Nombre) VALUES (1, 'Comedor')",
         {{"Actividad", "IDActividad,Nombre"},
          {"Alumno", "IDAlumno,Apellido_1,Apellido_2,Nombre"},
          {"Alumno_Actividad_Miembro", QString("codAlumno,codActividad,codMiembroFamiliaPagador,PrecioEuros,") + kMonths},
          {"Centro", "Nombre,DirectorCentro,CIF,Telefono,RFiscal"},
          {"Direccion", "=IDDireccion,direccion,poblacion,codigopostal,codProvincia"},
          {"MiembroFamilia", "=IDMiembroFamilia,Apellido1,Apellido2,Nombre,codFamilia,DNI,codDireccion"},
          {"MiembroFamiliaPagador", "=idMiembroFamiliaPagador,codMiembroFamilia"},
          {"Provincia", "=IDProvincia,descripcion"}}},
        {"Modelo182.mdb", Schema::CreateDeclarationDatabase, "INSERT INTO CartaDonantes VALUES ('A','B','C','D','1,00',' ',' ',' ',' ')",
         {{"CartaDonantes", "=Apellido1,Apellido2,Nombre,NIF,Importe,Poblacion,Direccion,CodPos,Provincia"},
          {"ComunidadesAutonomas", "=IDComunidadAutonoma,ComunidadAutonoma,CodigoComunidadAutonoma"},
          {"ComunidadesAutonomas_Deducciones", "=codComunidadAutonoma,codDeduccion"},
          {"Declarantes", "=IDDeclarante,ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,pctelefono,"
                          "regimenfiscal,delegacion,domicilio"},
          {"Deducciones", "=IDDeduccion,Deduccion"},
          {"Donantes", "=codDeclarante,nombre,apellido1,apellido2,nif,nifrepresentante,codigoprovincia,clave,"
                       "deduccion,importe,donativoenespecie,ComunidadAut,DeduccionCAut,TipoPersona"},
          {"Provincias", "=CodigoProvincia,codComunidadAutonoma,Provincia"},
          {"TipoDonativos", "=IDTipoDonativo,TipoDonativo,CodigoDonativo"},
          {"TipoDonativos_Deducciones", "=codTipoDonativo,codDeduccion"}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file);
        auto db = Connection::CreateSQLite(Path(c.file));
        c.create(*db);
        if (c.insert)
            db->Execute(c.insert);
        c.create(*db);
        if (c.insert) {
            EXPECT_EQ(Count(*db, QString(c.insert).section(' ', 2, 2)), 1);
        }
        EXPECT_EQ(UserVersion(*db), kSchemaVersion);
        QStringList names;
        for (const auto &[table, expected] : c.tables) {
            names << table;
            const QStringList columns = Columns(*db, table);
            if (expected.startsWith('=')) {
                EXPECT_EQ(columns, expected.mid(1).split(',')) << table;
                continue;
            }
            qsizetype next = 0;
            for (const QString &column : expected.split(','))
                next = next < 0 ? next : columns.indexOf(column, next);
            EXPECT_GE(next, 0) << table << ": " << columns.join(',').toStdString();
        }
        EXPECT_EQ(Tables(*db), names);
        // Every TEXT column compares with the Spanish case-blind collation.
        for (const QString &table : names) {
            const QString sql = Value(*db, "SELECT sql FROM sqlite_master WHERE name='" + table + "'");
            for (const QString &column : Rows(*db, "SELECT name FROM pragma_table_info('" + table + "') WHERE type='TEXT'"))
                EXPECT_TRUE(sql.contains(QRegularExpression("\\b" + column + " TEXT COLLATE ES_CI\\b")))
                    << (table + "." + column).toStdString();
        }
    }
}

TEST_F(SchemaTest, SavedWorkRoundTripsThroughPositionalInserts)
{
    auto db = Connection::CreateSQLite(Path("centro.db"));
    Schema::CreateSchoolDatabase(*db);
    db->Execute("INSERT INTO CursoEscAct VALUES (2,'2025-2026','Provider=SQLite;Data Source=datos/b.db',4,'Inglés',12.5,"
                "'A','Donativo - 80%','000000000111',-1)");
    db->Execute("INSERT INTO ALMFModelo182 VALUES (15,1003,'Ana','D''Souza','-','12345678Z',0)");
    db->Execute("INSERT INTO DatosModelo182 VALUES (15,1003,1,9,12.5)");
    EXPECT_EQ(Rows(*db, "SELECT * FROM CursoEscAct ORDER BY IDCursoEscolar, IDActividad"),
              QStringList{"2|2025-2026|Provider=SQLite;Data Source=datos/b.db|4|Inglés|12.5|A|Donativo - 80%|000000000111|-1"});
    EXPECT_EQ(Rows(*db, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=15 AND IDMF=1003"),
              QStringList{"Ana|D'Souza|-|12345678Z|0"});
    EXPECT_EQ(Rows(*db, "SELECT Pago FROM DatosModelo182 WHERE IDCC=1 AND IDAct=9 AND IDAL=15"), QStringList{"12.5"});
}

TEST_F(SchemaTest, YearDatabaseComesWithTheProvincesOnce)
{
    auto db = Connection::CreateSQLite(Path("curso.db"));
    Schema::CreateYearDatabase(*db);
    Schema::CreateYearDatabase(*db);
    EXPECT_EQ(Count(*db, "Provincia"), 52);
    EXPECT_EQ(Rows(*db, "SELECT IDProvincia, descripcion FROM Provincia WHERE IDProvincia IN (8, 15, 52) ORDER BY 1"),
              QStringList({"8|Barcelona", "15|A Coruña", "52|Melilla"}));
}

TEST_F(SchemaTest, AFailedCreationLeavesNoHalfBuiltTables)
{
    auto db = Connection::CreateSQLite(Path("curso.db"));
    // A table of that name but another shape makes the index fail after the
    // first tables were made in the same transaction.
    db->Execute("CREATE TABLE Alumno_Actividad_Miembro (otra INTEGER)");
    EXPECT_THROW(Schema::CreateYearDatabase(*db), DatabaseError);
    EXPECT_EQ(Tables(*db), QStringList{"Alumno_Actividad_Miembro"});
    EXPECT_EQ(UserVersion(*db), 0);
}

class DeclarationDatabase : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_db = Connection::CreateSQLite(Path("Modelo182.mdb"), "Microsoft.Jet.OLEDB.4.0");
        Schema::CreateDeclarationDatabase(*m_db);
    }

    ConnectionPtr m_db;
};

TEST_F(DeclarationDatabase, DeclarantKeysAreNeverReusedAndDeletingOneTakesItsDonors)
{
    const QString declarant = "INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,"
                              "pctelefono,regimenfiscal,delegacion,domicilio) VALUES ('2024','COLEGIO','R2800347C',"
                              "'TERESA','GUTIÉRREZ','ALCAÑIZ','913456780','1','','')";
    const QString donor = "INSERT INTO Donantes (codDeclarante, nombre, apellido1, apellido2, nif, nifrepresentante, "
                          "codigoprovincia, clave, deduccion, importe, donativoenespecie, ComunidadAut, DeduccionCAut, "
                          "TipoPersona) VALUES (%1,'ANA','D''SOUZA','-','%2','','08','A','08000','1.234,50','','12',"
                          "'01500','F')";
    m_db->Execute(declarant);
    m_db->Execute(donor.arg("1", "12345678Z"));
    m_db->Execute(donor.arg("1", "87654321X"));
    EXPECT_EQ(Rows(*m_db, "SELECT apellido1, codigoprovincia, deduccion, importe, DeduccionCAut FROM Donantes WHERE "
                          "nif='12345678Z'"),
              QStringList{"D'SOUZA|08|08000|1.234,50|01500"});
    m_db->Execute("DELETE FROM Declarantes");
    EXPECT_EQ(Count(*m_db, "Donantes"), 0);
    m_db->Execute(declarant);
    const QString key = Value(*m_db, "SELECT MAX(IDDeclarante) as Maximo FROM Declarantes");
    EXPECT_EQ(key, "2");
    m_db->Execute(donor.arg(key, "11111111H"));
    EXPECT_EQ(Rows(*m_db, "SELECT codDeclarante, nif FROM Donantes"), QStringList{"2|11111111H"});
}

TEST_F(DeclarationDatabase, CatalogueListsAndCountsSurviveASecondCreation)
{
    m_db->Execute("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('Nueva','99')");
    Schema::CreateDeclarationDatabase(*m_db);
    const std::pair<const char *, int> counts[] = {
        {"ComunidadesAutonomas", 20}, {"Provincias", 52}, {"Deducciones", 8}, {"TipoDonativos", 3},
        {"TipoDonativos_Deducciones", 11}, {"ComunidadesAutonomas_Deducciones", 14}, {"Declarantes", 0},
    };
    for (const auto &[table, count] : counts)
        EXPECT_EQ(Count(*m_db, table), count) << table;
    EXPECT_EQ(Rows(*m_db, "SELECT IDTipoDonativo, TipoDonativo, CodigoDonativo FROM TipoDonativos"),
              QStringList({"1|Donativo|A", "2|Cuota de socio|A", "3|Actividad prioritaria de mecenazgo|B"}));
    EXPECT_EQ(Rows(*m_db, "SELECT IDDeduccion, Deduccion FROM Deducciones"),
              QStringList({"1|80", "2|35", "3|40", "4|45", "5|10", "6|15", "7|20", "8|25"}));
}

TEST_F(DeclarationDatabase, EveryProvinceLeadsToItsCommunityAndItsDeclarationCode)
{
    // The AEAT's lists: communities with their code (none, "00", for the foral
    // ones and the autonomous cities) and their provinces; province names.
    const QMap<QString, QString> expected = {
        {"Andalucía|01", "04 11 14 18 21 23 29 41"}, {"Aragón|02", "22 44 50"}, {"Principado de Asturias|03", "33"},
        {"Illes Balears|04", "07"}, {"Canarias|05", "35 38"}, {"Cantabria|06", "39"},
        {"Castilla-La Mancha|07", "02 13 16 19 45"}, {"Castilla y León|08", "05 09 24 34 37 40 42 47 49"},
        {"Cataluña|09", "08 17 25 43"}, {"Extremadura|10", "06 10"}, {"Galicia|11", "15 27 32 36"},
        {"Comunidad de Madrid|12", "28"}, {"Región de Murcia|13", "30"}, {"La Rioja|16", "26"},
        {"Comunitat Valenciana|17", "03 12 46"}, {"País Vasco|00", "01 20 48"}, {"Comunidad Foral de Navarra|00", "31"},
        {"Ceuta|00", "51"}, {"Melilla|00", "52"},
    };
    const QString names =
        "01 Araba/Álava, 02 Albacete, 03 Alicante, 04 Almería, 05 Ávila, 06 Badajoz, 07 Illes Balears, 08 Barcelona, "
        "09 Burgos, 10 Cáceres, 11 Cádiz, 12 Castellón, 13 Ciudad Real, 14 Córdoba, 15 A Coruña, 16 Cuenca, 17 Girona, "
        "18 Granada, 19 Guadalajara, 20 Gipuzkoa, 21 Huelva, 22 Huesca, 23 Jaén, 24 León, 25 Lleida, 26 La Rioja, "
        "27 Lugo, 28 Madrid, 29 Málaga, 30 Murcia, 31 Navarra, 32 Ourense, 33 Asturias, 34 Palencia, 35 Las Palmas, "
        "36 Pontevedra, 37 Salamanca, 38 Santa Cruz de Tenerife, 39 Cantabria, 40 Segovia, 41 Sevilla, 42 Soria, "
        "43 Tarragona, 44 Teruel, 45 Toledo, 46 Valencia, 47 Valladolid, 48 Bizkaia, 49 Zamora, 50 Zaragoza, "
        "51 Ceuta, 52 Melilla";
    QMap<QString, QString> got;
    for (const QString &row : Rows(*m_db, "SELECT ComunidadAutonoma, CodigoComunidadAutonoma, CodigoProvincia FROM "
                                          "Provincias INNER JOIN ComunidadesAutonomas ON Provincias.codComunidadAutonoma="
                                          "ComunidadesAutonomas.IDComunidadAutonoma ORDER BY CodigoProvincia"))
        got[row.section('|', 0, 1)] += (got.contains(row.section('|', 0, 1)) ? " " : "") + row.section('|', 2);
    EXPECT_EQ(got, expected);
    EXPECT_EQ(Count(*m_db, "ComunidadesAutonomas"), 19);
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoProvincia || ' ' || Provincia FROM Provincias ORDER BY CodigoProvincia").join(", "),
              names);
    // The declaration's lookup by name, whatever the case of the name.
    const QString lookup = "SELECT CodigoProvincia, CodigoComunidadAutonoma, ComunidadAutonoma FROM Provincias INNER JOIN "
                           "ComunidadesAutonomas ON Provincias.codComunidadAutonoma=ComunidadesAutonomas."
                           "IDComunidadAutonoma WHERE Provincia='";
    EXPECT_EQ(Rows(*m_db, lookup + "ÁVILA'"), QStringList{"05|08|Castilla y León"});
    EXPECT_EQ(Rows(*m_db, lookup + "a coruña'"), QStringList{"15|11|Galicia"});
    EXPECT_TRUE(Rows(*m_db, lookup + "Barna'").isEmpty());
}

TEST_F(DeclarationDatabase, PercentagesOfferedPerDonationTypeAndPerCommunity)
{
    QStringList byType = Rows(*m_db, "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN "
                                     "(TipoDonativos_Deducciones INNER JOIN Deducciones ON TipoDonativos_Deducciones."
                                     "codDeduccion=Deducciones.IDDeduccion) ON TipoDonativos.idTipoDonativo="
                                     "TipoDonativos_Deducciones.codTipoDonativo");
    byType.sort();
    EXPECT_EQ(byType, QStringList({"Actividad prioritaria de mecenazgo|40", "Actividad prioritaria de mecenazgo|45",
                                   "Actividad prioritaria de mecenazgo|80", "Cuota de socio|35", "Cuota de socio|40",
                                   "Cuota de socio|45", "Cuota de socio|80", "Donativo|35", "Donativo|40",
                                   "Donativo|45", "Donativo|80"}));
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoDonativo FROM TipoDonativos WHERE TipoDonativo='Actividad prioritaria de mecenazgo'"),
              QStringList{"B"});
    const QString community = "SELECT IDDeduccion,Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN Deducciones "
                              "ON ComunidadesAutonomas_Deducciones.codDeduccion=Deducciones.IDDeduccion WHERE "
                              "codComunidadAutonoma=(SELECT IDComunidadAutonoma FROM ComunidadesAutonomas WHERE "
                              "ComunidadAutonoma='%1') ORDER BY 1";
    const std::pair<const char *, QStringList> cases[] = {
        {"Comunidad de Madrid", {"6|15"}}, {"Comunitat Valenciana", {"7|20", "8|25"}}, {"Andalucía", {}},
        {"País Vasco", {}}, {"Comunidad Foral de Navarra", {}}, {"Ceuta", {}}, {"Melilla", {}},
    };
    for (const auto &[name, percentages] : cases)
        EXPECT_EQ(Rows(*m_db, community.arg(name)), percentages) << name;
}

TEST_F(DeclarationDatabase, CatalogueWindowStatementsFindAddAndRemoveRows)
{
    // Duplicate tests ignore case; numbers compare as numbers.
    EXPECT_EQ(Rows(*m_db, "SELECT comunidadautonoma FROM comunidadesautonomas WHERE comunidadautonoma='CATALUÑA'"),
              QStringList{"Cataluña"});
    EXPECT_EQ(Rows(*m_db, "SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='donativo'"), QStringList{"Donativo"});
    EXPECT_EQ(Rows(*m_db, "SELECT deduccion FROM deducciones WHERE deduccion=80"), QStringList{"80"});
    EXPECT_TRUE(Rows(*m_db, "SELECT deduccion FROM deducciones WHERE deduccion=12.5").isEmpty());
    // New keys are assigned by the database and read back with MAX.
    m_db->Execute("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('Tabarca','37')");
    m_db->Execute("INSERT INTO deducciones (deduccion) VALUES (12.5)");
    m_db->Execute("INSERT INTO TipoDonativos (TipoDonativo,CodigoDonativo) VALUES ('Donativo de O''Brien','A')");
    EXPECT_EQ(Value(*m_db, "SELECT MAX(IDComunidadAutonoma) FROM comunidadesautonomas"), "20");
    EXPECT_EQ(Value(*m_db, "SELECT MAX(IDDeduccion) FROM Deducciones"), "9");
    EXPECT_EQ(Value(*m_db, "SELECT MAX(IDTipoDonativo) FROM TipoDonativos"), "4");
    EXPECT_EQ(Rows(*m_db, "SELECT deduccion FROM deducciones WHERE deduccion=12.5"), QStringList{"12.5"});
    EXPECT_EQ(Rows(*m_db, "SELECT TipoDonativo FROM TipoDonativos WHERE TipoDonativo='Donativo de O''Brien'"),
              QStringList{"Donativo de O'Brien"});
    // Links are written positionally and removed by both keys.
    m_db->Execute("INSERT INTO ComunidadesAutonomas_Deducciones VALUES (20,9)");
    m_db->Execute("INSERT INTO TipoDonativos_Deducciones VALUES (4,9)");
    EXPECT_EQ(Rows(*m_db, "SELECT coddeduccion FROM comunidadesautonomas_deducciones WHERE codcomunidadautonoma=20"),
              QStringList{"9"});
    EXPECT_EQ(Rows(*m_db, "SELECT codTipoDonativo, codDeduccion FROM TipoDonativos_Deducciones WHERE codDeduccion=9"),
              QStringList{"4|9"});
    m_db->Execute("DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=9 AND codComunidadAutonoma=20");
    m_db->Execute("DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=9 AND codTipoDonativo=4");
    EXPECT_EQ(Count(*m_db, "ComunidadesAutonomas_Deducciones"), 14);
    EXPECT_EQ(Count(*m_db, "TipoDonativos_Deducciones"), 11);
}

} // namespace
