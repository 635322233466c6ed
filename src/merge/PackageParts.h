#pragma once

#include <QString>

class ZipPackage;

// Where the parts of a word-processing package are, read from its
// relationships as Word does.
namespace PackageParts {

// The main document part ("word/document.xml"); empty when the package has
// no office document relationship and no part of the usual name.
QString MainDocument(const ZipPackage &package);

// The main part's relationships part ("word/_rels/document.xml.rels").
QString RelationshipsOf(const QString &part);

// The target of the main part's first relationship whose type ends with
// `typeSuffix` ("/settings"), as a part name; empty when there is none.
QString RelatedPart(const ZipPackage &package, const QString &mainPart, const QString &typeSuffix);

} // namespace PackageParts
