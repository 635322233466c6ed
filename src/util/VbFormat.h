#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>
#include <optional>

// Number formats and conversions with the behaviour of the original platform,
// which the donor grid, the save and the declaration rely on, and the helpers
// that write values into SQL statements built as text.
//
// The locale parameters default to QLocale(), the program's default locale
// (the session's `Locale=` setting, else the environment's).

// Formats `value` with a VB-style pattern made of "0", "#", "," and ".":
// "0" is a digit always shown, "#" a digit shown only when significant, a ","
// in the integer part turns on grouping of thousands (always, whatever the
// locale's own minimum grouping), "." marks the decimal point. Examples:
// "0.00" and "#,###,##0.00" (es_ES: 1.234,50; en_US: 1,234.50).
// Rounding is half away from zero on the decimal value of the double as the
// platform reads it (fifteen significant digits), so 2.675 gives 2,68.
// Negative values get a leading "-"; a value that rounds to zero has no sign.
// Throws std::invalid_argument for a pattern with any other character.
QString FormatNumber(double value, const QString &pattern, const QLocale &locale = QLocale());

// True when `text` reads as a number: blanks around it are ignored, then an
// optional "+" or "-", then digits with at most one decimal separator.
// Either "," or "." is accepted as the decimal separator whatever the locale.
// Thousands separators: when both "," and "." appear, the last one is the
// decimal separator and the other one groups thousands ("1.234,50" and
// "1,234.50" are both 1234.5); a separator that appears more than once is a
// thousands separator only when it is the locale's group separator
// ("1.234.567" reads as 1234567 under es_ES, and is not a number under
// en_US); a single separator is always the decimal one ("1.234" is 1.234).
// A thousands separator must stand between two digits and before the decimal
// separator. No exponent, currency sign or hexadecimal form is accepted.
bool IsNumeric(const QString &text, const QLocale &locale = QLocale());

// The value of `text` read as IsNumeric describes; throws ConversionError
// (message in Spanish naming the text) when it is not a number.
double ToDouble(const QString &text, const QLocale &locale = QLocale());

// The one reader of numbers that a person typed or that a list shows: the
// value as IsNumeric/ToDouble read it, or nothing when the text is not a
// number (so a caller can name the text instead of using 0).
std::optional<double> ReadNumber(const QString &text, const QLocale &locale = QLocale());

// A number as the platform turns it into text for the user: the locale's
// decimal separator, no grouping, up to 15 significant digits (12.5 is
// "12,5" in Spanish, "12.5" in English; 80 is "80"). A null value gives "",
// a value that is not a number its own text.
QString NumberText(double value, const QLocale &locale = QLocale());
QString NumberText(const QVariant &value, const QLocale &locale = QLocale());

// Conversion to a 16-bit integer rounding half to even (12.5 -> 12, 13.5 -> 14,
// -2.5 -> -2); throws OverflowError outside -32768..32767 (after rounding).
qint16 CInt(double value);

// Conversion to a 32-bit integer rounding half to even; throws OverflowError
// outside -2147483648..2147483647 (after rounding).
qint32 CLng(double value);

// A decimal value for an SQL statement: "." as decimal point whatever the
// locale, no grouping, no exponent, no trailing zeros, fifteen significant
// digits (12.5 -> "12.5", 12 -> "12", 0.1 -> "0.1", -3.25 -> "-3.25").
// Throws ConversionError for infinities and NaN, which have no SQL literal.
QString SqlDecimal(double value);

// A text literal: the value between single quotes with every single quote
// doubled (D'Souza -> 'D''Souza').
QString SqlText(const QString &value);

// Every single quote doubled, without surrounding quotes, for statements that
// put the quotes themselves.
QString SqlEscape(const QString &value);

// A Boolean as the database stores it: "-1" for true, "0" for false.
QString SqlBool(bool value);
