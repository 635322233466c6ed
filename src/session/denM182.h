#pragma once

#include "data/Connection.h"
#include "session/cConfiguracion.h"

#include <QString>

// The data environment of the declaration database: its one connection,
// conM182, shared by every window of a wizard run that touches
// Modelo182.mdb.
class denM182
{
public:
    denM182();

    // The connection string as configured before "Data Source" is known.
    static QString InitialConnectionString();

    // The shared connection. Not opened here.
    Connection &conM182() { return m_conM182; }
    const Connection &conM182() const { return m_conM182; }

    // The connection, opened with its current string if it is closed: every
    // statement on the declaration database goes through this.
    Connection &Open();

    // Points "Data Source" at Modelo182.mdb for the given session: below the
    // add-in's folder in "Informes" when the host runs on a database server,
    // else in the host's database folder. An open connection to another
    // file is closed so that the next use opens the new one.
    void ConfigureDataSource(const cConfiguracion &configuracion, const QString &addinFolder);

    // The declaration database's path for the given session.
    static QString DataSourceFor(const cConfiguracion &configuracion, const QString &addinFolder);

private:
    Connection m_conM182;
};

// The folder of the binary that holds this code: the add-in's library when
// the host loaded it, or the executable it is linked into.
QString AddinBinaryFolder();
