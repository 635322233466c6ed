#include "controls/FormSetup.h"

#include "controls/Form.h"
#include "controls/cCentroApi.h"
#include "data/DatabaseError.h"
#include "session/modPrincipal.h"

void AplicarConfiguracionFormulario(Form &form)
{
    form.SetIconPath(modPrincipal::Configuracion().RutaIcono());
    if (!ObjectFactory::IsRegistered(QString::fromLatin1(cCentroApi::ProgId)))
        cCentroApi::Register();
    auto api = ObjectFactory::CreateObjectAs<cCentroApi>(QString::fromLatin1(cCentroApi::ProgId));
    api->marcar_Obligatorios(form);
}

QString MensajeBDNoEncontrada(const QString &conBD)
{
    return QStringLiteral("No se ha encontrado la base de datos cuya conexión es: ") + conBD
        + QStringLiteral(". Por favor verifique que la ruta y la base de datos es correcta.");
}

ConnectionPtr AbrirBDCurso(const QString &conBD, Ui &ui)
{
    auto connection = std::make_shared<Connection>();
    try {
        connection->Open(conBD);
        return connection;
    } catch (const std::exception &) {
        ui.Beep();
        ui.MsgBox(MensajeBDNoEncontrada(conBD), vbCritical);
        return nullptr;
    }
}
