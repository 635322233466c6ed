// Connections as the forms use them: connection strings, opening (and every
// way a file can be unusable), statements, observers, transactions, errors.
#include "data/ConnectionString.h"
#include "data/SchemaVersion.h"

#include "test_data.h"

#include <QElapsedTimer>
#include <QFileInfo>

using namespace data_test;

namespace {

const QString kJet = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
const QString kJetTail = ";Persist Security Info=False;Jet OLEDB:Database Password=zq417tev";

TEST(DatabaseErrorText, IsTheMessageThenABlankLineThenTheStatement)
{
    EXPECT_EQ(DatabaseError("La conexión está cerrada.").Describe(), "La conexión está cerrada.");
    const DatabaseError e("Año «ñ»", "SELECT 'Ñ'");
    EXPECT_EQ(e.Describe(), "Año «ñ»\n\nSELECT 'Ñ'");
    EXPECT_STREQ(e.what(), "A\xc3\xb1o \xc2\xab\xc3\xb1\xc2\xbb\n\nSELECT '\xc3\x91'");
}

TEST(ConnectionStringParse, GivesThePairsInOrderAndWritesThemBack)
{
    const struct
    {
        const char *text, *pairs, *written;
    } cases[] = {
        // written: nullptr when as the text
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/x/Año 1/M.mdb;Persist Security Info=False;"
         "Jet OLEDB:Database Password=zq417tev",
         "[Provider][Microsoft.Jet.OLEDB.4.0][Data Source][/x/Año 1/M.mdb][Persist Security Info][False]"
         "[Jet OLEDB:Database Password][zq417tev]",
         nullptr},
        {"  Provider = SQLite ;; Data Source = c.db ;", "[Provider][SQLite][Data Source][c.db]",
         "Provider=SQLite;Data Source=c.db"},
        {"Password=a=b==c;Data Source=\"/a;b/c.db\"", "[Password][a=b==c][Data Source][/a;b/c.db]", nullptr},
        {"Data Source=a.db;Provider=SQLite;data source=b.db", "[Data Source][b.db][Provider][SQLite]",
         "Data Source=b.db;Provider=SQLite"}, // a repeated key keeps its first place and its last value
    };
    for (const auto &c : cases) {
        const ConnectionString cs(QString::fromUtf8(c.text));
        QString pairs;
        for (const auto &[key, value] : cs.Pairs())
            pairs += "[" + key + "][" + value + "]";
        EXPECT_EQ(pairs, QString::fromUtf8(c.pairs)) << c.text;
        EXPECT_EQ(cs.ToString(), QString::fromUtf8(c.written ? c.written : c.text)) << c.text;
    }
}

TEST(ConnectionStringEdit, LooksUpKeysIgnoringCaseAndReplacesInPlace)
{
    ConnectionString cs(kJet + kJetTail);
    EXPECT_TRUE(cs.Contains("data source") && !cs.Contains("Password"));
    EXPECT_EQ(cs.Value("jet oledb:database password"), "zq417tev");
    cs.SetValue("data source", "/datos/Modelo182.mdb");
    cs.SetValue("Mode", "Read");
    EXPECT_EQ(cs.ToString(), kJet + "/datos/Modelo182.mdb" + kJetTail + ";Mode=Read");
}

using ConnectionOpen = DataTest;

TEST_F(ConnectionOpen, UnusableSourcesAreRefusedInSpanishAndNothingIsCreated)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("carpeta.db"));
    QFile note(Path("nota.mdb"));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write("Esto no es una base de datos, es una nota de la secretaría.\n");
    note.close();
    MakeDatabase("nueva.mdb", {QString("PRAGMA user_version=%1").arg(kSchemaVersion + 1)});
    const struct
    {
        QString text, message;
    } cases[] = {
        {"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=x.accdb", "Proveedor desconocido: Microsoft.ACE.OLEDB.12.0"},
        {"Provider=SQLite;Data Source=", "La cadena de conexión no indica la base de datos (Data Source)."},
        {kJet + Path("Modelo182.mdb") + kJetTail, "No existe la base de datos «" + Path("Modelo182.mdb") + "»."},
        {SQLite(Path("nota.mdb")),
         "«" + Path("nota.mdb")
             + "» no es una base de datos válida o está dañada. "
               "Compruebe que ha indicado el archivo correcto.\n\nDetalle técnico: file is not a database"},
        {SQLite(Path("carpeta.db")), "«" + Path("carpeta.db") + "» no es un archivo de base de datos."},
        {SQLite(Path("nueva.mdb")),
         QString("La base de datos «%1» fue creada por una versión más reciente del programa (estructura %2; esta "
                 "versión admite hasta la %3). Actualice el programa para abrirla.")
             .arg(Path("nueva.mdb"))
             .arg(kSchemaVersion + 1)
             .arg(kSchemaVersion)},
    };
    for (const auto &c : cases) {
        Connection connection;
        const DatabaseError e = ExpectDatabaseError([&] { connection.Open(c.text); });
        EXPECT_EQ(e.Message() + (e.Detail().isEmpty() ? "" : "\n\nDetalle técnico: " + e.Detail()), c.message);
        EXPECT_EQ(e.Statement(), QString(c.text).replace("Password=zq417tev", "Password=***"));
        EXPECT_EQ(connection.State(), Connection::adStateClosed);
    }
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"carpeta.db", "nota.mdb", "nueva.mdb"}));
    EXPECT_EQ(QFileInfo(Path("nota.mdb")).size(), 61);
}

TEST_F(ConnectionOpen, LockedDatabaseFailsQuicklyWithTheStatementAndIsUsableOnceReleased)
{
    const QString path = MakeDatabase("centro.db", {"CREATE TABLE Centro (Nombre TEXT)"});
    Connection holder(SQLite(path)), other(SQLite(path)), late(SQLite(path));
    holder.Open();
    other.Open();
    holder.Execute("BEGIN EXCLUSIVE");
    const QString insert = "INSERT INTO Centro VALUES ('nuevo')";
    QElapsedTimer timer;
    timer.start();
    const DatabaseError e = ExpectDatabaseError([&] { other.Execute(insert); });
    EXPECT_LE(timer.elapsed(), 2500);
    EXPECT_EQ(e.Message(), "La base de datos «" + path
                               + "» está ocupada por otro programa o usuario. Espere a que termine y vuelva a intentarlo.");
    EXPECT_EQ(e.Detail(), "database is locked");
    EXPECT_EQ(e.Statement(), insert);
    late.SetBusyTimeout(100);
    const DatabaseError lateError = ExpectDatabaseError([&] { late.Open(); });
    EXPECT_EQ(lateError.Message(), "La base de datos «" + path
                                       + "» está bloqueada por otra conexión. Espere a que termine y vuelva a intentarlo.");
    EXPECT_EQ(lateError.Detail(), "database is locked");
    holder.Execute("ROLLBACK");
    late.Open();
    late.Execute(insert);
    EXPECT_EQ(Count(other, "Centro"), 1);
}

TEST_F(ConnectionOpen, ClosedConnectionRefusesWorkAndOpensWithTheRelativeDataSourceAndModeSetLater)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("datos"));
    const QString path = MakeDatabase("datos/uno.db", {"CREATE TABLE T (n TEXT)", "INSERT INTO T VALUES ('uno')"});
    Connection c(kJet + kJetTail);
    c.SetBaseFolder(m_dir.path());
    const DatabaseError closed = ExpectDatabaseError([&] { c.Execute("SELECT 1"); });
    EXPECT_EQ(closed.Message(), "La conexión está cerrada.");
    EXPECT_EQ(closed.Statement(), "SELECT 1");
    c.SetProperty("Data Source", "datos/uno.db");
    c.SetProperty("mode", "Read");
    c.Open();
    EXPECT_EQ(c.ConnectionString(), kJet + "datos/uno.db" + kJetTail + ";mode=Read");
    EXPECT_EQ(c.DataSourcePath(), path);
    EXPECT_EQ(Value(c, "SELECT n FROM T"), "uno");
    const DatabaseError readOnly = ExpectDatabaseError([&] { c.Execute("DELETE FROM T"); });
    EXPECT_EQ(readOnly.Message(), "No se puede escribir en la base de datos «" + path
                                      + "»: está abierta solo para lectura o el archivo está protegido. Compruebe los "
                                        "permisos del archivo.");
    EXPECT_EQ(readOnly.Detail(), "attempt to write a readonly database");
}

TEST_F(ConnectionOpen, CreateMakesAMissingFileOrOpensTheExistingOneButNoFolder)
{
    const QString path = Path("CartaDonantes.mdb");
    auto c = Connection::CreateSQLite(path, "Microsoft.Jet.OLEDB.4.0");
    EXPECT_EQ(c->ConnectionString(), kJet + path);
    c->Execute("CREATE TABLE T (n INTEGER)");
    c->Close();
    EXPECT_EQ(Tables(*Connection::CreateSQLite(path)), QStringList{"T"});
    const DatabaseError e = ExpectDatabaseError([&] { Connection::CreateSQLite(Path("Informes/CartaDonantes.mdb")); });
    EXPECT_EQ(e.Message(), "No existe la carpeta «" + Path("Informes") + "» donde crear la base de datos.");
    EXPECT_FALSE(QFileInfo::exists(Path("Informes")));
}

class ConnectionExecute : public DataTest
{
protected:
    void SetUp() override
    {
        DataTest::SetUp();
        m_path = MakeDatabase("centro.db", {"CREATE TABLE Alumno (IDAlumno INTEGER PRIMARY KEY, Nombre TEXT, Cuota REAL)",
                                            "INSERT INTO Alumno VALUES (1, 'Lucía', 30.5), (2, 'Marcos', NULL)"});
        m_c.Open(SQLite(m_path));
        m_other.Open(SQLite(m_path));
    }

    QString m_path;
    Connection m_c, m_other;
};

TEST_F(ConnectionExecute, QueriesKeepNullsAndAliasesAndChangesCountTheirRows)
{
    EXPECT_EQ(Rows(m_c, "SELECT * FROM Alumno ORDER BY IDAlumno"), QStringList({"1|Lucía|30.5", "2|Marcos|NULL"}));
    EXPECT_EQ(m_c.Execute("SELECT Alumno.Nombre, Nombre AS Nombre1, COUNT(*) AS Campo0 FROM Alumno").FieldNames(),
              QStringList({"Nombre", "Nombre1", "Campo0"}));
    EXPECT_TRUE(m_c.Execute("UPDATE Alumno SET Cuota=5").Eof());
    EXPECT_EQ(m_c.RecordsAffected(), 2);
}

TEST_F(ConnectionExecute, MalformedStatementsCarryTheDatabaseMessageAndTheStatementAndChangeNothing)
{
    const std::pair<const char *, const char *> cases[] = {
        {"SELEC Nombre FROM Alumno", "near \"SELEC\": syntax error"},
        {"DELETE FROM Declarantes", "no such table: Declarantes"},
        {"INSERT INTO Alumno VALUES (1, 'x', 0)", "UNIQUE constraint failed: Alumno.IDAlumno"},
    };
    for (const auto &[sql, message] : cases) {
        const DatabaseError e = ExpectDatabaseError([&] { m_c.Execute(sql); });
        EXPECT_EQ(e.Detail(), message);
        EXPECT_EQ(e.Statement(), sql);
    }
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.Execute("DELETE FROM Alumno; DELETE FROM Alumno"); }).Statement(),
              "DELETE FROM Alumno; DELETE FROM Alumno"); // one statement per Execute
    EXPECT_EQ(Count(m_c, "Alumno"), 2);
}

TEST_F(ConnectionExecute, ObserversSeeEachTextExactlyAsWrittenAndAThrowingOneStopsTheStatement)
{
    QStringList own;
    m_c.SetObserver([&](const Connection &, const QString &sql) { own << sql; });
    const QStringList sent = {"UPDATE Alumno SET Cuota=-1 WHERE Cuota=True", "SELEC mal", "SELECT * FROM [Alumno]"};
    for (const QString &sql : sent) {
        try {
            m_c.Execute(sql);
        } catch (const DatabaseError &) {
        }
    }
    m_other.Execute("SELECT 2");
    EXPECT_EQ(own, sent); // another connection's statements are not seen
    m_c.SetObserver([](const Connection &, const QString &) { throw DatabaseError("fallo inyectado"); });
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.Execute("DELETE FROM Alumno"); }).Message(), "fallo inyectado");
    m_c.SetObserver(nullptr);
    EXPECT_EQ(Count(m_c, "Alumno"), 2);
}

TEST_F(ConnectionExecute, TransactionsCommitForOthersOrRollBackWhole)
{
    for (const bool commit : {false, true}) {
        m_c.BeginTrans();
        m_c.Execute("DELETE FROM Alumno WHERE IDAlumno=1");
        EXPECT_EQ(Count(m_other, "Alumno"), 2);
        commit ? m_c.CommitTrans() : m_c.RollbackTrans();
        EXPECT_EQ(Count(m_other, "Alumno"), commit ? 1 : 2);
    }
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.CommitTrans(); }).Message(),
              "No hay ninguna transacción abierta que confirmar.");
}

} // namespace
