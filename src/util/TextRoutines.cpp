#include "util/TextRoutines.h"

QString FixedWidth(const QVariant &text, int width, const QString &fill)
{
    const QString trimmed = text.isNull() ? QString() : text.toString().trimmed();
    if (width <= 0)
        return QString();
    if (trimmed.size() >= width)
        return trimmed.left(width);
    return fill.repeated(width - trimmed.size()) + trimmed;
}

QString CutAtNul(const QString &text)
{
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? text : text.left(nul);
}
