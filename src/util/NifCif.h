#pragma once

#include <QLocale>
#include <QString>

// Spanish tax identifiers: NIF of a person (eight digits and a control
// letter), NIE of a foreign resident written with a leading "X", and CIF of an
// organisation (a letter, seven digits, a control character).
// These are routines of the program's main module; their names are kept.

// True when `id` is a valid NIF, NIE ("X" only) or CIF.
// `id` is always written back normalised: every "-" removed, white space around
// it trimmed, upper case. A NIF (first character a digit) is also corrected as
// ValidarNIF does; an NIE is checked on a copy and left as it is.
// The CIF control digits: a non-digit at positions 3, 5 or 7 throws
// ConversionError (message in Spanish naming the identifier); a non-digit at
// positions 2, 4, 6 or 8 counts as 0 there, as the value of a text without
// leading digits.
bool ValidarNIFCIF(QString &id);

// True when `id`, padded with leading zeros to nine characters (longer texts
// keep their last nine), is a NIF whose ninth character is the right letter.
// Otherwise `id` is replaced by the corrected NIF (the missing letter appended
// when the ninth character is a digit, else the wrong letter replaced) and the
// result is false. `id` always has nine characters afterwards.
// Non-digits are not refused: a group of characters counts as the value of its
// leading digits (0 when it starts with a non-digit).
bool ValidarNIF(QString &id);

// The control letter of `number` from the table "TRWAGMYFPDXBNJZSQVHLCKEO",
// indexed by the remainder of the division by 23 taken as never negative.
QString LetraNIF(qint32 number);

// `digits` followed by "-" and the control letter of its value (rounded to a
// 32-bit integer half to even); without the "-" when `withHyphen` is false, in
// which case every "-" of the result is removed. Empty when `digits` is not
// numeric (see IsNumeric; `locale` decides the thousands separator) or its
// value does not fit a 32-bit integer.
QString NIFConLetra(const QString &digits, bool withHyphen, const QLocale &locale = QLocale());

// An organisation's CIF: `type`, the seven `digits` and their control
// character (a digit, or a letter of "JABCDEFGHI" for the types that take
// one: K, P, Q, R, S, N, W).
QString CifWithControl(QChar type, const QString &digits);
