#pragma once

#include <QString>
#include <stdexcept>

// A failure of the database layer: carries the database's own message and
// the statement (or connection string) that failed, so a message box can
// show both and a test can assert either.
class DatabaseError : public std::runtime_error
{
public:
    DatabaseError(const QString &message, const QString &statement = QString());

    QString Message() const { return m_message; }
    QString Statement() const { return m_statement; }
    // "message" or "message\n\nstatement", as the user is shown it.
    QString Describe() const;

private:
    QString m_message;
    QString m_statement;
};
