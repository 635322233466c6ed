// Running statements: rows and values as the forms read them, the count of
// changed rows, errors that carry the statement, the statement observers,
// Booleans stored as -1, foreign keys and transactions.

#include "data/Connection.h"

#include "test_connection_fixture.h"

#include <QMetaType>
#include <gtest/gtest.h>

namespace {

using connection_test::DataFolderTest;
using connection_test::ExpectDatabaseError;
using connection_test::U8;

class ConnectionExecute : public DataFolderTest
{
protected:
    void SetUp() override
    {
        DataFolderTest::SetUp();
        m_path = MakeDatabase(QStringLiteral("centro.db"),
                              {QStringLiteral("CREATE TABLE Alumno (IDAlumno INTEGER PRIMARY KEY, Nombre TEXT, "
                                              "Apellido_1 TEXT, Cuota REAL, Nota INTEGER)"),
                               QStringLiteral("INSERT INTO Alumno VALUES (1, 'Lucía', 'Pérez', 30.5, NULL)"),
                               QStringLiteral("INSERT INTO Alumno VALUES (2, 'Marcos', 'Ruiz', 12, 7)"),
                               QStringLiteral("INSERT INTO Alumno VALUES (3, 'Nerea', 'Sanz', NULL, 9)")});
        m_connection.Open(SQLiteString(m_path));
    }

    QString m_path;
    Connection m_connection;
};

TEST_F(ConnectionExecute, QueryReturnsEveryRowWithTypedValues)
{
    Recordset rs = m_connection.Execute(QStringLiteral("SELECT IDAlumno, Nombre, Cuota, Nota FROM Alumno ORDER BY IDAlumno"));
    EXPECT_EQ(rs.RecordCount(), 3);
    ASSERT_FALSE(rs.Eof());
    const QVariant id = rs.Fields(QStringLiteral("IDAlumno"));
    EXPECT_TRUE(id.typeId() == QMetaType::LongLong || id.typeId() == QMetaType::Int) << id.typeName();
    EXPECT_EQ(id.toLongLong(), 1);
    const QVariant name = rs.Fields(QStringLiteral("Nombre"));
    EXPECT_EQ(name.typeId(), QMetaType::QString);
    EXPECT_EQ(U8(name.toString()), "Lucía");
    const QVariant fee = rs.Fields(QStringLiteral("Cuota"));
    EXPECT_EQ(fee.typeId(), QMetaType::Double);
    EXPECT_EQ(fee.toDouble(), 30.5);
    EXPECT_TRUE(rs.Fields(QStringLiteral("Nota")).isNull());
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(QStringLiteral("Nota")).toInt(), 7);
    rs.MoveNext();
    EXPECT_TRUE(rs.Fields(QStringLiteral("Cuota")).isNull());
    EXPECT_EQ(U8(rs.Fields(QStringLiteral("Nombre")).toString()), "Nerea");
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
}

TEST_F(ConnectionExecute, FieldNamesAreTheAliasesAsWritten)
{
    Recordset rs = m_connection.Execute(QStringLiteral(
        "SELECT Alumno.Nombre, Alumno.Apellido_1 AS Nombre1, COUNT(*) AS Campo0, MAX(IDAlumno) as Maximo FROM Alumno"));
    EXPECT_EQ(rs.FieldNames(), QStringList({QStringLiteral("Nombre"), QStringLiteral("Nombre1"),
                                            QStringLiteral("Campo0"), QStringLiteral("Maximo")}));
    EXPECT_EQ(rs.Fields(QStringLiteral("maximo")).toInt(), 3);
}

TEST_F(ConnectionExecute, QueryWithoutRowsIsAtEofWithItsFields)
{
    Recordset rs = m_connection.Execute(QStringLiteral("SELECT Nombre FROM Alumno WHERE IDAlumno=99"));
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.FieldCount(), 1);
}

TEST_F(ConnectionExecute, ChangesGiveAnEmptyRecordsetAndTheRowsAffected)
{
    Recordset rs = m_connection.Execute(QStringLiteral("UPDATE Alumno SET Nota=5 WHERE IDAlumno>=2"));
    EXPECT_EQ(rs.FieldCount(), 0);
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(m_connection.RecordsAffected(), 2);
    m_connection.Execute(QStringLiteral("INSERT INTO Alumno (IDAlumno, Nombre) VALUES (4, 'Óscar')"));
    EXPECT_EQ(m_connection.RecordsAffected(), 1);
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno WHERE IDAlumno=99"));
    EXPECT_EQ(m_connection.RecordsAffected(), 0);
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno"));
    EXPECT_EQ(m_connection.RecordsAffected(), 4);
    m_connection.Execute(QStringLiteral("CREATE TABLE Otra (x INTEGER)"));
    EXPECT_EQ(m_connection.RecordsAffected(), 0);
    m_connection.Execute(QStringLiteral("SELECT * FROM Otra"));
    EXPECT_EQ(m_connection.RecordsAffected(), 0);
}

TEST_F(ConnectionExecute, MalformedStatementCarriesTheMessageAndTheStatement)
{
    const QString sql = QStringLiteral("SELEC Nombre FROM Alumno");
    const DatabaseError e = ExpectDatabaseError([&] { m_connection.Execute(sql); });
    EXPECT_EQ(U8(e.Message()), "near \"SELEC\": syntax error");
    EXPECT_EQ(U8(e.Statement()), U8(sql));
    EXPECT_EQ(U8(e.Describe()), "near \"SELEC\": syntax error\n\nSELEC Nombre FROM Alumno");
}

TEST_F(ConnectionExecute, MissingTableIsNamed)
{
    const QString sql = QStringLiteral("DELETE FROM Declarantes");
    const DatabaseError e = ExpectDatabaseError([&] { m_connection.Execute(sql); });
    EXPECT_EQ(U8(e.Message()), "no such table: Declarantes");
    EXPECT_EQ(U8(e.Statement()), U8(sql));
}

TEST_F(ConnectionExecute, OneStatementPerExecute)
{
    const QString sql = QStringLiteral("DELETE FROM Alumno; DELETE FROM Alumno");
    ExpectDatabaseError([&] { m_connection.Execute(sql); });
    EXPECT_EQ(Scalar(m_connection, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 3);
}

TEST_F(ConnectionExecute, ConnectionStaysUsableAfterAnError)
{
    ExpectDatabaseError([&] { m_connection.Execute(QStringLiteral("INSERT INTO Alumno VALUES (1, 'x', 'y', 0, 0)")); });
    EXPECT_EQ(Scalar(m_connection, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 3);
}

class ConnectionObservers : public ConnectionExecute
{
};

TEST_F(ConnectionObservers, SeeTheExactTextsInOrderBeforeTheyRun)
{
    QStringList own;
    QStringList global;
    m_connection.SetObserver([&](const Connection &, const QString &sql) { own << sql; });
    Connection::SetGlobalObserver([&](const Connection &, const QString &sql) { global << sql; });

    const QStringList sent = {
        QStringLiteral("SELECT Nombre FROM Alumno WHERE Apellido_1='Pérez'"),
        QStringLiteral("UPDATE Alumno SET Nota=-1 WHERE Nota=True"),
        QStringLiteral("SELEC mal"),
        QStringLiteral("DELETE FROM Alumno WHERE IDAlumno=3"),
    };
    for (const QString &sql : sent) {
        try {
            m_connection.Execute(sql);
        } catch (const DatabaseError &) {
        }
    }
    // A failing statement is reported too: the report comes before it runs.
    // The Jet literal is reported as written, not as translated.
    EXPECT_EQ(own, sent);
    EXPECT_EQ(global, sent);
}

TEST_F(ConnectionObservers, GlobalObserverSeesEveryConnectionWithWhichOneRanIt)
{
    Connection second(SQLiteString(m_path));
    second.Open();
    QList<QPair<const Connection *, QString>> seen;
    Connection::SetGlobalObserver([&](const Connection &c, const QString &sql) { seen.append({&c, sql}); });
    m_connection.Execute(QStringLiteral("SELECT 1"));
    second.Execute(QStringLiteral("SELECT 2"));
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0].first, &m_connection);
    EXPECT_EQ(U8(seen[0].second), "SELECT 1");
    EXPECT_EQ(seen[1].first, &second);
    EXPECT_EQ(U8(seen[1].second), "SELECT 2");
}

TEST_F(ConnectionObservers, OwnObserverSeesOnlyItsConnection)
{
    Connection second(SQLiteString(m_path));
    second.Open();
    QStringList own;
    m_connection.SetObserver([&](const Connection &, const QString &sql) { own << sql; });
    second.Execute(QStringLiteral("SELECT 2"));
    m_connection.Execute(QStringLiteral("SELECT 1"));
    EXPECT_EQ(own, QStringList({QStringLiteral("SELECT 1")}));
}

TEST_F(ConnectionObservers, StatementOnAClosedConnectionIsReportedToo)
{
    QStringList own;
    m_connection.SetObserver([&](const Connection &, const QString &sql) { own << sql; });
    m_connection.Close();
    ExpectDatabaseError([&] { m_connection.Execute(QStringLiteral("SELECT 1")); });
    EXPECT_EQ(own, QStringList({QStringLiteral("SELECT 1")}));
}

TEST_F(ConnectionObservers, ObserverRunsBeforeTheStatement)
{
    // The observer looks at the table through another connection: the
    // insert it is told about has not happened yet.
    Connection other(SQLiteString(m_path));
    other.Open();
    int countSeen = -1;
    m_connection.SetObserver([&](const Connection &, const QString &) {
        countSeen = Scalar(other, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt();
    });
    m_connection.Execute(QStringLiteral("INSERT INTO Alumno (IDAlumno, Nombre) VALUES (10, 'Ana')"));
    EXPECT_EQ(countSeen, 3);
    EXPECT_EQ(Scalar(other, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 4);
}

class ConnectionBooleans : public DataFolderTest
{
};

TEST_F(ConnectionBooleans, TrueIsMinusOneAndMonthFlagsSumNegative)
{
    auto c = Connection::CreateSQLite(Path(QStringLiteral("centro.db")));
    c->Execute(QStringLiteral("CREATE TABLE Alumno_Actividad_Miembro (codActividad INTEGER, enero BOOLEAN, febrero INTEGER)"));
    c->Execute(QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (7, -1, -1)"));
    c->Execute(QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (7, -1, 0)"));
    c->Execute(QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (7, 0, 0)"));
    c->Execute(QStringLiteral("INSERT INTO Alumno_Actividad_Miembro VALUES (8, True, False)"));

    Recordset rs = c->Execute(QStringLiteral(
        "SELECT SUM(enero) AS Campo0, SUM(febrero) AS Campo1 FROM Alumno_Actividad_Miembro WHERE codActividad=7"));
    EXPECT_EQ(rs.Fields(QStringLiteral("Campo0")).toInt(), -2);
    EXPECT_EQ(rs.Fields(QStringLiteral("Campo1")).toInt(), -1);

    // A BOOLEAN column keeps -1 as it was written, and Jet's True is -1.
    rs = c->Execute(QStringLiteral("SELECT enero, febrero FROM Alumno_Actividad_Miembro WHERE codActividad=8"));
    EXPECT_EQ(rs.Fields(QStringLiteral("enero")).toInt(), -1);
    EXPECT_EQ(rs.Fields(QStringLiteral("febrero")).toInt(), 0);
    EXPECT_EQ(Scalar(*c, QStringLiteral("SELECT COUNT(*) FROM Alumno_Actividad_Miembro WHERE enero=True")).toInt(), 3);
}

class ConnectionForeignKeys : public DataFolderTest
{
};

TEST_F(ConnectionForeignKeys, AreEnforcedAndCascade)
{
    auto c = Connection::CreateSQLite(Path(QStringLiteral("Modelo182.mdb")));
    EXPECT_EQ(Scalar(*c, QStringLiteral("PRAGMA foreign_keys")).toInt(), 1);
    c->Execute(QStringLiteral("CREATE TABLE Declarantes (IDDeclarante INTEGER PRIMARY KEY AUTOINCREMENT, nombre TEXT)"));
    c->Execute(QStringLiteral("CREATE TABLE Donantes (codDeclarante INTEGER REFERENCES Declarantes(IDDeclarante) "
                              "ON DELETE CASCADE, nombre TEXT)"));
    c->Execute(QStringLiteral("INSERT INTO Declarantes (nombre) VALUES ('COLEGIO')"));
    c->Execute(QStringLiteral("INSERT INTO Donantes VALUES (1, 'ANA')"));
    const QString orphan = QStringLiteral("INSERT INTO Donantes VALUES (2, 'LUIS')");
    const DatabaseError e = ExpectDatabaseError([&] { c->Execute(orphan); });
    EXPECT_EQ(U8(e.Message()), "FOREIGN KEY constraint failed");
    EXPECT_EQ(U8(e.Statement()), U8(orphan));
    c->Execute(QStringLiteral("DELETE FROM Declarantes"));
    EXPECT_EQ(Scalar(*c, QStringLiteral("SELECT COUNT(*) FROM Donantes")).toInt(), 0);

    // Also on a connection opened (not created) later.
    c->Close();
    Connection again(SQLiteString(Path(QStringLiteral("Modelo182.mdb"))));
    again.Open();
    EXPECT_EQ(Scalar(again, QStringLiteral("PRAGMA foreign_keys")).toInt(), 1);
}

class ConnectionTransactions : public ConnectionExecute
{
};

TEST_F(ConnectionTransactions, RollbackLeavesTheTablesAsTheyWere)
{
    m_connection.BeginTrans();
    EXPECT_TRUE(m_connection.InTransaction());
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno"));
    m_connection.Execute(QStringLiteral("INSERT INTO Alumno (IDAlumno, Nombre) VALUES (20, 'Nuevo')"));
    EXPECT_EQ(Scalar(m_connection, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 1);
    m_connection.RollbackTrans();
    EXPECT_FALSE(m_connection.InTransaction());
    EXPECT_EQ(Column(m_connection, QStringLiteral("SELECT Nombre FROM Alumno ORDER BY IDAlumno")),
              QStringList({QStringLiteral("Lucía"), QStringLiteral("Marcos"), QStringLiteral("Nerea")}));
}

TEST_F(ConnectionTransactions, CommitKeepsTheWorkForOtherConnections)
{
    Connection other(SQLiteString(m_path));
    other.Open();
    m_connection.BeginTrans();
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno WHERE IDAlumno=1"));
    EXPECT_EQ(Scalar(other, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 3);
    m_connection.CommitTrans();
    EXPECT_EQ(Scalar(other, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 2);
}

TEST_F(ConnectionTransactions, NestedBeginIsAnError)
{
    m_connection.BeginTrans();
    const DatabaseError e = ExpectDatabaseError([&] { m_connection.BeginTrans(); });
    EXPECT_EQ(U8(e.Message()), "Ya hay una transacción abierta en esta conexión.");
    m_connection.RollbackTrans();
}

TEST_F(ConnectionTransactions, CommitOrRollbackWithoutBeginIsAnError)
{
    const DatabaseError commit = ExpectDatabaseError([&] { m_connection.CommitTrans(); });
    EXPECT_EQ(U8(commit.Message()), "No hay ninguna transacción abierta que confirmar.");
    const DatabaseError rollback = ExpectDatabaseError([&] { m_connection.RollbackTrans(); });
    EXPECT_EQ(U8(rollback.Message()), "No hay ninguna transacción abierta que deshacer.");
}

TEST_F(ConnectionTransactions, ClosingWithAnOpenTransactionDropsIt)
{
    m_connection.BeginTrans();
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno"));
    m_connection.Close();
    EXPECT_FALSE(m_connection.InTransaction());
    m_connection.Open();
    EXPECT_EQ(Scalar(m_connection, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 3);
}

TEST_F(ConnectionTransactions, AFailedStatementInsideCanBeRolledBack)
{
    m_connection.BeginTrans();
    m_connection.Execute(QStringLiteral("DELETE FROM Alumno WHERE IDAlumno=1"));
    ExpectDatabaseError([&] { m_connection.Execute(QStringLiteral("INSERT INTO Nada VALUES (1)")); });
    m_connection.RollbackTrans();
    EXPECT_EQ(Scalar(m_connection, QStringLiteral("SELECT COUNT(*) FROM Alumno")).toInt(), 3);
}

} // namespace
