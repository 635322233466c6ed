#include "data/DatabaseError.h"

namespace {

QString Describe(const QString &message, const QString &statement)
{
    if (statement.isEmpty())
        return message;
    return message + QStringLiteral("\n\n") + statement;
}

} // namespace

DatabaseError::DatabaseError(const QString &message, const QString &statement)
    : std::runtime_error(::Describe(message, statement).toStdString())
    , m_message(message)
    , m_statement(statement)
{
}

QString DatabaseError::Describe() const
{
    return ::Describe(m_message, m_statement);
}
