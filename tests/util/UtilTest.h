// Shared by the tests of the utilities: QString in failure messages, the two
// locales numbers are read and written in, and the NIF letter rule as it is
// published, worked out apart from the code under test.
#pragma once

#include <QLocale>
#include <QString>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

inline QLocale spanish() { return QLocale(QLocale::Spanish, QLocale::Spain); }
inline QLocale english() { return QLocale(QLocale::English, QLocale::UnitedStates); }

// The remainder of the number divided by 23, taken as never negative, indexes the table.
inline QString publishedLetter(long long number)
{
    return QString(QLatin1Char("TRWAGMYFPDXBNJZSQVHLCKE"[((number % 23) + 23) % 23]));
}
