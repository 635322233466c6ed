#pragma once

#include "session/ObjectFactory.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>

class Connection;
class ProgressBar;

// The two components the donor window creates by programmatic identifier:
// the declaration generator and the certificate merge (the word processor's
// stand-in). The window sees only these interfaces; what implements them is
// installed into the run's factory by whoever starts the add-in.

// What the generator reports back, for a message to the user or a summary
// on the terminal.
struct GeneracionModelo182
{
    bool generado = false;
    QString declarante;
    QString ejercicio;
    qint64 registrosDonantes = 0;
    qint64 totalCentimos = 0;
    QString fichero;
    QStringList rechazos;
    QStringList avisos;
    QString error;
    QString resumen; // one fact a line, in Spanish
};

class Modelo182Componente : public ComObject
{
public:
    static inline const QString ProgId = QStringLiteral("QModelo182.cModelo182");

    // The generator's 17 positional arguments; the progress bar of the
    // window's progress panel goes last.
    virtual GeneracionModelo182 GenerarModelo182(Connection &conexion, bool &generado, bool, const QString &rutaaplicacion,
                                                 const QString &texto5, const QString &texto6, qint16,
                                                 const QVariant &omitido8, bool, const QVariant &omitido10, bool, bool,
                                                 const QVariant &omitido13, qint16, const QVariant &omitido15,
                                                 const QString &vacio, ProgressBar &progreso) = 0;
};

class CertificadosComponente : public ComObject
{
public:
    static inline const QString ProgId = QStringLiteral("word.application");

    // Merges `plantilla` over CartaDonantes.mdb into one document of
    // letters next to the template and returns its path; throws with a
    // Spanish message when it cannot.
    virtual QString Combinar(const QString &plantilla, const QString &cartaDonantes, Connection &declaracion,
                             const QDate &hoy) = 0;
    // Where the merged document of `plantilla` goes.
    virtual QString DocumentoCombinado(const QString &plantilla) const = 0;
};
