#pragma once

#include "data/Connection.h"

#include <QString>

// The mail-merge database CartaDonantes.mdb that the certificates are
// merged from: made anew, empty, before each declaration copies its rows
// into it.
namespace MailMergeDatabase {

inline constexpr char kFileName[] = "CartaDonantes.mdb";

// "Jet OLEDB:Engine Type=<type>;"
QString EngineTypeText(int engineType);

// Deletes a file at `path` and creates an empty database there in the
// format of `engineType`; returns the connection text that opens it.
// `declaration`'s connection text is brought into line with the engine
// type. Throws DatabaseError when the old file cannot be removed or the new
// one cannot be made.
QString Create(const QString &path, int engineType, Connection &declaration);

} // namespace MailMergeDatabase
