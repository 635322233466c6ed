#pragma once

#include <QString>

#include <QtGlobal>

// Read access to a registry of keys, subkeys and named text values, as the
// Office detection needs it. Every call reports failure through its result;
// nothing throws. Keys are opaque handles; 0 is never a valid handle.
class RegistryReader
{
public:
    using Key = quintptr;

    enum class Hive { LocalMachine, ClassesRoot };

    virtual ~RegistryReader() = default;

    // Connects to a root hive of `computer`; the handle is closed with CloseKey.
    virtual bool Connect(const QString &computer, Hive hive, Key *root) = 0;
    // Opens `path` (subkeys separated by "\") below `parent` with read access.
    virtual bool OpenKey(Key parent, const QString &path, Key *key) = 0;
    // The name of the subkey number `index` (from 0) of `key`; false past the last.
    virtual bool EnumKey(Key key, int index, QString *name) = 0;
    // The text of the value `valueName` of `key`; the empty name reads the default value.
    virtual bool QueryValue(Key key, const QString &valueName, QString *value) = 0;
    virtual void CloseKey(Key key) = 0;
};
