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

// Reads the newest declarant and all its donor rows (one pass, nothing
// written). Throws DatabaseError when a table cannot be read.
Modelo182Validation ValidarModelo182(Connection &connection, const Modelo182Options &options);
