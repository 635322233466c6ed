#include "test_merge.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <zip.h>

namespace merge_test {

QByteArray Zip(const Parts &parts)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(buffer);
    zip_t *archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
    for (const auto &[name, bytes] : parts) {
        zip_source_t *part = zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
        EXPECT_GE(zip_file_add(archive, name.toUtf8().constData(), part, ZIP_FL_ENC_UTF_8), 0);
    }
    EXPECT_EQ(zip_close(archive), 0);
    QByteArray bytes;
    zip_source_open(buffer);
    zip_source_seek(buffer, 0, SEEK_END);
    bytes.resize(qsizetype(zip_source_tell(buffer)));
    zip_source_seek(buffer, 0, SEEK_SET);
    zip_source_read(buffer, bytes.data(), zip_uint64_t(bytes.size()));
    zip_source_close(buffer);
    zip_source_free(buffer);
    return bytes;
}

Parts Unzip(const QByteArray &bytes)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *source = zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &error);
    zip_t *archive = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (!archive) {
        zip_source_free(source);
        ADD_FAILURE() << "not a zip archive";
        return {};
    }
    Parts parts;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t stat;
        zip_stat_index(archive, zip_uint64_t(i), 0, &stat);
        QByteArray content(qsizetype(stat.size), '\0');
        zip_file_t *file = zip_fopen_index(archive, zip_uint64_t(i), 0);
        EXPECT_EQ(zip_fread(file, content.data(), stat.size), zip_int64_t(stat.size));
        zip_fclose(file);
        parts.append({QString::fromUtf8(stat.name), content});
    }
    zip_discard(archive);
    return parts;
}

QByteArray PartOf(const Parts &parts, const QString &name)
{
    for (const auto &[partName, bytes] : parts)
        if (partName == name)
            return bytes;
    ADD_FAILURE() << "no part " << name.toStdString();
    return QByteArray();
}

QStringList NamesOf(const Parts &parts)
{
    QStringList names;
    for (const auto &part : parts)
        names << part.first;
    return names;
}

QString DocumentXml(const QString &bodyXml)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
           "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
           "xmlns:w14=\"http://schemas.microsoft.com/office/word/2010/wordml\"><w:body>"
           + bodyXml + "</w:body></w:document>";
}

Parts WordPackage(const QString &bodyXml)
{
    const QByteArray rels = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                            "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                            "<Relationship Id=\"rId1\" "
                            "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
                            "Target=\"word/document.xml\"/></Relationships>";
    const QByteArray types =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
        "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
        "<Override PartName=\"/word/document.xml\" "
        "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/></Types>";
    return {{"[Content_Types].xml", types}, {"_rels/.rels", rels}, {"word/document.xml", DocumentXml(bodyXml).toUtf8()}};
}

QList<QStringList> Letters(const QByteArray &documentXml, bool marks)
{
    QList<QStringList> letters{{}};
    QString paragraph;
    bool inRun = false, bold = false, italic = false, inRunProperties = false;
    const auto pushParagraph = [&] {
        if (!paragraph.isEmpty())
            letters.last() << paragraph;
        paragraph.clear();
    };
    const auto newLetter = [&] {
        pushParagraph();
        if (!letters.last().isEmpty())
            letters << QStringList();
    };
    const auto on = [](const QXmlStreamReader &xml) {
        const QString value = xml.attributes().value("w:val").toString();
        return value != "0" && value != "false";
    };
    QXmlStreamReader xml(documentXml);
    while (!xml.atEnd()) {
        xml.readNext();
        const QString name = xml.qualifiedName().toString();
        if (xml.isStartElement()) {
            if (name == "w:pageBreakBefore" && on(xml))
                newLetter();
            else if (name == "w:r")
                inRun = true, bold = italic = false;
            else if (name == "w:rPr" && inRun)
                inRunProperties = true;
            else if (name == "w:b" && inRunProperties)
                bold = on(xml);
            else if (name == "w:i" && inRunProperties)
                italic = on(xml);
            else if (name == "w:tab" && inRun)
                paragraph += '\t';
            else if (name == "w:br" && xml.attributes().value("w:type") == QLatin1String("page"))
                newLetter();
            else if (name == "w:t") {
                QString text = xml.readElementText();
                if (marks && italic)
                    text = '_' + text + '_';
                if (marks && bold)
                    text = '*' + text + '*';
                paragraph += text;
            }
        } else if (xml.isEndElement()) {
            if (name == "w:p")
                pushParagraph();
            else if (name == "w:r")
                inRun = false;
            else if (name == "w:rPr")
                inRunProperties = false;
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return letters;
}

int CountElements(const QByteArray &xml, const QString &qualifiedName)
{
    int count = 0;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.qualifiedName() == qualifiedName)
            ++count;
    return count;
}

QList<QStringList> ChildNames(const QByteArray &xml, const QString &parent)
{
    QList<QStringList> result;
    int depth = 0, parentDepth = -1;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            ++depth;
            if (parentDepth >= 0 && depth == parentDepth + 1)
                result.last() << reader.qualifiedName().toString();
            if (parentDepth < 0 && reader.qualifiedName() == parent) {
                parentDepth = depth;
                result << QStringList();
            }
        } else if (reader.isEndElement()) {
            if (depth == parentDepth)
                parentDepth = -1;
            --depth;
        }
    }
    return result;
}

int PageBreaks(const QByteArray &documentXml)
{
    int count = 0;
    QXmlStreamReader reader(documentXml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.qualifiedName() == QLatin1String("w:pageBreakBefore")
            || (reader.qualifiedName() == QLatin1String("w:br")
                && reader.attributes().value("w:type") == QLatin1String("page")))
            ++count;
    }
    return count;
}

QStringList MergeFieldNames(const Parts &parts)
{
    static const QRegularExpression mergeField(R"re(^\s*MERGEFIELD\s+(?:"([^"]+)"|(\S+)))re",
                                               QRegularExpression::CaseInsensitiveOption);
    QStringList names;
    const auto take = [&](const QString &instruction) {
        const QRegularExpressionMatch match = mergeField.match(instruction);
        if (match.hasMatch())
            names << (match.captured(1).isEmpty() ? match.captured(2) : match.captured(1));
    };
    for (const auto &[name, bytes] : parts) {
        if (!name.endsWith(".xml"))
            continue;
        QStringList open; // the instructions of the complex fields being read
        QXmlStreamReader xml(bytes);
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QString element = xml.qualifiedName().toString();
            if (element == "w:fldSimple")
                take(xml.attributes().value("w:instr").toString());
            else if (element == "w:instrText" && !open.isEmpty())
                open.last() += xml.readElementText();
            else if (element == "w:fldChar") {
                const QString type = xml.attributes().value("w:fldCharType").toString();
                if (type == "begin")
                    open << QString();
                else if (type == "end" && !open.isEmpty())
                    take(open.takeLast());
            }
        }
        EXPECT_FALSE(xml.hasError()) << name.toStdString() << ": " << xml.errorString().toStdString();
    }
    return names;
}

} // namespace merge_test
