#include "util/NifCif.h"

#include "util/ConversionError.h"
#include "util/OverflowError.h"
#include "util/VbFormat.h"

#include <cmath>

namespace {

const QString kLetters = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKEO");
const QString kCifFirstLetters = QStringLiteral("ABCDEFGHPQRSKLMX");
const QString kLetterOnlyFirstLetters = QStringLiteral("PQSR");

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// The value of the leading digits of `text` (0 when it starts with a
// non-digit). Called on at most eight characters, so it fits a qint32.
qint32 leadingDigitsValue(const QString &text)
{
    qint32 value = 0;
    for (QChar c : text) {
        if (!isAsciiDigit(c))
            break;
        value = value * 10 + (c.unicode() - '0');
    }
    return value;
}

// A CIF digit that must be one: a conversion error otherwise.
int requiredDigit(const QString &id, int position)
{
    const QChar c = id[position - 1];
    if (!isAsciiDigit(c)) {
        throw ConversionError(
            QStringLiteral("El identificador fiscal «%1» no es válido: el carácter %2 («%3») no es un dígito.")
                .arg(id, QString::number(position), QString(c)));
    }
    return c.unicode() - '0';
}

bool validCif(const QString &id)
{
    int sum = 0;
    for (int position : {3, 5, 7})
        sum += requiredDigit(id, position);
    for (int position : {2, 4, 6, 8}) {
        const int doubled = 2 * leadingDigitsValue(id.mid(position - 1, 1));
        sum += doubled / 10 + doubled % 10;
    }
    const int d = 10 - sum % 10; // 1..10
    const QChar control = id[8];
    const QChar letter(64 + d);
    if (kLetterOnlyFirstLetters.contains(id[0]))
        return control == letter;
    const QChar digit(QLatin1Char(char('0' + d % 10)));
    return control == letter || control == digit;
}

} // namespace

QString LetraNIF(qint32 number)
{
    // number - 23 * floor(number / 23), in 64 bits so that no number overflows.
    const qint64 n = number;
    qint64 quotient = n / 23;
    if (n % 23 != 0 && n < 0)
        --quotient;
    const qint64 remainder = n - 23 * quotient;
    if (remainder < 0 || remainder >= kLetters.size())
        return QString();
    return kLetters.mid(remainder, 1);
}

bool ValidarNIF(QString &id)
{
    id = (QStringLiteral("000000000") + id).right(9);
    if (LetraNIF(leadingDigitsValue(id.left(8))) == id.mid(8, 1))
        return true;

    // Typed without its letter the padding pushed a digit into the letter's
    // place; otherwise the letter is wrong.
    const qint32 number = isAsciiDigit(id[8]) ? leadingDigitsValue(id.mid(1, 8)) : leadingDigitsValue(id.left(8));
    id = (QStringLiteral("00000000") + QString::number(number)).right(8) + LetraNIF(number);
    return false;
}

bool ValidarNIFCIF(QString &id)
{
    id = id.remove(QLatin1Char('-')).trimmed().toUpper();
    if (id.size() != 9)
        return false;
    if (isAsciiDigit(id[0]))
        return ValidarNIF(id);
    if (!kCifFirstLetters.contains(id[0]))
        return false;
    if (id[0] == QLatin1Char('X')) {
        QString nie = QLatin1Char('0') + id.mid(1, 8);
        return ValidarNIF(nie);
    }
    return validCif(id);
}

QString NIFConLetra(const QString &digits, bool withHyphen, const QLocale &locale)
{
    if (!IsNumeric(digits, locale))
        return QString();
    const double value = ToDouble(digits, locale);
    qint32 number = 0;
    try {
        number = CLng(value);
    } catch (const OverflowError &) {
        return QString();
    }
    QString result = digits + QLatin1Char('-') + LetraNIF(number);
    if (!withHyphen)
        result.remove(QLatin1Char('-'));
    return result;
}

QString CifWithControl(QChar type, const QString &digits)
{
    int sum = 0;
    for (int i = 0; i < 7; ++i) {
        const int d = digits.at(i).digitValue();
        if (i % 2 == 0) {
            const int twice = 2 * d;
            sum += twice / 10 + twice % 10;
        } else {
            sum += d;
        }
    }
    const int control = (10 - sum % 10) % 10;
    const bool takesLetter = QStringLiteral("KPQRSNW").contains(type);
    return type + digits + (takesLetter ? QStringLiteral("JABCDEFGHI").at(control) : QChar(QLatin1Char('0' + control)));
}
