#include "generator/Donation.h"

#include "generator/AeatText.h"
#include "util/ConversionError.h"
#include "util/NifCif.h"
#include "util/VbFormat.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace Aeat {

namespace {

const QString kRetry = QStringLiteral(" y vuelva a generar la declaración.");

QString Text(QByteArrayView utf8)
{
    return QString::fromUtf8(utf8);
}

bool IsAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The character (one or two UTF-16 units) whose UTF-8 bytes are `bytes`
// is white space as QString::trimmed sees it.
bool IsSpace(QByteArrayView bytes)
{
    const QString character = Text(bytes);
    return character.size() == 1 && character.at(0).isSpace();
}

// The bytes without the white space around them, as QString::trimmed would
// leave the text: ASCII blanks directly, other white space (a no-break
// space) decoded.
QByteArrayView Trimmed(QByteArrayView text)
{
    // Most values have nothing to trim: a printable ASCII character at each end.
    auto printable = [](char c) { return c > ' ' && c < 0x7F; };
    if (!text.isEmpty() && printable(text.front()) && printable(text.back()))
        return text;
    auto asciiSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    for (;;) {
        while (!text.isEmpty() && asciiSpace(text.front()))
            text = text.sliced(1);
        if (text.isEmpty() || static_cast<unsigned char>(text.front()) < 0xC0)
            break;
        const auto lead = static_cast<unsigned char>(text.front());
        const qsizetype length = qMin<qsizetype>(lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2, text.size());
        if (!IsSpace(text.first(length)))
            break;
        text = text.sliced(length);
    }
    for (;;) {
        while (!text.isEmpty() && asciiSpace(text.back()))
            text.chop(1);
        if (text.isEmpty() || static_cast<unsigned char>(text.back()) < 0x80)
            break;
        qsizetype start = text.size() - 1;
        while (start > 0 && text.size() - start < 4 && (static_cast<unsigned char>(text.at(start)) & 0xC0) == 0x80)
            --start;
        if (!IsSpace(text.sliced(start)))
            break;
        text.truncate(start);
    }
    return text;
}

// A field of at most `digits` digits (blanks around ignored, empty = 0).
bool SmallNumber(QByteArrayView text, int digits, int &value)
{
    const QByteArrayView trimmed = Trimmed(text);
    if (trimmed.size() > digits)
        return false;
    int number = 0;
    for (char c : trimmed) {
        if (c < '0' || c > '9')
            return false;
        number = number * 10 + (c - '0');
    }
    value = number;
    return true;
}

// A one-letter code (blanks around ignored) in upper case; 0 when empty,
// '?' when it is anything but one ASCII character (no other character is
// a code).
char CodeLetter(QByteArrayView text)
{
    const QByteArrayView trimmed = Trimmed(text);
    if (trimmed.isEmpty())
        return 0;
    const char c = trimmed.front();
    if (trimmed.size() != 1 || static_cast<unsigned char>(c) >= 0x80)
        return '?';
    return (c >= 'a' && c <= 'z') ? char(c - 'a' + 'A') : c;
}

bool IsCommunityCode(int code)
{
    return (code >= 0 && code <= 13) || code == 16 || code == 17;
}

bool IsInKind(QByteArrayView text)
{
    const QByteArrayView value = Trimmed(text);
    if (value.isEmpty())
        return false;
    if (IsAscii(value)) {
        for (const char *mark : {"X", "S", "SI", "1", "-1", "TRUE"}) {
            if (value.compare(QByteArrayView(mark), Qt::CaseInsensitive) == 0)
                return true;
        }
        return false;
    }
    return Text(value).compare(u"SÍ", Qt::CaseInsensitive) == 0;
}

// The donor's name as the file writes it: PersonName joined on the stored
// bytes, decoded once. A donor's rows come one after another in the
// writing pass: the last name is kept for the next row.
QString NameField(const DonorRow &row)
{
    thread_local bool known = false;
    thread_local std::string apellido1, apellido2, nombre;
    thread_local QString field;
    auto same = [](QByteArrayView bytes, const std::string &last) {
        return bytes == QByteArrayView(last.data(), qsizetype(last.size()));
    };
    if (known && same(row.apellido1, apellido1) && same(row.apellido2, apellido2) && same(row.nombre, nombre))
        return field;
    thread_local QByteArray joined;
    joined.resize(0); // keeps its capacity
    for (QByteArrayView part : {row.apellido1, row.apellido2, row.nombre}) {
        const QByteArrayView trimmed = Trimmed(part);
        if (trimmed.isEmpty() || trimmed == "-")
            continue;
        if (!joined.isEmpty())
            joined += ' ';
        joined += trimmed;
    }
    field = Aeat::AlphanumericField(Text(joined), 40);
    apellido1.assign(row.apellido1.data(), size_t(row.apellido1.size()));
    apellido2.assign(row.apellido2.data(), size_t(row.apellido2.size()));
    nombre.assign(row.nombre.data(), size_t(row.nombre.size()));
    known = true;
    return field;
}

// ValidIdentifier of a stored identifier (blanks around already trimmed).
// The common NIF, eight digits and its upper-case letter, is checked
// directly; a donor's rows come one after another in the writing pass, so
// the last answer is kept for the next row.
QString IdentifierOf(QByteArrayView text)
{
    thread_local bool known = false;
    thread_local QByteArray lastText;
    thread_local QString lastId;
    if (known && text == lastText)
        return lastId;
    static constexpr char kLetters[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    const QByteArrayView digits = text.first(qMin<qsizetype>(8, text.size()));
    if (text.size() == 9 && text.at(8) >= 'A' && text.at(8) <= 'Z'
        && std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        lastId = kLetters[digits.toInt() % 23] == text.at(8) ? QString::fromLatin1(text) : QString();
    } else {
        lastId = ValidIdentifier(Text(text));
    }
    lastText = text.toByteArray();
    known = true;
    return lastId;
}

// The amount exactly as the wizard formats it in `locale`, "#,###,##0.00"
// (es_ES "1.234,50"), read in whole cents without any floating point.
// `Char` is a UTF-8 byte or a UTF-16 unit: no digit or separator is a part
// of a longer UTF-8 sequence.
template <typename Char>
bool FormattedCents(const Char *text, qsizetype size, char16_t group, char16_t decimal, qint64 &cents)
{
    if (size < 4)
        return false;
    const qsizetype point = size - 3;
    if (char16_t(text[point]) != decimal)
        return false;
    const qsizetype start = char16_t(text[0]) == u'-' ? 1 : 0;
    qint64 value = 0;
    int digitsInGroup = 0;
    bool grouped = false;
    for (qsizetype i = start; i < size; ++i) {
        const char16_t c = char16_t(text[i]);
        if (i == point)
            continue;
        if (c == group && i < point) {
            // A group follows one to three digits, then exactly three.
            if (digitsInGroup == 0 || digitsInGroup > 3 || (grouped && digitsInGroup != 3))
                return false;
            grouped = true;
            digitsInGroup = 0;
            continue;
        }
        if (c < u'0' || c > u'9' || value > 99'999'999'999'999LL)
            return false;
        value = value * 10 + (c - u'0');
        if (i < point)
            ++digitsInGroup;
    }
    if (digitsInGroup == 0 || (grouped && digitsInGroup != 3))
        return false;
    cents = start ? -value : value;
    return true;
}

// The locale's group and decimal separators, 0 when either is not one
// UTF-16 unit. Each row's amount is read in the same locale: they are
// looked up once.
std::pair<char16_t, char16_t> Separators(const QLocale &locale)
{
    thread_local QLocale lastLocale;
    thread_local std::pair<char16_t, char16_t> separators{0, 0};
    thread_local bool known = false;
    if (!known || locale != lastLocale) {
        const QString group = locale.groupSeparator();
        const QString decimal = locale.decimalPoint();
        const bool single = group.size() == 1 && decimal.size() == 1;
        separators = single ? std::pair{group.at(0).unicode(), decimal.at(0).unicode()}
                            : std::pair<char16_t, char16_t>{0, 0};
        lastLocale = locale;
        known = true;
    }
    return separators;
}

// Any other form of number, as the rest of the program reads one.
bool NumberInCents(const QString &text, const QLocale &locale, qint64 &cents)
{
    if (!IsNumeric(text, locale))
        return false;
    const double value = ToDouble(text, locale);
    if (!std::isfinite(value) || std::fabs(value) >= 1e15)
        return false;
    // Each amount is read once; every sum is then made in whole cents.
    cents = std::llround(value * 100.0);
    return true;
}

} // namespace

QString ValidIdentifier(const QString &text)
{
    QString id = text;
    try {
        return ValidarNIFCIF(id) ? id : QString();
    } catch (const ConversionError &) {
        return QString();
    }
}

bool AmountInCents(const QString &text, const QLocale &locale, qint64 &cents)
{
    const auto [group, decimal] = Separators(locale);
    if (group != 0 && FormattedCents(text.utf16(), text.size(), group, decimal, cents))
        return true;
    return NumberInCents(text, locale, cents);
}

bool AmountInCents(QByteArrayView utf8, const QLocale &locale, qint64 &cents)
{
    const auto [group, decimal] = Separators(locale);
    // A UTF-8 byte compared with a separator above ASCII would match part
    // of another character: such a locale reads the text decoded.
    if (group != 0 && group < 0x80 && decimal < 0x80 && FormattedCents(utf8.data(), utf8.size(), group, decimal, cents))
        return true;
    return AmountInCents(Text(utf8), locale, cents);
}

bool ReadDonation(const DonorRow &row, const QLocale &locale, Donation &donation, QStringList *problems)
{
    const QByteArrayView nifText = Trimmed(row.nif);
    // The donor as messages name them; built only for a message.
    auto donor = [&row] {
        const QString name = Aeat::PersonName(Text(row.apellido1), Text(row.apellido2), Text(row.nombre));
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

    const QString nif = nifText.isEmpty() ? QString() : IdentifierOf(nifText);
    if (nifText.isEmpty()) {
        refuse(QStringLiteral("Falta el NIF") + donor() + QStringLiteral(": escríbalo en la columna DNI del asistente")
               + kRetry);
    } else if (nif.isEmpty()) {
        refuse(QStringLiteral("El NIF «") + Text(nifText) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: corríjalo en la columna DNI del asistente") + kRetry);
    }
    donation.nif = Aeat::NifField(nif);

    const QByteArrayView representative = Trimmed(row.nifRepresentante);
    const QString representativeNif = representative.isEmpty() ? QString() : IdentifierOf(representative);
    if (!representative.isEmpty() && representativeNif.isEmpty()) {
        refuse(QStringLiteral("El NIF del representante «") + Text(representative) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: corríjalo") + kRetry);
    }
    // Most donors have no representative: the same blanks for every row.
    static const QString kNoRepresentative = Aeat::NifField(QString());
    donation.nifRepresentante = representativeNif.isEmpty() ? kNoRepresentative : Aeat::NifField(representativeNif);

    if (!AmountInCents(row.importe, locale, donation.centimos)) {
        refuse(QStringLiteral("El importe «") + Text(row.importe) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es un número: corríjalo en la rejilla de donantes") + kRetry);
    } else if (donation.centimos < 0) {
        refuse(QStringLiteral("El importe «") + Text(row.importe) + QStringLiteral("»") + donor()
               + QStringLiteral(" es negativo: corríjalo en la rejilla de donantes") + kRetry);
    } else if (donation.centimos > kMaxRecordCents) {
        refuse(QStringLiteral("El importe «") + Text(row.importe) + QStringLiteral("»") + donor()
               + QStringLiteral(" es demasiado grande para el modelo 182: corríjalo en la rejilla de donantes") + kRetry);
    }

    if (!SmallNumber(row.codigoProvincia, 2, donation.provincia) || (donation.provincia > 52 && donation.provincia != 99)) {
        refuse(QStringLiteral("El código de provincia «") + Text(row.codigoProvincia) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise la provincia de su domicilio") + kRetry);
    }

    const char key = CodeLetter(row.clave);
    if (key == 0) {
        donation.clave = u'A';
    } else if (key >= 'A' && key <= 'G') {
        donation.clave = QLatin1Char(key);
    } else {
        refuse(QStringLiteral("La clave «") + Text(row.clave) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válida: debe ser una letra de la A a la G; corríjala") + kRetry);
    }

    if (!SmallNumber(row.deduccion, 5, donation.deduccion) || donation.deduccion > 10000) {
        refuse(QStringLiteral("El porcentaje de deducción «") + Text(row.deduccion) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise la deducción de sus actividades") + kRetry);
    }

    if (!SmallNumber(row.comunidadAut, 2, donation.comunidad) || !IsCommunityCode(donation.comunidad)) {
        refuse(QStringLiteral("El código de comunidad autónoma «") + Text(row.comunidadAut) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: revise las deducciones por comunidad autónoma") + kRetry);
    }
    if (!SmallNumber(row.deduccionCAut, 5, donation.deduccionComunidad) || donation.deduccionComunidad > 10000) {
        refuse(QStringLiteral("El porcentaje de deducción autonómica «") + Text(row.deduccionCAut) + QStringLiteral("»")
               + donor() + QStringLiteral(" no es válido: revise las deducciones por comunidad autónoma") + kRetry);
    }
    // Without a community there is no regional percentage.
    if (donation.comunidad == 0)
        donation.deduccionComunidad = 0;

    const char nature = CodeLetter(row.tipoPersona);
    if (nature == 0) {
        donation.naturaleza = u'F';
    } else if (nature == 'F' || nature == 'J' || nature == 'E') {
        donation.naturaleza = QLatin1Char(nature);
    } else {
        refuse(QStringLiteral("El tipo de persona «") + Text(row.tipoPersona) + QStringLiteral("»") + donor()
               + QStringLiteral(" no es válido: debe ser F, J o E; corríjalo") + kRetry);
    }

    donation.enEspecie = IsInKind(row.donativoEnEspecie);
    return ok;
}

} // namespace Aeat
