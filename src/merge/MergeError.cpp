#include "merge/MergeError.h"

MergeError::MergeError(const QString &message) : std::runtime_error(message.toStdString()), m_message(message)
{
}
