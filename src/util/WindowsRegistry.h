#pragma once

#ifdef _WIN32

#include "util/RegistryReader.h"

// The Windows registry through advapi32, read-only.
class WindowsRegistry : public RegistryReader
{
public:
    bool Connect(const QString &computer, Hive hive, Key *root) override;
    bool OpenKey(Key parent, const QString &path, Key *key) override;
    bool EnumKey(Key key, int index, QString *name) override;
    bool QueryValue(Key key, const QString &valueName, QString *value) override;
    void CloseKey(Key key) override;
};

#endif
