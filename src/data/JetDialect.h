#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// The Jet SQL forms that the program's statements use and SQLite does not
// understand as Jet means them. Square-bracket identifiers and Access's
// nested parenthesised joins run on SQLite as written, so they need nothing.
namespace JetDialect {

// "SELECT [T].* INTO [T] FROM [<file>;pwd=<password>].[T] ORDER BY <cols>":
// copies a table of another database file into a new table of this one.
struct CrossDatabaseCopy
{
    QString targetTable; // the table created here
    QString sourceFile;  // the file as written (may be relative, may hold blanks)
    QString sourceTable; // the table read there
    QString orderBy;     // the ORDER BY list as written, or empty
};

// Recognises the cross-database copy; anything else gives nothing.
std::optional<CrossDatabaseCopy> ParseCrossDatabaseCopy(const QString &sql);

// The SQLite statements that run a copy, with the source file already
// resolved to a path: ATTACH, CREATE TABLE ... AS SELECT, DETACH.
QString AttachStatement(const QString &resolvedFile, const QString &alias);
QString CreateTableAsStatement(const CrossDatabaseCopy &copy, const QString &alias);
QString DetachStatement(const QString &alias);
// The source table's own CREATE statement, read from the attached file.
QString SourceDefinitionQuery(const CrossDatabaseCopy &copy, const QString &alias);
// The copy as a table created with the source's column definitions (so its
// text columns keep their collation) and filled in the given order; none
// when the definition cannot be read.
std::optional<QStringList> CopyWithDefinition(const CrossDatabaseCopy &copy, const QString &alias,
                                              const QString &sourceDefinition);

// Whether `c` opens a quoted text ('…', "…", `…`) or a bracketed name ([…]).
bool OpensQuoted(QChar c);
// The position just past the quoted text or bracketed name that opens at
// `open` (a doubled quote stays inside it); -1 when it is never closed.
qsizetype QuotedEnd(const QString &sql, qsizetype open);

// Jet's Boolean literals True and False are -1 and 0; SQLite reads TRUE as 1,
// so they are replaced, outside quoted text and bracketed names.
QString ReplaceBooleanLiterals(const QString &sql);

} // namespace JetDialect
