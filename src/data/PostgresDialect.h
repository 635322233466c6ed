#pragma once

#include <QString>

// The few Jet forms of the program's statements that PostgreSQL does not
// accept, or reads with another meaning, adapted just before a statement
// runs on a server. Everything else is sent as written. The host's tables
// are created with unquoted names, which the server folds to lower case, so
// the statements' mixed-case names find them as Access found them.
namespace PostgresDialect {

// The whole adaptation, in this order: Boolean literals, bracketed names,
// NULLs in the final ORDER BY.
QString Adapt(const QString &jetSql);

// [Name] -> "name": the bracket becomes a quoted identifier folded to lower
// case as the server folds an unquoted one (ASCII letters only).
QString QuoteBracketedNames(const QString &sql);

// Jet sorts NULL below every value; PostgreSQL above. Each key of the
// statement's final ORDER BY (outside parentheses) gets NULLS FIRST, or
// NULLS LAST after DESC, unless it says where its NULLs go.
QString OrderNullsAsJet(const QString &sql);

} // namespace PostgresDialect
