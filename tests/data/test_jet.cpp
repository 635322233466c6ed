// The Jet SQL the program sends, run on SQLite files: Boolean literals,
// bracketed names and the cross-database copy of the certificate table.
#include "data/JetDialect.h"

#include "test_data.h"

#include <QFileInfo>

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

} // namespace
