#pragma once

#include "merge/Clock.h"

#include <QString>

class Connection;

// The donors' certificates as the donor window prints them: the template
// merged over the mail-merge database into one document of letters, written
// next to the template.
namespace Certificates {

// The merged document's file name.
inline constexpr char kOutputFileName[] = "Certificados de Donaciones.docx";

// Merges `templatePath` over CartaDonantes.mdb at `cartaDonantesPath`, with
// the declarant read through `declaration` (Modelo182.mdb) and the date of
// `clock`, into kOutputFileName in the template's folder, replacing an
// earlier one; returns that path. Throws MergeError with a Spanish message
// (missing or damaged template, missing database, no declarant, no donor,
// the output not writable); nothing is written then.
QString Merge(const QString &templatePath, const QString &cartaDonantesPath, Connection &declaration,
              const Clock &clock = SystemClock());

// The merged document's path for a template.
QString OutputPathFor(const QString &templatePath);

} // namespace Certificates
