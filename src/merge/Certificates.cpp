#include "merge/Certificates.h"

#include "merge/CertificateSource.h"
#include "merge/MailMerge.h"
#include "merge/MergeError.h"

#include <QDir>
#include <QFileInfo>

namespace Certificates {

QString OutputPathFor(const QString &templatePath)
{
    return QFileInfo(templatePath).absoluteDir().filePath(QString::fromUtf8(kOutputFileName));
}

QString Merge(const QString &templatePath, const QString &cartaDonantesPath, Connection &declaration, const Clock &clock)
{
    // The template first: a damaged one is named before any database is read.
    const MailMerge merge = MailMerge::FromFile(templatePath);
    const CertificateData data = CertificateSource(declaration, clock).Read(cartaDonantesPath);
    if (data.records.isEmpty())
        throw MergeError(QStringLiteral("No hay ningún donante en «") + cartaDonantesPath
                         + QStringLiteral("», así que no hay certificados que imprimir. Marque en la rejilla "
                                          "los donantes que se declaran y genere de nuevo el modelo 182."));
    const QString output = OutputPathFor(templatePath);
    merge.MergeToFile(data.records, output);
    return output;
}

} // namespace Certificates
