#pragma once

#include <QStringView>

// The text order and equality that the statements of this program expect
// from Access, for the collation M182_TEXT_COLLATION of our SQLite schemas.
//
// Two levels:
//  1. base letters: accents are stripped, case is folded, and "ñ" is a
//     letter of its own right after "n" (Nuñez < Ñuñez < Ortega; Munoz <
//     Muñoz < Muo). Other characters compare by code (blank < digits <
//     letters).
//  2. accents, when the base letters tie: an unaccented letter comes before
//     an accented one (alvarez < álvarez).
// Case never separates two strings: "ÁLVAREZ" and "álvarez" are equal, but
// "alvarez" and "álvarez" are not (as Access's general order, equality is
// accent-sensitive and case-insensitive).
//
// Precomposed and decomposed forms of a letter ("á" and "a" + U+0301) are the
// same letter. Returns <0, 0 or >0.
int SpanishCompare(QStringView a, QStringView b);

// Registers the collation under the name M182_TEXT_COLLATION on an open
// sqlite3 connection handle (a `sqlite3 *`). Returns SQLite's result code.
int RegisterSpanishCollation(void *sqliteHandle);
