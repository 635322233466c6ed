// Opening connections: providers, where the file is looked for, and every
// way a file can be unusable. Opening never creates a database.

#include "data/Connection.h"
#include "data/SchemaVersion.h"

#include "test_connection_fixture.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSqlDatabase>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using connection_test::DataFolderTest;
using connection_test::ExpectDatabaseError;
using connection_test::U8;

const QString kJetTail = QStringLiteral(";Persist Security Info=False;Jet OLEDB:Database Password=zq417tev");

class ConnectionOpen : public DataFolderTest
{
};

TEST_F(ConnectionOpen, JetProviderOpensTheSQLiteFileAndKeepsThePassword)
{
    const QString path = MakeDatabase(QStringLiteral("Modelo182.mdb"),
                                      {QStringLiteral("CREATE TABLE Deducciones (IDDeduccion INTEGER, Deduccion REAL)"),
                                       QStringLiteral("INSERT INTO Deducciones VALUES (1, 25)")});
    const QString text = QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + path + kJetTail;
    Connection c;
    c.Open(text);
    EXPECT_EQ(c.State(), Connection::adStateOpen);
    EXPECT_EQ(U8(c.ConnectionString()), U8(text));
    EXPECT_EQ(U8(c.Property(QStringLiteral("Jet OLEDB:Database Password"))), "zq417tev");
    EXPECT_EQ(Scalar(c, QStringLiteral("SELECT Deduccion FROM Deducciones")).toDouble(), 25.0);
    c.Close();
    EXPECT_EQ(c.State(), Connection::adStateClosed);
}

TEST_F(ConnectionOpen, SQLiteProviderOpensTheFile)
{
    const QString path = MakeDatabase(QStringLiteral("centro.db"), {QStringLiteral("CREATE TABLE Centro (IDCentro INTEGER)")});
    Connection c(SQLiteString(path));
    c.Open();
    EXPECT_EQ(c.State(), Connection::adStateOpen);
    EXPECT_EQ(U8(c.DataSourcePath()), U8(path));
}

TEST_F(ConnectionOpen, ProviderNameIgnoresCase)
{
    const QString path = MakeDatabase(QStringLiteral("a.db"), {});
    Connection c;
    c.Open(QStringLiteral("provider=sqlite;data source=") + path);
    EXPECT_EQ(c.State(), Connection::adStateOpen);
}

TEST_F(ConnectionOpen, UnknownProviderIsRefusedInSpanish)
{
    const QString text = QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;Data Source=") + Path(QStringLiteral("x.accdb"));
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(text); });
    EXPECT_EQ(U8(e.Message()), "Proveedor desconocido: Microsoft.ACE.OLEDB.12.0");
    EXPECT_EQ(U8(e.Statement()), U8(text));
    EXPECT_EQ(c.State(), Connection::adStateClosed);
}

TEST_F(ConnectionOpen, MissingProviderIsRefused)
{
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(QStringLiteral("Data Source=") + Path(QStringLiteral("a.db"))); });
    EXPECT_TRUE(e.Message().startsWith(QStringLiteral("Proveedor desconocido: "))) << U8(e.Message());
}

TEST_F(ConnectionOpen, MissingFileIsNamedAndNotCreated)
{
    const QString path = Path(QStringLiteral("Modelo182.mdb"));
    const QString text = QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + path + kJetTail;
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(text); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("No existe la base de datos «%1».").arg(path)));
    EXPECT_EQ(U8(e.Statement()), U8(text));
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(c.State(), Connection::adStateClosed);
}

TEST_F(ConnectionOpen, MissingFileInAMissingFolderIsNotCreatedEither)
{
    const QString path = Path(QStringLiteral("no hay/datos.db"));
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(SQLiteString(path)); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("No existe la base de datos «%1».").arg(path)));
    EXPECT_FALSE(QFileInfo::exists(Path(QStringLiteral("no hay"))));
}

TEST_F(ConnectionOpen, RelativeDataSourceIsTakenFromTheBaseFolder)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("datos")));
    MakeDatabase(QStringLiteral("datos/centro.db"), {QStringLiteral("CREATE TABLE Centro (Nombre TEXT)"),
                                                     QStringLiteral("INSERT INTO Centro VALUES ('Colegio Sol')")});
    Connection::SetBaseFolder(m_dir.path());
    Connection c;
    c.Open(QStringLiteral("Provider=SQLite;Data Source=datos/centro.db"));
    EXPECT_EQ(U8(Scalar(c, QStringLiteral("SELECT Nombre FROM Centro")).toString()), "Colegio Sol");
    // The string keeps the path as written; the resolved file is available apart.
    EXPECT_EQ(U8(c.ConnectionString()), "Provider=SQLite;Data Source=datos/centro.db");
    EXPECT_EQ(U8(c.DataSourcePath()), U8(Path(QStringLiteral("datos/centro.db"))));
}

TEST_F(ConnectionOpen, MissingRelativeFileIsNamedByItsFullPath)
{
    Connection::SetBaseFolder(m_dir.path());
    Connection c;
    const QString text = QStringLiteral("Provider=SQLite;Data Source=datos/entrada.db");
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(text); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("No existe la base de datos «%1».").arg(Path(QStringLiteral("datos/entrada.db")))));
    EXPECT_EQ(U8(e.Statement()), U8(text));
}

TEST_F(ConnectionOpen, BaseFolderDefaultsToTheCurrentFolder)
{
    EXPECT_EQ(U8(Connection::BaseFolder()), U8(QDir::currentPath()));
    Connection::SetBaseFolder(m_dir.path());
    EXPECT_EQ(U8(Connection::BaseFolder()), U8(m_dir.path()));
    EXPECT_EQ(U8(Connection::ResolvePath(QStringLiteral("a/../b.db"))), U8(Path(QStringLiteral("b.db"))));
    EXPECT_EQ(U8(Connection::ResolvePath(QStringLiteral("/otra/c.db"))), "/otra/c.db");
}

TEST_F(ConnectionOpen, TextFileIsNotADatabase)
{
    const QString path = Path(QStringLiteral("Modelo182.mdb"));
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("Esto no es una base de datos, es una nota de la secretaría.\n");
    }
    const qint64 size = QFileInfo(path).size();
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(SQLiteString(path)); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("«%1» no es una base de datos válida: file is not a database").arg(path)));
    EXPECT_EQ(c.State(), Connection::adStateClosed);
    EXPECT_EQ(QFileInfo(path).size(), size);
}

TEST_F(ConnectionOpen, FolderIsNotADatabase)
{
    ASSERT_TRUE(QDir(m_dir.path()).mkpath(QStringLiteral("carpeta.db")));
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(SQLiteString(Path(QStringLiteral("carpeta.db")))); });
    EXPECT_EQ(U8(e.Message()), U8(QStringLiteral("«%1» no es un archivo de base de datos.").arg(Path(QStringLiteral("carpeta.db")))));
}

TEST_F(ConnectionOpen, FileOfANewerProgramIsRefused)
{
    const QString path = MakeDatabase(QStringLiteral("Modelo182.mdb"),
                                      {QStringLiteral("PRAGMA user_version=%1").arg(kSchemaVersion + 1)});
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(SQLiteString(path)); });
    EXPECT_TRUE(e.Message().contains(QStringLiteral("fue creada por una versión más reciente del programa")))
        << U8(e.Message());
    EXPECT_TRUE(e.Message().contains(path)) << U8(e.Message());
    EXPECT_EQ(c.State(), Connection::adStateClosed);
}

TEST_F(ConnectionOpen, FileOfThisVersionOpens)
{
    const QString path = MakeDatabase(QStringLiteral("Modelo182.mdb"),
                                      {QStringLiteral("PRAGMA user_version=%1").arg(kSchemaVersion)});
    Connection c;
    c.Open(SQLiteString(path));
    EXPECT_EQ(Scalar(c, QStringLiteral("PRAGMA user_version")).toInt(), kSchemaVersion);
}

TEST_F(ConnectionOpen, WriteProtectedFileOpensAndRefusesWrites)
{
    const QString path = MakeDatabase(QStringLiteral("centro.db"), {QStringLiteral("CREATE TABLE Centro (Nombre TEXT)"),
                                                                    QStringLiteral("INSERT INTO Centro VALUES ('Uno')")});
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    if (::access(path.toLocal8Bit().constData(), W_OK) == 0) {
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
        GTEST_SKIP() << "this user (root) may write a file without write permission; "
                        "ReadOnlyModeRefusesWrites covers the same error";
    }
    Connection c;
    c.Open(SQLiteString(path));
    EXPECT_EQ(U8(Scalar(c, QStringLiteral("SELECT Nombre FROM Centro")).toString()), "Uno");
    const QString insert = QStringLiteral("INSERT INTO Centro VALUES ('Dos')");
    const DatabaseError e = ExpectDatabaseError([&] { c.Execute(insert); });
    EXPECT_EQ(U8(e.Message()), "attempt to write a readonly database");
    EXPECT_EQ(U8(e.Statement()), U8(insert));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(ConnectionOpen, ReadOnlyModeRefusesWrites)
{
    const QString path = MakeDatabase(QStringLiteral("centro.db"), {QStringLiteral("CREATE TABLE Centro (Nombre TEXT)"),
                                                                    QStringLiteral("INSERT INTO Centro VALUES ('Uno')")});
    Connection c;
    c.Open(SQLiteString(path) + QStringLiteral(";Mode=Read"));
    EXPECT_EQ(U8(Scalar(c, QStringLiteral("SELECT Nombre FROM Centro")).toString()), "Uno");
    const QString insert = QStringLiteral("INSERT INTO Centro VALUES ('Dos')");
    const DatabaseError e = ExpectDatabaseError([&] { c.Execute(insert); });
    EXPECT_EQ(U8(e.Message()), "attempt to write a readonly database");
    EXPECT_EQ(U8(e.Statement()), U8(insert));
    c.Close();
    Connection check;
    check.Open(SQLiteString(path));
    EXPECT_EQ(Scalar(check, QStringLiteral("SELECT COUNT(*) FROM Centro")).toInt(), 1);
}

TEST_F(ConnectionOpen, LockedDatabaseFailsQuicklyWithTheStatement)
{
    const QString path = MakeDatabase(QStringLiteral("centro.db"), {QStringLiteral("CREATE TABLE Centro (Nombre TEXT)")});
    Connection holder;
    holder.Open(SQLiteString(path));
    holder.Execute(QStringLiteral("BEGIN IMMEDIATE"));
    holder.Execute(QStringLiteral("INSERT INTO Centro VALUES ('retenido')"));

    Connection other;
    other.Open(SQLiteString(path));
    // Reading is still allowed while the other holds its write lock.
    EXPECT_EQ(Scalar(other, QStringLiteral("SELECT COUNT(*) FROM Centro")).toInt(), 0);
    const QString insert = QStringLiteral("INSERT INTO Centro VALUES ('nuevo')");
    QElapsedTimer timer;
    timer.start();
    const DatabaseError e = ExpectDatabaseError([&] { other.Execute(insert); });
    EXPECT_LE(timer.elapsed(), 2500);
    EXPECT_LE(Connection::BusyTimeout(), 2000);
    EXPECT_EQ(U8(e.Message()), "database is locked");
    EXPECT_EQ(U8(e.Statement()), U8(insert));

    holder.Execute(QStringLiteral("COMMIT"));
    other.Execute(insert);
    EXPECT_EQ(Column(other, QStringLiteral("SELECT Nombre FROM Centro ORDER BY Nombre")),
              QStringList({QStringLiteral("nuevo"), QStringLiteral("retenido")}));
}

TEST_F(ConnectionOpen, DatabaseHeldExclusivelyCannotBeOpened)
{
    const QString path = MakeDatabase(QStringLiteral("centro.db"), {QStringLiteral("CREATE TABLE Centro (Nombre TEXT)")});
    Connection holder;
    holder.Open(SQLiteString(path));
    holder.Execute(QStringLiteral("BEGIN EXCLUSIVE"));

    Connection::SetBusyTimeout(100);
    Connection other;
    QElapsedTimer timer;
    timer.start();
    const DatabaseError e = ExpectDatabaseError([&] { other.Open(SQLiteString(path)); });
    EXPECT_LT(timer.elapsed(), 900);
    EXPECT_EQ(U8(e.Message()),
              U8(QStringLiteral("La base de datos «%1» está bloqueada por otra conexión: database is locked").arg(path)));
    EXPECT_EQ(other.State(), Connection::adStateClosed);

    holder.Execute(QStringLiteral("ROLLBACK"));
    other.Open(SQLiteString(path));
    EXPECT_EQ(other.State(), Connection::adStateOpen);
}

TEST_F(ConnectionOpen, PostgreSQLServerThatIsNotThereIsNamed)
{
    // Port 9 (discard) on loopback: nothing of ours listens there.
    const QString text = QStringLiteral("Provider=PostgreSQL;Host=127.0.0.1;Port=9;Database=centro;User ID=yo;Password=x");
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Open(text); });
    EXPECT_TRUE(e.Message().startsWith(QStringLiteral("No se puede conectar con la base de datos «centro» del servidor «127.0.0.1»")))
        << U8(e.Message());
    EXPECT_EQ(U8(e.Statement()), U8(text));
    EXPECT_EQ(c.State(), Connection::adStateClosed);
}

class ConnectionLifecycle : public DataFolderTest
{
};

TEST_F(ConnectionLifecycle, ExecuteOnAClosedConnectionIsAnError)
{
    Connection c;
    const DatabaseError e = ExpectDatabaseError([&] { c.Execute(QStringLiteral("SELECT 1")); });
    EXPECT_EQ(U8(e.Message()), "La conexión está cerrada.");
    EXPECT_EQ(U8(e.Statement()), "SELECT 1");
}

TEST_F(ConnectionLifecycle, CloseAndOpenAgainKeepsTheString)
{
    const QString path = MakeDatabase(QStringLiteral("a.db"), {QStringLiteral("CREATE TABLE T (x INTEGER)")});
    Connection c(SQLiteString(path));
    c.Open();
    c.Close();
    c.Close(); // closing twice is harmless
    ExpectDatabaseError([&] { c.Execute(QStringLiteral("SELECT x FROM T")); });
    c.Open();
    EXPECT_EQ(c.Execute(QStringLiteral("SELECT x FROM T")).RecordCount(), 0);
    EXPECT_EQ(U8(c.ConnectionString()), U8(SQLiteString(path)));
}

TEST_F(ConnectionLifecycle, OpeningAnOpenConnectionIsAnError)
{
    const QString path = MakeDatabase(QStringLiteral("a.db"), {});
    Connection c(SQLiteString(path));
    c.Open();
    ExpectDatabaseError([&] { c.Open(); });
    EXPECT_EQ(c.State(), Connection::adStateOpen);
}

TEST_F(ConnectionLifecycle, DataSourceSetByPropertyIsUsedAtTheNextOpen)
{
    const QString first = MakeDatabase(QStringLiteral("uno.db"), {QStringLiteral("CREATE TABLE T (n TEXT)"),
                                                                  QStringLiteral("INSERT INTO T VALUES ('uno')")});
    const QString second = MakeDatabase(QStringLiteral("dos.db"), {QStringLiteral("CREATE TABLE T (n TEXT)"),
                                                                   QStringLiteral("INSERT INTO T VALUES ('dos')")});
    Connection c(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + kJetTail);
    c.SetProperty(QStringLiteral("Data Source"), first);
    c.Open();
    EXPECT_EQ(U8(Scalar(c, QStringLiteral("SELECT n FROM T")).toString()), "uno");
    c.Close();
    c.SetProperty(QStringLiteral("Data Source"), second);
    c.Open();
    EXPECT_EQ(U8(Scalar(c, QStringLiteral("SELECT n FROM T")).toString()), "dos");
    EXPECT_EQ(U8(c.ConnectionString()),
              U8(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + second + kJetTail));
}

TEST_F(ConnectionLifecycle, EachConnectionHasItsOwnQtConnectionRemovedOnClose)
{
    const QString a = MakeDatabase(QStringLiteral("a.db"), {QStringLiteral("CREATE TABLE T (n TEXT)"),
                                                            QStringLiteral("INSERT INTO T VALUES ('a')")});
    const QString b = MakeDatabase(QStringLiteral("b.db"), {QStringLiteral("CREATE TABLE T (n TEXT)"),
                                                            QStringLiteral("INSERT INTO T VALUES ('b')")});
    const qsizetype before = QSqlDatabase::connectionNames().size();
    {
        Connection ca(SQLiteString(a));
        Connection cb(SQLiteString(b));
        ca.Open();
        cb.Open();
        EXPECT_EQ(QSqlDatabase::connectionNames().size(), before + 2);
        EXPECT_NE(ca.Database().connectionName(), cb.Database().connectionName());
        cb.Close();
        EXPECT_EQ(QSqlDatabase::connectionNames().size(), before + 1);
        EXPECT_EQ(U8(Scalar(ca, QStringLiteral("SELECT n FROM T")).toString()), "a");
        EXPECT_FALSE(cb.Database().isValid());
    }
    // The destructor closes what is still open.
    EXPECT_EQ(QSqlDatabase::connectionNames().size(), before);
}

class ConnectionCreate : public DataFolderTest
{
};

TEST_F(ConnectionCreate, CreatesAMissingFileAndReturnsItOpen)
{
    const QString path = Path(QStringLiteral("CartaDonantes.mdb"));
    auto c = Connection::CreateSQLite(path, QStringLiteral("Microsoft.Jet.OLEDB.4.0"));
    ASSERT_TRUE(c);
    EXPECT_EQ(c->State(), Connection::adStateOpen);
    EXPECT_TRUE(QFileInfo(path).isFile());
    EXPECT_EQ(U8(c->ConnectionString()), U8(QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=") + path));
    c->Execute(QStringLiteral("CREATE TABLE T (n TEXT)"));
    c->Close();
    Connection reopened(SQLiteString(path));
    reopened.Open();
    EXPECT_EQ(reopened.Execute(QStringLiteral("SELECT * FROM T")).FieldNames(), QStringList({QStringLiteral("n")}));
}

TEST_F(ConnectionCreate, DefaultProviderIsSQLite)
{
    const QString path = Path(QStringLiteral("centro.db"));
    auto c = Connection::CreateSQLite(path);
    EXPECT_EQ(U8(c->ConnectionString()), U8(QStringLiteral("Provider=SQLite;Data Source=") + path));
}

TEST_F(ConnectionCreate, ExistingFileIsOpenedWithItsRows)
{
    const QString path = MakeDatabase(QStringLiteral("a.db"), {QStringLiteral("CREATE TABLE T (n INTEGER)"),
                                                               QStringLiteral("INSERT INTO T VALUES (7)")});
    auto c = Connection::CreateSQLite(path);
    EXPECT_EQ(Scalar(*c, QStringLiteral("SELECT n FROM T")).toInt(), 7);
}

TEST_F(ConnectionCreate, MissingFolderIsAnErrorAndIsNotCreated)
{
    const QString path = Path(QStringLiteral("Informes/CartaDonantes.mdb"));
    const DatabaseError e = ExpectDatabaseError([&] { Connection::CreateSQLite(path); });
    EXPECT_EQ(U8(e.Message()),
              U8(QStringLiteral("No existe la carpeta «%1» donde crear la base de datos.").arg(Path(QStringLiteral("Informes")))));
    EXPECT_FALSE(QFileInfo::exists(Path(QStringLiteral("Informes"))));
}

TEST_F(ConnectionCreate, RelativePathIsCreatedInTheBaseFolder)
{
    Connection::SetBaseFolder(m_dir.path());
    auto c = Connection::CreateSQLite(QStringLiteral("nuevo.db"));
    EXPECT_TRUE(QFileInfo(Path(QStringLiteral("nuevo.db"))).isFile());
    EXPECT_EQ(U8(c->ConnectionString()), "Provider=SQLite;Data Source=nuevo.db");
}

} // namespace
