#pragma once

#include <QString>
#include <stdexcept>

// A failure of the certificate merge, with the Spanish text the user is
// shown (what went wrong and what to do).
class MergeError : public std::runtime_error
{
public:
    explicit MergeError(const QString &message);

    QString Message() const { return m_message; }

private:
    QString m_message;
};
