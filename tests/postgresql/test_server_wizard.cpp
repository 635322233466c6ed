// A server that does not answer, as the office meets it: the session's
// connections fail with a Spanish message before the wizard opens, and a
// school year on such a server gives the year-database message with the
// whole connection string. Needs no running server.
#include "WizardFixture.h"

#include "data/DatabaseError.h"
#include "data/SettingsFile.h"
#include "session/SessionSettings.h"
#include "wizard/frmSelActividad.h"
#include "wizard/frmSelCursos.h"

#include <QElapsedTimer>

namespace {

// Nothing listens on port 1 of the loopback address.
const QString kSilentServer = QStringLiteral("Provider=PostgreSQL;Host=127.0.0.1;Port=1;Database=colegio_curso4;"
                                             "User ID=secretaria;Password=secreto");

class UnreachableServer : public WizardFixture
{
};

TEST_F(UnreachableServer, AYearOnAServerThatDoesNotAnswerGivesTheYearDatabaseMessage)
{
    description.years[1].connectionString = kSilentServer;
    description.years[1].createDatabase = false;
    frmSelCursos &cursos = SelectYears({"2023-2024", "2024-2025"});
    cursos.cmdAceptar.Press();
    frmSelActividad &form = Top<frmSelActividad>();
    ui.ClearLog();
    QElapsedTimer clock;
    clock.start();
    form.cboCursoEscolar.SetListIndex(1);
    EXPECT_LT(clock.elapsed(), 5000);
    ExpectOnlyMessage("No se ha encontrado la base de datos cuya conexión es: " + kSilentServer
                          + ". Por favor verifique que la ruta y la base de datos es correcta.",
                      vbCritical);
    EXPECT_EQ(form.CursoMostrado(), 4);
}

TEST_F(UnreachableServer, ASessionConnectionOnAServerThatDoesNotAnswerStopsWithASpanishMessage)
{
    paths = BuildInstallation(dir.path(), description);
    const SettingsFile written = SettingsFile::Read(paths.iniFile);
    SettingsFile changed;
    for (const SettingsSection &section : written.Sections())
        for (const SettingsEntry &entry : section.entries)
            changed.Add(section.name, entry.key, entry.key == "conexionlocalCENTRO" ? kSilentServer : entry.value);
    changed.Write(paths.iniFile);

    try {
        SessionSettings::Load(paths.iniFile).BuildSession();
        FAIL() << "the school connection cannot be opened";
    } catch (const DatabaseError &error) {
        EXPECT_EQ(error.Message(), "El servidor de bases de datos «127.0.0.1» (puerto 1) no responde. Compruebe que "
                                   "está en marcha y que este equipo llega a él por la red.");
        EXPECT_TRUE(error.Statement().contains("Password=***")) << error.Statement().toStdString();
        EXPECT_FALSE(error.Describe().contains("secreto"));
    }
}

} // namespace
