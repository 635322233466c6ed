#include "generator/DonorOrder.h"

#include "generator/SqliteStatement.h"

#include <QString>

#include <algorithm>
#include <cstring>

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

DonorKey PackDonorKey(QStringView nineCharacters)
{
    DonorKey key = 0;
    for (QChar c : nineCharacters)
        key = (key << 7) | (DonorKey(c.unicode()) & 0x7F);
    return key;
}

QByteArray DonorKeyText(DonorKey key)
{
    QByteArray text(9, '0');
    for (int i = 8; i >= 0; --i, key >>= 7)
        text[i] = char(key & 0x7F);
    return text;
}

namespace {

constexpr size_t kBlockBytes = 1u << 20;
constexpr qint32 kNull = -1;

// A held cell at `at`: its length (kNull for NULL), then its bytes; returns
// where the next one goes.
char *PutCell(char *at, QByteArrayView bytes)
{
    const qint32 length = bytes.data() ? qint32(bytes.size()) : kNull;
    std::memcpy(at, &length, sizeof length);
    at += sizeof length;
    if (!bytes.isEmpty())
        std::memcpy(at, bytes.data(), size_t(bytes.size()));
    return at + bytes.size();
}

} // namespace

DonorOrder::DonorOrder(Connection &connection, qint64 declarantId, const QString &columns, int columnCount, int nifColumn,
                       Limits limits)
    : m_columnCount(std::min(columnCount, kMaxColumns))
{
    SqliteStatement scan(connection, QStringLiteral("SELECT rowid, ") + columns
                                         + QStringLiteral(" FROM Donantes WHERE codDeclarante = ")
                                         + QString::number(declarantId));
    m_held = true;
    while (scan.Step()) {
        const std::optional<DonorKey> key = DonorSortKey(scan.Utf8(nifColumn + 1));
        if (!key) {
            m_ordered = false;
            m_held = false;
            m_entries = {};
            m_blocks.clear();
            return;
        }
        const qint64 rowid = scan.Integer(0);
        if (m_held && !Hold(scan, *key, rowid, limits))
            LetGo();
        if (!m_held)
            m_entries.push_back({*key, rowid});
    }
    // The entries are in stored order: a stable sort by key keeps it among a
    // donor's rows.
    std::stable_sort(m_entries.begin(), m_entries.end(), [](const Entry &a, const Entry &b) { return a.key < b.key; });
}

// Keeps the row's rowid and texts; false (nothing kept) when that would
// pass the limits.
bool DonorOrder::Hold(const SqliteStatement &scan, DonorKey key, qint64 rowid, Limits limits)
{
    if (qint64(m_entries.size()) >= limits.rows)
        return false;
    QByteArrayView cells[kMaxColumns];
    size_t bytes = sizeof rowid;
    for (int column = 0; column < m_columnCount; ++column) {
        cells[column] = scan.Utf8(column + 1);
        bytes += sizeof(qint32) + size_t(cells[column].size());
    }
    if (m_heldBytes + bytes > limits.bytes)
        return false;
    if (m_blocks.empty() || m_blocks.back().size + bytes > m_blocks.back().capacity) {
        const size_t capacity = std::max(kBlockBytes, bytes);
        m_blocks.push_back({std::unique_ptr<char[]>(new char[capacity]), 0, capacity});
    }
    Block &block = m_blocks.back();
    m_entries.push_back({key, (qint64(m_blocks.size() - 1) << 32) | qint64(block.size)});
    char *at = block.bytes.get() + block.size;
    std::memcpy(at, &rowid, sizeof rowid);
    at += sizeof rowid;
    for (int column = 0; column < m_columnCount; ++column)
        at = PutCell(at, cells[column]);
    block.size += bytes;
    m_heldBytes += bytes;
    return true;
}

// From holding rows to keeping rowids: the rows held so far keep only
// theirs, and the scan goes on without starting again.
void DonorOrder::LetGo()
{
    for (Entry &entry : m_entries)
        std::memcpy(&entry.position, HeldBytes(entry.position), sizeof entry.position);
    m_blocks.clear();
    m_heldBytes = 0;
    m_held = false;
}

const char *DonorOrder::HeldBytes(qint64 position) const
{
    return m_blocks[size_t(position >> 32)].bytes.get() + (position & 0xFFFFFFFF);
}

void DonorOrder::HeldRow(size_t index, QByteArrayView *cells) const
{
    const char *at = HeldBytes(m_entries[index].position) + sizeof(qint64); // past the rowid
    for (int column = 0; column < m_columnCount; ++column) {
        qint32 length;
        std::memcpy(&length, at, sizeof length);
        at += sizeof length;
        cells[column] = length == kNull ? QByteArrayView() : QByteArrayView(at, length);
        at += length == kNull ? 0 : length;
    }
}

} // namespace Aeat
