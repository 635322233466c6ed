#include "catalogue/LinkStatements.h"

namespace {

QString Id(qint16 id)
{
    return QString::number(id);
}

} // namespace

QStringList LinkStatements(const CommunityLinks &comunidades, const TypeLinks &tipos)
{
    const cConstCol estados;
    QStringList sentencias;
    for (const auto &link : comunidades.Items().Items()) {
        if (link->Estado == estados.NUEVO())
            sentencias << QStringLiteral("INSERT INTO ComunidadesAutonomas_Deducciones VALUES (") + Id(link->IDComAut)
                              + QLatin1Char(',') + Id(link->IDDeduccion) + QLatin1Char(')');
        else if (link->Estado == estados.Eliminado())
            sentencias << QStringLiteral("DELETE FROM ComunidadesAutonomas_Deducciones WHERE coddeduccion=")
                              + Id(link->IDDeduccion) + QStringLiteral(" AND codComunidadAutonoma=") + Id(link->IDComAut);
    }
    for (const auto &link : tipos.Items().Items()) {
        if (link->Estado == estados.NUEVO())
            sentencias << QStringLiteral("INSERT INTO TipoDonativos_Deducciones VALUES (") + Id(link->IDTipoDonativo)
                              + QLatin1Char(',') + Id(link->IDDeduccion) + QLatin1Char(')');
        else if (link->Estado == estados.Eliminado())
            sentencias << QStringLiteral("DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=") + Id(link->IDDeduccion)
                              + QStringLiteral(" AND codTipoDonativo=") + Id(link->IDTipoDonativo);
    }
    return sentencias;
}
