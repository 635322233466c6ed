#include "merge/PackageParts.h"

#include "merge/ZipPackage.h"

#include <QDir>
#include <pugixml.hpp>

namespace PackageParts {

namespace {

// The target of the first relationship of `relationshipsPart` whose type
// ends with `typeSuffix`, resolved against `baseFolder`.
QString Target(const ZipPackage &package, const QString &relationshipsPart, const QString &baseFolder,
               const QString &typeSuffix)
{
    const QByteArray xml = package.Part(relationshipsPart);
    pugi::xml_document doc;
    if (xml.isEmpty() || !doc.load_buffer(xml.constData(), size_t(xml.size())))
        return QString();
    for (pugi::xml_node relationship : doc.document_element().children()) {
        const QString type = QString::fromUtf8(relationship.attribute("Type").value());
        const QString mode = QString::fromUtf8(relationship.attribute("TargetMode").value());
        if (!type.endsWith(typeSuffix) || mode == QLatin1String("External"))
            continue;
        const QString target = QString::fromUtf8(relationship.attribute("Target").value());
        if (target.startsWith(QLatin1Char('/')))
            return QDir::cleanPath(target.mid(1));
        return QDir::cleanPath(baseFolder.isEmpty() ? target : baseFolder + QLatin1Char('/') + target);
    }
    return QString();
}

QString FolderOf(const QString &part)
{
    const qsizetype slash = part.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? QString() : part.left(slash);
}

} // namespace

QString MainDocument(const ZipPackage &package)
{
    const QString target = Target(package, QStringLiteral("_rels/.rels"), QString(), QStringLiteral("/officeDocument"));
    if (!target.isEmpty() && package.Contains(target))
        return target;
    const QString usual = QStringLiteral("word/document.xml");
    return package.Contains(usual) ? usual : QString();
}

QString RelationshipsOf(const QString &part)
{
    const QString folder = FolderOf(part);
    const QString name = part.mid(folder.isEmpty() ? 0 : folder.size() + 1);
    return (folder.isEmpty() ? QString() : folder + QLatin1Char('/')) + QStringLiteral("_rels/") + name
           + QStringLiteral(".rels");
}

QString RelatedPart(const ZipPackage &package, const QString &mainPart, const QString &typeSuffix)
{
    return Target(package, RelationshipsOf(mainPart), FolderOf(mainPart), typeSuffix);
}

} // namespace PackageParts
