#include "merge/TemplateInstaller.h"

#include "merge/MergeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

// The templates are resources of a static library: nothing else references
// them, so they are registered by hand before the first use.
static void RegisterTemplateResources()
{
    Q_INIT_RESOURCE(templates);
}

namespace CertificateTemplates {

QString ResourcePath(const QString &fileName)
{
    RegisterTemplateResources();
    return QStringLiteral(":/merge/templates/") + fileName;
}

QStringList Install(const QString &reportsFolder)
{
    if (!QDir().mkpath(reportsFolder))
        throw MergeError(QStringLiteral("No se pudo crear la carpeta de informes «") + reportsFolder
                         + QStringLiteral("». Compruebe que se puede escribir en ella."));
    QStringList written;
    for (const char *name : {kTemplate97, kTemplate2000}) {
        const QString target = QDir(reportsFolder).filePath(QString::fromUtf8(name));
        if (QFileInfo::exists(target))
            continue;
        QFile resource(ResourcePath(QString::fromUtf8(name)));
        QSaveFile file(target);
        if (!resource.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly)
            || file.write(resource.readAll()) != resource.size() || !file.commit())
            throw MergeError(QStringLiteral("No se pudo escribir la plantilla «") + target + QStringLiteral("» (")
                             + file.errorString() + QStringLiteral("). Compruebe que se puede escribir en la carpeta."));
        written << target;
    }
    return written;
}

} // namespace CertificateTemplates
