#pragma once

#include <QDate>
#include <functional>

// Where today's date comes from: the system clock in the program, a fixed
// day in tests.
using Clock = std::function<QDate()>;

inline Clock SystemClock()
{
    return [] { return QDate::currentDate(); };
}

// The date as a Spanish letter writes it: "23 de noviembre de 2026", the
// same whatever the user's locale.
QString SpanishLongDate(const QDate &date);
