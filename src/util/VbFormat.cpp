#include "util/VbFormat.h"

#include "util/ConversionError.h"
#include "util/OverflowError.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

// A finite double as the platform reads it: fifteen significant digits,
// split into integer and fraction digits (no sign, no separators).
struct DecimalDigits
{
    bool negative = false;
    QString integerDigits;  // never empty: "0" for values below one
    QString fractionDigits; // may be empty
};

DecimalDigits toDecimalDigits(double value)
{
    DecimalDigits d;
    d.negative = std::signbit(value);
    const double magnitude = std::fabs(value);
    if (magnitude == 0.0) {
        d.integerDigits = QStringLiteral("0");
        return d;
    }
    // "d.dddddddddddddde+XX": fifteen significant digits, rounded to nearest.
    char buffer[64];
    const auto res = std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 14);
    const std::string text(buffer, res.ptr);
    const auto ePos = text.find('e');
    std::string mantissa = text.substr(0, ePos);
    mantissa.erase(1, 1); // the decimal point after the first digit
    const int exponent = std::stoi(text.substr(ePos + 1));
    const QString digits = QString::fromLatin1(mantissa.data(), qsizetype(mantissa.size()));

    if (exponent >= 0) {
        const int integerCount = exponent + 1;
        if (integerCount >= digits.size()) {
            d.integerDigits = digits + QString(integerCount - digits.size(), QLatin1Char('0'));
        } else {
            d.integerDigits = digits.left(integerCount);
            d.fractionDigits = digits.mid(integerCount);
        }
    } else {
        d.integerDigits = QStringLiteral("0");
        d.fractionDigits = QString(-exponent - 1, QLatin1Char('0')) + digits;
    }
    return d;
}

// Adds one unit in the last place of a string of decimal digits; returns the
// carry out of the first digit.
bool incrementDigits(QString &digits)
{
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        if (digits[i] == QLatin1Char('9')) {
            digits[i] = QLatin1Char('0');
        } else {
            digits[i] = QChar(digits[i].unicode() + 1);
            return false;
        }
    }
    return true;
}

// Rounds to `decimals` fraction digits, half away from zero.
void roundTo(DecimalDigits &d, int decimals)
{
    if (d.fractionDigits.size() > decimals) {
        const bool up = d.fractionDigits[decimals] >= QLatin1Char('5');
        d.fractionDigits.truncate(decimals);
        if (up) {
            if (incrementDigits(d.fractionDigits) && incrementDigits(d.integerDigits))
                d.integerDigits.prepend(QLatin1Char('1'));
        }
    }
    if (d.fractionDigits.size() < decimals)
        d.fractionDigits += QString(decimals - d.fractionDigits.size(), QLatin1Char('0'));
}

bool allZeros(const QString &digits)
{
    for (QChar c : digits) {
        if (c != QLatin1Char('0'))
            return false;
    }
    return true;
}

QString stripLeadingZeros(const QString &digits)
{
    qsizetype i = 0;
    while (i < digits.size() && digits[i] == QLatin1Char('0'))
        ++i;
    return digits.mid(i);
}

QString groupThousands(const QString &digits, const QString &separator)
{
    QString out;
    const qsizetype n = digits.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out += separator;
        out += digits[i];
    }
    return out;
}

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Reads `text` as described for IsNumeric; false when it is not a number.
bool readNumber(const QString &text, const QLocale &locale, double *value)
{
    const QString s = text.trimmed();
    qsizetype start = 0;
    bool negative = false;
    if (!s.isEmpty() && (s[0] == QLatin1Char('+') || s[0] == QLatin1Char('-'))) {
        negative = s[0] == QLatin1Char('-');
        start = 1;
    }
    const QString body = s.mid(start);
    if (body.isEmpty())
        return false;

    const QString localeGroup = locale.groupSeparator();
    const QChar groupChar = localeGroup.size() == 1 ? localeGroup[0] : QChar();
    const QChar dot(QLatin1Char('.'));
    const QChar comma(QLatin1Char(','));
    // A locale whose group separator is neither "." nor "," (a space of some
    // kind) always groups with it.
    const bool otherGroupChar = !groupChar.isNull() && groupChar != dot && groupChar != comma;

    qsizetype dots = 0, commas = 0, lastDot = -1, lastComma = -1;
    for (qsizetype i = 0; i < body.size(); ++i) {
        const QChar c = body[i];
        if (isAsciiDigit(c))
            continue;
        if (c == dot) {
            ++dots;
            lastDot = i;
        } else if (c == comma) {
            ++commas;
            lastComma = i;
        } else if (!(otherGroupChar && c == groupChar)) {
            return false;
        }
    }

    QChar decimalChar;  // null: no decimal separator
    QChar groupingChar; // null: no "." or "," grouping
    if (dots > 0 && commas > 0) {
        decimalChar = lastDot > lastComma ? dot : comma;
        groupingChar = decimalChar == dot ? comma : dot;
        if ((decimalChar == dot ? dots : commas) != 1)
            return false;
    } else if (dots + commas == 1) {
        decimalChar = dots == 1 ? dot : comma;
    } else if (dots + commas > 1) {
        groupingChar = dots > 0 ? dot : comma;
        if (groupingChar != groupChar)
            return false;
    }

    std::string plain;
    bool seenDecimal = false;
    bool anyDigit = false;
    for (qsizetype i = 0; i < body.size(); ++i) {
        const QChar c = body[i];
        if (isAsciiDigit(c)) {
            plain += char(c.unicode());
            anyDigit = true;
        } else if (!decimalChar.isNull() && c == decimalChar) {
            seenDecimal = true;
            plain += '.';
        } else {
            // A thousands separator: between two digits, before the decimal point.
            if (seenDecimal || i == 0 || i + 1 >= body.size() || !isAsciiDigit(body[i - 1]) || !isAsciiDigit(body[i + 1]))
                return false;
        }
    }
    if (!anyDigit)
        return false;
    if (plain.front() == '.')
        plain.insert(plain.begin(), '0');
    if (plain.back() == '.')
        plain.pop_back();

    double result = 0.0;
    const auto res = std::from_chars(plain.data(), plain.data() + plain.size(), result);
    if (res.ec != std::errc() || res.ptr != plain.data() + plain.size())
        return false;
    if (value)
        *value = negative ? -result : result;
    return true;
}

double roundHalfEven(double value)
{
    const double floorValue = std::floor(value);
    const double rest = value - floorValue;
    if (rest > 0.5)
        return floorValue + 1.0;
    if (rest < 0.5)
        return floorValue;
    return std::fmod(floorValue, 2.0) == 0.0 ? floorValue : floorValue + 1.0;
}

template <typename Int> Int convertToInteger(double value, const char *typeName)
{
    const double rounded = std::isfinite(value) ? roundHalfEven(value) : value;
    if (!(rounded >= double(std::numeric_limits<Int>::min()) && rounded <= double(std::numeric_limits<Int>::max()))) {
        throw OverflowError(QStringLiteral("Desbordamiento: el valor %1 no cabe en un %2 (de %3 a %4).")
                                .arg(QString::number(value, 'g', 15), QString::fromLatin1(typeName),
                                     QString::number(std::numeric_limits<Int>::min()),
                                     QString::number(std::numeric_limits<Int>::max())));
    }
    return Int(rounded);
}

} // namespace

QString FormatNumber(double value, const QString &pattern, const QLocale &locale)
{
    const qsizetype pointPos = pattern.indexOf(QLatin1Char('.'));
    const QString integerPattern = pointPos < 0 ? pattern : pattern.left(pointPos);
    const QString fractionPattern = pointPos < 0 ? QString() : pattern.mid(pointPos + 1);

    int minIntegerDigits = 0;
    bool grouping = false;
    for (QChar c : integerPattern) {
        if (c == QLatin1Char('0'))
            ++minIntegerDigits;
        else if (c == QLatin1Char(','))
            grouping = true;
        else if (c != QLatin1Char('#'))
            throw std::invalid_argument("FormatNumber: unsupported pattern " + pattern.toStdString());
    }
    int minDecimals = 0;
    const int maxDecimals = int(fractionPattern.size());
    for (QChar c : fractionPattern) {
        if (c == QLatin1Char('0'))
            ++minDecimals;
        else if (c != QLatin1Char('#'))
            throw std::invalid_argument("FormatNumber: unsupported pattern " + pattern.toStdString());
    }

    if (!std::isfinite(value))
        return locale.toString(value);

    DecimalDigits d = toDecimalDigits(value);
    roundTo(d, maxDecimals);

    const bool zero = allZeros(d.integerDigits) && allZeros(d.fractionDigits);
    QString integerDigits = stripLeadingZeros(d.integerDigits);
    if (integerDigits.size() < minIntegerDigits)
        integerDigits.prepend(QString(minIntegerDigits - integerDigits.size(), QLatin1Char('0')));
    QString fractionDigits = d.fractionDigits;
    while (fractionDigits.size() > minDecimals && fractionDigits.endsWith(QLatin1Char('0')))
        fractionDigits.chop(1);

    QString out;
    if (d.negative && !zero)
        out += QLatin1Char('-');
    out += grouping ? groupThousands(integerDigits, locale.groupSeparator()) : integerDigits;
    if (pointPos >= 0) {
        out += locale.decimalPoint();
        out += fractionDigits;
    }
    return out;
}

bool IsNumeric(const QString &text, const QLocale &locale)
{
    return readNumber(text, locale, nullptr);
}

double ToDouble(const QString &text, const QLocale &locale)
{
    double value = 0.0;
    if (!readNumber(text, locale, &value))
        throw ConversionError(QStringLiteral("El valor «%1» no es un número válido.").arg(text));
    return value;
}

qint16 CInt(double value)
{
    return convertToInteger<qint16>(value, "entero");
}

qint32 CLng(double value)
{
    return convertToInteger<qint32>(value, "entero largo");
}

QString SqlDecimal(double value)
{
    if (!std::isfinite(value))
        throw ConversionError(QStringLiteral("El valor %1 no es un número que pueda guardarse.").arg(value));
    const DecimalDigits d = toDecimalDigits(value);
    QString integerDigits = stripLeadingZeros(d.integerDigits);
    if (integerDigits.isEmpty())
        integerDigits = QStringLiteral("0");
    QString fractionDigits = d.fractionDigits;
    while (fractionDigits.endsWith(QLatin1Char('0')))
        fractionDigits.chop(1);
    QString out;
    if (d.negative && !(allZeros(d.integerDigits) && fractionDigits.isEmpty()))
        out += QLatin1Char('-');
    out += integerDigits;
    if (!fractionDigits.isEmpty())
        out += QLatin1Char('.') + fractionDigits;
    return out;
}

QString SqlText(const QString &value)
{
    return QLatin1Char('\'') + SqlEscape(value) + QLatin1Char('\'');
}

QString SqlEscape(const QString &value)
{
    QString out = value;
    out.replace(QLatin1Char('\''), QLatin1String("''"));
    return out;
}

QString SqlBool(bool value)
{
    return value ? QStringLiteral("-1") : QStringLiteral("0");
}

std::optional<double> ReadNumber(const QString &text, const QLocale &locale)
{
    if (!IsNumeric(text, locale))
        return std::nullopt;
    return ToDouble(text, locale);
}

QString NumberText(double value, const QLocale &locale)
{
    QLocale plain = locale;
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value, 'g', 15);
}

QString NumberText(const QVariant &value, const QLocale &locale)
{
    if (value.isNull())
        return QString();
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? NumberText(number, locale) : value.toString();
}
