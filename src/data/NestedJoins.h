#pragma once

#include <QString>

namespace JetDialect {

// Jet wants a chain of joins written right-nested, each inner pair in
// parentheses:
//   A INNER JOIN (B LEFT JOIN (C LEFT JOIN D ON D.x=C.y) ON C.z=B.w) ON B.v=A.u
// SQLite runs such a statement as written, but cannot flatten a join on the
// right of a LEFT JOIN: it first materialises the whole inner join (every
// family, every address) for each query. Written as the plain chain
//   A INNER JOIN B ON B.v=A.u LEFT JOIN C ON C.z=B.w LEFT JOIN D ON D.x=C.y
// it reads only the rows it needs, through the primary keys.
//
// Returns the FROM clause of a SELECT rewritten that way when some LEFT JOIN
// has a parenthesised right side and the two forms are certainly the same
// query, and the statement unchanged otherwise (SQLite flattens inner joins
// on its own, and a plan left alone keeps its row order). The forms are the same
// when every ON condition is a conjunction of equalities between
// qualified columns of the tables in scope, and, under a LEFT JOIN, every
// inner join is a LEFT JOIN whose condition ties its table to an earlier one
// of the same parentheses (so a missing outer row leaves the inner ones
// missing too, as the nested form does).
QString FlattenNestedJoins(const QString &sql);

} // namespace JetDialect
