#include "util/OfficeDetector.h"

#include "util/NullRegistry.h"
#include "util/WindowsRegistry.h"

#include <utility>

namespace {

const QString kUninstallPath = QStringLiteral("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
const QString kLotusNotesPath = QStringLiteral("SOFTWARE\\Lotus\\Notes");
// The programs in the order in which they are read; the last recognised wins.
const QString kCurVerKeys = QStringLiteral(
    "Word.Application\\CurVer|Excel.Application\\CurVer|Access.Application\\CurVer|"
    "PowerPoint.Application\\CurVer|FrontPage.Application\\CurVer|OutLook.Application\\CurVer|"
    "Publisher.Application\\CurVer");

// The version text of a program's major version number; `previous` for any
// number that is not recognised.
QString versionText(const QString &number, const QString &previous)
{
    if (number == QLatin1String("8"))
        return QStringLiteral("Versión 97");
    if (number == QLatin1String("9") || number == QLatin1String("4"))
        return QStringLiteral("Versión 2000");
    if (number == QLatin1String("10") || number == QLatin1String("5"))
        return QStringLiteral("Versión XP");
    return previous;
}

} // namespace

OfficeDetector::OfficeDetector(RegistryReader &registry, ComputerNameSource computerName)
    : m_registry(registry), m_computerNameSource(std::move(computerName))
{
}

QString OfficeDetector::Detect()
{
    m_version.clear();
    m_computer = m_computerNameSource ? m_computerNameSource() : QString();
    m_foundSoftware.clear();
    m_diagnostics.clear();
    scanInstalledSoftware();
    return m_version;
}

void OfficeDetector::scanInstalledSoftware()
{
    RegistryReader::Key machine = 0;
    const bool connected = m_registry.Connect(m_computer, RegistryReader::Hive::LocalMachine, &machine);
    if (!connected)
        m_diagnostics << QStringLiteral("Cannot connect to machine.") + m_computer;

    RegistryReader::Key uninstall = 0;
    if (!connected || !m_registry.OpenKey(machine, kUninstallPath, &uninstall)) {
        m_diagnostics << QStringLiteral("Cannot open key. Computer: ") + m_computer;
        if (connected)
            m_registry.CloseKey(machine);
        return;
    }

    QString subkeyName;
    for (int index = 0; m_registry.EnumKey(uninstall, index, &subkeyName); ++index) {
        const QString path = kUninstallPath + QLatin1Char('\\') + subkeyName;
        RegistryReader::Key entry = 0;
        if (!m_registry.OpenKey(machine, path, &entry)) {
            m_diagnostics << QStringLiteral("Unable to open registry key:") + path + QStringLiteral(" Machine: ")
                                 + m_computer;
            continue;
        }
        QString displayName;
        if (!m_registry.QueryValue(entry, QStringLiteral("DisplayName"), &displayName))
            displayName.clear();
        if (displayName.contains(QLatin1String("Notes")))
            scanLotusNotes(machine);
        if (displayName.contains(QLatin1String("Microsoft Office")))
            scanOfficePrograms();
        m_registry.CloseKey(entry);
    }
    m_registry.CloseKey(uninstall);
    m_registry.CloseKey(machine);
}

void OfficeDetector::scanLotusNotes(RegistryReader::Key machine)
{
    RegistryReader::Key notes = 0;
    if (!m_registry.OpenKey(machine, kLotusNotesPath, &notes))
        return;
    QString version;
    for (int index = 0; m_registry.EnumKey(notes, index, &version); ++index)
        m_foundSoftware << QStringLiteral("Lotus Notes ") + version;
    m_registry.CloseKey(notes);
}

void OfficeDetector::scanOfficePrograms()
{
    RegistryReader::Key classes = 0;
    if (!m_registry.Connect(m_computer, RegistryReader::Hive::ClassesRoot, &classes)) {
        m_diagnostics << QStringLiteral("Cannot connect to host ") + m_computer;
        return;
    }
    QString version;
    for (const QString &keyPath : kCurVerKeys.split(QLatin1Char('|'))) {
        RegistryReader::Key curVer = 0;
        if (!m_registry.OpenKey(classes, keyPath, &curVer))
            continue;
        QString value;
        if (m_registry.QueryValue(curVer, QString(), &value)) {
            // "Word.Application.9": program, "Application", major version.
            const QStringList parts = value.split(QLatin1Char('.'));
            version = versionText(parts.value(2), version);
            m_version = version;
            m_foundSoftware << QStringLiteral("Microsoft ") + parts.value(0) + QLatin1Char(' ') + version;
        }
        m_registry.CloseKey(curVer);
    }
    m_registry.CloseKey(classes);
}

QString ObtenerVersionOffice()
{
#ifdef _WIN32
    WindowsRegistry registry;
#else
    NullRegistry registry;
#endif
    OfficeDetector detector(registry);
    return detector.Detect();
}
