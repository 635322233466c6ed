// Shared by the utility tests: QString in failure messages, the two locales numbers are read and written in,
// and the message of the conversion error a call raises.
#pragma once

#include "util/ConversionError.h"
#include <QLocale>
#include <QString>
#include <ostream>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}
inline QLocale spanish()
{
    return QLocale(QLocale::Spanish, QLocale::Spain);
}
inline QLocale english()
{
    return QLocale(QLocale::English, QLocale::UnitedStates);
}

template <typename Call> QString errorOf(Call call) // "(no error)" when it raises none
{
    try {
        call();
    } catch (const ConversionError &error) {
        return error.message();
    }
    return "(no error)";
}
