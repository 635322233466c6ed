#pragma once

#include "generator/DonorOrder.h"
#include "generator/SqliteStatement.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class Connection;

// The declaration generator's own pieces.
namespace Aeat {

// Each donor's declared total per tax year, kept in the declaration database
// (`HistorialDonantes`: nif as the file writes it, ejercicio, importe in
// cents), so that the file can say whether a donor is recurrent.

// '1' when the donor gave in each of the two previous years and
// current >= last year >= the year before; '2' otherwise, also when a
// year is missing from the history.
char RecurrenceMark(std::optional<qint64> yearBefore, std::optional<qint64> lastYear, qint64 current);

// Creates the table and its index when missing.
void EnsureDonorHistoryTable(Connection &connection);

// The totals of the two years before a tax year, held compactly (a donor
// costs a few bytes, not a row object) and looked up by identifier.
class DonorHistory
{
public:
    // Without the table (no run has written it yet) no donor is recurrent.
    void Load(Connection &connection, int ejercicio);
    char Recurrence(const QString &nif, qint64 current) const;

private:
    struct Entry
    {
        std::array<char, 9> nif;
        qint64 cents;
    };
    static std::optional<qint64> Find(const std::vector<Entry> &year, const QString &nif);
    static std::vector<Entry> LoadYear(Connection &connection, int year);

    std::vector<Entry> m_lastYear;
    std::vector<Entry> m_yearBefore;
};

// Replaces one tax year's totals with a run's, writing only what differs:
// the year's stored rows are read on creation and merged with the donors
// Add receives (in key order; one out of order is looked up instead). A
// stored row with the same identifier and amount is left alone, one whose
// amount changed is updated, a new donor is inserted (kBatch rows a
// statement), and what is left over at Finish (donors gone, a second row
// of one identifier, an identifier that is not nine ASCII characters) is
// deleted. The same totals again write nothing. Throws DatabaseError.
class DonorHistoryWriter
{
public:
    static constexpr int kBatch = 256;

    DonorHistoryWriter(Connection &connection, int ejercicio);
    void Add(DonorKey nif, qint64 cents);
    void Finish();

private:
    struct Stored
    {
        DonorKey nif;
        qint64 rowid;
        qint64 cents;
    };
    void Load();
    // The first stored row of `nif` not yet claimed, from `from` on.
    size_t Unclaimed(size_t from, DonorKey nif) const;
    void Keep(size_t index, qint64 cents);
    void Insert(DonorKey nif, qint64 cents);
    void WriteInserts(SqliteStatement &insert);
    void DeleteUnclaimed();
    QString InsertSql(int rows) const;

    Connection &m_connection;
    int m_ejercicio;
    std::vector<Stored> m_stored;  // ordered by identifier, then rowid
    std::vector<bool> m_claimed;   // per stored row: a donor of this run has it
    std::vector<qint64> m_invalid; // rowids of identifiers that are no key
    size_t m_cursor = 0;           // where the next donor in order starts looking
    std::optional<DonorKey> m_last;
    std::unique_ptr<SqliteStatement> m_update;
    std::unique_ptr<SqliteStatement> m_insert; // of kBatch rows
    std::vector<std::pair<DonorKey, qint64>> m_rows;
};

} // namespace Aeat
