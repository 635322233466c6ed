#include "generator/Modelo182Records.h"

#include "generator/AeatText.h"

#include <stdexcept>
#include <string>

namespace Aeat {

namespace {

void PutCommon(Aeat::Record &record, char type, const DeclarantHeader &header)
{
    record.Put(1, QChar::fromLatin1(type));
    record.Put(2, 3, QStringLiteral("182"));
    record.Put(5, 4, NumericField(header.ejercicio, 4));
    record.Put(9, 9, Aeat::NifField(header.nif));
}

[[noreturn]] void OutOfPlace(int position)
{
    throw std::logic_error("AEAT record field out of place: position " + std::to_string(position));
}

// What QString::toLatin1 makes of a character.
char Latin1(QChar c)
{
    return c.unicode() < 0x100 ? char(c.unicode()) : '?';
}

void PutText(char *record, int position, int length, const QString &value)
{
    if (value.size() != length)
        OutOfPlace(position);
    char *field = record + position - 1;
    for (QChar c : value)
        *field++ = Latin1(c);
}

// NumericField put in place: zeros on the left.
void PutNumber(char *record, int position, int length, qint64 value)
{
    if (value < 0)
        OutOfPlace(position);
    for (int i = position - 2 + length; i >= position - 1; --i) {
        record[i] = char('0' + value % 10);
        value /= 10;
    }
    if (value != 0)
        OutOfPlace(position);
}

} // namespace

QString DeclarantRecord(const DeclarantHeader &header)
{
    Aeat::Record record;
    PutCommon(record, '1', header);
    record.Put(18, 40, AlphanumericField(header.nombre, 40));
    record.Put(58, u'T');
    record.Put(59, 9, Aeat::DigitsField(header.telefono, 9));
    record.Put(68, 40, AlphanumericField(header.contacto, 40));
    record.Put(108, 13, Aeat::DigitsField(header.justificante, 13));
    record.Put(121, header.complementaria);
    record.Put(122, header.sustitutiva);
    record.Put(123, 13, Aeat::DigitsField(header.justificanteAnterior, 13));
    record.Put(136, 9, NumericField(header.registros, 9));
    record.Put(145, 15, NumericField(header.totalCentimos, 15));
    record.Put(160, QChar::fromLatin1(header.naturaleza));
    return record.Text();
}

QString DonorRecord(const DeclarantHeader &header, const Donation &donation, char recurrente)
{
    Aeat::Record record;
    PutCommon(record, '2', header);
    record.Put(18, 9, donation.nif);
    record.Put(27, 9, donation.nifRepresentante);
    record.Put(36, 40, donation.nombre);
    record.Put(76, 2, NumericField(donation.provincia, 2));
    record.Put(78, donation.clave);
    record.Put(79, 5, NumericField(donation.deduccion, 5));
    record.Put(84, 13, NumericField(donation.centimos, 13));
    record.Put(97, donation.enEspecie ? u'X' : u' ');
    record.Put(98, 2, NumericField(donation.comunidad, 2));
    record.Put(100, 5, NumericField(donation.deduccionComunidad, 5));
    record.Put(105, donation.naturaleza);
    // No revocations: 106 blank, year of the revoked donation zeros.
    record.Put(107, 4, QStringLiteral("0000"));
    record.Put(132, QChar::fromLatin1(recurrente));
    return record.Text();
}

DonorRecordEncoder::DonorRecordEncoder(const DeclarantHeader &header)
{
    Aeat::Record record;
    PutCommon(record, '2', header);
    record.Put(107, 4, QStringLiteral("0000"));
    m_template = record.Encoded();
}

void DonorRecordEncoder::Append(QByteArray &out, const Donation &donation, char recurrente) const
{
    const qsizetype start = out.size();
    out.append(m_template);
    char *record = out.data() + start;
    PutText(record, 18, 9, donation.nif);
    PutText(record, 27, 9, donation.nifRepresentante);
    PutText(record, 36, 40, donation.nombre);
    PutNumber(record, 76, 2, donation.provincia);
    record[77] = Latin1(donation.clave);
    PutNumber(record, 79, 5, donation.deduccion);
    PutNumber(record, 84, 13, donation.centimos);
    record[96] = donation.enEspecie ? 'X' : ' ';
    PutNumber(record, 98, 2, donation.comunidad);
    PutNumber(record, 100, 5, donation.deduccionComunidad);
    record[104] = Latin1(donation.naturaleza);
    record[131] = recurrente;
}

} // namespace Aeat
