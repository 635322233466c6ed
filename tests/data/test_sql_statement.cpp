// Statements written with their values apart: the text everyone sees is the
// one written with literals, and what reaches the file is the same as that
// text would write, whether the shape was prepared before or not.
#include "data/SqlStatement.h"

#include "test_data.h"

#include <QSqlQuery>

using namespace data_test;

namespace {

SqlStatement Insert(qlonglong id, const QString &nombre, const QString &importe, const QString &pago)
{
    return SqlStatement("INSERT INTO Donante VALUES (")
        .Integer(id)
        .Sql(",")
        .Text(nombre)
        .Sql(",")
        .Text(importe)
        .Sql(",")
        .Decimal(pago)
        .Sql(", True)");
}

TEST(SqlStatement, ItsTextHasTheValuesAsLiteralsAndItsShapeAMarkForEach)
{
    const SqlStatement insert = Insert(-7, "O'Brien, Ana", "1.250,00", "12.50");
    EXPECT_EQ(insert.ToString(), "INSERT INTO Donante VALUES (-7,'O''Brien, Ana','1.250,00',12.50, True)");
    EXPECT_EQ(insert.Shape(), "INSERT INTO Donante VALUES (?,?,?,?, True)");
    EXPECT_EQ(insert.Values(), QVariantList({-7LL, "O'Brien, Ana", "1.250,00", 12.5}));
    // A null text is the empty text, as the literal '' is; a whole literal stays whole.
    const SqlStatement empty = SqlStatement("SELECT ").Text(QString()).Sql(", ").Decimal("+3");
    EXPECT_EQ(empty.ToString(), "SELECT '', +3");
    EXPECT_FALSE(empty.Values().at(0).isNull());
    EXPECT_EQ(empty.Values().at(1), QVariant(3LL));
    // A "?" in the SQL around the values is not a value of its own.
    EXPECT_EQ(SqlStatement("SELECT '?' FROM T WHERE a=").Integer(1).ToString(), "SELECT '?' FROM T WHERE a=1");
}

TEST(SqlStatement, RowsWrittenAndReadAreThoseOfItsTextAndTheObserverSeesTheText)
{
    QTemporaryDir dir;
    auto c = Connection::CreateSQLite(dir.filePath("Modelo182.mdb"), "Microsoft.Jet.OLEDB.4.0");
    c->Execute("CREATE TABLE Donante (ID INTEGER PRIMARY KEY, Nombre TEXT COLLATE ES_CI, Importe TEXT, Pago REAL, "
               "Mostrar INTEGER)");
    QStringList seen;
    c->SetObserver([&seen](const Connection &, const QString &sql) { seen << sql; });
    const QString emoji = QString::fromUtf8("Ana 😀 ñ");
    const SqlStatement rows[] = {Insert(1, "O'Brien", "1.250,00", "12.50"), Insert(2, emoji, QString(), "3"),
                                 Insert(3, "Peña", " ", "-0.5")};
    for (const SqlStatement &row : rows)
        c->Execute(row);
    // The same rows through the texts, in a second table, as the reference.
    c->Execute("CREATE TABLE Esperado AS SELECT * FROM Donante WHERE 0");
    for (const SqlStatement &row : rows)
        c->Execute(row.ToString().replace("INSERT INTO Donante", "INSERT INTO Esperado"));
    EXPECT_EQ(seen.mid(0, 3), QStringList({rows[0].ToString(), rows[1].ToString(), rows[2].ToString()}));
    const QString both = "SELECT ID, Nombre, Importe, Pago, typeof(Pago), Mostrar FROM %1 ORDER BY ID";
    EXPECT_EQ(Rows(*c, both.arg("Donante")), Rows(*c, both.arg("Esperado")));
    EXPECT_EQ(Rows(*c, both.arg("Donante")),
              QStringList({"1|O'Brien|1.250,00|12.5|real|-1", "2|" + emoji + "||3|real|-1", "3|Peña| |-0.5|real|-1"}));

    // Read back: numbers as numbers, a NULL as null, the collation applied.
    c->Execute("INSERT INTO Donante VALUES (4, NULL, NULL, NULL, 0)");
    Recordset rs = c->Execute(SqlStatement("SELECT ID, Nombre, Pago FROM Donante WHERE Nombre=").Text("PEÑA"));
    ASSERT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(rs.FieldNames(), QStringList({"ID", "Nombre", "Pago"}));
    EXPECT_EQ(rs.Fields("ID").typeId(), QMetaType::LongLong);
    EXPECT_EQ(rs.Fields("Pago"), QVariant(-0.5));
    rs = c->Execute(SqlStatement("SELECT Nombre, Pago FROM Donante WHERE ID=").Integer(4));
    EXPECT_TRUE(rs.Fields("Nombre").isNull());
    EXPECT_TRUE(rs.Fields("Pago").isNull());
    EXPECT_TRUE(c->Execute(SqlStatement("SELECT Nombre FROM Donante WHERE ID=").Integer(99)).Eof());
    c->Execute(SqlStatement("DELETE FROM Donante WHERE ID>").Integer(2));
    EXPECT_EQ(c->RecordsAffected(), 2);
}

TEST(SqlStatement, AFailureNamesTheTextAndAPreparedShapeLeavesTheFileFree)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("centro.db");
    auto c = Connection::CreateSQLite(file);
    c->Execute("CREATE TABLE Donante (ID INTEGER PRIMARY KEY, Nombre TEXT)");
    c->Execute(SqlStatement("INSERT INTO Donante VALUES (").Integer(1).Sql(",").Text("Ana").Sql(")"));
    try {
        c->Execute(SqlStatement("INSERT INTO Donante VALUES (").Integer(1).Sql(",").Text("O'Brien").Sql(")"));
        FAIL() << "a repeated key must fail";
    } catch (const DatabaseError &error) {
        EXPECT_EQ(error.Statement(), "INSERT INTO Donante VALUES (1,'O''Brien')");
        EXPECT_TRUE(error.Describe().contains(file)) << error.Describe();
    }
    try {
        c->Execute(SqlStatement("SELECT Nada FROM Donante WHERE ID=").Integer(1));
        FAIL() << "an unknown column must fail";
    } catch (const DatabaseError &error) {
        EXPECT_EQ(error.Statement(), "SELECT Nada FROM Donante WHERE ID=1");
        EXPECT_TRUE(error.Describe().contains("Nada")) << error.Describe();
    }

    // A look-up whose shape stays prepared keeps no lock: another connection
    // writes at once, and the next look-up sees what it wrote.
    const SqlStatement lookup = SqlStatement("SELECT Nombre FROM Donante WHERE ID=").Integer(2);
    EXPECT_TRUE(c->Execute(lookup).Eof());
    Connection other("Provider=SQLite;Data Source=" + file);
    other.SetBusyTimeout(0);
    other.Open();
    other.Execute("INSERT INTO Donante VALUES (2, 'Luis')");
    EXPECT_EQ(c->Execute(lookup).Fields("Nombre"), QVariant("Luis"));
    // Closing and opening again prepares anew on the new handle.
    c->Close();
    c->Open();
    EXPECT_EQ(c->Execute(lookup).Fields("Nombre"), QVariant("Luis"));
}

} // namespace
