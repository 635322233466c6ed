#include "generator/DonorHistory.h"

#include "data/Connection.h"
#include "data/SchemaVersion.h"

#include <algorithm>
#include <cstring>

namespace Aeat {

namespace {

std::array<char, 9> Key(const QString &nif)
{
    // Looked up for every donor: read in place, as toLatin1 would give it.
    std::array<char, 9> key{};
    for (qsizetype i = 0; i < qMin<qsizetype>(nif.size(), qsizetype(key.size())); ++i) {
        const char16_t c = nif.at(i).unicode();
        key[size_t(i)] = c < 0x100 ? char(c) : '?';
    }
    return key;
}

} // namespace

char RecurrenceMark(std::optional<qint64> yearBefore, std::optional<qint64> lastYear, qint64 current)
{
    if (!yearBefore || !lastYear || *yearBefore <= 0 || *lastYear <= 0)
        return '2';
    return (current >= *lastYear && *lastYear >= *yearBefore) ? '1' : '2';
}

void EnsureDonorHistoryTable(Connection &connection)
{
    connection.Execute(QStringLiteral("CREATE TABLE IF NOT EXISTS HistorialDonantes ("
                                      "nif TEXT COLLATE " M182_TEXT_COLLATION ", "
                                      "ejercicio INTEGER, importe INTEGER)"));
    connection.Execute(QStringLiteral("CREATE INDEX IF NOT EXISTS HistorialDonantes_Ejercicio "
                                      "ON HistorialDonantes (ejercicio)"));
}

void DonorHistory::Load(Connection &connection, int ejercicio)
{
    SqliteStatement table(connection, QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' "
                                                     "AND name = 'HistorialDonantes' COLLATE NOCASE"));
    if (!table.Step()) {
        m_lastYear.clear();
        m_yearBefore.clear();
        return;
    }
    m_lastYear = LoadYear(connection, ejercicio - 1);
    m_yearBefore = LoadYear(connection, ejercicio - 2);
}

std::vector<DonorHistory::Entry> DonorHistory::LoadYear(Connection &connection, int year)
{
    SqliteStatement query(connection, QStringLiteral("SELECT nif, importe FROM HistorialDonantes WHERE ejercicio = ")
                                          + QString::number(year));
    std::vector<Entry> entries;
    while (query.Step())
        entries.push_back({Key(query.Text(0)), query.Integer(1)});
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) { return a.nif < b.nif; });
    return entries;
}

std::optional<qint64> DonorHistory::Find(const std::vector<Entry> &year, const QString &nif)
{
    const std::array<char, 9> key = Key(nif);
    const auto it = std::lower_bound(year.begin(), year.end(), key,
                                     [](const Entry &entry, const std::array<char, 9> &k) { return entry.nif < k; });
    if (it == year.end() || it->nif != key)
        return std::nullopt;
    return it->cents;
}

char DonorHistory::Recurrence(const QString &nif, qint64 current) const
{
    return RecurrenceMark(Find(m_yearBefore, nif), Find(m_lastYear, nif), current);
}

DonorHistoryWriter::DonorHistoryWriter(Connection &connection, int ejercicio)
    : m_connection(connection), m_ejercicio(ejercicio)
{
    Load();
    m_rows.reserve(kBatch);
}

void DonorHistoryWriter::Load()
{
    SqliteStatement query(m_connection, QStringLiteral("SELECT rowid, nif, importe FROM HistorialDonantes "
                                                       "WHERE ejercicio = ?"));
    query.Bind(1, qint64(m_ejercicio));
    while (query.Step()) {
        const QByteArrayView nif = query.Utf8(1);
        const bool ascii = std::all_of(nif.begin(), nif.end(), [](char c) { return (c & 0x80) == 0; });
        if (nif.size() == 9 && ascii)
            m_stored.push_back({PackDonorKey(nif), query.Integer(0), query.Integer(2)});
        else
            m_invalid.push_back(query.Integer(0));
    }
    std::sort(m_stored.begin(), m_stored.end(),
              [](const Stored &a, const Stored &b) { return a.nif != b.nif ? a.nif < b.nif : a.rowid < b.rowid; });
    m_claimed.assign(m_stored.size(), false);
}

size_t DonorHistoryWriter::Unclaimed(size_t from, DonorKey nif) const
{
    size_t index = from;
    // In order, the next stored row is most often the donor's own.
    if (index < m_stored.size() && m_stored[index].nif < nif) {
        const auto it = std::lower_bound(m_stored.begin() + qsizetype(index), m_stored.end(), nif,
                                         [](const Stored &stored, DonorKey key) { return stored.nif < key; });
        index = size_t(it - m_stored.begin());
    }
    while (index < m_stored.size() && m_stored[index].nif == nif && m_claimed[index])
        ++index;
    return index < m_stored.size() && m_stored[index].nif == nif ? index : m_stored.size();
}

void DonorHistoryWriter::Add(DonorKey nif, qint64 cents)
{
    const bool inOrder = !m_last || nif >= *m_last;
    m_last = std::max(nif, m_last.value_or(nif));
    const size_t index = Unclaimed(inOrder ? m_cursor : 0, nif);
    if (index == m_stored.size()) {
        Insert(nif, cents);
        return;
    }
    if (inOrder)
        m_cursor = index + 1;
    Keep(index, cents);
}

void DonorHistoryWriter::Keep(size_t index, qint64 cents)
{
    m_claimed[index] = true;
    if (m_stored[index].cents == cents)
        return;
    if (!m_update) {
        m_update = std::make_unique<SqliteStatement>(m_connection,
                                                     QStringLiteral(
                                                         "UPDATE HistorialDonantes SET importe = ? WHERE rowid = ?"));
    }
    m_update->Reset();
    m_update->Bind(1, cents);
    m_update->Bind(2, m_stored[index].rowid);
    m_update->Step();
}

void DonorHistoryWriter::Insert(DonorKey nif, qint64 cents)
{
    m_rows.emplace_back(nif, cents);
    if (int(m_rows.size()) < kBatch)
        return;
    if (!m_insert)
        m_insert = std::make_unique<SqliteStatement>(m_connection, InsertSql(kBatch));
    WriteInserts(*m_insert);
}

void DonorHistoryWriter::Finish()
{
    DeleteUnclaimed();
    if (m_rows.empty())
        return;
    SqliteStatement rest(m_connection, InsertSql(int(m_rows.size())));
    WriteInserts(rest);
}

void DonorHistoryWriter::DeleteUnclaimed()
{
    std::unique_ptr<SqliteStatement> remove;
    auto deleteRow = [&](qint64 rowid) {
        if (!remove)
            remove = std::make_unique<SqliteStatement>(m_connection,
                                                       QStringLiteral("DELETE FROM HistorialDonantes WHERE rowid = ?"));
        remove->Reset();
        remove->Bind(1, rowid);
        remove->Step();
    };
    for (qint64 rowid : m_invalid)
        deleteRow(rowid);
    for (size_t i = 0; i < m_stored.size(); ++i) {
        if (!m_claimed[i])
            deleteRow(m_stored[i].rowid);
    }
}

QString DonorHistoryWriter::InsertSql(int rows) const
{
    const QString row = QStringLiteral("(?, ") + QString::number(m_ejercicio) + QStringLiteral(", ?)");
    QString sql = QStringLiteral("INSERT INTO HistorialDonantes (nif, ejercicio, importe) VALUES ") + row;
    for (int i = 1; i < rows; ++i)
        sql += QStringLiteral(", ") + row;
    return sql;
}

void DonorHistoryWriter::WriteInserts(SqliteStatement &insert)
{
    insert.Reset();
    int parameter = 0;
    for (const auto &[nif, cents] : m_rows) {
        insert.Bind(++parameter, QByteArrayView(DonorKeyText(nif)));
        insert.Bind(++parameter, cents);
    }
    insert.Step();
    m_rows.clear();
}

} // namespace Aeat
