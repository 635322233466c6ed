#pragma once

#include "session/ProgramSettings.h"
#include "session/SesionHost.h"

#include <QString>

// The host stand-in's session settings file (INI): [Sesion] holds the host's
// session properties under their exact names, [Modelo182] this program's own
// settings. Relative paths are taken from the file's folder, and so are the
// "Data Source" paths of every connection string (including the school
// years' strings stored in the host's tables).
class SessionSettings
{
public:
    // Reads the file; throws SessionError when it is missing, has a
    // malformed line, no [Sesion] section, or a number that is none or does
    // not fit in 64 bits (before anything is opened).
    static SessionSettings Load(const QString &iniFile);

    // Builds the host's session object: every connection property is opened
    // (DatabaseError when one cannot be), paths made absolute, "true"/"false"
    // read as Booleans and whole numbers as integers.
    SesionHostPtr BuildSession() const;

    const ProgramSettings &Program() const { return m_program; }
    QString Folder() const { return m_folder; }
    QString File() const { return m_file; }
    // The raw [Sesion] values, in file order.
    QList<QPair<QString, QString>> Values() const { return m_values; }

private:
    QString m_file;
    QString m_folder;
    QList<QPair<QString, QString>> m_values;
    ProgramSettings m_program;
};
