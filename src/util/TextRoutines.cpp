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

bool ContainsAsciiNoCase(QStringView text, QLatin1StringView word)
{
    const qsizetype n = word.size();
    if (n == 0)
        return true;
    const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c; };
    const char16_t first = lower(char16_t(uchar(word.at(0).toLatin1())));
    for (qsizetype i = 0; i + n <= text.size(); ++i) {
        if (lower(text.at(i).unicode()) != first)
            continue;
        qsizetype j = 1;
        while (j < n && lower(text.at(i + j).unicode()) == lower(char16_t(uchar(word.at(j).toLatin1()))))
            ++j;
        if (j == n)
            return true;
    }
    return false;
}
