#pragma once

#include <QString>

// The mail-merge database's format and the certificate template that suit
// the installed Office version: Office 2000 and XP take the newer format
// and template, anything else (97, unknown, none) the older ones.
struct CertificateFormat
{
    int engineType = 4;
    QString plantilla;
};

inline CertificateFormat CertificateFormatFor(const QString &versionOffice)
{
    const bool nueva = versionOffice == QStringLiteral("Versión 2000") || versionOffice == QStringLiteral("Versión XP");
    const int engine = nueva ? 5 : 4;
    // The newer template exactly when the format is not the older one.
    return {engine, engine != 4 ? QStringLiteral("Certificado de Donaciones2000.doc")
                                : QStringLiteral("Certificado de Donaciones97.doc")};
}
