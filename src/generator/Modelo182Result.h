#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

// What one run of the declaration generator did, for the donor window and
// for a command-line caller.
struct Modelo182Result
{
    bool generado = false; // the file was written
    QString declarante;    // the declarant's name as in the file
    QString nifDeclarante;
    QString ejercicio;
    qint64 registrosDonantes = 0; // type-2 records
    qint64 totalCentimos = 0;     // their amounts, in cents
    QString fichero;              // absolute path of the file (when written)
    QStringList rechazos;         // why nothing was written, one line each
    QStringList avisos;           // written, but worth a look before filing
    QString error;                // a failure writing the file

    // A Spanish summary, one fact a line; amounts with `locale`.
    QString Resumen(const QLocale &locale) const;
};
