#pragma once

#include <QString>
#include <QStringList>

// The two certificate templates that ship inside the program (Qt resources
// under ":/merge/templates/").
namespace CertificateTemplates {

inline constexpr char kTemplate97[] = "Certificado de Donaciones97.doc";
inline constexpr char kTemplate2000[] = "Certificado de Donaciones2000.doc";

// The resource path of a template by file name.
QString ResourcePath(const QString &fileName);

// Writes both templates into `reportsFolder` (created if missing). A
// template already there is left alone, since the school may have adapted
// it (its letterhead, the signatory). Returns the files written. Throws
// MergeError when the folder or a file cannot be written.
QStringList Install(const QString &reportsFolder);

} // namespace CertificateTemplates

// The name the demo installer calls.
inline QStringList InstallTemplates(const QString &reportsFolder)
{
    return CertificateTemplates::Install(reportsFolder);
}
