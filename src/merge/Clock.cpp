#include "merge/Clock.h"

#include <QString>

QString SpanishLongDate(const QDate &date)
{
    static const char *const kMonths[] = {"enero", "febrero", "marzo",      "abril",   "mayo",      "junio",
                                          "julio", "agosto",  "septiembre", "octubre", "noviembre", "diciembre"};
    if (!date.isValid())
        return QString();
    return QString::number(date.day()) + QStringLiteral(" de ") + QLatin1String(kMonths[date.month() - 1])
           + QStringLiteral(" de ") + QString::number(date.year());
}
