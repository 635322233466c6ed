// The PostgreSQL provider of Connection: what the office reads when the
// server cannot be reached or refuses the login, and when a statement
// fails; the statement texts observed are the add-in's own.
#include "ServerTest.h"

#include "data/ConnectionString.h"
#include "data/Schema.h"

#include <QElapsedTimer>

using namespace server_test;

namespace {

using ServerConnection = ServerTest;

QString WithValue(QString text, const QString &key, const QString &value)
{
    ConnectionString c(text);
    c.SetValue(key, value);
    return c.ToString();
}

TEST_F(ServerConnection, FailedOpeningsSayWhatToCheckQuicklyAndNeverShowThePassword)
{
    const QString host = ServerValue("Host"), port = ServerValue("Port"), user = ServerValue("User ID");
    const QString where = "«" + host + "» (puerto " + port + ")";
    const struct
    {
        const char *why;
        QString text;
        QString message;
    } cases[] = {
        {"a wrong password", WithValue(TestServer(), "Password", "no-es-esta"),
         "El servidor de bases de datos " + where + " no ha aceptado el usuario «" + user
             + "» con la contraseña indicada. Compruebe el usuario y la contraseña de la conexión."},
        {"an unknown user", WithValue(TestServer(), "User ID", "nadie"),
         "El servidor de bases de datos " + where
             + " no ha aceptado el usuario «nadie» con la contraseña indicada. Compruebe el usuario y la contraseña "
               "de la conexión."},
        {"a missing database", WithValue(TestServer(), "Database", "no_existe_m182"),
         "No existe la base de datos «no_existe_m182» en el servidor " + where
             + ". Compruebe el nombre de la base de datos de la conexión."},
        {"a server that is not running", WithValue(TestServer(), "Port", "1"),
         "El servidor de bases de datos «" + host
             + "» (puerto 1) no responde. Compruebe que está en marcha y que este equipo llega a él por la red."},
    };
    for (const auto &k : cases) {
        SCOPED_TRACE(k.why);
        Connection c(k.text);
        QElapsedTimer clock;
        clock.start();
        const DatabaseError error = ExpectDatabaseError([&] { c.Open(); });
        EXPECT_LT(clock.elapsed(), 5000);
        EXPECT_EQ(error.Message(), k.message);
        EXPECT_EQ(c.State(), Connection::adStateClosed);
        EXPECT_FALSE(error.Describe().contains(ServerValue("Password"))) << error.Describe().toStdString();
        EXPECT_FALSE(error.Describe().contains("no-es-esta"));
        EXPECT_FALSE(error.Detail().isEmpty());
    }
}

TEST_F(ServerConnection, FailedStatementsNameTheDatabaseAndKeepTheStatementAsSent)
{
    ConnectionPtr db = Fresh("curso");
    Schema::CreateYearDatabase(*db);
    QStringList seen;
    db->SetObserver([&](const Connection &, const QString &sql) { seen << sql; });
    const QString database = TestDatabasePrefix() + "_curso";
    const struct
    {
        const char *sql;
        QString message;
    } cases[] = {
        {"SELECT * FROM [Actividades] WHERE Activa=True",
         "La base de datos «" + database
             + "» no tiene la estructura que el programa espera (falta una tabla o una "
               "columna). Compruebe que es la base de datos correcta."},
        {"SELECT Precio FROM Actividad", "La base de datos «" + database
                                             + "» no tiene la estructura que el programa espera (falta una tabla o una "
                                               "columna). Compruebe que es la base de datos correcta."},
        {"INSERT INTO Provincia (IDProvincia, descripcion) VALUES (28, 'Otra')",
         "La base de datos «" + database
             + "» ha rechazado un dato que incumple sus reglas (un valor repetido o que "
               "falta)."},
        {"SELEC 1", "La base de datos «" + database + "» no ha podido ejecutar una instrucción del programa."},
    };
    for (const auto &k : cases) {
        SCOPED_TRACE(k.sql);
        seen.clear();
        const DatabaseError error = ExpectDatabaseError([&] { db->Execute(k.sql); });
        EXPECT_EQ(error.Message(), k.message);
        EXPECT_EQ(error.Statement(), k.sql);
        EXPECT_EQ(seen, QStringList{k.sql});
    }
    // The connection stays usable.
    EXPECT_EQ(Value(*db, "SELECT COUNT(*) FROM Provincia WHERE IDProvincia=28"), "1");
}

TEST_F(ServerConnection, AFailedWriteInsideATransactionLeavesNothingBehind)
{
    ConnectionPtr db = Fresh("centro");
    Schema::CreateSchoolDatabase(*db);
    db->Execute("INSERT INTO ComDed VALUES (1, 1, 5)");
    {
        Connection::Transaction transaction(*db);
        db->Execute("DELETE FROM ComDed");
        db->Execute("INSERT INTO ComDed VALUES (2, 2, 10)");
        ExpectDatabaseError([&] { db->Execute("INSERT INTO ComDed VALUES (3, 'tres', 15)"); });
    }
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(Rows(*db, "SELECT * FROM ComDed"), QStringList{"1|1|5"});
}

} // namespace
