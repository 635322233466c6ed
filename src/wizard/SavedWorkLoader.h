#pragma once

#include "wizard/Registros.h"

class Connection;

// The work stored by the donor step, read back from the school database:
// the deduction per autonomous community and the chosen school years with
// their activities and settings, in the order the wizard lists them (years
// and activities by ascending id).
struct SavedWork
{
    ColComAut colComAut;
    ColCursosEscolares colCursosEscolares;
};

// Reads the saved work into new collections, so that a failure leaves the
// wizard's own collections untouched. Throws CollectionKeyError when a
// community, or an activity within a year, is stored twice, and
// DatabaseError when a table cannot be read.
SavedWork ReadSavedWork(Connection &centro);
