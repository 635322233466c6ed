#pragma once

#include "data/Installation.h"

// The work a school office would have saved in the demo installation: the
// fees of the calendar year before the current school year's end (January
// to June of the first school year, September to December of the second)
// count as donations at 80 %, and every payer whose tax identifier is not
// valid, and every enrolment without a payer, is marked not to be declared,
// so that the declaration can be generated from it as it stands.
SavedWorkDescription DemoSavedWork(const InstallationDescription &school);

// A tax identifier as the donor grid shows it (blanks and "-" removed,
// nine characters with leading zeros, a numeric one given its NIF letter).
QString DemoGridIdentifier(const QString &dni);
