#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

// A number as the platform turns it into text for the user: the locale's
// decimal separator, no grouping, up to 15 significant digits (12.5 is
// "12,5" in Spanish, "12.5" in English; 80 is "80").
QString TextoNumero(double value, const QLocale &locale);
QString TextoNumero(const QVariant &value, const QLocale &locale);

// Reads a number typed or shown with the locale's separator, or with ".";
// `ok` tells whether the text was a number.
double LeerNumero(const QString &text, const QLocale &locale, bool *ok = nullptr);
