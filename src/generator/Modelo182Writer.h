#pragma once

#include "generator/Modelo182Options.h"
#include "generator/Modelo182Result.h"
#include "generator/ProgressSink.h"

#include <QString>

class Connection;

// Writes the tax agency's Modelo 182 file from the declaration tables of
// Modelo182.mdb (the newest `Declarantes` row and its `Donantes` rows):
//  - the declarant is checked first, each donor row as it is read (one
//    pass in donor order); any problem ends the run with `rechazos` filled,
//    listed in the order of the table, and nothing kept: the records
//    already written go with the temporary file, the history is written
//    only once every row has passed;
//  - the file ("Modelo182_<ejercicio>.txt" in the reports folder unless
//    the options name one) is written to a temporary file beside it and
//    renamed into place, so a failed run leaves the previous file whole;
//  - each donor's total for the year replaces the year's entry in
//    `HistorialDonantes` (created when missing).
// Everything runs in one transaction (the caller's, when one is open), so
// every read sees the same rows; a refused or failed run rolls its own
// transaction back.
// A file that cannot be written gives `error`; a database failure throws
// DatabaseError. The one path for the donor window and the command line.
Modelo182Result EscribirModelo182(Connection &connection, const Modelo182Options &options, ProgressSink &progress);

// The file a run writes for a tax year.
QString Modelo182FilePath(const Modelo182Options &options, const QString &ejercicio);
