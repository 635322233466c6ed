#include "session/modPrincipal.h"

#include "session/SesionHost.h"

namespace {

Connection &Requerida(const ConnectionPtr &connection, const char *property)
{
    if (!connection)
        throw SessionError(QStringLiteral("No hay conexión «%1»: el programa principal no ha entregado la sesión.")
                               .arg(QString::fromLatin1(property)));
    return *connection;
}

} // namespace

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

Connection &ConexionEntrada()
{
    return Requerida(Configuracion().conLocalAppEntrada(), "conexionAppEntrada");
}

Connection &ConexionCentro()
{
    return Requerida(Configuracion().conLocalCentro(), "conexionlocalCENTRO");
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
