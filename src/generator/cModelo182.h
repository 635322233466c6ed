#pragma once

#include "generator/Modelo182Options.h"
#include "generator/Modelo182Result.h"
#include "generator/ProgressSink.h"

#include <QString>
#include <QVariant>

class Connection;

// The declaration generator, the component created by the programmatic id
// "QModelo182.cModelo182": the donor window calls GenerarModelo182 with its
// 17 positional arguments once the declaration tables are written. It never
// shows a window: the caller shows the returned summary.
class cModelo182
{
public:
    explicit cModelo182(Modelo182Options options = {});

    // Arguments in the order the donor window passes them; only the
    // connection (1), the flag (2), the application folder (4) and the
    // progress (17) mean something here. Reads the newest declarant and
    // its donors through `conexion`, writes the file into the options'
    // reports folder (else `rutaaplicacion` + "/Informes/"), sets
    // `generado` true once the file is in place. Refusals and a file that
    // cannot be written come back in the result; a database failure throws
    // DatabaseError.
    Modelo182Result GenerarModelo182(Connection &conexion, bool &generado, bool, const QString &rutaaplicacion,
                                     const QString &texto5, const QString &texto6, qint16, const QVariant &omitido8, bool,
                                     const QVariant &omitido10, bool, bool, const QVariant &omitido13, qint16,
                                     const QVariant &omitido15, const QString &vacio, ProgressSink &progreso);

    const Modelo182Options &Options() const { return m_options; }

private:
    Modelo182Options m_options;
};
