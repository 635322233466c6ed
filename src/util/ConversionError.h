#pragma once

#include <QString>

#include <stdexcept>

// Raised where the original routines would stop with a run-time conversion
// error (a text that is not a number where one is required). Callers that work
// on data the user typed catch it and show its message.
class ConversionError : public std::runtime_error
{
public:
    explicit ConversionError(const QString &message) : std::runtime_error(message.toStdString()), m_message(message) {}

    // The Spanish text of the error, ready to be shown to the user.
    QString message() const { return m_message; }

private:
    QString m_message;
};
