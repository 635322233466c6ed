#include "data/SchemaSql.h"

#include "data/Connection.h"
#include "data/DatabaseError.h"
#include "data/PostgresSchema.h"

#include <QSqlError>

namespace SchemaSql {

void Exec(QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    if (!query.exec(sql))
        throw DatabaseError(query.lastError().text(), sql);
}

QVariant Scalar(QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    if (!query.exec(sql))
        throw DatabaseError(query.lastError().text(), sql);
    return query.next() ? query.value(0) : QVariant();
}

QSqlQuery Prepare(QSqlDatabase &db, const QString &sql)
{
    QSqlQuery query(db);
    if (!query.prepare(sql))
        throw DatabaseError(query.lastError().text(), sql);
    return query;
}

void Run(QSqlQuery &query, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    if (!query.exec())
        throw DatabaseError(query.lastError().text(), query.lastQuery());
}

bool IsEmpty(QSqlDatabase &db, const QString &table)
{
    return Scalar(db, QStringLiteral("SELECT COUNT(*) FROM ") + table).toLongLong() == 0;
}

void SetUserVersion(QSqlDatabase &db, int version)
{
    if (PostgresSchema::IsServer(db)) {
        PostgresSchema::SetVersion(db, version);
        return;
    }
    Exec(db, QStringLiteral("PRAGMA user_version = %1").arg(version));
}

} // namespace SchemaSql
