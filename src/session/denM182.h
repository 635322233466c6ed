#pragma once

#include "data/Connection.h"
#include "session/cConfiguracion.h"

#include <QString>

// The data environment of the declaration database: its one connection,
// conM182, shared by every window that touches Modelo182.mdb.
namespace denM182 {

// The connection string as configured before "Data Source" is known.
QString InitialConnectionString();

// The shared connection, created on first use. Not opened here.
Connection &conM182();

// The connection, opened with its current string if it is closed: every
// statement on the declaration database goes through this.
Connection &Open();

// Points "Data Source" at Modelo182.mdb for the given session: below the
// add-in's own folder in "Informes" when the host runs on a database server,
// else in the host's database folder. An open connection to another file is
// closed so that the next use opens the new one.
void ConfigureDataSource(const cConfiguracion &configuracion);

// The declaration database's path for the given session.
QString DataSourceFor(const cConfiguracion &configuracion);

// The folder of the add-in's own library (overridable for tests).
QString AddinFolder();
void SetAddinFolder(const QString &folder);

} // namespace denM182
