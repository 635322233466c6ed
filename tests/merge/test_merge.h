#pragma once
// Shared set-up of the certificate merge tests: zip packages built and read
// with libzip itself, and the merged document read back with Qt's XML
// reader, so that neither goes through the code under test.
#include "merge/MailMerge.h"
#include "merge/MergeError.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QStringList>
#include <gtest/gtest.h>

inline std::ostream &operator<<(std::ostream &os, const QString &text)
{
    return os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << text;
}
inline void PrintTo(const QStringList &list, std::ostream *os)
{
    *os << '[' << list.join("] [").toStdString() << ']';
}

namespace merge_test {

using Parts = QList<QPair<QString, QByteArray>>;

// A zip archive of the parts, in order.
QByteArray Zip(const Parts &parts);
// The parts of a zip archive, in order (fails the test when unreadable).
Parts Unzip(const QByteArray &bytes);
QByteArray PartOf(const Parts &parts, const QString &name);
QStringList NamesOf(const Parts &parts);

// A minimal word-processing package around the body's XML.
Parts WordPackage(const QString &bodyXml);
QString DocumentXml(const QString &bodyXml);

// The letters of a merged document.xml: each a list of paragraphs, the text
// of a bold run between '*', of an italic run between '_' (when `marks`), a
// tab as '\t'. A letter ends where the next paragraph starts on a new page.
QList<QStringList> Letters(const QByteArray &documentXml, bool marks = true);

// How often an element (qualified name, "w:sectPr") occurs.
int CountElements(const QByteArray &xml, const QString &qualifiedName);

// For each occurrence of the element `parent`, the names of its child elements.
QList<QStringList> ChildNames(const QByteArray &xml, const QString &parent);

// Page breaks: paragraphs that start on a new page and page break characters.
int PageBreaks(const QByteArray &documentXml);

// Every MERGEFIELD name of a package's XML parts, simple and complex.
QStringList MergeFieldNames(const Parts &parts);

// The MergeError that the code throws (fails the test when none is thrown).
template <typename F> QString MergeErrorOf(F &&code)
{
    try {
        code();
    } catch (const MergeError &error) {
        return error.Message();
    }
    ADD_FAILURE() << "no MergeError was thrown";
    return QString();
}

} // namespace merge_test
