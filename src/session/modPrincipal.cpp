#include "session/modPrincipal.h"

namespace modPrincipal {

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
