// The creation routines (tables, the column order positional inserts rely
// on, the text collation, the schema version, idempotence) and the catalogue
// rows Modelo182.mdb is delivered with.
#include "data/Schema.h"
#include "data/SchemaVersion.h"

#include "test_data.h"

#include <QRegularExpression>

using namespace data_test;

namespace {

using SchemaTest = DataTest;

TEST_F(SchemaTest, EachDatabaseHasItsTablesAndPositionalColumnOrdersAndIsCreatedTwiceWithoutLoss)
{
    const struct
    {
        const char *file;
        void (*create)(Connection &);
        const char *insert; // a row that creating again must keep
        const char *tables;
        QList<std::pair<const char *, const char *>> positional; // tables written by "INSERT INTO T VALUES (...)"
    } cases[] = {
        {"entrada.db",
         Schema::CreateEntryDatabase,
         "INSERT INTO Centro (IDCentro, Nombre) VALUES (1, 'Colegio')",
         "Centro CursoEscolar",
         {}},
        {"centro.db",
         Schema::CreateSchoolDatabase,
         "INSERT INTO ComDed VALUES (1,2,3)",
         "ALMFModelo182 ComDed CursoEscAct DatosModelo182",
         {{"ALMFModelo182", "IDAL,IDMF,Nombre,AP1,AP2,NIF,Mostrar"},
          {"ComDed", "IDComAut,IDDeduc,Valor"},
          {"CursoEscAct", "IDCursoEscolar,Nombre,conBD,IDActividad,ActNom,Deduc,TipoDon,TipoDonDed,Meses,DeducComAut"},
          {"DatosModelo182", "IDAL,IDMF,IDCC,IDAct,Pago"}}},
        {"borrado.db", Schema::CreateDeletedRecordsDatabase, nullptr, "", {}},
        {"curso.db",
         Schema::CreateYearDatabase,
         "INSERT INTO Actividad (IDActividad, Nombre) VALUES (1, 'Comedor')",
         "Actividad Alumno Alumno_Actividad_Miembro Centro Direccion MiembroFamilia MiembroFamiliaPagador Provincia",
         {}},
        {"Modelo182.mdb",
         Schema::CreateDeclarationDatabase,
         "INSERT INTO CartaDonantes VALUES ('A','B','C','D','1,00',' ',' ',' ',' ')",
         "CartaDonantes ComunidadesAutonomas ComunidadesAutonomas_Deducciones Declarantes Deducciones Donantes "
         "Provincias TipoDonativos TipoDonativos_Deducciones",
         {{"CartaDonantes", "Apellido1,Apellido2,Nombre,NIF,Importe,Poblacion,Direccion,CodPos,Provincia"},
          {"ComunidadesAutonomas_Deducciones", "codComunidadAutonoma,codDeduccion"},
          {"TipoDonativos_Deducciones", "codTipoDonativo,codDeduccion"}}},
    };
    for (const auto &c : cases) {
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
        EXPECT_EQ(Tables(*db).join(' '), c.tables);
        for (const auto &[table, columns] : c.positional)
            EXPECT_EQ(Rows(*db, QString("SELECT name FROM pragma_table_info('%1')").arg(table)).join(','), columns);
        for (const QString &table : Tables(*db)) { // every TEXT column compares with ES_CI
            const QString sql = Value(*db, QString("SELECT sql FROM sqlite_master WHERE name='%1'").arg(table));
            for (const QString &text :
                 Rows(*db, QString("SELECT name FROM pragma_table_info('%1') WHERE type='TEXT'").arg(table)))
                EXPECT_TRUE(sql.contains(QRegularExpression("\\b" + text + " TEXT COLLATE ES_CI\\b")))
                    << table << "." << text;
        }
    }
}

TEST_F(SchemaTest, YearDatabaseHasTheProvincesOnceAndAFailedCreationLeavesNoHalfBuiltTables)
{
    auto db = Connection::CreateSQLite(Path("curso.db"));
    Schema::CreateYearDatabase(*db);
    Schema::CreateYearDatabase(*db);
    EXPECT_EQ(Count(*db, "Provincia"), 52);
    EXPECT_EQ(Rows(*db, "SELECT IDProvincia, descripcion FROM Provincia WHERE IDProvincia IN (8, 15, 52) ORDER BY 1"),
              QStringList({"8|Barcelona", "15|A Coruña", "52|Melilla"}));
    // A table of that name but another shape makes the index fail after the first tables were made.
    auto other = Connection::CreateSQLite(Path("otro.db"));
    other->Execute("CREATE TABLE Alumno_Actividad_Miembro (otra INTEGER)");
    EXPECT_THROW(Schema::CreateYearDatabase(*other), DatabaseError);
    EXPECT_EQ(Tables(*other), QStringList{"Alumno_Actividad_Miembro"});
    EXPECT_EQ(UserVersion(*other), 0);
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

TEST_F(DeclarationDatabase, DeletingADeclarantTakesItsDonorsAndKeysAreNeverReused)
{
    const QString declarant = "INSERT INTO Declarantes (ejercicio,nombre,nif) VALUES ('2024','COLEGIO','R2800347C')";
    const QString donor = "INSERT INTO Donantes (codDeclarante, nombre, nif, importe) VALUES (%1,'ANA','%2','1.234,50')";
    m_db->Execute(declarant);
    m_db->Execute(donor.arg("1", "12345678Z"));
    m_db->Execute(donor.arg("1", "87654321X"));
    m_db->Execute("DELETE FROM Declarantes");
    EXPECT_EQ(Count(*m_db, "Donantes"), 0);
    m_db->Execute(declarant);
    EXPECT_EQ(Value(*m_db, "SELECT MAX(IDDeclarante) as Maximo FROM Declarantes"), "2");
    m_db->Execute(donor.arg("2", "11111111H"));
    m_db->Execute("DELETE FROM Declarantes WHERE IDDeclarante=3");
    EXPECT_EQ(Rows(*m_db, "SELECT codDeclarante, nif FROM Donantes"), QStringList{"2|11111111H"});
}

TEST_F(DeclarationDatabase, CatalogueRowsSurviveASecondCreation)
{
    m_db->Execute("INSERT INTO ComunidadesAutonomas (comunidadautonoma,codigocomunidadautonoma) VALUES ('Nueva','99')");
    Schema::CreateDeclarationDatabase(*m_db);
    EXPECT_EQ(QString("%1 %2 %3 %4")
                  .arg(Count(*m_db, "ComunidadesAutonomas"))
                  .arg(Count(*m_db, "Provincias"))
                  .arg(Count(*m_db, "TipoDonativos_Deducciones"))
                  .arg(Count(*m_db, "ComunidadesAutonomas_Deducciones")),
              "20 52 11 14");
    EXPECT_EQ(Rows(*m_db, "SELECT * FROM TipoDonativos"),
              QStringList({"1|Donativo|A", "2|Cuota de socio|A", "3|Actividad prioritaria de mecenazgo|B"}));
    EXPECT_EQ(Rows(*m_db, "SELECT * FROM Deducciones").join(' '), "1|80 2|35 3|40 4|45 5|10 6|15 7|20 8|25");
    // The catalogue window's duplicate test ignores case.
    EXPECT_EQ(Rows(*m_db, "SELECT comunidadautonoma FROM comunidadesautonomas WHERE comunidadautonoma='CATALUÑA'"),
              QStringList{"Cataluña"});
}

TEST_F(DeclarationDatabase, EveryProvinceLeadsToItsCommunityAndItsDeclarationCode)
{
    // Province code, name and the community's code of the AEAT's lists ("00" for the foral ones and the cities).
    const QString provinces =
        "01 Araba/Álava 00, 02 Albacete 07, 03 Alicante 17, 04 Almería 01, 05 Ávila 08, 06 Badajoz 10, 07 Illes Balears 04, "
        "08 Barcelona 09, 09 Burgos 08, 10 Cáceres 10, 11 Cádiz 01, 12 Castellón 17, 13 Ciudad Real 07, 14 Córdoba 01, "
        "15 A Coruña 11, 16 Cuenca 07, 17 Girona 09, 18 Granada 01, 19 Guadalajara 07, 20 Gipuzkoa 00, 21 Huelva 01, "
        "22 Huesca 02, 23 Jaén 01, 24 León 08, 25 Lleida 09, 26 La Rioja 16, 27 Lugo 11, 28 Madrid 12, 29 Málaga 01, "
        "30 Murcia 13, 31 Navarra 00, 32 Ourense 11, 33 Asturias 03, 34 Palencia 08, 35 Las Palmas 05, 36 Pontevedra 11, "
        "37 Salamanca 08, 38 Santa Cruz de Tenerife 05, 39 Cantabria 06, 40 Segovia 08, 41 Sevilla 01, 42 Soria 08, "
        "43 Tarragona 09, 44 Teruel 02, 45 Toledo 07, 46 Valencia 17, 47 Valladolid 08, 48 Bizkaia 00, 49 Zamora 08, "
        "50 Zaragoza 02, 51 Ceuta 00, 52 Melilla 00";
    const QString communities =
        "00 Ceuta, 00 Comunidad Foral de Navarra, 00 Melilla, 00 País Vasco, 01 Andalucía, 02 Aragón, "
        "03 Principado de Asturias, 04 Illes Balears, 05 Canarias, 06 Cantabria, 07 Castilla-La Mancha, "
        "08 Castilla y León, 09 Cataluña, 10 Extremadura, 11 Galicia, 12 Comunidad de Madrid, 13 Región de Murcia, "
        "16 La Rioja, 17 Comunitat Valenciana";
    const QString join = "FROM Provincias INNER JOIN ComunidadesAutonomas ON Provincias.codComunidadAutonoma="
                         "ComunidadesAutonomas.IDComunidadAutonoma";
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoProvincia || ' ' || Provincia || ' ' || CodigoComunidadAutonoma " + join
                              + " ORDER BY CodigoProvincia")
                  .join(", "),
              provinces);
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoComunidadAutonoma || ' ' || ComunidadAutonoma FROM ComunidadesAutonomas ORDER BY "
                          "CodigoComunidadAutonoma, ComunidadAutonoma")
                  .join(", "),
              communities);
    // The declaration's lookup by name, whatever the case of the name.
    EXPECT_EQ(Rows(*m_db, "SELECT CodigoProvincia, ComunidadAutonoma " + join + " WHERE Provincia='ÁVILA'"),
              QStringList{"05|Castilla y León"});
}

TEST_F(DeclarationDatabase, PercentagesOfferedPerDonationTypeAndPerCommunity)
{
    QStringList byType = Rows(*m_db, "SELECT TipoDonativo, Deduccion FROM TipoDonativos INNER JOIN (TipoDonativos_"
                                     "Deducciones INNER JOIN Deducciones ON TipoDonativos_Deducciones.codDeduccion="
                                     "Deducciones.IDDeduccion) ON TipoDonativos.idTipoDonativo=TipoDonativos_Deducciones."
                                     "codTipoDonativo");
    byType.sort();
    EXPECT_EQ(byType.join(", "), "Actividad prioritaria de mecenazgo|40, Actividad prioritaria de mecenazgo|45, "
                                 "Actividad prioritaria de mecenazgo|80, Cuota de socio|35, Cuota de socio|40, "
                                 "Cuota de socio|45, Cuota de socio|80, Donativo|35, Donativo|40, Donativo|45, Donativo|80");
    // Madrid 15 %, Valenciana 20 and 25 %; none in Andalucía.
    EXPECT_EQ(Rows(*m_db, "SELECT ComunidadAutonoma, Deduccion FROM ComunidadesAutonomas_Deducciones INNER JOIN Deducciones "
                          "ON codDeduccion=IDDeduccion INNER JOIN ComunidadesAutonomas ON codComunidadAutonoma="
                          "IDComunidadAutonoma WHERE ComunidadAutonoma IN ('Comunidad de Madrid', 'Comunitat Valenciana', "
                          "'Andalucía') ORDER BY 1, 2"),
              QStringList({"Comunidad de Madrid|15", "Comunitat Valenciana|20", "Comunitat Valenciana|25"}));
}

} // namespace
