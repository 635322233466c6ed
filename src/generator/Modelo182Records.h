#pragma once

#include "generator/Donation.h"

#include <QByteArray>
#include <QString>

// The declaration generator's own pieces.
namespace Aeat {

// The two record types of the Modelo 182 file, built field by field from the
// tax agency's record design.

struct DeclarantHeader
{
    int ejercicio = 0;
    QString nif; // the declarant's identifier, normalised
    QString nombre;
    QString telefono;             // as stored; only its digits are written
    QString contacto;             // "surname1 surname2 name" of the contact person
    QString justificante;         // 13 digits
    QChar complementaria = u' ';  // 'C' or blank
    QChar sustitutiva = u' ';     // 'S' or blank
    QString justificanteAnterior; // 13 digits, or empty
    qint64 registros = 0;         // type-2 records
    qint64 totalCentimos = 0;     // their amounts
    char naturaleza = '1';
};

// The type-1 record (250 characters, no line end).
QString DeclarantRecord(const DeclarantHeader &header);

// The type-2 record of one donor's aggregated donations at one percentage;
// `recurrente` is '1' or '2'.
QString DonorRecord(const DeclarantHeader &header, const Donation &donation, char recurrente);

// The type-2 records of one declaration as the file's bytes (ISO-8859-1,
// CR LF), the same as Record::Encode(DonorRecord(...)) but put straight into
// the output from a template of what all of them share: a declaration may
// have hundreds of thousands. A field that does not fit is a programming
// error and throws std::logic_error.
class DonorRecordEncoder
{
public:
    explicit DonorRecordEncoder(const DeclarantHeader &header);
    void Append(QByteArray &out, const Donation &donation, char recurrente) const;

private:
    QByteArray m_template;
};

} // namespace Aeat
