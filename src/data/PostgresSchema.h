#pragma once

#include <QLatin1String>
#include <QSqlDatabase>

// What the creation routines of the host's databases do differently on a
// PostgreSQL server: the text collation and the schema version table.
namespace PostgresSchema {

// The collation of every text column on the server: ICU's Spanish at the
// second level, so equality ignores case ("ÁLVAREZ" = "álvarez") but not
// accents ("alvarez" <> "álvarez"), and ordering is Spanish ("ñ" after
// "n", "Álvarez" beside "Alonso"). Nondeterministic, so that equality
// really ignores case.
inline constexpr QLatin1String kTextCollation("es_ci");
// The table holding the schema version (one row).
inline constexpr QLatin1String kVersionTable("m182_version");

// True for a Qt connection to a PostgreSQL server.
bool IsServer(const QSqlDatabase &db);

// Creates the text collation in the connection's database when missing.
// Throws DatabaseError (in Spanish) when the server has no ICU support.
void CreateTextCollation(QSqlDatabase &db);

// The version recorded in the version table; 0 when there is none.
int Version(QSqlDatabase &db);
// Records `version`, creating the table when missing.
void SetVersion(QSqlDatabase &db, int version);

} // namespace PostgresSchema
