#include "generator/DonorOrder.h"

#include "generator/SqliteStatement.h"

#include <QString>

#include <algorithm>

namespace Aeat {

namespace {

bool IsTrimmed(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::optional<DonorKey> DonorSortKey(QByteArrayView storedNif)
{
    if (storedNif.data() == nullptr)
        return std::nullopt;
    // The identifier without "-", upper case (a text of more than 64
    // characters is left to SQL).
    char kept[64];
    int length = 0;
    for (char c : storedNif) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 || byte == 0 || length == int(sizeof kept))
            return std::nullopt;
        if (c != '-')
            kept[length++] = (c >= 'a' && c <= 'z') ? char(c - 'a' + 'A') : c;
    }
    int begin = 0;
    while (begin < length && IsTrimmed(kept[begin]))
        ++begin;
    while (length > begin && IsTrimmed(kept[length - 1]))
        --length;
    const int take = std::min(length - begin, 9);
    char key[9];
    std::fill(key, key + 9 - take, '0');
    std::copy(kept + length - take, kept + length, key + 9 - take);
    return PackDonorKey(QByteArrayView(key, 9));
}

DonorKey PackDonorKey(QByteArrayView nineCharacters)
{
    DonorKey key = 0;
    for (char c : nineCharacters)
        key = (key << 7) | (DonorKey(static_cast<unsigned char>(c)) & 0x7F);
    return key;
}

QByteArray DonorKeyText(DonorKey key)
{
    QByteArray text(9, '0');
    for (int i = 8; i >= 0; --i, key >>= 7)
        text[i] = char(key & 0x7F);
    return text;
}

DonorOrder::DonorOrder(Connection &connection, qint64 declarantId)
{
    const QString rows = QStringLiteral(" FROM Donantes WHERE codDeclarante = ") + QString::number(declarantId);
    SqliteStatement count(connection, QStringLiteral("SELECT COUNT(*)") + rows);
    if (count.Step())
        m_entries.reserve(size_t(count.Integer(0))); // no copy while it grows
    SqliteStatement scan(connection, QStringLiteral("SELECT rowid, nif") + rows);
    while (scan.Step()) {
        const std::optional<DonorKey> key = DonorSortKey(scan.Utf8(1));
        if (!key) {
            m_ordered = false;
            m_entries = {};
            return;
        }
        m_entries.push_back({*key, scan.Integer(0)});
    }
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry &a, const Entry &b) {
        return a.key != b.key ? a.key < b.key : a.rowId < b.rowId;
    });
}

} // namespace Aeat
