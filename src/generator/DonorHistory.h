#pragma once

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

// Replaces one tax year's totals: the year's rows are deleted on creation,
// Add gathers one row per donor and writes them kBatch at a time (one
// statement per batch, not per donor), Finish writes the rest.
// Throws DatabaseError.
class DonorHistoryWriter
{
public:
    static constexpr int kBatch = 256;

    DonorHistoryWriter(Connection &connection, int ejercicio);
    void Add(const QString &nif, qint64 cents);
    void Add(QByteArrayView nif, qint64 cents); // the identifier's ASCII bytes
    void Finish();

private:
    void Write(SqliteStatement &insert);
    QString InsertSql(int rows) const;

    Connection &m_connection;
    int m_ejercicio;
    std::unique_ptr<SqliteStatement> m_insert; // of kBatch rows
    std::vector<std::pair<QByteArray, qint64>> m_rows;
};

} // namespace Aeat
