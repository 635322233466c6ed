// Connections over QtSql as the forms use them: connection strings, opening
// (and every way a file can be unusable), running statements, observers,
// transactions; and the Recordset and DatabaseError they hand back.

#include "data/ConnectionString.h"
#include "data/SchemaVersion.h"

#include "test_data.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QMetaType>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <unistd.h>

using namespace data_test;

namespace {

const QString kJet = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
const QString kJetTail = ";Persist Security Info=False;Jet OLEDB:Database Password=zq417tev";

TEST(DatabaseErrorText, IsTheMessageThenABlankLineThenTheStatementInUtf8)
{
    const DatabaseError alone("La conexión está cerrada.");
    EXPECT_EQ(alone.Statement(), "");
    EXPECT_EQ(alone.Describe(), "La conexión está cerrada.");
    EXPECT_STREQ(alone.what(), "La conexión está cerrada.");
    const DatabaseError e("Año «ñ»", "SELECT 'Ñ'");
    EXPECT_EQ(e.Message(), "Año «ñ»");
    EXPECT_EQ(e.Statement(), "SELECT 'Ñ'");
    EXPECT_EQ(e.Describe(), "Año «ñ»\n\nSELECT 'Ñ'");
    const std::exception &base = e;
    EXPECT_STREQ(base.what(), "A\xc3\xb1o \xc2\xab\xc3\xb1\xc2\xbb\n\nSELECT '\xc3\x91'");
}

TEST(ConnectionStringParse, GivesThePairsInOrderAndWritesThemBack)
{
    struct Case { const char *text, *pairs, *written; };   // written: nullptr when as the text
    static const Case cases[] = {
        {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/x/M.mdb;Persist Security Info=False;"
         "Jet OLEDB:Database Password=zq417tev",
         "[Provider][Microsoft.Jet.OLEDB.4.0][Data Source][/x/M.mdb][Persist Security Info][False]"
         "[Jet OLEDB:Database Password][zq417tev]", nullptr},
        {"Provider=SQLite;;Data Source=a.db;", "[Provider][SQLite][Data Source][a.db]", "Provider=SQLite;Data Source=a.db"},
        {"  Provider = SQLite ;  Data Source = mis datos/c.db ", "[Provider][SQLite][Data Source][mis datos/c.db]",
         "Provider=SQLite;Data Source=mis datos/c.db"},
        {"Password=a=b==c;User ID=yo", "[Password][a=b==c][User ID][yo]", nullptr},
        {"Data Source=\"/a;b/c.db\";Provider=SQLite", "[Data Source][/a;b/c.db][Provider][SQLite]", nullptr},
        {"Provider=PostgreSQL;Password=;Host=h", "[Provider][PostgreSQL][Password][][Host][h]", nullptr},
        {"", "", nullptr},
        {" ; ;", "", ""},
        {"Data Source=/datos/Año 2024/c.db", "[Data Source][/datos/Año 2024/c.db]", nullptr},
        // A repeated key keeps its first place and its last value.
        {"Data Source=a.db;Provider=SQLite;data source=b.db", "[Data Source][b.db][Provider][SQLite]",
         "Data Source=b.db;Provider=SQLite"},
    };
    for (const Case &c : cases) {
        const ConnectionString cs(QString::fromUtf8(c.text));
        QString pairs;
        for (const auto &[key, value] : cs.Pairs())
            pairs += "[" + key + "][" + value + "]";
        EXPECT_EQ(pairs, QString(c.pairs)) << c.text;
        EXPECT_EQ(cs.ToString(), QString(c.written ? c.written : c.text)) << c.text;
    }
}

TEST(ConnectionStringEdit, LooksUpKeysIgnoringCaseAndReplacesInPlace)
{
    ConnectionString cs(kJet + kJetTail);
    EXPECT_EQ(cs.Value("DATA SOURCE"), "");
    EXPECT_TRUE(cs.Contains("data source"));
    EXPECT_FALSE(cs.Contains("Password"));
    EXPECT_EQ(cs.Value("jet oledb:database password"), "zq417tev");
    cs.SetValue("data source", "/datos/Modelo182.mdb");
    cs.SetValue("Mode", "Read");
    EXPECT_EQ(cs.ToString(), kJet + "/datos/Modelo182.mdb" + kJetTail + ";Mode=Read");
}

TEST(RecordsetReading, WalksTheRowsByNameIgnoringCaseAndRefusesAWrongRead)
{
    Recordset rs({"IDCentro", "Nombre"}, {{1, "Colegio Uno"}, {2, QVariant()}});
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.FieldNames(), QStringList({"IDCentro", "Nombre"}));
    EXPECT_EQ(rs.Fields("idcentro").toInt(), 1);
    EXPECT_EQ(rs.Fields("NOMBRE").toString(), "Colegio Uno");
    EXPECT_EQ(ExpectDatabaseError([&] { rs.Fields("CIF"); }).Message(),
              "El campo «CIF» no está en el conjunto de registros (campos: IDCentro, Nombre).");
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(0).toInt(), 2);
    EXPECT_TRUE(rs.Fields("Nombre").isNull());
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(ExpectDatabaseError([&] { rs.Fields(0); }).Message(),
              "No hay registro actual: el conjunto de registros está al principio o al final.");
    EXPECT_EQ(ExpectDatabaseError([&] { rs.MoveNext(); }).Message(),
              "No hay registro actual: se ha llegado al final del conjunto de registros.");
    rs.MoveFirst();
    EXPECT_EQ(rs.Fields(0).toInt(), 1);
    rs.Close();
    rs.Close();
    EXPECT_FALSE(rs.IsOpen());
    EXPECT_EQ(ExpectDatabaseError([&] { rs.Fields(0); }).Message(),
              "La operación no está permitida si el objeto está cerrado.");
    EXPECT_TRUE(Recordset().Eof());
    EXPECT_TRUE(Recordset({"A"}, {}).Eof());
}

using ConnectionOpen = DataTest;

TEST_F(ConnectionOpen, OpensTheSQLiteFileUnderEitherProviderKeepingTheStringAsWritten)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("datos"));
    const QString path = MakeDatabase("datos/Modelo182.mdb", {"CREATE TABLE Deducciones (Deduccion REAL)",
                                                              "INSERT INTO Deducciones VALUES (25)",
                                                              QString("PRAGMA user_version=%1").arg(kSchemaVersion)});
    Connection::SetBaseFolder(m_dir.path());
    for (const QString &text : {kJet + path + kJetTail, "provider=sqlite;data source=" + path,
                                QString("Provider=SQLite;Data Source=datos/Modelo182.mdb")}) {
        Connection c;
        c.Open(text);
        EXPECT_EQ(c.State(), Connection::adStateOpen) << text.toStdString();
        EXPECT_EQ(c.ConnectionString(), text);
        EXPECT_EQ(c.DataSourcePath(), path);
        EXPECT_EQ(Value(c, "SELECT Deduccion FROM Deducciones"), "25");
        c.Close();
        EXPECT_EQ(c.State(), Connection::adStateClosed);
    }
    EXPECT_EQ(Connection(kJet + path + kJetTail).Property("Jet OLEDB:Database Password"), "zq417tev");
}

TEST_F(ConnectionOpen, UnusableSourcesAreRefusedInSpanishAndNothingIsCreated)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("carpeta.db"));
    const char kNote[] = "Esto no es una base de datos, es una nota de la secretaría.\n";
    QFile note(Path("nota.mdb"));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write(kNote);
    note.close();
    MakeDatabase("nueva.mdb", {QString("PRAGMA user_version=%1").arg(kSchemaVersion + 1)});
    Connection::SetBaseFolder(m_dir.path());
    const struct { QString text, message; } cases[] = {
        {"Provider=Microsoft.ACE.OLEDB.12.0;Data Source=x.accdb", "Proveedor desconocido: Microsoft.ACE.OLEDB.12.0"},
        {"Data Source=a.db", "Proveedor desconocido: la cadena de conexión no indica ninguno"},
        {"Provider=SQLite;Data Source=", "La cadena de conexión no indica la base de datos (Data Source)."},
        {kJet + Path("Modelo182.mdb") + kJetTail, "No existe la base de datos «" + Path("Modelo182.mdb") + "»."},
        {SQLite(Path("no hay/datos.db")), "No existe la base de datos «" + Path("no hay/datos.db") + "»."},
        {"Provider=SQLite;Data Source=datos/entrada.db", "No existe la base de datos «" + Path("datos/entrada.db") + "»."},
        {SQLite(Path("nota.mdb")), "«" + Path("nota.mdb") + "» no es una base de datos válida: file is not a database"},
        {SQLite(Path("carpeta.db")), "«" + Path("carpeta.db") + "» no es un archivo de base de datos."},
        {SQLite(Path("nueva.mdb")),
         QString("La base de datos «%1» fue creada por una versión más reciente del programa (estructura %2; esta "
                 "versión admite hasta la %3). Actualice el programa para abrirla.")
             .arg(Path("nueva.mdb")).arg(kSchemaVersion + 1).arg(kSchemaVersion)},
        // Port 9 (discard) on loopback: no server there; the driver's reason follows.
        {"Provider=PostgreSQL;Host=127.0.0.1;Port=9;Database=centro;User ID=yo;Password=x",
         "No se puede conectar con la base de datos «centro» del servidor «127.0.0.1»: "},
    };
    for (const auto &c : cases) {
        Connection connection;
        const DatabaseError e = ExpectDatabaseError([&] { connection.Open(c.text); });
        if (c.message.endsWith(": ")) {
            EXPECT_TRUE(e.Message().startsWith(c.message)) << e.Message().toStdString();
        } else {
            EXPECT_EQ(e.Message(), c.message);
        }
        EXPECT_EQ(e.Statement(), c.text);
        EXPECT_EQ(connection.State(), Connection::adStateClosed);
    }
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"carpeta.db", "nota.mdb", "nueva.mdb"}));
    EXPECT_EQ(QFileInfo(Path("nota.mdb")).size(), qint64(sizeof(kNote) - 1));
}

TEST_F(ConnectionOpen, PathsResolveAgainstTheBaseFolderWhichDefaultsToTheCurrentOne)
{
    EXPECT_EQ(Connection::BaseFolder(), QDir::currentPath());
    Connection::SetBaseFolder(m_dir.path());
    EXPECT_EQ(Connection::BaseFolder(), m_dir.path());
    EXPECT_EQ(Connection::ResolvePath("a/../b.db"), Path("b.db"));
    EXPECT_EQ(Connection::ResolvePath("/otra/c.db"), "/otra/c.db");
}

TEST_F(ConnectionOpen, ReadOnlyModeOrFileReadsButRefusesWrites)
{
    const QString path = MakeDatabase("centro.db", {"CREATE TABLE Centro (Nombre TEXT)", "INSERT INTO Centro VALUES ('Uno')"});
    const auto expectReadOnly = [&](const QString &text) {
        Connection c(text);
        c.Open();
        EXPECT_EQ(Value(c, "SELECT Nombre FROM Centro"), "Uno");
        const QString insert = "INSERT INTO Centro VALUES ('Dos')";
        const DatabaseError e = ExpectDatabaseError([&] { c.Execute(insert); });
        EXPECT_EQ(e.Message(), "attempt to write a readonly database");
        EXPECT_EQ(e.Statement(), insert);
    };
    expectReadOnly(SQLite(path) + ";Mode=Read");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    if (::access(path.toLocal8Bit().constData(), W_OK) != 0)   // root may write it all the same
        expectReadOnly(SQLite(path));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(Count(*OpenConnection(SQLite(path)), "Centro"), 1);
}

TEST_F(ConnectionOpen, LockedDatabaseFailsQuicklyAndIsUsableOnceReleased)
{
    const QString path = MakeDatabase("centro.db", {"CREATE TABLE Centro (Nombre TEXT)"});
    Connection holder(SQLite(path)), other(SQLite(path));
    holder.Open();
    other.Open();
    holder.Execute("BEGIN IMMEDIATE");
    holder.Execute("INSERT INTO Centro VALUES ('retenido')");
    EXPECT_EQ(Count(other, "Centro"), 0);   // reading is still allowed
    const QString insert = "INSERT INTO Centro VALUES ('nuevo')";
    QElapsedTimer timer;
    timer.start();
    const DatabaseError e = ExpectDatabaseError([&] { other.Execute(insert); });
    EXPECT_LE(timer.elapsed(), 2500);
    EXPECT_LE(Connection::BusyTimeout(), 2000);
    EXPECT_EQ(e.Message(), "database is locked");
    EXPECT_EQ(e.Statement(), insert);
    holder.Execute("COMMIT");
    other.Execute(insert);
    EXPECT_EQ(Rows(other, "SELECT Nombre FROM Centro ORDER BY Nombre"), QStringList({"nuevo", "retenido"}));

    // Held exclusively, the file cannot even be opened.
    other.Close();
    holder.Execute("BEGIN EXCLUSIVE");
    Connection::SetBusyTimeout(100);
    timer.restart();
    const DatabaseError held = ExpectDatabaseError([&] { other.Open(); });
    EXPECT_LT(timer.elapsed(), 900);
    EXPECT_EQ(held.Message(), "La base de datos «" + path + "» está bloqueada por otra conexión: database is locked");
    EXPECT_EQ(other.State(), Connection::adStateClosed);
    holder.Execute("ROLLBACK");
    other.Open();
    EXPECT_EQ(other.State(), Connection::adStateOpen);
}

TEST_F(ConnectionOpen, ClosedConnectionRefusesWorkAndReopensWithTheSameStringOrANewDataSource)
{
    const QString first = MakeDatabase("uno.db", {"CREATE TABLE T (n TEXT)", "INSERT INTO T VALUES ('uno')"});
    const QString second = MakeDatabase("dos.db", {"CREATE TABLE T (n TEXT)", "INSERT INTO T VALUES ('dos')"});
    Connection c(kJet + kJetTail);
    const DatabaseError closed = ExpectDatabaseError([&] { c.Execute("SELECT 1"); });
    EXPECT_EQ(closed.Message(), "La conexión está cerrada.");
    EXPECT_EQ(closed.Statement(), "SELECT 1");
    c.SetProperty("Data Source", first);
    c.Open();
    EXPECT_EQ(ExpectDatabaseError([&] { c.Open(); }).Message(), "La conexión ya está abierta.");
    EXPECT_EQ(Value(c, "SELECT n FROM T"), "uno");
    c.Close();
    c.Close();
    ExpectDatabaseError([&] { c.Execute("SELECT n FROM T"); });
    c.Open();
    EXPECT_EQ(Value(c, "SELECT n FROM T"), "uno");
    c.Close();
    c.SetProperty("Data Source", second);
    c.Open();
    EXPECT_EQ(Value(c, "SELECT n FROM T"), "dos");
    EXPECT_EQ(c.ConnectionString(), kJet + second + kJetTail);
}

TEST_F(ConnectionOpen, EachConnectionHasItsOwnQtConnectionRemovedOnClose)
{
    const QString a = MakeDatabase("a.db", {"CREATE TABLE T (n TEXT)", "INSERT INTO T VALUES ('a')"});
    const QString b = MakeDatabase("b.db", {"CREATE TABLE T (n TEXT)", "INSERT INTO T VALUES ('b')"});
    const qsizetype before = QSqlDatabase::connectionNames().size();
    {
        Connection ca(SQLite(a)), cb(SQLite(b));
        ca.Open();
        cb.Open();
        EXPECT_EQ(QSqlDatabase::connectionNames().size(), before + 2);
        cb.Close();
        EXPECT_EQ(QSqlDatabase::connectionNames().size(), before + 1);
        EXPECT_FALSE(cb.Database().isValid());
        EXPECT_EQ(Value(ca, "SELECT n FROM T"), "a");
    }
    EXPECT_EQ(QSqlDatabase::connectionNames().size(), before);   // the destructor closes
}

TEST_F(ConnectionOpen, CreateMakesAMissingFileOrOpensTheExistingOneButNoFolder)
{
    const QString path = Path("CartaDonantes.mdb");
    auto c = Connection::CreateSQLite(path, "Microsoft.Jet.OLEDB.4.0");
    EXPECT_EQ(c->State(), Connection::adStateOpen);
    EXPECT_EQ(c->ConnectionString(), kJet + path);
    c->Execute("CREATE TABLE T (n INTEGER)");
    c->Execute("INSERT INTO T VALUES (7)");
    c->Close();
    auto again = Connection::CreateSQLite(path);
    EXPECT_EQ(again->ConnectionString(), SQLite(path));
    EXPECT_EQ(Rows(*again, "SELECT n FROM T"), QStringList{"7"});
    Connection::SetBaseFolder(m_dir.path());
    EXPECT_EQ(Connection::CreateSQLite("nuevo.db")->ConnectionString(), "Provider=SQLite;Data Source=nuevo.db");
    EXPECT_TRUE(QFileInfo(Path("nuevo.db")).isFile());
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
        m_path = MakeDatabase("centro.db", {"CREATE TABLE Alumno (IDAlumno INTEGER PRIMARY KEY, Nombre TEXT, "
                                            "Apellido_1 TEXT, Cuota REAL, Nota INTEGER)",
                                            "INSERT INTO Alumno VALUES (1, 'Lucía', 'Pérez', 30.5, NULL)",
                                            "INSERT INTO Alumno VALUES (2, 'Marcos', 'Ruiz', 12, 7)",
                                            "INSERT INTO Alumno VALUES (3, 'Nerea', 'Sanz', NULL, 9)"});
        m_c.Open(SQLite(m_path));
    }

    QString m_path;
    Connection m_c;
};

TEST_F(ConnectionExecute, QueriesGiveTypedValuesNullsAndTheAliasesAsWritten)
{
    Recordset rs = m_c.Execute("SELECT IDAlumno, Nombre, Cuota FROM Alumno ORDER BY IDAlumno");
    const int idType = rs.Fields("IDAlumno").typeId();
    EXPECT_TRUE(idType == QMetaType::LongLong || idType == QMetaType::Int) << idType;
    EXPECT_EQ(rs.Fields("Nombre").typeId(), QMetaType::QString);
    EXPECT_EQ(rs.Fields("Cuota").typeId(), QMetaType::Double);
    EXPECT_EQ(Rows(m_c, "SELECT IDAlumno, Nombre, Cuota, Nota FROM Alumno ORDER BY IDAlumno"),
              QStringList({"1|Lucía|30.5|NULL", "2|Marcos|12|7", "3|Nerea|NULL|9"}));
    rs = m_c.Execute("SELECT Alumno.Nombre, Alumno.Apellido_1 AS Nombre1, COUNT(*) AS Campo0, MAX(IDAlumno) as Maximo "
                     "FROM Alumno");
    EXPECT_EQ(rs.FieldNames(), QStringList({"Nombre", "Nombre1", "Campo0", "Maximo"}));
    EXPECT_EQ(rs.Fields("maximo").toInt(), 3);
    rs = m_c.Execute("SELECT Nombre FROM Alumno WHERE IDAlumno=99");
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.FieldCount(), 1);
}

TEST_F(ConnectionExecute, ChangesGiveAnEmptyRecordsetAndTheRowsAffected)
{
    const std::pair<const char *, int> steps[] = {
        {"UPDATE Alumno SET Nota=5 WHERE IDAlumno>=2", 2}, {"INSERT INTO Alumno (IDAlumno, Nombre) VALUES (4, 'Óscar')", 1},
        {"DELETE FROM Alumno WHERE IDAlumno=99", 0},       {"DELETE FROM Alumno", 4},
        {"CREATE TABLE Otra (x INTEGER)", 0},              {"SELECT * FROM Otra", 0},
    };
    for (const auto &[sql, affected] : steps) {
        const Recordset rs = m_c.Execute(sql);
        EXPECT_EQ(m_c.RecordsAffected(), affected) << sql;
        EXPECT_TRUE(rs.Eof()) << sql;
        EXPECT_EQ(rs.FieldCount(), QString(sql).startsWith("SELECT") ? 1 : 0) << sql;
    }
}

TEST_F(ConnectionExecute, FailingStatementsCarryTheMessageAndTheStatementAndChangeNothing)
{
    const std::pair<const char *, const char *> cases[] = {
        {"SELEC Nombre FROM Alumno", "near \"SELEC\": syntax error"},
        {"DELETE FROM Declarantes", "no such table: Declarantes"},
        {"INSERT INTO Alumno VALUES (1, 'x', 'y', 0, 0)", "UNIQUE constraint failed: Alumno.IDAlumno"},
        {"DELETE FROM Alumno; DELETE FROM Alumno", nullptr},   // one statement per Execute
    };
    for (const auto &[sql, message] : cases) {
        const DatabaseError e = ExpectDatabaseError([&] { m_c.Execute(sql); });
        if (message) {
            EXPECT_EQ(e.Message(), QString(message));
        }
        EXPECT_EQ(e.Statement(), sql);
    }
    EXPECT_EQ(Count(m_c, "Alumno"), 3);
}

TEST_F(ConnectionExecute, ObserversSeeEachTextAsWrittenBeforeItRuns)
{
    Connection other(SQLite(m_path));
    other.Open();
    QStringList own, global;
    int countBeforeInsert = -1;
    m_c.SetObserver([&](const Connection &, const QString &sql) {
        own << sql;
        QSqlQuery count(other.Database());   // straight to Qt, past the observers
        if (sql.startsWith("INSERT") && count.exec("SELECT COUNT(*) FROM Alumno") && count.next())
            countBeforeInsert = count.value(0).toInt();
    });
    Connection::SetGlobalObserver([&](const Connection &c, const QString &sql) {
        global << (&c == &m_c ? "m_c: " : "other: ") + sql;
    });
    const QStringList sent = {"SELECT Nombre FROM Alumno WHERE Apellido_1='Pérez'",
                              "UPDATE Alumno SET Nota=-1 WHERE Nota=True", "SELEC mal",
                              "INSERT INTO Alumno (IDAlumno, Nombre) VALUES (10, 'Ana')"};
    for (const QString &sql : sent) {
        try {
            m_c.Execute(sql);
        } catch (const DatabaseError &) {
        }
    }
    other.Execute("SELECT 2");
    m_c.Close();
    ExpectDatabaseError([&] { m_c.Execute("SELECT 1"); });
    EXPECT_EQ(own, sent + QStringList{"SELECT 1"});
    EXPECT_EQ(global, QStringList({"m_c: " + sent[0], "m_c: " + sent[1], "m_c: " + sent[2], "m_c: " + sent[3],
                                   "other: SELECT 2", "m_c: SELECT 1"}));
    EXPECT_EQ(countBeforeInsert, 3);
    EXPECT_EQ(Count(other, "Alumno"), 4);
}

TEST_F(ConnectionExecute, TrueIsMinusOneSoMonthFlagsSumNegative)
{
    m_c.Execute("CREATE TABLE Alumno_Actividad_Miembro (codActividad INTEGER, enero BOOLEAN, febrero INTEGER)");
    for (const char *values : {"7, -1, -1", "7, -1, 0", "7, 0, 0", "8, True, False"})
        m_c.Execute(QString("INSERT INTO Alumno_Actividad_Miembro VALUES (%1)").arg(values));
    EXPECT_EQ(Rows(m_c, "SELECT SUM(enero) AS Campo0, SUM(febrero) AS Campo1 FROM Alumno_Actividad_Miembro "
                        "WHERE codActividad=7"),
              QStringList{"-2|-1"});
    EXPECT_EQ(Rows(m_c, "SELECT enero, febrero FROM Alumno_Actividad_Miembro WHERE codActividad=8"), QStringList{"-1|0"});
    EXPECT_EQ(Value(m_c, "SELECT COUNT(*) FROM Alumno_Actividad_Miembro WHERE enero=True"), "3");
}

TEST_F(ConnectionExecute, ForeignKeysAreEnforcedAndCascadeOnOpenedAndCreatedConnections)
{
    EXPECT_EQ(Value(*Connection::CreateSQLite(Path("nuevo.db")), "PRAGMA foreign_keys"), "1");
    EXPECT_EQ(Value(m_c, "PRAGMA foreign_keys"), "1");
    m_c.Execute("CREATE TABLE Declarantes (IDDeclarante INTEGER PRIMARY KEY AUTOINCREMENT, nombre TEXT)");
    m_c.Execute("CREATE TABLE Donantes (codDeclarante INTEGER REFERENCES Declarantes(IDDeclarante) "
                "ON DELETE CASCADE, nombre TEXT)");
    m_c.Execute("INSERT INTO Declarantes (nombre) VALUES ('COLEGIO')");
    m_c.Execute("INSERT INTO Donantes VALUES (1, 'ANA')");
    const QString orphan = "INSERT INTO Donantes VALUES (2, 'LUIS')";
    const DatabaseError e = ExpectDatabaseError([&] { m_c.Execute(orphan); });
    EXPECT_EQ(e.Message(), "FOREIGN KEY constraint failed");
    EXPECT_EQ(e.Statement(), orphan);
    m_c.Execute("DELETE FROM Declarantes");
    EXPECT_EQ(Count(m_c, "Donantes"), 0);
}

TEST_F(ConnectionExecute, TransactionsCommitForOthersOrRollBackWhole)
{
    Connection other(SQLite(m_path));
    other.Open();
    m_c.BeginTrans();
    EXPECT_TRUE(m_c.InTransaction());
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.BeginTrans(); }).Message(), "Ya hay una transacción abierta en esta conexión.");
    m_c.Execute("DELETE FROM Alumno WHERE IDAlumno=1");
    m_c.Execute("INSERT INTO Alumno (IDAlumno, Nombre) VALUES (20, 'Nuevo')");
    ExpectDatabaseError([&] { m_c.Execute("INSERT INTO Nada VALUES (1)"); });
    m_c.RollbackTrans();
    EXPECT_FALSE(m_c.InTransaction());
    EXPECT_EQ(Rows(m_c, "SELECT Nombre FROM Alumno ORDER BY IDAlumno"), QStringList({"Lucía", "Marcos", "Nerea"}));

    m_c.BeginTrans();
    m_c.Execute("DELETE FROM Alumno WHERE IDAlumno=1");
    EXPECT_EQ(Count(other, "Alumno"), 3);
    m_c.CommitTrans();
    EXPECT_EQ(Count(other, "Alumno"), 2);
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.CommitTrans(); }).Message(), "No hay ninguna transacción abierta que confirmar.");
    EXPECT_EQ(ExpectDatabaseError([&] { m_c.RollbackTrans(); }).Message(), "No hay ninguna transacción abierta que deshacer.");

    m_c.BeginTrans();
    m_c.Execute("DELETE FROM Alumno");
    m_c.Close();   // drops the open transaction
    EXPECT_FALSE(m_c.InTransaction());
    m_c.Open();
    EXPECT_EQ(Count(m_c, "Alumno"), 2);
}

} // namespace
