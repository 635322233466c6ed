#include "data/DatabaseError.h"

#include <QRegularExpression>

namespace {

QString Describe(const QString &message, const QString &detail, const QString &statement)
{
    QString text = message;
    if (!detail.isEmpty())
        text += QStringLiteral("\n\nDetalle técnico: ") + detail;
    if (!statement.isEmpty())
        text += QStringLiteral("\n\n") + statement;
    return text;
}

} // namespace

DatabaseError::DatabaseError(const QString &message, const QString &statement, const QString &detail)
    : std::runtime_error(::Describe(message, detail, MaskPasswords(statement)).toStdString()), m_message(message),
      m_statement(MaskPasswords(statement)), m_detail(detail)
{
}

QString DatabaseError::Describe() const
{
    return ::Describe(m_message, m_detail, m_statement);
}

QString DatabaseError::MaskPasswords(const QString &text)
{
    // "Jet OLEDB:Database Password=...", "Password=..." and "pwd=..." up to
    // the next ";" or "]" (the end of a cross-database file reference).
    static const QRegularExpression password(QStringLiteral("((?:password|pwd)\\s*=)[^;\\]]*"),
                                             QRegularExpression::CaseInsensitiveOption);
    QString masked = text;
    masked.replace(password, QStringLiteral("\\1***"));
    return masked;
}
