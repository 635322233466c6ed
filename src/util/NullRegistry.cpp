#include "util/NullRegistry.h"

bool NullRegistry::Connect(const QString &, Hive, Key *)
{
    return false;
}

bool NullRegistry::OpenKey(Key, const QString &, Key *)
{
    return false;
}

bool NullRegistry::EnumKey(Key, int, QString *)
{
    return false;
}

bool NullRegistry::QueryValue(Key, const QString &, QString *)
{
    return false;
}

void NullRegistry::CloseKey(Key)
{
}
