#pragma once

#include "util/RegistryReader.h"

// A registry without keys, for platforms that have none: every connection
// fails, so the Office detection finds nothing.
class NullRegistry : public RegistryReader
{
public:
    bool Connect(const QString &computer, Hive hive, Key *root) override;
    bool OpenKey(Key parent, const QString &path, Key *key) override;
    bool EnumKey(Key key, int index, QString *name) override;
    bool QueryValue(Key key, const QString &valueName, QString *value) override;
    void CloseKey(Key key) override;
};
