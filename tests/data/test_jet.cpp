// The Jet SQL the program sends, run on SQLite files: Boolean literals,
// bracketed names, nested joins and the cross-database copy of the
// certificate table.
#include "data/JetDialect.h"
#include "data/NestedJoins.h"

#include "test_data.h"

#include <QFileInfo>
#include <QSqlQuery>

using namespace data_test;

namespace {

TEST(JetSql, BooleansAreMinusOneAndZeroSoMonthFlagsSumNegativeAndBracketedNamesRunAsWritten)
{
    EXPECT_EQ(JetDialect::ReplaceBooleanLiterals("UPDATE T SET a=True, b=false WHERE c='True' AND [True]=T.False"),
              "UPDATE T SET a=-1, b=0 WHERE c='True' AND [True]=T.False");
    QTemporaryDir dir;
    auto c = Connection::CreateSQLite(dir.filePath("curso.mdb"), "Microsoft.Jet.OLEDB.4.0");
    c->Execute("CREATE TABLE [Alumno_Actividad_Miembro] ([cod Actividad] INTEGER, enero BOOLEAN, [febrero] INTEGER)");
    for (const char *values : {"7, -1, -1", "7, -1, 0", "7, 0, 0", "8, True, False"})
        c->Execute(QString("INSERT INTO Alumno_Actividad_Miembro VALUES (%1)").arg(values));
    EXPECT_EQ(c->Execute("Select * From [Alumno_Actividad_Miembro];").FieldNames(),
              QStringList({"cod Actividad", "enero", "febrero"}));
    EXPECT_EQ(Rows(*c, "SELECT SUM(enero) AS Campo0, SUM([Alumno_Actividad_Miembro].[febrero]) AS Campo1 FROM "
                       "Alumno_Actividad_Miembro WHERE [cod Actividad]=7"),
              QStringList{"-2|-1"});
    EXPECT_EQ(Rows(*c, "SELECT enero, febrero FROM Alumno_Actividad_Miembro WHERE [cod Actividad]=8"), QStringList{"-1|0"});
    EXPECT_EQ(Value(*c, "SELECT COUNT(*) FROM Alumno_Actividad_Miembro WHERE enero=True"), "3");
}

TEST(JetCrossDatabaseCopy, CopiesTheTableInSpanishOrderFromAnAbsoluteOrRelativeFileAndNamesWhatIsMissing)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkpath("Mis datos/Año 2024") && QDir(dir.path()).mkpath("Informes"));
    const QString source = dir.filePath("Mis datos/Año 2024/Modelo182.mdb"), missing = dir.filePath("Mis datos/Otro.mdb");
    auto db = Connection::CreateSQLite(source);
    db->Execute("CREATE TABLE CartaDonantes (Apellido1 TEXT COLLATE ES_CI, Nombre TEXT COLLATE ES_CI, Importe TEXT)");
    db->Execute("INSERT INTO CartaDonantes VALUES ('Ortiz', 'Ana', '61,00'), ('Ñuñez', 'Rosa', '10,00'), "
                "('Álvarez', 'Luis', '1.230,50'), ('Nuñez', 'Alba', '5,00'), ('ALVAREZ', 'Eva', ' ')");
    db->Close();
    auto target = Connection::CreateSQLite(dir.filePath("Informes/CartaDonantes.mdb"), "Microsoft.Jet.OLEDB.4.0");
    const auto attached = [&] { return Rows(*target, "SELECT name FROM pragma_database_list"); };
    const QString copy = "SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [" + source
                         + ";pwd=zq417tev].[CartaDonantes] ORDER BY Apellido1, Nombre";
    QStringList seen;
    target->SetObserver([&](const Connection &, const QString &s) { seen << s; });
    EXPECT_EQ(target->Execute(copy).FieldCount(), 0);
    target->SetObserver(nullptr);
    EXPECT_EQ(seen, QStringList{copy});
    EXPECT_EQ(target->RecordsAffected(), 5);
    EXPECT_EQ(target->Execute("SELECT * FROM CartaDonantes").FieldNames(), QStringList({"Apellido1", "Nombre", "Importe"}));
    EXPECT_EQ(Rows(*target, "SELECT * FROM CartaDonantes"), // the table's own row order, as the merge reads it
              QStringList(
                  {"ALVAREZ|Eva| ", "Álvarez|Luis|1.230,50", "Nuñez|Alba|5,00", "Ñuñez|Rosa|10,00", "Ortiz|Ana|61,00"}));
    EXPECT_EQ(attached(), QStringList{"main"});
    // The copy compares text as its source does: without case.
    EXPECT_EQ(Value(*target, "SELECT COUNT(*) FROM CartaDonantes WHERE Apellido1='álvarez' OR Nombre='ROSA'"), "2");
    const std::pair<QString, QString> cases[] = {
        {copy, "table [CartaDonantes] already exists"},
        {"SELECT [C].* INTO [C] FROM [" + missing + ";pwd=zq417tev].[C]", "No existe la base de datos «" + missing + "»."},
        {"SELECT [Cartas].* INTO [Cartas] FROM [" + source + "].[Cartas]", "no such table: m182_origen.Cartas"},
    };
    for (const auto &[sql, message] : cases) {
        const DatabaseError e = ExpectDatabaseError([&] { target->Execute(sql); });
        EXPECT_EQ(e.Detail().isEmpty() ? e.Message() : e.Detail(), message);
        EXPECT_EQ(e.Statement(), QString(sql).replace("pwd=zq417tev", "pwd=***")); // no password in a message
        EXPECT_FALSE(e.Describe().contains("zq417tev"));
        EXPECT_EQ(attached(), QStringList{"main"});
    }
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_EQ(Tables(*target), QStringList{"CartaDonantes"});
    EXPECT_EQ(Count(*target, "CartaDonantes"), 5);
    target->Execute("DROP TABLE CartaDonantes");
    target->SetBaseFolder(dir.path());
    target->Execute("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [Mis datos/Año 2024/Modelo182.mdb].[CartaDonantes] "
                    "ORDER BY Nombre");
    EXPECT_EQ(Rows(*target, "SELECT Nombre FROM CartaDonantes"), QStringList({"Alba", "Ana", "Eva", "Luis", "Rosa"}));
}

// Students, their payers, the payers' families and addresses, with every
// kind of missing link: a student without payer, a payer without family
// member, a member without address, an address without province.
const char *const kFamilies[] =
    {"CREATE TABLE Alumno (IDAlumno INTEGER PRIMARY KEY, Apellido TEXT)",
     "CREATE TABLE Inscripcion (codAlumno INTEGER, codActividad INTEGER, codPagador INTEGER)",
     "CREATE TABLE Pagador (idPagador INTEGER PRIMARY KEY, codMiembro INTEGER)",
     "CREATE TABLE Miembro (IDMiembro INTEGER PRIMARY KEY, Nombre TEXT, codDireccion INTEGER)",
     "CREATE TABLE Direccion (IDDireccion INTEGER PRIMARY KEY, calle TEXT, codProvincia INTEGER)",
     "CREATE TABLE Provincia (IDProvincia INTEGER PRIMARY KEY, descripcion TEXT)",
     "INSERT INTO Alumno VALUES (1, 'Ortiz'), (2, 'Ruiz'), (3, 'Peña'), (4, 'Sanz'), (5, 'Vidal')",
     "INSERT INTO Inscripcion VALUES (1, 7, 10), (2, 7, 11), (3, 7, 12), (4, 7, NULL), (5, 7, 13), (1, 8, 10), "
     "(9, 7, 10)",
     "INSERT INTO Pagador VALUES (10, 100), (11, 101), (12, 102), (13, 999)",
     "INSERT INTO Miembro VALUES (100, 'Ana', 1000), (101, 'Luis', NULL), (102, 'Eva', 1001)",
     "INSERT INTO Direccion VALUES (1000, 'Mayor 1', 28), (1001, 'Sol 2', 99)",
     "INSERT INTO Provincia VALUES (28, 'Madrid')"};

const QString kNestedDonors = QStringLiteral(
    "SELECT Alumno.Apellido, Miembro.Nombre, Direccion.calle, Provincia.descripcion FROM Alumno INNER JOIN "
    "(Inscripcion LEFT JOIN (Pagador LEFT JOIN (Miembro LEFT JOIN (Direccion LEFT JOIN Provincia ON "
    "Provincia.IDProvincia=Direccion.codProvincia) ON Direccion.IDDireccion=Miembro.codDireccion) ON "
    "Miembro.IDMiembro=Pagador.codMiembro) ON Pagador.idPagador=Inscripcion.codPagador) ON "
    "Alumno.IDAlumno=Inscripcion.codAlumno WHERE codActividad=7 ORDER BY Alumno.Apellido");

TEST(JetNestedJoins, TheDonorChainRunsFlatWithTheSameRowsEveryMissingLinkIncluded)
{
    EXPECT_EQ(JetDialect::FlattenNestedJoins(kNestedDonors),
              "SELECT Alumno.Apellido, Miembro.Nombre, Direccion.calle, Provincia.descripcion FROM Alumno INNER JOIN "
              "Inscripcion ON Alumno.IDAlumno=Inscripcion.codAlumno LEFT JOIN Pagador ON "
              "Pagador.idPagador=Inscripcion.codPagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro LEFT "
              "JOIN Direccion ON Direccion.IDDireccion=Miembro.codDireccion LEFT JOIN Provincia ON "
              "Provincia.IDProvincia=Direccion.codProvincia WHERE codActividad=7 ORDER BY Alumno.Apellido");

    QTemporaryDir dir;
    auto c = Connection::CreateSQLite(dir.filePath("curso.mdb"), "Microsoft.Jet.OLEDB.4.0");
    for (const char *statement : kFamilies)
        c->Execute(statement);
    const QStringList expected{"Ortiz|Ana|Mayor 1|Madrid", "Peña|Eva|Sol 2|NULL", "Ruiz|Luis|NULL|NULL",
                               "Sanz|NULL|NULL|NULL", "Vidal|NULL|NULL|NULL"};
    EXPECT_EQ(Rows(*c, kNestedDonors), expected);
    // The same statement as written, past the connection's translation.
    QSqlQuery asWritten(c->Database());
    ASSERT_TRUE(asWritten.exec(kNestedDonors));
    QStringList rows;
    while (asWritten.next()) {
        QStringList fields;
        for (int i = 0; i < 4; ++i)
            fields << (asWritten.value(i).isNull() ? QStringLiteral("NULL") : asWritten.value(i).toString());
        rows << fields.join('|');
    }
    EXPECT_EQ(rows, expected);
}

TEST(JetNestedJoins, JoinsNotCertainlyTheSameFlatAreLeftAsWritten)
{
    const char *const asWritten[] = {
        // an inner join under a LEFT JOIN keeps students whose payer has no member
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador INNER JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "Pagador.idPagador=Inscripcion.codPagador",
        // an inner condition that does not tie its table to the outer one
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Miembro.codDireccion) ON "
        "Pagador.idPagador=Inscripcion.codPagador",
        // the outer condition names a table only the inner join brings
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "Miembro.IDMiembro=Inscripcion.codPagador",
        // a condition that is not equalities of qualified columns
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "idPagador=Inscripcion.codPagador",
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro OR "
        "Miembro.Nombre=Pagador.codMiembro) ON Pagador.idPagador=Inscripcion.codPagador",
        "SELECT * FROM Inscripcion LEFT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "(Pagador.idPagador=Inscripcion.codPagador)",
        // joins SQLite already runs well, or forms this reader does not know
        "SELECT * FROM Inscripcion INNER JOIN (Pagador INNER JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "Pagador.idPagador=Inscripcion.codPagador",
        "SELECT * FROM Inscripcion LEFT JOIN Pagador ON Pagador.idPagador=Inscripcion.codPagador",
        "SELECT * FROM Inscripcion RIGHT JOIN (Pagador LEFT JOIN Miembro ON Miembro.IDMiembro=Pagador.codMiembro) ON "
        "Pagador.idPagador=Inscripcion.codPagador",
        "SELECT * FROM (SELECT * FROM Pagador) AS p LEFT JOIN (Miembro LEFT JOIN Direccion ON "
        "Direccion.IDDireccion=Miembro.codDireccion) ON Miembro.IDMiembro=p.codMiembro",
        "SELECT 'A LEFT JOIN (B' FROM Inscripcion -- LEFT JOIN (",
        "UPDATE Pagador SET codMiembro=(SELECT 1) WHERE idPagador IN (SELECT codPagador FROM Inscripcion LEFT JOIN "
        "(Alumno LEFT JOIN Miembro ON Miembro.IDMiembro=Alumno.IDAlumno) ON Alumno.IDAlumno=Inscripcion.codAlumno)",
    };
    for (const char *statement : asWritten)
        EXPECT_EQ(JetDialect::FlattenNestedJoins(statement), statement);
}

} // namespace
