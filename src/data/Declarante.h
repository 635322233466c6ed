#pragma once

#include <QString>

class Connection;
class Recordset;

// The declarant of the declaration (the school), as read from the first row
// of a school year's `Centro` table.
struct Declarante
{
    QString nombre;      // Nombre: null -> "", "ª" -> ".", upper case
    QString pcNombre;    // DirectorCentro, first word
    QString pcApellido1; // DirectorCentro, second word
    QString pcApellido2; // DirectorCentro, the rest
    QString cif;         // CIF: zeros on the left to 9 characters, upper case; null -> ""
    QString telefono;    // Telefono as text, upper case; null -> ""
    QString rFiscal;     // RFiscal as a whole number in decimal digits; null or not numeric -> ""
};

// The statement that reads the declarant.
inline constexpr char kDeclaranteQuery[] = "SELECT * FROM Centro";

// Runs "SELECT * FROM Centro" on a school year's connection and converts its
// first row. Throws DatabaseError when the table has no row.
Declarante ReadDeclarante(Connection &yearConnection);

// Converts the current row of a recordset over `Centro`.
Declarante DeclaranteFromCentro(const Recordset &centro);

// The contact person's name split into given name and two surnames: the text
// is trimmed and cut at its first blank (given name), the rest at its next
// blank (first surname); all further words stay together as the second
// surname ("Juan García de la Fuente" -> JUAN / GARCÍA / DE LA FUENTE). Each
// part is trimmed, has "ª" replaced by "." and is upper-cased; a missing part
// is "-".
struct ContactName
{
    QString nombre;
    QString apellido1;
    QString apellido2;
};
ContactName SplitDirector(const QString &director);

// "000000000" + cif, its last 9 characters, upper case.
QString PadCif(const QString &cif);
