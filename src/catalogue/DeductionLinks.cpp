#include "catalogue/DeductionLinks.h"

#include "util/VbFormat.h"

QString PercentageText(float valor, const QLocale &locale)
{
    // Widening the float would show its binary error (13.3 -> 13.3000001907349).
    return NumberText(QString::number(valor, 'g', 7).toDouble(), locale);
}
