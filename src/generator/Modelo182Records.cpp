#include "generator/Modelo182Records.h"

#include "generator/AeatText.h"

namespace Aeat {

namespace {

void PutCommon(Aeat::Record &record, char type, const DeclarantHeader &header)
{
    record.Put(1, QChar::fromLatin1(type));
    record.Put(2, 3, QStringLiteral("182"));
    record.Put(5, 4, NumericField(header.ejercicio, 4));
    record.Put(9, 9, Aeat::NifField(header.nif));
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

} // namespace Aeat
