#include "generator/AeatText.h"

#include "util/TextRoutines.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace Aeat {

namespace {

bool IsAllowed(QChar c)
{
    const char16_t u = c.unicode();
    if ((u >= u'A' && u <= u'Z') || (u >= u'0' && u <= u'9'))
        return true;
    if (u == u'Ñ' || u == u'Ç')
        return true;
    return QStringView(u" .,-_&'\\:;/()").contains(c);
}

// The plain letter of an accented one (Á -> A, Ü -> U); other characters as
// they are.
QChar BaseLetter(QChar c)
{
    if (c == u'Ñ' || c == u'Ç' || c.decompositionTag() != QChar::Canonical)
        return c;
    const QString parts = c.decomposition();
    return parts.isEmpty() ? c : parts.at(0);
}

// What a character becomes in an alphanumeric field: upper case ("ß"
// becomes "SS"), plain letter, or a blank.
QString FieldLetters(QChar c)
{
    QString letters;
    for (QChar u : QString(c).toUpper()) {
        const QChar base = BaseLetter(u);
        letters.append(IsAllowed(base) ? base : QChar(u' '));
    }
    return letters;
}

// FieldLetters of U+0080 to U+00FF, the accented letters of every Spanish
// name: worked out once.
const std::array<QString, 0x80> &Latin1Letters()
{
    static const std::array<QString, 0x80> table = [] {
        std::array<QString, 0x80> letters;
        for (char16_t u = 0x80; u < 0x100; ++u)
            letters[u - 0x80] = FieldLetters(QChar(u));
        return letters;
    }();
    return table;
}

} // namespace

QString AlphanumericText(const QString &text)
{
    // What each ASCII character becomes: worked out once.
    static const std::array<char16_t, 0x80> ascii = [] {
        std::array<char16_t, 0x80> letters{};
        for (char16_t u = 0; u < 0x80; ++u) {
            const QChar upper = (u >= u'a' && u <= u'z') ? QChar(char16_t(u - 32)) : QChar(u);
            letters[u] = IsAllowed(upper) ? upper.unicode() : u' ';
        }
        return letters;
    }();
    // Upper case gives at most three characters for one ("ﬃ" -> "FFI").
    QString result(text.size() * 3, Qt::Uninitialized);
    QChar *out = result.data();
    for (QChar c : text) {
        if (c.unicode() < 0x80) {
            *out++ = QChar(ascii[c.unicode()]);
            continue;
        }
        const QString letters = c.unicode() < 0x100 ? Latin1Letters().at(c.unicode() - 0x80) : FieldLetters(c);
        out = std::copy(letters.begin(), letters.end(), out);
    }
    result.truncate(out - result.constData());
    return std::move(result).trimmed();
}

QString AlphanumericField(const QString &text, int width)
{
    return AlphanumericText(text).leftJustified(width, QLatin1Char(' '), true);
}

QString NumericField(qint64 value, int width)
{
    if (value < 0)
        return QString();
    const QString digits = QString::number(value);
    if (digits.size() > width)
        return QString();
    return digits.rightJustified(width, QLatin1Char('0'));
}

QString DigitsField(const QString &text, int width)
{
    QString digits;
    for (QChar c : text) {
        if (c >= u'0' && c <= u'9')
            digits.append(c);
    }
    return digits.right(width).rightJustified(width, QLatin1Char('0'));
}

QString NifField(const QString &nif, int width)
{
    // Already in its field's form (every identifier that passed the check).
    if (nif.size() == width
        && std::all_of(nif.begin(), nif.end(), [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z'); }))
        return nif;
    QString compact = AlphanumericText(nif);
    compact.remove(QLatin1Char(' '));
    compact.remove(QLatin1Char('-'));
    if (compact.isEmpty())
        return QString(width, QLatin1Char(' '));
    return FixedWidth(compact.right(width), width, QStringLiteral("0"));
}

QString PersonName(const QString &surname1, const QString &surname2, const QString &name)
{
    QString joined;
    for (const QString *part : {&surname1, &surname2, &name}) {
        const QString trimmed = part->trimmed();
        if (trimmed.isEmpty() || trimmed == QLatin1String("-"))
            continue;
        if (!joined.isEmpty())
            joined += QLatin1Char(' ');
        joined += trimmed;
    }
    return joined;
}

Record::Record() : m_text(kRecordLength, QLatin1Char(' '))
{
}

void Record::Put(int position, int length, const QString &value)
{
    if (position < 1 || length < 1 || position + length - 1 > kRecordLength || value.size() != length)
        throw std::logic_error("AEAT record field out of place: position " + std::to_string(position));
    m_text.replace(position - 1, length, value);
}

QByteArray Record::Encode(const QString &recordText)
{
    QByteArray bytes = recordText.toLatin1();
    bytes.append("\r\n", 2);
    return bytes;
}

} // namespace Aeat
