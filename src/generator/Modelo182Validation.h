#pragma once

#include "generator/DeclarationRows.h"
#include "generator/Modelo182Options.h"
#include "generator/Modelo182Records.h"

#include <QStringList>

#include <optional>

class Connection;

// Everything that must hold before the file is written, checked over the
// whole declaration at once so the user sees every problem in one go.
struct Modelo182Validation
{
    QStringList problemas; // refusals, one Spanish line each; empty: the file may be written
    QStringList avisos;    // the file may be written, but the user should look
    std::optional<Aeat::DeclarantRow> declarante;
    Aeat::DeclarantHeader cabecera; // the type-1 fields known before the donors are read
    qint64 filasDonantes = 0;

    bool Correcta() const { return problemas.isEmpty(); }
};

// What the donor rows add up to, for the checks and warnings over all of them.
struct DonorTally
{
    qint64 rows = 0;
    qint64 cents = 0; // of the rows that can go into the file
    qint64 withoutProvince = 0;
    qint64 withoutDeduction = 0;

    void Add(const Aeat::Donation &donation); // a row that can go into the file
};

// Reads the newest declarant and all its donor rows (one pass, nothing
// written). Throws DatabaseError when a table cannot be read.
Modelo182Validation ValidarModelo182(Connection &connection, const Modelo182Options &options);

// The checks of the options and the newest declarant alone, no donor row
// read (the writer checks the rows as it writes them).
Modelo182Validation ValidarCabecera(Connection &connection, const Modelo182Options &options);

// The checks and warnings over all donor rows; sets `filasDonantes`.
void CheckDonorTally(const DonorTally &tally, Modelo182Validation &result);
