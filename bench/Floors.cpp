#include "Floors.h"

#include "data/DonorQuery.h"
#include "data/NestedJoins.h"
#include "data/SpanishCollation.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sqlite3.h>
#include <string>
#include <unordered_map>

namespace {

// A floor that fails measures nothing: say why and stop.
void Check(sqlite3 *db, int result, const QString &what)
{
    if (result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW)
        return;
    std::fprintf(stderr, "floor: %s: %s\n", qPrintable(what), db ? sqlite3_errmsg(db) : sqlite3_errstr(result));
    std::exit(1);
}

// The school's text columns compare with the program's collation, so every
// handle knows it, as the program's connections do.
sqlite3 *Open(const QString &file, int flags)
{
    sqlite3 *db = nullptr;
    Check(db, sqlite3_open_v2(file.toUtf8().constData(), &db, flags, nullptr), file);
    RegisterSpanishCollation(db);
    return db;
}

void Exec(sqlite3 *db, const QString &sql)
{
    Check(db, sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr), sql);
}

QString Text(sqlite3 *db, const QString &sql)
{
    sqlite3_stmt *query = nullptr;
    Check(db, sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &query, nullptr), sql);
    QString text;
    if (sqlite3_step(query) == SQLITE_ROW)
        text = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(query, 0)));
    sqlite3_finalize(query);
    return text;
}

bool SameValue(sqlite3_value *a, sqlite3_value *b)
{
    const int type = sqlite3_value_type(a);
    if (type != sqlite3_value_type(b))
        return false;
    switch (type) {
    case SQLITE_NULL:
        return true;
    case SQLITE_INTEGER:
        return sqlite3_value_int64(a) == sqlite3_value_int64(b);
    case SQLITE_FLOAT:
        return sqlite3_value_double(a) == sqlite3_value_double(b);
    default: {
        const int bytes = sqlite3_value_bytes(a);
        return bytes == sqlite3_value_bytes(b) && std::memcmp(sqlite3_value_blob(a), sqlite3_value_blob(b), bytes) == 0;
    }
    }
}

bool SameTables(const std::vector<TableRows> &a, const std::vector<TableRows> &b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!a[i].SameAs(b[i]))
            return false;
    return true;
}

QString CountRows(const std::vector<TableRows> &tables, const QString &prefix = {})
{
    QStringList counts;
    for (const TableRows &table : tables)
        counts << prefix + table.Table() + QLatin1Char(' ') + QString::number(table.Count());
    return counts.join(QStringLiteral(", "));
}

} // namespace

// Reading the grid -------------------------------------------------------

void ReadGridFloor(const InstallationPaths &paths, const InstallationDescription &school, bool loaded)
{
    sqlite3 *centro = Open(paths.root + "/datos/centro.db", SQLITE_OPEN_READONLY);
    sqlite3_exec(centro, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt *payer = nullptr, *amount = nullptr;
    sqlite3_prepare_v2(centro, "SELECT Nombre, AP1, AP2, NIF, Mostrar FROM ALMFModelo182 WHERE IDAL=? AND IDMF=?", -1,
                       &payer, nullptr);
    sqlite3_prepare_v2(centro, "SELECT Pago FROM DatosModelo182 WHERE IDCC=? AND IDAct=? AND IDAL=? AND IDMF=?", -1, &amount,
                       nullptr);
    std::unordered_map<std::string, std::vector<double>> rows;
    for (const YearDescription &year : school.years) {
        sqlite3 *db = Open(paths.root + "/datos/" + year.fileName, SQLITE_OPEN_READONLY);
        for (const ActivityDescription &activity : year.activities) {
            sqlite3_stmt *query = nullptr;
            // As SQLite runs it for the program: the joins as a flat chain.
            sqlite3_prepare_v2(db, JetDialect::FlattenNestedJoins(DonorQuery(activity.id)).toUtf8().constData(), -1, &query,
                               nullptr);
            const int columns = sqlite3_column_count(query);
            while (sqlite3_step(query) == SQLITE_ROW) {
                std::string key = std::to_string(sqlite3_column_int64(query, columns - 2)) + " "
                                  + std::to_string(sqlite3_column_int64(query, columns - 1));
                for (int c = 0; c < columns; ++c)
                    sqlite3_column_text(query, c);
                auto &cells = rows[key];
                cells.push_back(sqlite3_column_double(query, 3));
                if (loaded) {
                    for (sqlite3_stmt *lookup : {payer, amount}) {
                        sqlite3_reset(lookup);
                        int i = 1;
                        if (lookup == amount) {
                            sqlite3_bind_int(lookup, i++, year.id);
                            sqlite3_bind_int(lookup, i++, activity.id);
                        }
                        sqlite3_bind_int64(lookup, i++, sqlite3_column_int64(query, columns - 2));
                        sqlite3_bind_int64(lookup, i, sqlite3_column_int64(query, columns - 1));
                        while (sqlite3_step(lookup) == SQLITE_ROW)
                            sqlite3_column_text(lookup, 0);
                    }
                }
            }
            sqlite3_finalize(query);
        }
        sqlite3_close(db);
    }
    sqlite3_finalize(payer);
    sqlite3_finalize(amount);
    sqlite3_exec(centro, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(centro);
}

// Rows kept whole ------------------------------------------------------------

TableRows::TableRows(sqlite3 *db, const QString &table, const QString &where) : m_table(table)
{
    const QString sql = QStringLiteral("SELECT * FROM ") + table
                        + (where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where);
    sqlite3_stmt *query = nullptr;
    Check(db, sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &query, nullptr), sql);
    m_columns = sqlite3_column_count(query);
    int result;
    while ((result = sqlite3_step(query)) == SQLITE_ROW)
        for (int c = 0; c < m_columns; ++c)
            m_values.push_back(sqlite3_value_dup(sqlite3_column_value(query, c)));
    Check(db, result, sql);
    sqlite3_finalize(query);
}

TableRows::~TableRows()
{
    for (sqlite3_value *value : m_values)
        sqlite3_value_free(value);
}

TableRows::TableRows(TableRows &&other) noexcept
    : m_table(std::move(other.m_table)), m_columns(other.m_columns), m_values(std::move(other.m_values))
{
    other.m_values.clear();
}

void TableRows::InsertInto(sqlite3 *db, const QString &target) const
{
    QString sql = QStringLiteral("INSERT INTO ") + target + QStringLiteral(" VALUES (");
    for (int c = 0; c < m_columns; ++c)
        sql += c ? QStringLiteral(",?") : QStringLiteral("?");
    sql += QLatin1Char(')');
    sqlite3_stmt *insert = nullptr;
    Check(db, sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &insert, nullptr), sql);
    for (size_t first = 0; first < m_values.size(); first += size_t(m_columns)) {
        for (int c = 0; c < m_columns; ++c)
            sqlite3_bind_value(insert, c + 1, m_values[first + size_t(c)]);
        Check(db, sqlite3_step(insert), sql);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
}

bool TableRows::SameAs(const TableRows &other) const
{
    if (m_columns != other.m_columns || m_values.size() != other.m_values.size())
        return false;
    for (size_t i = 0; i < m_values.size(); ++i)
        if (!SameValue(m_values[i], other.m_values[i]))
            return false;
    return true;
}

// Saving the work --------------------------------------------------------

namespace {

// The save's tables in the order it empties them.
const char *const kSavedWorkTables[] = {"ComDed", "CursoEscAct", "DatosModelo182", "ALMFModelo182"};

} // namespace

SaveFloor::SaveFloor(const QString &centroFile) : m_file(centroFile), m_tables(Read())
{
}

std::vector<TableRows> SaveFloor::Read() const
{
    sqlite3 *db = Open(m_file, SQLITE_OPEN_READONLY);
    std::vector<TableRows> tables;
    for (const char *table : kSavedWorkTables)
        tables.emplace_back(db, QString::fromLatin1(table));
    sqlite3_close(db);
    return tables;
}

void SaveFloor::Run() const
{
    sqlite3 *db = Open(m_file, SQLITE_OPEN_READWRITE);
    Exec(db, QStringLiteral("BEGIN"));
    for (const TableRows &table : m_tables)
        Exec(db, QStringLiteral("DELETE FROM ") + table.Table());
    // Payers before their payments, as the save writes them.
    for (auto table = m_tables.rbegin(); table != m_tables.rend(); ++table)
        table->InsertInto(db, table->Table());
    Exec(db, QStringLiteral("COMMIT"));
    sqlite3_close(db);
}

bool SaveFloor::Matches() const
{
    return SameTables(Read(), m_tables);
}

QString SaveFloor::Rows() const
{
    return CountRows(m_tables);
}

// Generating the declaration -------------------------------------------------

DeclarationFloor::DeclarationFloor(const QString &modelo182File, const QString &mailMergeFile, const QString &aeatFile)
    : m_modelo182(modelo182File), m_mailMerge(mailMergeFile)
{
    sqlite3 *db = Open(m_modelo182, SQLITE_OPEN_READONLY);
    m_ejercicio = QString::number(
        Text(db, QStringLiteral("SELECT ejercicio FROM Declarantes ORDER BY IDDeclarante DESC LIMIT 1")).toInt());
    sqlite3_close(db);
    m_declaration = ReadDeclaration();

    sqlite3 *carta = Open(m_mailMerge, SQLITE_OPEN_READONLY);
    const QString objects = Text(carta, QStringLiteral("SELECT group_concat(type || ' ' || name) FROM sqlite_master"));
    if (objects != QLatin1String("table CartaDonantes"))
        std::fprintf(stderr, "floor: the mail-merge database holds %s; only CartaDonantes is written again\n",
                     qPrintable(objects));
    // The same definition, made in the attached database.
    m_mailMergeTable = Text(carta, QStringLiteral("SELECT sql FROM sqlite_master WHERE name = 'CartaDonantes'"));
    m_mailMergeTable.insert(QStringLiteral("CREATE TABLE ").size(), QStringLiteral("carta."));
    m_mailMergeRows.emplace_back(carta, QStringLiteral("CartaDonantes"));
    sqlite3_close(carta);

    const QFileInfo aeat(aeatFile);
    m_fileOut = aeat.dir().filePath(QStringLiteral("floor-") + aeat.fileName());
    m_fileBytes = QByteArray(aeat.size(), ' ');
}

std::vector<TableRows> DeclarationFloor::ReadDeclaration() const
{
    sqlite3 *db = Open(m_modelo182, SQLITE_OPEN_READONLY);
    std::vector<TableRows> tables;
    for (const char *table : {"Declarantes", "Donantes", "CartaDonantes"})
        tables.emplace_back(db, QString::fromLatin1(table));
    tables.emplace_back(db, QStringLiteral("HistorialDonantes"), QStringLiteral("ejercicio = ") + m_ejercicio);
    sqlite3_close(db);
    return tables;
}

void DeclarationFloor::Run() const
{
    // The mail-merge database is made anew each time, as the program does.
    std::remove(m_mailMerge.toUtf8().constData());
    // With "create", ATTACH may make the new file.
    sqlite3 *db = Open(m_modelo182, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_stmt *attach = nullptr;
    Check(db, sqlite3_prepare_v2(db, "ATTACH DATABASE ? AS carta", -1, &attach, nullptr), QStringLiteral("ATTACH"));
    const QByteArray mailMerge = m_mailMerge.toUtf8();
    sqlite3_bind_text(attach, 1, mailMerge.constData(), int(mailMerge.size()), SQLITE_STATIC);
    Check(db, sqlite3_step(attach), QStringLiteral("ATTACH"));
    sqlite3_finalize(attach);

    Exec(db, QStringLiteral("BEGIN"));
    // The declarant's donors go with it (the database's trigger).
    Exec(db, QStringLiteral("DELETE FROM Declarantes"));
    Exec(db, QStringLiteral("DELETE FROM CartaDonantes"));
    Exec(db, QStringLiteral("DELETE FROM HistorialDonantes WHERE ejercicio = ") + m_ejercicio);
    for (const TableRows &table : m_declaration)
        table.InsertInto(db, table.Table());
    Exec(db, m_mailMergeTable);
    m_mailMergeRows.front().InsertInto(db, QStringLiteral("carta.CartaDonantes"));
    Exec(db, QStringLiteral("COMMIT"));
    sqlite3_close(db);

    std::FILE *file = std::fopen(m_fileOut.toUtf8().constData(), "wb");
    if (!file || std::fwrite(m_fileBytes.constData(), 1, size_t(m_fileBytes.size()), file) != size_t(m_fileBytes.size())
        || std::fclose(file) != 0) {
        std::fprintf(stderr, "floor: cannot write %s\n", qPrintable(m_fileOut));
        std::exit(1);
    }
}

bool DeclarationFloor::Matches() const
{
    sqlite3 *carta = Open(m_mailMerge, SQLITE_OPEN_READONLY);
    std::vector<TableRows> mailMerge;
    mailMerge.emplace_back(carta, QStringLiteral("CartaDonantes"));
    sqlite3_close(carta);
    return SameTables(ReadDeclaration(), m_declaration) && SameTables(mailMerge, m_mailMergeRows)
           && QFileInfo(m_fileOut).size() == FileBytes();
}

QString DeclarationFloor::Rows() const
{
    return CountRows(m_declaration) + QStringLiteral(", ") + CountRows(m_mailMergeRows, QStringLiteral("mail merge "));
}
