#include "session/modPrincipal.h"

namespace modPrincipal {

bool blnSalir = false;
QString HelpFile;

cConfiguracion &Configuracion()
{
    static cConfiguracion configuracion;
    return configuracion;
}

ProgramSettings &Settings()
{
    static ProgramSettings settings;
    return settings;
}

QString LoadResString(int id)
{
    switch (id) {
    case 100:
        return QStringLiteral("Vendelar");
    default:
        return QString();
    }
}

} // namespace modPrincipal
