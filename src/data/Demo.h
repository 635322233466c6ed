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

// A generated school of a chosen size, for trying the program on a large
// school and for the benchmark: `students` students (about 1.4 per family,
// so about 1.5 student-payer pairs each), `years` school years ("2021-2022"
// onwards, ids 1, 2, ...) with the first `activities` activities of the demo
// each (at most 9), every student enrolled in about half of them, and, when
// `savedWork` is set, a saved-work snapshot covering every cell of the donor
// grid. The same size and seed give the same school.
struct SchoolSize
{
    int students = 3000;
    int years = 3;
    int activities = 8;
    quint32 seed = 182;
    bool savedWork = true;
};
InstallationDescription GeneratedSchool(const SchoolSize &size);

// Builds the demo installation in `dir` (see BuildInstallation).
InstallationPaths CreateDemoInstallation(const QString &dir);

// The demo installation with the host's databases on a PostgreSQL server.
// `connectionString` is of the PostgreSQL provider; its Database names the
// installation ("modelo182" when absent): the databases are <name>_entrada,
// <name>_centro, <name>_borrado, <name>_curso2024-2025 and
// <name>_curso2025-2026, made from
// the server's "postgres" database. The session's sqlserver flag is set, so
// the add-in looks for Modelo182.mdb in the "Informes" folder beside its
// library, `addinFolder`: the file is made there.
InstallationPaths CreateDemoInstallationOnServer(const QString &dir, const QString &connectionString,
                                                 const QString &addinFolder);
// The description moved onto the server as above (any school: the demo, a
// generated one).
InstallationDescription OnServer(InstallationDescription description, const QString &connectionString,
                                 const QString &addinFolder);

// The server description a connection string of the PostgreSQL provider
// gives: the server reached through its "postgres" database, the
// connection's Database as the names' prefix.
HostServerDescription ServerOf(const QString &connectionString);
