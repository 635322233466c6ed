#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include "merge/ZipPackage.h"

// One letter's data: field name -> text. Names are matched ignoring case.
using MergeRecord = QMap<QString, QString>;

// A word-processing template (an OOXML .docx package, whatever its file is
// called) merged over a list of records: one document holding one letter
// per record, in the order given, each letter after the first starting on a
// new page. Every merge field of the body takes the record's value (an
// unknown field gives empty text); the page set-up (the body's last section
// properties) stays once at the end, and styles, headers, footers and every
// other part are copied unchanged. The merged document carries no link to a
// data source.
class MailMerge
{
public:
    // Throws MergeError when the bytes are not a word-processing package.
    // `displayName` names the template in messages.
    MailMerge(const QByteArray &templateBytes, const QString &displayName);
    // Reads the template file; throws MergeError when it is missing or unreadable.
    static MailMerge FromFile(const QString &templatePath);

    // The merged document's bytes (a .docx package). Throws MergeError.
    QByteArray Merge(const QList<MergeRecord> &records) const;
    // Merges and writes the document at `outputPath`, replacing a file there
    // only once the whole document is written. Throws MergeError.
    void MergeToFile(const QList<MergeRecord> &records, const QString &outputPath) const;

private:
    ZipPackage m_package;
    QString m_documentPart; // the main part, "word/document.xml" in practice
};
