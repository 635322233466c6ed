// The session settings file written by hand: the documented sample loads
// and opens its connections; numbers that do not fit, or are no numbers,
// are refused before anything is opened; malformed lines are named.
#include "data/Connection.h"
#include "data/Installation.h"
#include "session/SessionSettings.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <limits>

// Failed comparisons show texts as texts.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

class SessionSettingsFileTest : public ::testing::Test
{
protected:
    QString Write(const QString &name, const QString &text)
    {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return file.fileName();
    }
    // The message of the SessionError that loading the file gives.
    QString LoadError(const QString &file)
    {
        try {
            SessionSettings::Load(file);
        } catch (const SessionError &error) {
            return error.Message();
        }
        return "(loaded)";
    }
    QTemporaryDir dir;
};

// The sample of the design notes, as a user would type it, with CRLF ends.
const char kSample[] =
    "[Sesion]\r\n"
    "rutaaplicacion=app              ; the host's application folder; the reports folder lies below it\r\n"
    "RutaBD=datos                    ; folder of the host's database files\r\n"
    "sqlserver=false\r\n"
    "IDPerfil=1\r\n"
    "IDUsuario=1\r\n"
    "NombreUsuario=secretaria\r\n"
    "IDCentro=1\r\n"
    "NombreCentro=Colegio San José, Madrid\r\n"
    "idCursoEscolar=2\r\n"
    "Activa=true\r\n"
    "Accion=0\r\n"
    "lngRowData=0\r\n"
    "Pesetas=false\r\n"
    "MTP=false\r\n"
    "RutaIcono=app/modelo182.ico\r\n"
    "conexionAppEntrada=Provider=SQLite;Data Source=datos/entrada.db\r\n"
    "conexionlocalCENTRO=Provider=SQLite;Data Source=datos/centro.db\r\n"
    "conexionBORRADOlocalCENTRO=Provider=SQLite;Data Source=datos/borrado.db\r\n"
    "\r\n"
    "[Modelo182]\r\n"
    "Locale=es_ES                    ; number formats; the environment's locale when absent\r\n"
    "desarrollo=false                ; the host API's \"desarrollo\" property (reports folder choice)\r\n"
    "NumeroJustificante=             ; 13-digit declaration id for the AEAT file\r\n"
    "Delegacion=C:\\Vendelar\\datos\r\n"
    "Domicilio=Calle Mayor, 5, 28001 Madrid\r\n";

TEST_F(SessionSettingsFileTest, TheDocumentedSampleLoadsAndOpensItsConnections)
{
    InstallationDescription d;
    d.school.id = 1;
    d.school.name = "Colegio San José, Madrid";
    d.years = {YearDescription{}};
    d.years[0].id = 2;
    d.years[0].name = "2024-2025";
    const InstallationPaths paths = BuildInstallation(dir.path(), d);
    QFile::remove(paths.iniFile);
    const SessionSettings settings = SessionSettings::Load(Write("modelo182.ini", kSample));
    const SesionHostPtr session = settings.BuildSession();

    EXPECT_EQ(session->Text("NombreCentro"), "Colegio San José, Madrid");
    EXPECT_EQ(session->Text("rutaaplicacion"), paths.rutaAplicacion);
    EXPECT_EQ(session->Text("RutaBD"), paths.rutaBD);
    EXPECT_EQ(session->Text("RutaIcono"), paths.iconFile);
    EXPECT_EQ(session->Integer("IDCentro"), 1);
    EXPECT_EQ(session->Integer("idCursoEscolar"), 2);
    EXPECT_FALSE(session->Boolean("sqlserver"));
    EXPECT_TRUE(session->Boolean("Activa"));
    for (const char *name : {"conexionAppEntrada", "conexionlocalCENTRO", "conexionBORRADOlocalCENTRO"})
        EXPECT_EQ(session->ConnectionValue(name)->State(), Connection::adStateOpen) << name;
    Recordset rs = session->ConnectionValue("conexionAppEntrada")->Execute("SELECT Nombre FROM Centro WHERE IDCentro=1");
    EXPECT_EQ(rs.Fields("Nombre").toString(), "Colegio San José, Madrid");
    EXPECT_EQ(session->ConnectionValue("conexionlocalCENTRO")->ConnectionString(), paths.conexionLocalCentro);

    const ProgramSettings &program = settings.Program();
    EXPECT_EQ(program.locale.name(), "es_ES");
    EXPECT_FALSE(program.desarrollo);
    EXPECT_EQ(program.numeroJustificante, "");
    EXPECT_EQ(program.delegacion, "C:\\Vendelar\\datos");
    EXPECT_EQ(program.domicilio, "Calle Mayor, 5, 28001 Madrid");
    ASSERT_EQ(settings.Values().size(), 18);
    EXPECT_EQ(settings.Values().at(15).second, "Provider=SQLite;Data Source=datos/entrada.db");
}

TEST_F(SessionSettingsFileTest, NumbersThatDoNotFitOrAreNoNumbersAreRefusedBeforeAnythingOpens)
{
    struct Case
    {
        const char *line;
        const char *key;
        const char *text;
    };
    const Case refused[] = {
        {"IDCentro=99999999999999999999", "IDCentro", "99999999999999999999"},
        {"lngRowData=9223372036854775808", "lngRowData", "9223372036854775808"},
        {"Accion=-9223372036854775809", "Accion", "-9223372036854775809"},
        {"idCursoEscolar=2º", "idCursoEscolar", "2º"},
        {"IDPerfil=1.5", "IDPerfil", "1.5"},
        {"IDUsuario=true", "IDUsuario", "true"},
        {"IDCentro=", "IDCentro", ""},
        {"Propia=123456789012345678901", "Propia", "123456789012345678901"}, // not one of the host's
    };
    // A connection to a missing database comes first: opening it would fail
    // differently, so the refusal must come before any opening.
    const QString head = "[Sesion]\nconexionAppEntrada=Provider=SQLite;Data Source=datos/no.db\n";
    for (const Case &c : refused) {
        SCOPED_TRACE(c.line);
        const QString file = Write("s.ini", head + QString::fromUtf8(c.line) + "\n");
        EXPECT_EQ(LoadError(file), "El valor «" + QString::fromUtf8(c.text) + "» de «" + QString::fromUtf8(c.key)
                                       + "» no es un número entero válido. Corrija el fichero de sesión «" + file + "».");
    }
    EXPECT_FALSE(QFile::exists(dir.filePath("datos/no.db")));

    // The 64-bit limits themselves are numbers; a name is a text even when it looks like one.
    const SesionHostPtr session = SessionSettings::Load(Write("s.ini",
                                                              "[Sesion]\nlngRowData=9223372036854775807\nAccion=-"
                                                              "9223372036854775808\nNombreCentro=007\nPropia=hola, 1\n"))
                                      .BuildSession();
    EXPECT_EQ(session->Integer("lngRowData"), std::numeric_limits<qlonglong>::max());
    EXPECT_EQ(session->Integer("Accion"), std::numeric_limits<qlonglong>::min());
    EXPECT_EQ(session->Text("NombreCentro"), "007");
    EXPECT_EQ(session->Text("Propia"), "hola, 1");
}

TEST_F(SessionSettingsFileTest, AMalformedLineIsNamedWithTheFile)
{
    const QString file = Write("s.ini", "[Sesion]\nIDCentro=1\nNombreCentro Colegio\n");
    EXPECT_EQ(LoadError(file), "Fichero «" + file
                                   + "». La línea 3 no es una sección «[nombre]», un comentario ni "
                                     "una línea «clave=valor»: «NombreCentro Colegio». Corríjala o bórrela.");
}

} // namespace
