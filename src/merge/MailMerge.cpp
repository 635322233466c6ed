#include "merge/MailMerge.h"

#include "merge/FieldReplacer.h"
#include "merge/LetterLayout.h"
#include "merge/MergeError.h"
#include "merge/PackageParts.h"

#include <QFile>
#include <QHash>
#include <QSaveFile>

#include <pugixml.hpp>

namespace {

constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_declaration | pugi::parse_ws_pcdata_single;

struct ByteWriter : pugi::xml_writer
{
    QByteArray bytes;
    void write(const void *data, size_t size) override { bytes.append(static_cast<const char *>(data), qsizetype(size)); }
};

QByteArray Serialize(const pugi::xml_document &doc)
{
    ByteWriter writer;
    doc.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return writer.bytes;
}

bool Load(pugi::xml_document &doc, const QByteArray &xml)
{
    return !xml.isEmpty() && doc.load_buffer(xml.constData(), size_t(xml.size()), kParseOptions, pugi::encoding_utf8);
}

// The prefix the document's root binds to WordprocessingML ("w").
WordNames NamesOf(const pugi::xml_document &doc)
{
    for (pugi::xml_attribute attribute : doc.document_element().attributes()) {
        const std::string name = attribute.name();
        if (std::string(attribute.value()) != WordNames::kNamespace)
            continue;
        if (name == "xmlns")
            return WordNames(std::string());
        if (name.rfind("xmlns:", 0) == 0)
            return WordNames(name.substr(6));
    }
    return WordNames();
}

// The merged document opens as a plain document: Word would otherwise ask
// for the data source of a merge that is already done.
void DetachDataSource(ZipPackage &package, const QString &documentPart)
{
    const QString settingsPart = PackageParts::RelatedPart(package, documentPart, QStringLiteral("/settings"));
    pugi::xml_document settings;
    if (settingsPart.isEmpty() || !Load(settings, package.Part(settingsPart)))
        return;
    const WordNames w = NamesOf(settings);
    const pugi::xml_node mailMerge = settings.document_element().child(w("mailMerge").c_str());
    if (!mailMerge)
        return;
    settings.document_element().remove_child(mailMerge);
    package.SetPart(settingsPart, Serialize(settings));

    const QString relationshipsPart = PackageParts::RelationshipsOf(settingsPart);
    pugi::xml_document relationships;
    if (!Load(relationships, package.Part(relationshipsPart)))
        return;
    std::vector<pugi::xml_node> links;
    for (pugi::xml_node relationship : relationships.document_element().children()) {
        const QString type = QString::fromUtf8(relationship.attribute("Type").value());
        if (type.contains(QLatin1String("mailMerge")) || type.endsWith(QLatin1String("/recipientData")))
            links.push_back(relationship);
    }
    for (pugi::xml_node link : links)
        relationships.document_element().remove_child(link);
    package.SetPart(relationshipsPart, Serialize(relationships));
}

} // namespace

MailMerge::MailMerge(const QByteArray &templateBytes, const QString &displayName)
    : m_package(ZipPackage::FromBytes(templateBytes, displayName))
{
    m_documentPart = PackageParts::MainDocument(m_package);
    pugi::xml_document doc;
    if (m_documentPart.isEmpty() || !Load(doc, m_package.Part(m_documentPart))
        || !doc.document_element().child(NamesOf(doc)("body").c_str()))
        throw MergeError(ZipPackage::NotADocumentMessage(displayName));
}

MailMerge MailMerge::FromFile(const QString &templatePath)
{
    QFile file(templatePath);
    if (!file.exists())
        throw MergeError(QStringLiteral("No se encuentra la plantilla de los certificados «") + templatePath
                         + QStringLiteral("». Copie la plantilla en la carpeta de informes y vuelva a intentarlo."));
    if (!file.open(QIODevice::ReadOnly))
        throw MergeError(QStringLiteral("No se puede leer la plantilla de los certificados «") + templatePath
                         + QStringLiteral("» (") + file.errorString()
                         + QStringLiteral("). Compruebe que no esté abierta en otro programa."));
    return MailMerge(file.readAll(), templatePath);
}

QByteArray MailMerge::Merge(const QList<MergeRecord> &records) const
{
    pugi::xml_document doc;
    Load(doc, m_package.Part(m_documentPart));
    const WordNames w = NamesOf(doc);
    pugi::xml_node body = doc.document_element().child(w("body").c_str());

    // The template's blocks are taken out of the body; the page set-up stays.
    pugi::xml_document letter;
    pugi::xml_node sectPr;
    std::vector<pugi::xml_node> blocks;
    pugi::xml_node lastElement;
    for (pugi::xml_node child : body.children()) {
        blocks.push_back(child);
        if (child.type() == pugi::node_element)
            lastElement = child;
    }
    for (pugi::xml_node block : blocks) {
        if (block == lastElement && w.Is(block.name(), "sectPr")) {
            sectPr = block;
            continue;
        }
        letter.append_copy(block);
        body.remove_child(block);
    }

    LetterLayout layout(w);
    for (qsizetype i = 0; i < records.size(); ++i) {
        QHash<QString, QString> values;
        for (auto field = records.at(i).cbegin(); field != records.at(i).cend(); ++field)
            values.insert(field.key().toCaseFolded(), field.value());
        std::vector<pugi::xml_node> copies;
        for (pugi::xml_node block : letter.children())
            copies.push_back(sectPr ? body.insert_copy_before(block, sectPr) : body.append_copy(block));
        FieldReplacer replacer(w, [&values](const QString &name) { return values.value(name.toCaseFolded()); });
        replacer.ReplaceIn(copies);
        layout.Prepare(copies, int(i));
    }

    ZipPackage merged = m_package;
    merged.SetPart(m_documentPart, Serialize(doc));
    DetachDataSource(merged, m_documentPart);
    return merged.ToBytes();
}

void MailMerge::MergeToFile(const QList<MergeRecord> &records, const QString &outputPath) const
{
    const QByteArray bytes = Merge(records);
    QSaveFile file(outputPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw MergeError(QStringLiteral("No se pudo escribir el documento de los certificados «") + outputPath
                         + QStringLiteral("» (") + file.errorString()
                         + QStringLiteral("). Ciérrelo si está abierto y compruebe que se puede escribir en la carpeta."));
}
