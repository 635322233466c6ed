#pragma once

#include "merge/Clock.h"
#include "merge/MailMerge.h"

#include <QStringList>

class Connection;

// The data of the certificate letters: one record per row of the table
// `CartaDonantes` of the mail-merge database, in the table's own order
// (the declaration copied the rows sorted by surnames and name), with the
// table's columns and, on every record, the declarant and the date:
//   Entidad, NIFEntidad, Ejercicio  `nombre`, `nif` and `ejercicio` of the
//                                   newest row of `Declarantes`;
//   Fecha                           today, "23 de noviembre de 2026".
// Every value is trimmed: the declaration writes a single blank for an
// address it does not know, and the letter must show nothing there.
struct CertificateData
{
    QStringList fieldNames; // the table's columns, then the four above
    QList<MergeRecord> records;
};

class CertificateSource
{
public:
    static const QStringList kAddedFields; // Entidad, NIFEntidad, Ejercicio, Fecha

    // `declaration`: the declaration database (Modelo182.mdb); opened for
    // the read and closed again when it is closed.
    CertificateSource(Connection &declaration, Clock clock = SystemClock());

    // Reads the mail-merge database at `cartaDonantesPath`. Throws
    // MergeError (Spanish, saying what to do) when the file is missing or
    // unreadable or when there is no declarant.
    CertificateData Read(const QString &cartaDonantesPath) const;

    // "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=<path>;Mode=Read".
    static QString ConnectionStringFor(const QString &cartaDonantesPath);

private:
    MergeRecord ReadDeclarant() const;

    Connection &m_declaration;
    Clock m_clock;
};
