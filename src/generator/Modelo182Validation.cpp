#include "generator/Modelo182Validation.h"

#include "generator/AeatText.h"
#include "generator/Donation.h"

using Aeat::DeclarantHeader;
using Aeat::DeclarantRow;

namespace {

// Largest total of the type-1 record (13 integer digits), in cents.
constexpr qint64 kMaxTotalCents = 999'999'999'999'999LL;

bool IsDeclarationId(const QString &text)
{
    if (text.size() != 13 || !text.startsWith(QLatin1String("182")))
        return false;
    for (QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

bool IsYear(const QString &text, int &year)
{
    bool ok = false;
    year = text.toInt(&ok);
    return ok && text.size() == 4 && year >= 1900;
}

// "1 fila de donantes lleva", "3 filas de donantes llevan".
QString Rows(qint64 count, const QString &singularVerb, const QString &pluralVerb)
{
    return QString::number(count)
           + (count == 1 ? QStringLiteral(" fila de donantes") + singularVerb
                         : QStringLiteral(" filas de donantes") + pluralVerb);
}

void CheckDeclarant(const DeclarantRow &row, const Modelo182Options &options, Modelo182Validation &result)
{
    DeclarantHeader &header = result.cabecera;
    const QString ejercicio = row.ejercicio.trimmed();
    if (!IsYear(ejercicio, header.ejercicio)) {
        result.problemas << QStringLiteral("El ejercicio «") + row.ejercicio
                                + QStringLiteral("» del declarante no es un año: vuelva a generar la declaración "
                                                 "desde el asistente.");
    } else if (options.today) {
        const int expected = options.today().year() - 1;
        if (header.ejercicio != expected) {
            result.avisos << QStringLiteral("La declaración es del ejercicio ") + ejercicio + QStringLiteral(" y no del ")
                                 + QString::number(expected) + QStringLiteral(": compruebe que es el que quiere presentar.");
        }
    }

    const QString nifText = row.nif.trimmed();
    header.nif = Aeat::ValidIdentifier(nifText);
    if (nifText.isEmpty()) {
        result.problemas << QStringLiteral("El declarante no tiene NIF: escriba el CIF del centro en sus datos "
                                           "y vuelva a generar la declaración.");
    } else if (header.nif.isEmpty()) {
        result.problemas << QStringLiteral("El NIF «") + nifText
                                + QStringLiteral("» del declarante no es válido: corrija el CIF del centro en sus "
                                                 "datos y vuelva a generar la declaración.");
    }
    header.nombre = row.nombre;
    if (Aeat::AlphanumericText(row.nombre).isEmpty()) {
        result.problemas << QStringLiteral("El declarante no tiene nombre: escriba el nombre del centro en sus "
                                           "datos y vuelva a generar la declaración.");
    }
    header.telefono = row.pctelefono;
    header.contacto = Aeat::PersonName(row.pcapellido1, row.pcapellido2, row.pcnombre);
}

void CheckOptions(const Modelo182Options &options, Modelo182Validation &result)
{
    DeclarantHeader &header = result.cabecera;
    const QString id = options.numeroJustificante.trimmed();
    if (id.isEmpty()) {
        header.justificante = QStringLiteral("1820000000000");
        result.avisos << QStringLiteral("Falta el número de justificante: el fichero lleva 1820000000000. "
                                        "Escriba en él el número de 13 dígitos que da la AEAT antes de "
                                        "presentarlo.");
    } else if (IsDeclarationId(id)) {
        header.justificante = id;
    } else {
        result.problemas << QStringLiteral("El número de justificante «") + id
                                + QStringLiteral("» no es válido: debe tener 13 dígitos y empezar por 182.");
    }

    if (options.tipo != Modelo182Options::Tipo::Normal) {
        header.complementaria = options.tipo == Modelo182Options::Tipo::Complementaria ? u'C' : u' ';
        header.sustitutiva = options.tipo == Modelo182Options::Tipo::Sustitutiva ? u'S' : u' ';
        const QString previous = options.justificanteAnterior.trimmed();
        if (IsDeclarationId(previous)) {
            header.justificanteAnterior = previous;
        } else {
            result.problemas << QStringLiteral("Una declaración complementaria o sustitutiva necesita el número "
                                               "de justificante de la declaración anterior (13 dígitos que "
                                               "empiezan por 182); el indicado es «")
                                    + previous + QStringLiteral("».");
        }
    }

    if (options.naturaleza < '1' || options.naturaleza > '4') {
        result.problemas << QStringLiteral("La naturaleza del declarante «") + QChar::fromLatin1(options.naturaleza)
                                + QStringLiteral("» no es válida: debe ser 1, 2, 3 o 4.");
    } else {
        header.naturaleza = options.naturaleza;
    }
}

} // namespace

void DonorTally::Add(const Aeat::Donation &donation)
{
    cents += donation.centimos;
    withoutProvince += donation.provincia == 0 ? 1 : 0;
    withoutDeduction += donation.deduccion == 0 ? 1 : 0;
}

Modelo182Validation ValidarCabecera(Connection &connection, const Modelo182Options &options)
{
    Modelo182Validation result;
    CheckOptions(options, result);
    result.declarante = Aeat::ReadNewestDeclarant(connection);
    if (!result.declarante) {
        result.problemas << QStringLiteral("No hay ningún declarante en la tabla Declarantes: genere la "
                                           "declaración desde el asistente.");
        return result;
    }
    CheckDeclarant(*result.declarante, options, result);
    return result;
}

void CheckDonorTally(const DonorTally &tally, Modelo182Validation &result)
{
    result.filasDonantes = tally.rows;
    if (tally.cents > kMaxTotalCents) {
        result.problemas << QStringLiteral("La suma de los importes supera lo que admite el modelo 182 "
                                           "(13 cifras enteras): revise los importes de la rejilla de donantes.");
    }
    if (tally.rows == 0)
        result.avisos << QStringLiteral("La declaración no tiene ningún donante.");
    if (tally.withoutProvince > 0) {
        result.avisos << Rows(tally.withoutProvince, QStringLiteral(" lleva"), QStringLiteral(" llevan"))
                             + QStringLiteral(" el código de provincia 00, que la AEAT no admite: revise la provincia "
                                              "del domicilio de esos pagadores.");
    }
    if (tally.withoutDeduction > 0) {
        result.avisos << Rows(tally.withoutDeduction, QStringLiteral(" no tiene"), QStringLiteral(" no tienen"))
                             + QStringLiteral(" porcentaje de deducción: revise la deducción de sus actividades.");
    }
}

Modelo182Validation ValidarModelo182(Connection &connection, const Modelo182Options &options)
{
    Modelo182Validation result = ValidarCabecera(connection, options);
    if (!result.declarante)
        return result;

    Aeat::DonorRowStream rows(connection, result.declarante->id, Aeat::DonorRowStream::Order::AsStored);
    Aeat::DonorRow row;
    Aeat::Donation donation;
    DonorTally tally;
    while (rows.Next(row)) {
        ++tally.rows;
        if (Aeat::ReadDonation(row, options.locale, donation, &result.problemas))
            tally.Add(donation);
    }
    CheckDonorTally(tally, result);
    return result;
}
