#include "generator/Donation.h"

#include "generator/AeatText.h"
#include "util/ConversionError.h"
#include "util/NifCif.h"
#include "util/VbFormat.h"

#include <cmath>

namespace Aeat {

namespace {

const QString kRetry = QStringLiteral(" y vuelva a generar la declaración.");

// A field of at most `digits` digits (blanks around ignored, empty = 0).
// Read in place: it runs for four fields of every donor row.
bool SmallNumber(const QString &text, int digits, int &value)
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.size() > digits)
        return false;
    int number = 0;
    for (QChar c : trimmed) {
        if (c < u'0' || c > u'9')
            return false;
        number = number * 10 + (c.unicode() - u'0');
    }
    value = number;
    return true;
}

// A one-letter code (blanks around ignored) in upper case; 0 when empty,
// '?' when it is more than one character.
QChar CodeLetter(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.isEmpty())
        return QChar(0);
    return trimmed.size() == 1 ? trimmed.at(0).toUpper() : QChar(u'?');
}

bool IsCommunityCode(int code)
{
    return (code >= 0 && code <= 13) || code == 16 || code == 17;
}

bool IsInKind(const QString &text)
{
    const QStringView value = QStringView(text).trimmed();
    if (value.isEmpty())
        return false;
    for (const char16_t *mark : {u"X", u"S", u"SI", u"SÍ", u"1", u"-1", u"TRUE"}) {
        if (value.compare(QStringView(mark), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// The donor's name as the file writes it. A donor's rows come one after
// another in the writing pass: the last name is kept for the next row.
QString NameField(const DonorRow &row)
{
    thread_local bool known = false;
    thread_local QString apellido1, apellido2, nombre, field;
    if (known && row.apellido1 == apellido1 && row.apellido2 == apellido2 && row.nombre == nombre)
        return field;
    field = Aeat::AlphanumericField(Aeat::PersonName(row.apellido1, row.apellido2, row.nombre), 40);
    apellido1 = row.apellido1;
    apellido2 = row.apellido2;
    nombre = row.nombre;
    known = true;
    return field;
}

} // namespace

QString ValidIdentifier(const QString &text)
{
    // A donor's rows come one after another in the writing pass: the last
    // answer is kept for the next row.
    thread_local bool known = false;
    thread_local QString lastText;
    thread_local QString lastId;
    if (known && text == lastText)
        return lastId;
    QString id = text;
    try {
        id = ValidarNIFCIF(id) ? id : QString();
    } catch (const ConversionError &) {
        id = QString();
    }
    known = true;
    lastText = text;
    lastId = id;
    return id;
}

// The amount exactly as the wizard formats it in `locale`, "#,###,##0.00"
// (es_ES "1.234,50"), read in whole cents without any floating point.
bool FormattedCents(QStringView text, const QLocale &locale, qint64 &cents)
{
    // Each row's amount is read in the same locale: its separators are
    // looked up once.
    thread_local QLocale lastLocale;
    thread_local QString group = lastLocale.groupSeparator();
    thread_local QString decimal = lastLocale.decimalPoint();
    if (locale != lastLocale) {
        lastLocale = locale;
        group = locale.groupSeparator();
        decimal = locale.decimalPoint();
    }
    if (group.size() != 1 || decimal.size() != 1 || text.size() < 4)
        return false;
    const qsizetype point = text.size() - 3;
    if (text.at(point) != decimal.at(0))
        return false;
    qsizetype start = text.startsWith(u'-') ? 1 : 0;
    qint64 value = 0;
    int digitsInGroup = 0;
    bool grouped = false;
    for (qsizetype i = start; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (i == point)
            continue;
        if (c == group.at(0) && i < point) {
            // A group follows one to three digits, then exactly three.
            if (digitsInGroup == 0 || digitsInGroup > 3 || (grouped && digitsInGroup != 3))
                return false;
            grouped = true;
            digitsInGroup = 0;
            continue;
        }
        if (c < u'0' || c > u'9' || value > 99'999'999'999'999LL)
            return false;
        value = value * 10 + (c.unicode() - u'0');
        if (i < point)
            ++digitsInGroup;
    }
    if (digitsInGroup == 0 || (grouped && digitsInGroup != 3))
        return false;
    cents = start ? -value : value;
    return true;
}

bool AmountInCents(const QString &text, const QLocale &locale, qint64 &cents)
{
    if (FormattedCents(text, locale, cents))
        return true;
    if (!IsNumeric(text, locale))
        return false;
    const double value = ToDouble(text, locale);
    if (!std::isfinite(value) || std::fabs(value) >= 1e15)
        return false;
    // Each amount is read once; every sum is then made in whole cents.
    cents = std::llround(value * 100.0);
    return true;
}

bool ReadDonation(const DonorRow &row, const QLocale &locale, Donation &donation, QStringList *problems)
{
    const QString nifText = row.nif.trimmed();
    // The donor as messages name them; built only for a message.
    auto donor = [&row] {
        const QString name = Aeat::PersonName(row.apellido1, row.apellido2, row.nombre);
        return QStringLiteral(" del donante ") + (name.isEmpty() ? QStringLiteral("sin nombre") : name);
    };
    bool ok = true;
    auto refuse = [&](const QString &line) {
        ok = false;
        if (problems)
            problems->append(line);
    };
    if (!problems)
        donation.nombre = NameField(row);

    const QString nif = ValidIdentifier(nifText);
    if (nifText.isEmpty()) {
        refuse(QStringLiteral("Falta el NIF") + donor() + QStringLiteral(": escríbalo en la columna DNI del asistente")
               + kRetry);
    } else if (nif.isEmpty()) {
        refuse(QStringLiteral("El NIF «") + nifText + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: corríjalo en la columna DNI del asistente") + kRetry);
    }
    donation.nif = Aeat::NifField(nif);

    const QString representative = row.nifRepresentante.trimmed();
    const QString representativeNif = representative.isEmpty() ? QString() : ValidIdentifier(representative);
    if (!representative.isEmpty() && representativeNif.isEmpty()) {
        refuse(QStringLiteral("El NIF del representante «") + representative + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: corríjalo") + kRetry);
    }
    // Most donors have no representative: the same blanks for every row.
    static const QString kNoRepresentative = Aeat::NifField(QString());
    donation.nifRepresentante = representativeNif.isEmpty() ? kNoRepresentative : Aeat::NifField(representativeNif);

    if (!AmountInCents(row.importe, locale, donation.centimos)) {
        refuse(QStringLiteral("El importe «") + row.importe + QStringLiteral("»") + donor()
               + QStringLiteral(" no es un número: corríjalo en la rejilla de donantes") + kRetry);
    } else if (donation.centimos < 0) {
        refuse(QStringLiteral("El importe «") + row.importe + QStringLiteral("»") + donor()
               + QStringLiteral(" es negativo: corríjalo en la rejilla de donantes") + kRetry);
    } else if (donation.centimos > kMaxRecordCents) {
        refuse(QStringLiteral("El importe «") + row.importe + QStringLiteral("»") + donor()
               + QStringLiteral(" es demasiado grande para el modelo 182: corríjalo en la rejilla de donantes") + kRetry);
    }

    if (!SmallNumber(row.codigoProvincia, 2, donation.provincia) || (donation.provincia > 52 && donation.provincia != 99)) {
        refuse(QStringLiteral("El código de provincia «") + row.codigoProvincia + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise la provincia de su domicilio") + kRetry);
    }

    const QChar key = CodeLetter(row.clave);
    if (key.isNull()) {
        donation.clave = u'A';
    } else if (key >= u'A' && key <= u'G') {
        donation.clave = key;
    } else {
        refuse(QStringLiteral("La clave «") + row.clave + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válida: debe ser una letra de la A a la G; corríjala") + kRetry);
    }

    if (!SmallNumber(row.deduccion, 5, donation.deduccion) || donation.deduccion > 10000) {
        refuse(QStringLiteral("El porcentaje de deducción «") + row.deduccion + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise la deducción de sus actividades") + kRetry);
    }

    if (!SmallNumber(row.comunidadAut, 2, donation.comunidad) || !IsCommunityCode(donation.comunidad)) {
        refuse(QStringLiteral("El código de comunidad autónoma «") + row.comunidadAut + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise las deducciones por comunidad autónoma") + kRetry);
    }
    if (!SmallNumber(row.deduccionCAut, 5, donation.deduccionComunidad) || donation.deduccionComunidad > 10000) {
        refuse(QStringLiteral("El porcentaje de deducción autonómica «") + row.deduccionCAut + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise las deducciones por comunidad autónoma") + kRetry);
    }
    // Without a community there is no regional percentage.
    if (donation.comunidad == 0)
        donation.deduccionComunidad = 0;

    const QChar nature = CodeLetter(row.tipoPersona);
    if (nature.isNull()) {
        donation.naturaleza = u'F';
    } else if (nature == u'F' || nature == u'J' || nature == u'E') {
        donation.naturaleza = nature;
    } else {
        refuse(QStringLiteral("El tipo de persona «") + row.tipoPersona + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: debe ser F, J o E; corríjalo") + kRetry);
    }

    donation.enEspecie = IsInKind(row.donativoEnEspecie);
    return ok;
}

} // namespace Aeat
