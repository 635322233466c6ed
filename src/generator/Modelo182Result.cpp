#include "generator/Modelo182Result.h"

#include "util/VbFormat.h"

QString Modelo182Result::Resumen(const QLocale &locale) const
{
    QStringList lines;
    if (!generado) {
        lines << QStringLiteral("No se ha generado el fichero del modelo 182.");
        for (const QString &line : rechazos)
            lines << line;
        if (!error.isEmpty())
            lines << error;
        return lines.join(QLatin1Char('\n'));
    }
    lines << QStringLiteral("Modelo 182 del ejercicio ") + ejercicio;
    lines << QStringLiteral("Declarante: ") + declarante + QStringLiteral(" (NIF ") + nifDeclarante + QLatin1Char(')');
    lines << QStringLiteral("Registros de donantes: ") + QString::number(registrosDonantes);
    // Cents to euros only for display: the sums themselves stay integers.
    lines << QStringLiteral("Importe total: ")
                 + FormatNumber(double(totalCentimos) / 100.0, QStringLiteral("#,###,##0.00"), locale)
                 + QStringLiteral(" €");
    lines << QStringLiteral("Fichero: ") + fichero;
    for (const QString &line : avisos)
        lines << QStringLiteral("Aviso: ") + line;
    return lines.join(QLatin1Char('\n'));
}
