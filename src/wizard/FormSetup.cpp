#include "wizard/FormSetup.h"

#include "controls/Form.h"
#include "data/DatabaseError.h"
#include "session/WizardRun.h"
#include "session/cCentroApi.h"

void PrepareWizardWindow(Form &form, WizardRun &run)
{
    form.SetIconPath(run.Configuracion().RutaIcono());
    auto api = run.Componentes().CreateObjectAs<cCentroApi>(QString::fromLatin1(cCentroApi::ProgId));
    api->marcar_Obligatorios(form);
}

QString YearDatabaseMissingMessage(const QString &conBD)
{
    return QStringLiteral("No se ha encontrado la base de datos cuya conexión es: ") + conBD
           + QStringLiteral(". Por favor verifique que la ruta y la base de datos es correcta.");
}

ConnectionPtr OpenYearDatabase(const QString &conBD, WizardRun &run)
{
    ConnectionPtr connection = run.NewConnection();
    try {
        connection->Open(conBD);
        return connection;
    } catch (const DatabaseError &) {
        run.ui().Beep();
        run.ui().MsgBox(YearDatabaseMissingMessage(conBD), vbCritical);
        return nullptr;
    }
}
