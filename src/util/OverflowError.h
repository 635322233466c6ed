#pragma once

#include "util/ConversionError.h"

// A number that does not fit the integer type it is converted to (CInt/CLng).
class OverflowError : public ConversionError
{
public:
    explicit OverflowError(const QString &message) : ConversionError(message) {}
};
