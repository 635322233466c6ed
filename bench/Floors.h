#pragma once

// The floors of the donor step's benchmark: what each timed operation costs
// at least, the same reads or writes done with the plainest code straight on
// SQLite's own interface. The write floors take the rows the program itself
// wrote (after its timed runs) and write exactly those again, so that both
// sides send the same rows to the same tables.

#include "data/Installation.h"

#include <QByteArray>
#include <QString>

#include <vector>

struct sqlite3;
struct sqlite3_value;

// The same reads as the donor grid's build: every activity's donor query (as
// SQLite runs it), one row per key; with saved work, the saved payer and
// amount of every cell, in one transaction.
void ReadGridFloor(const InstallationPaths &paths, const InstallationDescription &school, bool loaded);

// A table's rows as SQLite holds them, every value kept whole (its type and
// its bytes), in the table's own order.
class TableRows
{
public:
    // Copies the rows of `table` (those `where` selects, when given).
    TableRows(sqlite3 *db, const QString &table, const QString &where = {});
    ~TableRows();
    TableRows(TableRows &&other) noexcept;
    TableRows(const TableRows &) = delete;
    TableRows &operator=(const TableRows &) = delete;

    const QString &Table() const { return m_table; }
    qsizetype Count() const { return m_columns ? qsizetype(m_values.size()) / m_columns : 0; }

    // Inserts every row into `target` (this table, or one of the same form)
    // with one prepared statement.
    void InsertInto(sqlite3 *db, const QString &target) const;

    // Whether `other` holds the same values in the same order.
    bool SameAs(const TableRows &other) const;

private:
    QString m_table;
    int m_columns = 0;
    std::vector<sqlite3_value *> m_values; // row after row
};

// Saving the donor step's work: the save's four tables of the school
// database emptied and filled again with the rows the program's save left.
class SaveFloor
{
public:
    explicit SaveFloor(const QString &centroFile);
    void Run() const;
    // Whether the school database holds exactly the rows taken.
    bool Matches() const;
    // "ComDed 17, CursoEscAct 24, ...": the rows written per table.
    QString Rows() const;

private:
    std::vector<TableRows> Read() const;

    QString m_file;
    std::vector<TableRows> m_tables;
};

// Generating the declaration: the declarant, donor, certificate and history
// rows of the declaration database replaced, the mail-merge database made
// anew with its certificate rows, all in one transaction; then a file of
// the AEAT file's size written.
class DeclarationFloor
{
public:
    DeclarationFloor(const QString &modelo182File, const QString &mailMergeFile, const QString &aeatFile);
    void Run() const;
    // Whether both databases hold exactly the rows taken.
    bool Matches() const;
    // "Declarantes 1, Donantes 31000, ...": the rows written per table.
    QString Rows() const;
    qint64 FileBytes() const { return qint64(m_fileBytes.size()); }

private:
    std::vector<TableRows> ReadDeclaration() const;

    QString m_modelo182;
    QString m_mailMerge;
    QString m_fileOut;
    QString m_ejercicio;      // the tax year whose history rows the generator replaces
    QString m_mailMergeTable; // the certificate table's definition in the mail-merge database
    std::vector<TableRows> m_declaration;
    std::vector<TableRows> m_mailMergeRows;
    QByteArray m_fileBytes;
};
