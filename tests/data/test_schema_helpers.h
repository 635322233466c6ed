#pragma once

// Helpers shared by the tests of the database creation, seeds, read model,
// installation builder and demo.

#include "data/Connection.h"
#include "data/Recordset.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace schema_test {

// Column names of a table in their physical order.
inline QStringList Columns(Connection &connection, const QString &table)
{
    QStringList names;
    QSqlQuery query(connection.Database());
    query.exec(QStringLiteral("PRAGMA table_info(") + table + QLatin1Char(')'));
    while (query.next())
        names << query.value(1).toString();
    return names;
}

// Tables of the database (SQLite's own left out), sorted by name.
inline QStringList Tables(Connection &connection)
{
    QStringList names;
    QSqlQuery query(connection.Database());
    query.exec(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' "
                              "AND name NOT LIKE 'sqlite_%' ORDER BY name"));
    while (query.next())
        names << query.value(0).toString();
    return names;
}

// The "CREATE TABLE" text of a table as SQLite keeps it.
inline QString TableSql(Connection &connection, const QString &table)
{
    QSqlQuery query(connection.Database());
    query.exec(QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = '") + table
               + QLatin1Char('\''));
    return query.next() ? query.value(0).toString() : QString();
}

// (column name, declared type) pairs of a table.
inline QList<QPair<QString, QString>> ColumnTypes(Connection &connection, const QString &table)
{
    QList<QPair<QString, QString>> columns;
    QSqlQuery query(connection.Database());
    query.exec(QStringLiteral("PRAGMA table_info(") + table + QLatin1Char(')'));
    while (query.next())
        columns.append({query.value(1).toString(), query.value(2).toString()});
    return columns;
}

inline int UserVersion(Connection &connection)
{
    QSqlQuery query(connection.Database());
    query.exec(QStringLiteral("PRAGMA user_version"));
    return query.next() ? query.value(0).toInt() : -1;
}

inline qint64 Count(Connection &connection, const QString &table)
{
    Recordset rs = connection.Execute(QStringLiteral("SELECT COUNT(*) AS n FROM ") + table);
    return rs.Fields(QStringLiteral("n")).toLongLong();
}

// Every row of a statement, each as its values joined by "|" (null as "NULL").
inline QStringList Rows(Connection &connection, const QString &sql)
{
    QStringList rows;
    Recordset rs = connection.Execute(sql);
    while (!rs.Eof()) {
        QStringList values;
        for (int i = 0; i < rs.FieldCount(); ++i) {
            const QVariant value = rs.Fields(i);
            values << (value.isNull() ? QStringLiteral("NULL") : value.toString());
        }
        rows << values.join(QLatin1Char('|'));
        rs.MoveNext();
    }
    return rows;
}

// Every row of a statement, each as the named columns joined by "|".
inline QStringList Pick(Connection &connection, const QString &sql, const QStringList &columns)
{
    QStringList rows;
    Recordset rs = connection.Execute(sql);
    while (!rs.Eof()) {
        QStringList values;
        for (const QString &column : columns) {
            const QVariant value = rs.Fields(column);
            values << (value.isNull() ? QStringLiteral("NULL") : value.toString());
        }
        rows << values.join(QLatin1Char('|'));
        rs.MoveNext();
    }
    return rows;
}

// Restores the connections' base folder when a test that changed it ends.
class BaseFolderGuard
{
public:
    BaseFolderGuard() : m_previous(Connection::BaseFolder()) {}
    ~BaseFolderGuard() { Connection::SetBaseFolder(m_previous); }

private:
    QString m_previous;
};

} // namespace schema_test
