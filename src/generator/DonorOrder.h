#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <memory>
#include <optional>
#include <vector>

class Connection;

namespace Aeat {
class SqliteStatement;
}

// The declaration generator's own pieces.
namespace Aeat {

// The identifier as the file writes it, the key that brings a donor's rows
// together: "-" removed, blanks, tabs and line ends around trimmed, ASCII
// letters upper case, zeros on the left or the first characters cut to nine
// (SQL: substr('000000000' || upper(trim(replace(nif, '-', ''), blanks)), -9)).
// Worked out here on the stored bytes for plain ASCII and held packed in
// one number (seven bits a character, ordered as the texts are); none for
// NULL and for text with other characters, which the SQL expression orders
// instead.
using DonorKey = quint64;
std::optional<DonorKey> DonorSortKey(QByteArrayView storedNif);
// The nine characters of a key; the key of nine ASCII characters.
QByteArray DonorKeyText(DonorKey key);
DonorKey PackDonorKey(QByteArrayView nineCharacters);
DonorKey PackDonorKey(QStringView nineCharacters);

// A declarant's `Donantes` rows ordered by donor key, then as stored,
// worked out from one scan in stored order and a sort in memory instead of
// SQLite sorting the whole rows. Up to Limits' rows (and bytes of text)
// the scan keeps the rows' texts, which are then read from memory; past
// them, it keeps only each row's key and rowid (16 bytes a row) and the
// rows are read again by rowid. Not Ordered() (and empty) when a stored
// identifier has no key here. Throws DatabaseError.
class DonorOrder
{
public:
    static constexpr int kMaxColumns = 16;
    // How much is held in memory (tests set their own).
    struct Limits
    {
        qint64 rows = 150'000;
        size_t bytes = 40u << 20;
    };

    // `columns`: the columns of a row, as SQL; `nifColumn`: the identifier's.
    DonorOrder(Connection &connection, qint64 declarantId, const QString &columns, int columnCount, int nifColumn,
               Limits limits);

    bool Ordered() const { return m_ordered; }
    bool Held() const { return m_held; }
    size_t Size() const { return m_entries.size(); }
    // Not Held(): the rowid of the row at `index`.
    qint64 RowId(size_t index) const { return m_entries[index].position; }
    // Held(): the texts of the row at `index` (a null view for NULL).
    void HeldRow(size_t index, QByteArrayView *cells) const;

private:
    struct Entry
    {
        DonorKey key;
        qint64 position; // where the held row (its rowid, then its texts) starts, or the rowid
    };
    bool Hold(const SqliteStatement &scan, DonorKey key, qint64 rowid, Limits limits);
    void LetGo();
    const char *HeldBytes(qint64 position) const;

    std::vector<Entry> m_entries;
    struct Block
    {
        std::unique_ptr<char[]> bytes;
        size_t size = 0;
        size_t capacity = 0;
    };
    std::vector<Block> m_blocks; // held rows, never moved once written
    size_t m_heldBytes = 0;
    int m_columnCount;
    bool m_ordered = true;
    bool m_held = false;
};

} // namespace Aeat
