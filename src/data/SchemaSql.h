#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

class Connection;

// Small helpers of the creation routines and the installation builder. They
// work on the Qt connection directly, so building a database neither goes
// through the Jet shims nor shows up among the statements a test observes.
namespace SchemaSql {

// Runs one statement; throws DatabaseError with the database's message and
// the statement.
void Exec(QSqlDatabase &db, const QString &sql);

// A single value of the first row of a query (null when there is no row).
QVariant Scalar(QSqlDatabase &db, const QString &sql);

// Prepares a statement for repeated execution with bound values.
QSqlQuery Prepare(QSqlDatabase &db, const QString &sql);
// Runs a prepared statement with the values bound in order.
void Run(QSqlQuery &query, const QVariantList &values);

// True when the table holds no row.
bool IsEmpty(QSqlDatabase &db, const QString &table);

// Sets PRAGMA user_version (on a server, the version table).
void SetUserVersion(QSqlDatabase &db, int version);

} // namespace SchemaSql
