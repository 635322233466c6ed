#pragma once

#include "generator/DeclarationRows.h"

#include <QLocale>
#include <QString>
#include <QStringList>

// The declaration generator's own pieces.
namespace Aeat {

// One `Donantes` row read for the file: every value already in the form of
// its field, the amount in cents.
struct Donation
{
    QString nif;              // 9 characters, zeros on the left
    QString nifRepresentante; // 9 characters, or 9 blanks
    QString nombre;           // "surname1 surname2 name", 40 characters
    int provincia = 0;        // 0 when the wizard did not know it
    QChar clave = u'A';
    int deduccion = 0; // hundredths of a percent: 25 % -> 2500
    bool enEspecie = false;
    int comunidad = 0;          // the file's own community code, 0 none
    int deduccionComunidad = 0; // hundredths of a percent
    QChar naturaleza = u'F';
    qint64 centimos = 0;

    // Rows of one donor that go into the same record.
    bool SameRecordAs(const Donation &other) const
    {
        return nif == other.nif && clave == other.clave && deduccion == other.deduccion && enEspecie == other.enEspecie
               && comunidad == other.comunidad && deduccionComunidad == other.deduccionComunidad;
    }
};

// Largest amount of one record (11 integer digits), in cents.
constexpr qint64 kMaxRecordCents = 9'999'999'999'999LL;

// Reads a row. When it cannot go into the file, returns false and appends
// one Spanish line per problem to `problems`, each naming the donor and
// saying what to do. Without `problems` (the rows were checked before) the
// name field is filled too; with it, it is left alone.
bool ReadDonation(const DonorRow &row, const QLocale &locale, Donation &donation, QStringList *problems);

// A valid NIF, NIE or CIF in its normalised form (upper case, no "-"), or
// the empty text when `text` is not one.
QString ValidIdentifier(const QString &text);

// An amount text read in either decimal convention ("1.234,50" or
// "1,234.50"), as cents; false when it is not a number.
bool AmountInCents(const QString &text, const QLocale &locale, qint64 &cents);
bool AmountInCents(QByteArrayView utf8, const QLocale &locale, qint64 &cents);

} // namespace Aeat
