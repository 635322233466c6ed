#include "wizard/Numeros.h"

QString TextoNumero(double value, const QLocale &locale)
{
    QLocale plain = locale;
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value, 'g', 15);
}

QString TextoNumero(const QVariant &value, const QLocale &locale)
{
    if (value.isNull())
        return QString();
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? TextoNumero(number, locale) : value.toString();
}

double LeerNumero(const QString &text, const QLocale &locale, bool *ok)
{
    QLocale plain = locale;
    plain.setNumberOptions(QLocale::RejectGroupSeparator);
    bool parsed = false;
    double value = plain.toDouble(text.trimmed(), &parsed);
    if (!parsed)
        value = QLocale::c().toDouble(text.trimmed(), &parsed);
    if (ok)
        *ok = parsed;
    return parsed ? value : 0.0;
}
