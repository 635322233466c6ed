#ifdef _WIN32

#include "util/WindowsRegistry.h"

#include "util/TextRoutines.h"

#include <windows.h>

#ifdef _MSC_VER
#pragma comment(lib, "advapi32.lib")
#endif

#include <vector>

namespace {

HKEY toHkey(RegistryReader::Key key)
{
    return reinterpret_cast<HKEY>(key);
}

RegistryReader::Key fromHkey(HKEY key)
{
    return reinterpret_cast<RegistryReader::Key>(key);
}

std::wstring wide(const QString &text)
{
    return text.toStdWString();
}

} // namespace

bool WindowsRegistry::Connect(const QString &computer, Hive hive, Key *root)
{
    HKEY predefined = hive == Hive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CLASSES_ROOT;
    const std::wstring name = wide(computer);
    HKEY result = nullptr;
    if (RegConnectRegistryW(name.empty() ? nullptr : name.c_str(), predefined, &result) != ERROR_SUCCESS)
        return false;
    *root = fromHkey(result);
    return true;
}

bool WindowsRegistry::OpenKey(Key parent, const QString &path, Key *key)
{
    if (parent == 0)
        return false;
    const std::wstring subKey = wide(path);
    HKEY result = nullptr;
    // 0x20019: KEY_READ.
    if (RegOpenKeyExW(toHkey(parent), subKey.c_str(), 0, KEY_READ, &result) != ERROR_SUCCESS)
        return false;
    *key = fromHkey(result);
    return true;
}

bool WindowsRegistry::EnumKey(Key key, int index, QString *name)
{
    if (key == 0)
        return false;
    std::vector<wchar_t> buffer(2000, L'\0');
    DWORD length = DWORD(buffer.size());
    if (RegEnumKeyExW(toHkey(key), DWORD(index), buffer.data(), &length, nullptr, nullptr, nullptr, nullptr)
        != ERROR_SUCCESS)
        return false;
    *name = CutAtNul(QString::fromWCharArray(buffer.data(), int(length)));
    return true;
}

bool WindowsRegistry::QueryValue(Key key, const QString &valueName, QString *value)
{
    if (key == 0)
        return false;
    const std::wstring name = wide(valueName);
    DWORD type = 0;
    DWORD bytes = 0;
    if (RegQueryValueExW(toHkey(key), name.empty() ? nullptr : name.c_str(), nullptr, &type, nullptr, &bytes)
        != ERROR_SUCCESS)
        return false;
    if (type != REG_SZ && type != REG_EXPAND_SZ)
        return false;
    std::vector<wchar_t> buffer(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = DWORD(buffer.size() * sizeof(wchar_t));
    if (RegQueryValueExW(toHkey(key), name.empty() ? nullptr : name.c_str(), nullptr, &type,
                         reinterpret_cast<LPBYTE>(buffer.data()), &bytes)
        != ERROR_SUCCESS)
        return false;
    *value = CutAtNul(QString::fromWCharArray(buffer.data(), int(bytes / sizeof(wchar_t))));
    return true;
}

void WindowsRegistry::CloseKey(Key key)
{
    if (key != 0)
        RegCloseKey(toHkey(key));
}

#endif
