#include "data/SpanishCollation.h"

#include "data/SchemaVersion.h"

#include <QChar>
#include <QString>
#include <QStringDecoder>
#include <QVarLengthArray>
#include <array>
#include <cstring>
#include <sqlite3.h>

namespace {

constexpr char32_t kCombiningTilde = 0x0303;

// One letter as the comparison sees it: its base weight (level 1) and the
// marks on it (level 2).
struct Element
{
    quint32 primary = 0;
    quint64 accent = 0;
};

// Base letter and first mark of the precomposed letters of Latin-1 and the
// Latin Extended blocks, worked out once: QChar::decomposition allocates,
// and the collation runs inside every sort and look-up.
struct LatinEntry
{
    char16_t base;
    char16_t mark;
};

constexpr char16_t kTableFirst = 0x00C0;
constexpr char16_t kTableLast = 0x024F;

const std::array<LatinEntry, kTableLast - kTableFirst + 1> &LatinTable()
{
    static const auto table = [] {
        std::array<LatinEntry, kTableLast - kTableFirst + 1> t{};
        for (char16_t c = kTableFirst; c <= kTableLast; ++c) {
            LatinEntry entry{c, 0};
            QChar ch(c);
            if (ch.decompositionTag() == QChar::Canonical) {
                const QString d = ch.decomposition();
                if (!d.isEmpty()) {
                    entry.base = d.at(0).unicode();
                    if (d.size() > 1)
                        entry.mark = d.at(1).unicode();
                }
            }
            t[c - kTableFirst] = entry;
        }
        return t;
    }();
    return table;
}

quint64 AddMark(quint64 accent, char16_t mark)
{
    return accent * 0x10000u + mark;
}

// Splits a character into base and marks (canonical decomposition only:
// "ª" or "ﬁ" stay as they are).
void Decompose(char16_t c, char16_t &base, quint64 &accent)
{
    if (c < kTableFirst) {
        base = c;
        return;
    }
    if (c <= kTableLast) {
        const LatinEntry &e = LatinTable()[c - kTableFirst];
        base = e.base;
        if (e.mark)
            accent = AddMark(accent, e.mark);
        return;
    }
    QChar ch(c);
    if (ch.decompositionTag() != QChar::Canonical || ch.isSurrogate()) {
        base = c;
        return;
    }
    const QString d = ch.decomposition();
    if (d.isEmpty()) {
        base = c;
        return;
    }
    // The first character may itself decompose (a letter with two marks).
    char16_t first = d.at(0).unicode();
    if (first != c && QChar(first).decompositionTag() == QChar::Canonical)
        Decompose(first, base, accent);
    else
        base = first;
    for (qsizetype i = 1; i < d.size(); ++i)
        accent = AddMark(accent, d.at(i).unicode());
}

bool IsMark(char16_t c)
{
    if (c < 0x0300)
        return false;
    if (c <= 0x036F)
        return true;
    return QChar(c).isMark();
}

char16_t Fold(char16_t c)
{
    if (c < 0x80)
        return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c;
    if (QChar(c).isSurrogate())
        return c;
    return char16_t(QChar::toCaseFolded(char32_t(c)));
}

class Reader
{
public:
    explicit Reader(QStringView text) : m_text(text) {}

    bool Next(Element &out)
    {
        if (m_pos >= m_text.size())
            return false;
        char16_t c = m_text[m_pos++].unicode();
        char16_t base = c;
        quint64 accent = 0;
        Decompose(c, base, accent);
        base = Fold(base);
        bool enye = false;
        if (base == u'n' && accent == kCombiningTilde) {
            enye = true;
            accent = 0;
        }
        // Marks that follow (decomposed text) belong to this letter.
        while (m_pos < m_text.size() && IsMark(m_text[m_pos].unicode())) {
            const char16_t mark = m_text[m_pos++].unicode();
            if (base == u'n' && !enye && accent == 0 && mark == kCombiningTilde)
                enye = true;
            else
                accent = AddMark(accent, mark);
        }
        // "ñ" sits between "n" and "o": weights are doubled to make room.
        out.primary = (quint32(base) << 1) | (enye ? 1u : 0u);
        out.accent = accent;
        return true;
    }

private:
    QStringView m_text;
    qsizetype m_pos = 0;
};

int CompareLevel(QStringView a, QStringView b, bool accents)
{
    Reader ra(a), rb(b);
    Element ea, eb;
    for (;;) {
        const bool hasA = ra.Next(ea);
        const bool hasB = rb.Next(eb);
        if (!hasA || !hasB)
            return hasA ? 1 : (hasB ? -1 : 0);
        if (ea.primary != eb.primary)
            return ea.primary < eb.primary ? -1 : 1;
        if (accents && ea.accent != eb.accent)
            return ea.accent < eb.accent ? -1 : 1;
    }
}

int SqliteCompare(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    const QStringView va(static_cast<const char16_t *>(a), lengthA / 2);
    const QStringView vb(static_cast<const char16_t *>(b), lengthB / 2);
    return SpanishCompare(va, vb);
}

// UTF-8 text into `out` (room for `length` characters); returns the count.
qsizetype Utf16(const char *bytes, int length, char16_t *out)
{
    int i = 0;
    for (; i < length && uchar(bytes[i]) < 0x80; ++i)
        out[i] = char16_t(bytes[i]);
    if (i == length)
        return length;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    auto *start = reinterpret_cast<QChar *>(out);
    return decoder.appendToBuffer(start + i, QByteArrayView(bytes + i, length - i)) - start;
}

// The same order on UTF-8 text, the encoding of the files: registered for it,
// the collation spares SQLite converting both texts (an allocation each) for
// every comparison of a sort or a look-up.
int SqliteCompareUtf8(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    const auto *bytesA = static_cast<const char *>(a);
    const auto *bytesB = static_cast<const char *>(b);
    if (lengthA == lengthB && std::memcmp(bytesA, bytesB, size_t(lengthA)) == 0)
        return 0;
    // Two different plain first letters decide at once: whatever follows a
    // letter (even the tilde that makes "n" an "ñ") only places it among
    // the texts that start with the same letter.
    if (lengthA > 0 && lengthB > 0 && uchar(bytesA[0]) < 0x80 && uchar(bytesB[0]) < 0x80) {
        const char16_t firstA = Fold(char16_t(bytesA[0])), firstB = Fold(char16_t(bytesB[0]));
        if (firstA != firstB)
            return firstA < firstB ? -1 : 1;
    }
    QVarLengthArray<char16_t, 128> textA(lengthA), textB(lengthB);
    const qsizetype sizeA = Utf16(bytesA, lengthA, textA.data());
    const qsizetype sizeB = Utf16(bytesB, lengthB, textB.data());
    return SpanishCompare(QStringView(textA.data(), sizeA), QStringView(textB.data(), sizeB));
}

} // namespace

int SpanishCompare(QStringView a, QStringView b)
{
    // Fast path: identical text (the usual case of a key look-up).
    if (a.size() == b.size() && a == b)
        return 0;
    const int primary = CompareLevel(a, b, false);
    if (primary != 0)
        return primary;
    return CompareLevel(a, b, true);
}

int RegisterSpanishCollation(void *sqliteHandle)
{
    // SQLITE_UTF16 is the machine's byte order, the order of QString's data;
    // SQLite calls the form that matches the text it compares.
    auto *db = static_cast<sqlite3 *>(sqliteHandle);
    const int result = sqlite3_create_collation_v2(db, M182_TEXT_COLLATION, SQLITE_UTF16, nullptr, &SqliteCompare, nullptr);
    if (result != SQLITE_OK)
        return result;
    return sqlite3_create_collation_v2(db, M182_TEXT_COLLATION, SQLITE_UTF8, nullptr, &SqliteCompareUtf8, nullptr);
}
