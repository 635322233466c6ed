#pragma once
// Rows read as "a|b|NULL" texts, a connection opened in one call, and the
// DatabaseError a piece of code throws: what the data-access tests of every
// engine compare.
#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace test_support {

// Every row of `sql`, its fields (all, or the named `columns`) joined by "|".
inline QStringList Rows(Connection &c, const QString &sql, const QStringList &columns = {})
{
    QStringList rows;
    for (Recordset rs = c.Execute(sql); !rs.Eof(); rs.MoveNext()) {
        QStringList values;
        for (int i = 0; i < (columns.isEmpty() ? rs.FieldCount() : int(columns.size())); ++i) {
            const QVariant v = columns.isEmpty() ? rs.Fields(i) : rs.Fields(columns.at(i));
            values << (v.isNull() ? QStringLiteral("NULL") : v.toString());
        }
        rows << values.join(QLatin1Char('|'));
    }
    return rows;
}

inline QString Value(Connection &c, const QString &sql)
{
    return Rows(c, sql).value(0);
}

inline ConnectionPtr OpenConnection(const QString &connectionString, const QString &baseFolder = QString())
{
    auto c = std::make_shared<Connection>();
    c->SetBaseFolder(baseFolder);
    c->Open(connectionString);
    return c;
}

// The DatabaseError the code throws (fails the test when nothing is thrown).
template <typename F> DatabaseError ExpectDatabaseError(F &&code)
{
    try {
        code();
    } catch (const DatabaseError &error) {
        return error;
    }
    ADD_FAILURE() << "no DatabaseError was thrown";
    return DatabaseError(QString());
}

} // namespace test_support
