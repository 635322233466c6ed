#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

#include <optional>
#include <vector>

class Connection;

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

// The rowids of a declarant's `Donantes` rows ordered by donor key, then as
// stored: one scan of the identifiers and a sort in memory (16 bytes a row)
// instead of SQLite sorting the whole rows. Empty when a stored identifier
// has no key here (Ordered() is then false). Throws DatabaseError.
class DonorOrder
{
public:
    DonorOrder(Connection &connection, qint64 declarantId);

    bool Ordered() const { return m_ordered; }
    size_t Size() const { return m_entries.size(); }
    qint64 RowId(size_t index) const { return m_entries[index].rowId; }

private:
    struct Entry
    {
        DonorKey key;
        qint64 rowId;
    };
    std::vector<Entry> m_entries;
    bool m_ordered = true;
};

} // namespace Aeat
