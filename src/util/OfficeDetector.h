#pragma once

#include "util/ComputerName.h"
#include "util/RegistryReader.h"

#include <QString>
#include <QStringList>

// Finds the installed Office version in the registry, as the certificate
// merge needs it to choose the database format and the letter template.
//
// The installed software of the computer is scanned; for every entry whose
// display name contains "Microsoft Office" the current version of seven Office
// programs is read, and the last program in the order Word, Excel, Access,
// PowerPoint, FrontPage, Outlook, Publisher with a recognised number decides.
// Entries whose name contains "Notes" add the Lotus Notes versions to the list
// of software found. Every registry failure is silent.
class OfficeDetector
{
public:
    explicit OfficeDetector(RegistryReader &registry, ComputerNameSource computerName = ComputerName);

    // "Versión 97", "Versión 2000", "Versión XP", or "" when none is recognised.
    // Each call scans the registry again.
    QString Detect();

    // What the last Detect found: "Microsoft <program> <version text>" and
    // "Lotus Notes <version>" items, in the order they were found.
    QStringList FoundSoftware() const { return m_foundSoftware; }

    // The registry failures of the last Detect. They are never shown; kept
    // only so that the behaviour on failure can be checked.
    QStringList Diagnostics() const { return m_diagnostics; }

private:
    void scanInstalledSoftware();
    void scanLotusNotes(RegistryReader::Key machine);
    void scanOfficePrograms();

    RegistryReader &m_registry;
    ComputerNameSource m_computerNameSource;
    QString m_computer;
    QString m_version;
    QStringList m_foundSoftware;
    QStringList m_diagnostics;
};

// The Office version of this computer from the platform's registry (Windows),
// or "" where there is none.
QString ObtenerVersionOffice();
