#pragma once

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QString>

// A connection observer that lets the first statements through and makes
// the statement number `failAt` (counted from 1) fail as a database error
// would, before it runs: how the tests prove that an action failing midway
// leaves the previous data whole. Statements after the failure run again.
class FailingConnection
{
public:
    static inline const QString kMessage = QStringLiteral("Fallo provocado por la prueba");

    explicit FailingConnection(int failAt) : m_failAt(failAt) {}

    // The observer to put on a connection (or on a wizard run); `next` still
    // sees every statement first.
    Connection::Observer Observer(Connection::Observer next = {})
    {
        return [this, next](const Connection &connection, const QString &statement) {
            if (next)
                next(connection, statement);
            if (++m_seen == m_failAt) {
                m_failed = statement;
                throw DatabaseError(kMessage, statement, QStringLiteral("injected failure"));
            }
        };
    }

    int Seen() const { return m_seen; }
    // The statement that was made to fail ("" while none was).
    QString Failed() const { return m_failed; }

private:
    int m_failAt;
    int m_seen = 0;
    QString m_failed;
};
