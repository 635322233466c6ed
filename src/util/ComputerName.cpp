#include "util/ComputerName.h"

#include "util/TextRoutines.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <QSysInfo>
#endif

QString ComputerName()
{
#ifdef _WIN32
    wchar_t buffer[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD length = MAX_COMPUTERNAME_LENGTH + 1;
    if (!GetComputerNameW(buffer, &length))
        return QString();
    return CutAtNul(QString::fromWCharArray(buffer, int(length)));
#else
    return QSysInfo::machineHostName();
#endif
}
