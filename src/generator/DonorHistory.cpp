#include "generator/DonorHistory.h"

#include "data/Connection.h"
#include "data/SchemaVersion.h"

#include <algorithm>
#include <cstring>

namespace Aeat {

namespace {

std::array<char, 9> Key(const QString &nif)
{
    std::array<char, 9> key{};
    const QByteArray bytes = nif.toLatin1();
    std::memcpy(key.data(), bytes.constData(), std::min<size_t>(key.size(), size_t(bytes.size())));
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
    connection.Execute(QStringLiteral("DELETE FROM HistorialDonantes WHERE ejercicio = ") + QString::number(ejercicio));
    m_rows.reserve(kBatch);
}

QString DonorHistoryWriter::InsertSql(int rows) const
{
    const QString row = QStringLiteral("(?, ") + QString::number(m_ejercicio) + QStringLiteral(", ?)");
    QString sql = QStringLiteral("INSERT INTO HistorialDonantes (nif, ejercicio, importe) VALUES ") + row;
    for (int i = 1; i < rows; ++i)
        sql += QStringLiteral(", ") + row;
    return sql;
}

void DonorHistoryWriter::Add(const QString &nif, qint64 cents)
{
    Add(QByteArrayView(nif.toUtf8()), cents);
}

void DonorHistoryWriter::Add(QByteArrayView nif, qint64 cents)
{
    m_rows.emplace_back(nif.toByteArray(), cents);
    if (int(m_rows.size()) < kBatch)
        return;
    if (!m_insert)
        m_insert = std::make_unique<SqliteStatement>(m_connection, InsertSql(kBatch));
    Write(*m_insert);
}

void DonorHistoryWriter::Finish()
{
    if (m_rows.empty())
        return;
    SqliteStatement rest(m_connection, InsertSql(int(m_rows.size())));
    Write(rest);
}

void DonorHistoryWriter::Write(SqliteStatement &insert)
{
    insert.Reset();
    int parameter = 0;
    for (const auto &[nif, cents] : m_rows) {
        insert.Bind(++parameter, QByteArrayView(nif));
        insert.Bind(++parameter, cents);
    }
    insert.Step();
    m_rows.clear();
}

} // namespace Aeat
