#pragma once

#include "data/Installation.h"

// The demo installation: a fictional concertada school of Madrid with two
// school years ("2024-2025", id 1, and "2025-2026", id 2), eight or nine
// activities a year (dining room, school bus, early-morning care and
// after-school activities) charged monthly from September to June, some
// 400 students a year and some 600 family members. Most members carry a
// valid NIF; a few have a wrong control letter, an NIE, a hyphen or missing
// leading zeros, or no DNI at all. Names carry accents, "ñ", "Mª" and
// apostrophes (D'Souza). Addresses lie in several provinces, named as the
// declaration database's `Provincias` names them; some payers have no
// address and some enrolments no payer. The same description comes out on
// every call (a fixed seed).
InstallationDescription DemoSchool();

// Builds the demo installation in `dir` (see BuildInstallation).
InstallationPaths CreateDemoInstallation(const QString &dir);
