// The creation routines of the host's databases on a PostgreSQL server:
// tables under folded names, the column order positional inserts rely on,
// the Spanish collation on every text column, the version table, creating
// twice without loss.
#include "ServerTest.h"

#include "data/PostgresSchema.h"
#include "data/Schema.h"
#include "data/SchemaVersion.h"

#include <QSqlQuery>

using namespace server_test;

namespace {

using ServerSchema = ServerTest;

QStringList Tables(Connection &c)
{
    return Rows(c, "SELECT table_name FROM information_schema.tables WHERE table_schema='public' ORDER BY table_name");
}

QString Columns(Connection &c, const QString &table)
{
    return Rows(c, "SELECT column_name FROM information_schema.columns WHERE table_schema='public' AND table_name='" + table
                       + "' ORDER BY ordinal_position")
        .join(',');
}

TEST_F(ServerSchema, EachHostDatabaseHasItsTablesColumnOrdersAndCollationAndIsCreatedTwiceWithoutLoss)
{
    const struct
    {
        const char *name;
        void (*create)(Connection &);
        const char *insert; // a row that creating again must keep
        const char *tables;
        QList<std::pair<const char *, const char *>> positional;
    } cases[] = {
        {"entrada",
         Schema::CreateEntryDatabase,
         "INSERT INTO Centro (IDCentro, Nombre) VALUES (1, 'Colegio')",
         "centro cursoescolar m182_version",
         {{"cursoescolar", "idcursoescolar,nombre,codcentro,bd"}}},
        {"centro",
         Schema::CreateSchoolDatabase,
         "INSERT INTO ComDed VALUES (1,2,3.5)",
         "almfmodelo182 comded cursoescact datosmodelo182 m182_version",
         {{"almfmodelo182", "idal,idmf,nombre,ap1,ap2,nif,mostrar"},
          {"comded", "idcomaut,iddeduc,valor"},
          {"cursoescact", "idcursoescolar,nombre,conbd,idactividad,actnom,deduc,tipodon,tipodonded,meses,deduccomaut"},
          {"datosmodelo182", "idal,idmf,idcc,idact,pago"}}},
        {"borrado", Schema::CreateDeletedRecordsDatabase, nullptr, "m182_version", {}},
        {"curso",
         Schema::CreateYearDatabase,
         "INSERT INTO Actividad (IDActividad, Nombre) VALUES (1, 'Comedor')",
         "actividad alumno alumno_actividad_miembro centro direccion m182_version miembrofamilia "
         "miembrofamiliapagador provincia",
         {{"alumno_actividad_miembro", "idalumnoactividadmiembro,codalumno,codactividad,codmiembrofamiliapagador,"
                                       "precioeuros,enero,febrero,marzo,abril,mayo,junio,julio,agosto,septiembre,"
                                       "octubre,noviembre,diciembre"}}},
    };
    for (const auto &k : cases) {
        SCOPED_TRACE(k.name);
        ConnectionPtr db = Fresh(k.name);
        EXPECT_EQ(Schema::UserVersion(*db), 0);
        k.create(*db);
        if (k.insert)
            db->Execute(k.insert);
        k.create(*db);
        if (k.insert) {
            EXPECT_EQ(Value(*db, "SELECT COUNT(*) FROM " + QString(k.insert).section(' ', 2, 2)), "1");
        }
        EXPECT_EQ(Schema::UserVersion(*db), kSchemaVersion);
        EXPECT_EQ(Tables(*db).join(' '), k.tables);
        for (const auto &[table, columns] : k.positional)
            EXPECT_EQ(Columns(*db, table), columns);
        EXPECT_EQ(Value(*db, "SELECT COUNT(*) FROM information_schema.columns WHERE table_schema='public' "
                             "AND data_type='text' AND collation_name IS DISTINCT FROM 'es_ci'"),
                  "0");
    }
}

TEST_F(ServerSchema, TheYearDatabaseHasTheProvincesAndItsTypesReadAsTheSQLiteOnesDo)
{
    ConnectionPtr db = Fresh("curso");
    Schema::CreateYearDatabase(*db);
    EXPECT_EQ(Value(*db, "SELECT COUNT(*) FROM Provincia"), "52");
    EXPECT_EQ(Value(*db, "SELECT descripcion FROM Provincia WHERE IDProvincia=28"), "Madrid");
    db->Execute("INSERT INTO Actividad (IDActividad, Nombre, PrecioEuros) VALUES (3, 'Inglés', 12.5)");
    Recordset rs = db->Execute("SELECT IDActividad, Nombre, PrecioEuros FROM Actividad");
    EXPECT_EQ(rs.FieldNames(), (QStringList{"idactividad", "nombre", "precioeuros"}));
    // Whole numbers come as SQLite gives them, 64-bit.
    EXPECT_EQ(rs.Fields("IDActividad"), QVariant(qlonglong(3)));
    EXPECT_EQ(db->Execute("SELECT MAX(IDActividad) AS m FROM Actividad").Fields("m"), QVariant(qlonglong(3)));
    EXPECT_EQ(rs.Fields("Nombre").toString(), "Inglés");
    EXPECT_EQ(rs.Fields("PrecioEuros").toDouble(), 12.5);
}

TEST_F(ServerSchema, TheDeclarationDatabaseIsNeverMadeOnTheServer)
{
    ConnectionPtr db = Fresh("modelo182");
    const DatabaseError error = ExpectDatabaseError([&] { Schema::CreateDeclarationDatabase(*db); });
    EXPECT_EQ(error.Message(), "La base de datos de la declaración (Modelo182.mdb) es siempre un archivo local; no se "
                               "crea en el servidor.");
    EXPECT_TRUE(Tables(*db).isEmpty());
}

TEST_F(ServerSchema, ADatabaseOfANewerProgramIsRefusedOnOpen)
{
    const QString text = EmptyTestDatabase("nueva");
    {
        ConnectionPtr db = Open(text);
        Schema::CreateDeletedRecordsDatabase(*db);
        QSqlDatabase qt = db->Database();
        PostgresSchema::SetVersion(qt, kSchemaVersion + 1);
    }
    const DatabaseError error = ExpectDatabaseError([&] { Open(text); });
    EXPECT_EQ(error.Message(), "La base de datos «" + TestDatabasePrefix()
                                   + "_nueva» fue creada por una versión más "
                                     "reciente del programa (estructura "
                                   + QString::number(kSchemaVersion + 1) + "; esta versión admite hasta la "
                                   + QString::number(kSchemaVersion) + "). Actualice el programa para abrirla.");
}

} // namespace
