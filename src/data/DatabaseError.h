#pragma once

#include <QString>
#include <stdexcept>

// A failure of the database layer. The message is a Spanish sentence a
// school office understands (which database, what is wrong, what to do);
// the detail is the database's own words and the statement (or connection
// string) is what failed, so a message box can show all three and a test
// can assert each. Passwords never reach the texts: "pwd=" and "Password="
// values are shown as "***".
class DatabaseError : public std::runtime_error
{
public:
    DatabaseError(const QString &message, const QString &statement = QString(), const QString &detail = QString());

    QString Message() const { return m_message; }
    QString Detail() const { return m_detail; }
    QString Statement() const { return m_statement; }
    // The message, then "Detalle técnico: " and the detail, then the
    // statement, each in its own paragraph when present.
    QString Describe() const;

    // `text` with every password value replaced by "***".
    static QString MaskPasswords(const QString &text);

private:
    QString m_message;
    QString m_statement;
    QString m_detail;
};
