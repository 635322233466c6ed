#include "data/PostgresSchema.h"

#include "data/DatabaseError.h"
#include "data/SchemaSql.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

namespace PostgresSchema {

bool IsServer(const QSqlDatabase &db)
{
    return db.driverName() == QLatin1String("QPSQL");
}

void CreateTextCollation(QSqlDatabase &db)
{
    const QString exists = QStringLiteral("SELECT 1 FROM pg_catalog.pg_collation WHERE collname = '") + kTextCollation
                           + QStringLiteral("' AND collnamespace = 'public'::regnamespace");
    if (SchemaSql::Scalar(db, exists).isValid())
        return;
    const QString create = QStringLiteral("CREATE COLLATION public.") + kTextCollation
                           + QStringLiteral(" (provider = icu, locale = 'es-u-ks-level2', deterministic = false)");
    QSqlQuery query(db);
    if (!query.exec(create))
        throw DatabaseError(QStringLiteral("El servidor PostgreSQL no puede crear la comparación de textos en español "
                                           "(necesita la biblioteca ICU, versión 12 o posterior del servidor)."),
                            create, query.lastError().text());
}

int Version(QSqlDatabase &db)
{
    const QString exists = QStringLiteral("SELECT to_regclass('public.") + kVersionTable + QStringLiteral("') IS NOT NULL");
    if (!SchemaSql::Scalar(db, exists).toBool())
        return 0;
    return SchemaSql::Scalar(db, QStringLiteral("SELECT max(version) FROM public.") + kVersionTable).toInt();
}

void SetVersion(QSqlDatabase &db, int version)
{
    SchemaSql::Exec(db, QStringLiteral("CREATE TABLE IF NOT EXISTS public.") + kVersionTable
                            + QStringLiteral(" (version INTEGER NOT NULL)"));
    SchemaSql::Exec(db, QStringLiteral("DELETE FROM public.") + kVersionTable);
    SchemaSql::Exec(db, QStringLiteral("INSERT INTO public.") + kVersionTable + QStringLiteral(" (version) VALUES (")
                            + QString::number(version) + QLatin1Char(')'));
}

} // namespace PostgresSchema
