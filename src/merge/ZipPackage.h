#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The parts of a zip package (an OOXML document), held in memory in the
// order of the archive, so that one part can be replaced and the whole
// written back with every other part byte for byte as it was.
class ZipPackage
{
public:
    // Reads every part of the archive in `bytes`. Throws MergeError naming
    // `displayName` when the bytes are not a readable zip archive.
    static ZipPackage FromBytes(const QByteArray &bytes, const QString &displayName);

    // "La plantilla «name» no es un documento de Word válido ...".
    static QString NotADocumentMessage(const QString &displayName);

    bool Contains(const QString &name) const;
    // The part's bytes; an empty array when there is no such part.
    QByteArray Part(const QString &name) const;
    // Replaces the part, or appends it when there is none of that name.
    void SetPart(const QString &name, const QByteArray &bytes);
    QStringList PartNames() const;

    // The archive (deflated parts, in order). Throws MergeError when libzip fails.
    QByteArray ToBytes() const;

private:
    struct Entry
    {
        QString name;
        QByteArray bytes;
    };
    QList<Entry> m_entries;
};
