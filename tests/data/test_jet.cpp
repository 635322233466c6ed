// The Jet SQL the program sends, run on SQLite files: bracketed names, the
// cross-database copy of the certificate table, and Jet's Boolean literals.

#include "data/JetDialect.h"

#include "test_data.h"

#include <QFileInfo>

using namespace data_test;

namespace {

TEST(JetDialectText, BooleanLiteralsAreMinusOneAndZeroOutsideTextAndNames)
{
    const std::pair<const char *, const char *> cases[] = {
        {"UPDATE T SET a=True, b=false WHERE c=TRUE", "UPDATE T SET a=-1, b=0 WHERE c=-1"},
        {"SELECT 'True or False', [True], T.False FROM T WHERE Truely=1", nullptr},
        {"INSERT INTO T VALUES ('d''True', True)", "INSERT INTO T VALUES ('d''True', -1)"},
        {"SELECT Nombre FROM Alumno", nullptr},
    };
    for (const auto &[sql, expected] : cases)
        EXPECT_EQ(JetDialect::ReplaceBooleanLiterals(sql), QString(expected ? expected : sql));
}

TEST(JetDialectText, CrossDatabaseCopyIsReadIntoAttachAndCreateStatements)
{
    const auto copy = JetDialect::ParseCrossDatabaseCopy(
        "SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [/a b/Modelo182.mdb;pwd=zq417tev].[CartaDonantes] "
        "ORDER BY Apellido1, Apellido2, Nombre");
    ASSERT_TRUE(copy.has_value());
    EXPECT_EQ(copy->targetTable, "CartaDonantes");
    EXPECT_EQ(copy->sourceFile, "/a b/Modelo182.mdb");
    EXPECT_EQ(copy->sourceTable, "CartaDonantes");
    EXPECT_EQ(copy->orderBy, "Apellido1, Apellido2, Nombre");
    EXPECT_EQ(JetDialect::CreateTableAsStatement(*copy, "src"),
              "CREATE TABLE [CartaDonantes] AS SELECT * FROM src.[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    EXPECT_EQ(JetDialect::AttachStatement("/d'Souza/x.mdb", "src"), "ATTACH DATABASE '/d''Souza/x.mdb' AS src");
    for (const char *other : {"SELECT * FROM CartaDonantes", "INSERT INTO CartaDonantes VALUES ('a')",
                              "SELECT Nombre FROM Alumno WHERE Nombre='SELECT [T].* INTO [T] FROM [x].[T]'"})
        EXPECT_FALSE(JetDialect::ParseCrossDatabaseCopy(other).has_value()) << other;
}

TEST(JetDialectRun, BracketedNamesRunAsWritten)
{
    QTemporaryDir dir;
    auto c = Connection::CreateSQLite(dir.filePath("CartaDonantes.mdb"), "Microsoft.Jet.OLEDB.4.0");
    c->Execute("CREATE TABLE [CartaDonantes] ([Apellido1] TEXT, [Nombre] TEXT, [Cod Pos] TEXT)");
    c->Execute("INSERT INTO [CartaDonantes] VALUES ('Pérez', 'Ana', '28001')");
    EXPECT_EQ(c->Execute("Select * From [CartaDonantes];").FieldNames(), QStringList({"Apellido1", "Nombre", "Cod Pos"}));
    EXPECT_EQ(Rows(*c, "SELECT [CartaDonantes].[Cod Pos] FROM [CartaDonantes] WHERE [Nombre]='Ana'", {"Cod Pos"}),
              QStringList{"28001"});
}

class JetCrossDatabaseCopy : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        ASSERT_TRUE(QDir(m_dir.path()).mkpath("Mis datos/Año 2024"));
        ASSERT_TRUE(QDir(m_dir.path()).mkpath("Informes"));
        const QString insert = "INSERT INTO CartaDonantes VALUES (%1)";
        m_source = MakeDatabase("Mis datos/Año 2024/Modelo182.mdb", {
            "CREATE TABLE CartaDonantes (Apellido1 TEXT COLLATE ES_CI, Apellido2 TEXT COLLATE ES_CI, Nombre TEXT "
            "COLLATE ES_CI, NIF TEXT, Importe TEXT, Poblacion TEXT, Direccion TEXT, CodPos TEXT, Provincia TEXT)",
            insert.arg("'Ortiz', 'Gil', 'Ana', '12345678Z', '61,00', 'Alcalá', 'C/ Mayor 1', '28801', 'Madrid'"),
            insert.arg("'Ñuñez', 'Paz', 'Rosa', '22222222J', '10,00', ' ', ' ', ' ', ' '"),
            insert.arg("'Álvarez', 'Sanz', 'Luis', '87654321X', '1.230,50', 'Alcalá', 'C/ Mayor 1', '28801', 'Madrid'"),
            insert.arg("'Nuñez', 'Paz', 'Alba', '33333333P', '5,00', 'Getafe', 'Plaza Sol 2', '28901', 'Madrid'"),
            insert.arg("'ALVAREZ', 'Sanz', 'Eva', '44444444A', '7,00', 'Getafe', 'Plaza Sol 2', '28901', 'Madrid'")});
        m_target = Connection::CreateSQLite(Path("Informes/CartaDonantes.mdb"), "Microsoft.Jet.OLEDB.4.0");
    }

    static QString Copy(const QString &file)
    {
        return "SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [" + file
            + "].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre";
    }

    QStringList Attached() { return Rows(*m_target, "SELECT name FROM pragma_database_list"); }

    QString m_source;
    ConnectionPtr m_target;
};

TEST_F(JetCrossDatabaseCopy, CopiesTheTableSortedOnceThenRefusesToOverwriteIt)
{
    const QString sql = Copy(m_source + ";pwd=zq417tev");
    QStringList seen;
    m_target->SetObserver([&](const Connection &, const QString &s) { seen << s; });
    EXPECT_EQ(m_target->Execute(sql).FieldCount(), 0);
    m_target->SetObserver(nullptr);
    EXPECT_EQ(m_target->RecordsAffected(), 5);
    EXPECT_EQ(seen, QStringList{sql});
    // Spanish order, as the table's own row order (what the merge reads).
    EXPECT_EQ(Rows(*m_target, "SELECT * FROM CartaDonantes"),
              QStringList({"ALVAREZ|Sanz|Eva|44444444A|7,00|Getafe|Plaza Sol 2|28901|Madrid",
                           "Álvarez|Sanz|Luis|87654321X|1.230,50|Alcalá|C/ Mayor 1|28801|Madrid",
                           "Nuñez|Paz|Alba|33333333P|5,00|Getafe|Plaza Sol 2|28901|Madrid",
                           "Ñuñez|Paz|Rosa|22222222J|10,00| | | | ",
                           "Ortiz|Gil|Ana|12345678Z|61,00|Alcalá|C/ Mayor 1|28801|Madrid"}));
    EXPECT_EQ(m_target->Execute("SELECT * FROM CartaDonantes").FieldNames(),
              QStringList({"Apellido1", "Apellido2", "Nombre", "NIF", "Importe", "Poblacion", "Direccion", "CodPos",
                           "Provincia"}));
    EXPECT_EQ(Attached(), QStringList{"main"});
    EXPECT_EQ(Count(*OpenConnection(SQLite(m_source)), "CartaDonantes"), 5);

    const DatabaseError e = ExpectDatabaseError([&] { m_target->Execute(sql); });
    EXPECT_EQ(e.Message(), "table [CartaDonantes] already exists");
    EXPECT_EQ(e.Statement(), sql);
    EXPECT_EQ(Attached(), QStringList{"main"});
    EXPECT_EQ(Count(*m_target, "CartaDonantes"), 5);
}

TEST_F(JetCrossDatabaseCopy, RelativeFileWithoutPasswordIsTakenFromTheBaseFolder)
{
    Connection::SetBaseFolder(m_dir.path());
    m_target->Execute("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [Mis datos/Año 2024/Modelo182.mdb]"
                      ".[CartaDonantes] ORDER BY Nombre");
    EXPECT_EQ(Rows(*m_target, "SELECT Nombre FROM CartaDonantes"), QStringList({"Alba", "Ana", "Eva", "Luis", "Rosa"}));
}

TEST_F(JetCrossDatabaseCopy, MissingSourceFileOrTableIsNamedAndNothingStaysAttached)
{
    const QString missing = Path("Mis datos/Otro.mdb");
    const std::pair<QString, QString> cases[] = {
        {Copy(missing + ";pwd=zq417tev"), "No existe la base de datos «" + missing + "»."},
        {"SELECT [Cartas].* INTO [Cartas] FROM [" + m_source + "].[Cartas]", "no such table: m182_origen.Cartas"},
    };
    for (const auto &[sql, message] : cases) {
        const DatabaseError e = ExpectDatabaseError([&] { m_target->Execute(sql); });
        EXPECT_EQ(e.Message(), message);
        EXPECT_EQ(e.Statement(), sql);
        EXPECT_EQ(Attached(), QStringList{"main"});
    }
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_TRUE(Tables(*m_target).isEmpty());
}

} // namespace
