// The merge of a template over records: the letters' texts, order and page
// breaks, both field forms, escaping, and what else the package keeps.
#include "test_merge.h"

#include <QFile>
#include <QTemporaryDir>

using namespace merge_test;

namespace {

// A heading with a simple field, a paragraph whose complex field has its
// instruction and result split over runs, a table whose cell holds a field
// without a result, a field of another kind, a bookmark and paragraph ids.
const QString kBody = R"(
<w:p w14:paraId="1A2B3C4D"><w:pPr><w:pStyle w:val="Titulo"/><w:jc w:val="center"/></w:pPr>
  <w:bookmarkStart w:id="0" w:name="inicio"/><w:r><w:t xml:space="preserve">Carta para </w:t></w:r>
  <w:fldSimple w:instr=" MERGEFIELD Nombre \* MERGEFORMAT "><w:r><w:rPr><w:b/></w:rPr><w:t>«Nombre»</w:t></w:r></w:fldSimple>
  <w:bookmarkEnd w:id="0"/></w:p>
<w:p><w:r><w:t xml:space="preserve">Apellidos: </w:t></w:r>
  <w:r><w:rPr><w:i/></w:rPr><w:fldChar w:fldCharType="begin"/></w:r>
  <w:r><w:instrText xml:space="preserve"> MERGE</w:instrText></w:r><w:r><w:instrText xml:space="preserve">FIELD apelli</w:instrText></w:r>
  <w:r><w:instrText xml:space="preserve">do1 \* MERGEFORMAT </w:instrText></w:r>
  <w:r><w:fldChar w:fldCharType="separate"/></w:r>
  <w:r><w:rPr><w:i/></w:rPr><w:t>«Apelli</w:t></w:r><w:r><w:rPr><w:i/></w:rPr><w:t>do1»</w:t></w:r>
  <w:r><w:fldChar w:fldCharType="end"/></w:r>
  <w:r><w:t xml:space="preserve"> / </w:t></w:r>
  <w:fldSimple w:instr=" MERGEFIELD Desconocido "><w:r><w:t>«Desconocido»</w:t></w:r></w:fldSimple>
  <w:r><w:t>.</w:t></w:r></w:p>
<w:tbl><w:tr><w:tc><w:p><w:r><w:t>Importe</w:t></w:r></w:p></w:tc>
  <w:tc><w:p><w:r><w:fldChar w:fldCharType="begin"/></w:r><w:r><w:instrText> MERGEFIELD IMPORTE \b "Total: " \f " euros"</w:instrText></w:r>
  <w:r><w:fldChar w:fldCharType="end"/></w:r></w:p></w:tc></w:tr></w:tbl>
<w:p><w:r><w:t xml:space="preserve">Página </w:t></w:r><w:fldSimple w:instr=" PAGE "><w:r><w:t>1</w:t></w:r></w:fldSimple></w:p>
<w:sectPr><w:pgSz w:w="11906" w:h="16838"/></w:sectPr>)";

const QList<MergeRecord> kRecords = {
    {{"Nombre", "Ana"}, {"Apellido1", "D'Souza & <Hijos>"}, {"Importe", "1.234,50"}},
    {{"nombre", "Luis"}, {"APELLIDO1", "Pérez Ñúñez"}, {"Importe", "61,00"}},
    {{"Nombre", "Eva"}, {"Apellido1", ""}, {"Importe", ""}},
};

Parts MergedParts(const Parts &templateParts, const QList<MergeRecord> &records)
{
    return Unzip(MailMerge(Zip(templateParts), "plantilla.docx").Merge(records));
}

TEST(MailMerge, WritesOneLetterPerRecordInOrderWithEveryFieldReplaced)
{
    const Parts merged = MergedParts(WordPackage(kBody), kRecords);
    const QByteArray document = PartOf(merged, "word/document.xml");

    EXPECT_EQ(Letters(document),
              (QList<QStringList>{
                  {"Carta para *Ana*", "Apellidos: _D'Souza & <Hijos>_ / .", "Importe", "Total: 1.234,50 euros", "Página 1"},
                  {"Carta para *Luis*", "Apellidos: _Pérez Ñúñez_ / .", "Importe", "Total: 61,00 euros", "Página 1"},
                  {"Carta para *Eva*", "Apellidos:  / .", "Importe", "Página 1"},
              }));
    EXPECT_EQ(PageBreaks(document), 2);
    EXPECT_EQ(CountElements(document, "w:sectPr"), 1);
    const QStringList letter = {"w:p", "w:p", "w:tbl", "w:p"};
    EXPECT_EQ(ChildNames(document, "w:body").value(0), letter + letter + letter + QStringList{"w:sectPr"});
    EXPECT_EQ(ChildNames(document, "w:sectPr"), QList<QStringList>{{"w:pgSz"}});
    // The value's characters reach the XML escaped, never as markup.
    EXPECT_TRUE(document.contains("D'Souza &amp; &lt;Hijos&gt;"));
    // No trace of the merge fields; the page number field stays a field.
    EXPECT_FALSE(document.contains("MERGEFIELD"));
    EXPECT_FALSE(document.contains("«"));
    EXPECT_EQ(CountElements(document, "w:fldChar"), 0);
    EXPECT_EQ(CountElements(document, "w:fldSimple"), 3);
    // Bookmarks only in the first letter; paragraph ids left for Word to assign.
    EXPECT_EQ(CountElements(document, "w:bookmarkStart"), 1);
    EXPECT_EQ(CountElements(document, "w:bookmarkEnd"), 1);
    EXPECT_FALSE(document.contains("w14:paraId"));
    // The new page goes where the paragraph properties' order wants it.
    const QStringList startsPage = {"w:pStyle", "w:pageBreakBefore", "w:jc"};
    EXPECT_EQ(ChildNames(document, "w:pPr"), (QList<QStringList>{{"w:pStyle", "w:jc"}, startsPage, startsPage}));
}

TEST(MailMerge, KeepsEveryOtherPartAndDropsTheLinkToTheDataSource)
{
    Parts parts = WordPackage(kBody);
    const QByteArray styles = "<?xml version=\"1.0\"?><w:styles xmlns:w=\"http://schemas.openxmlformats.org/"
                              "wordprocessingml/2006/main\"><w:style w:styleId=\"Titulo\"/></w:styles>";
    const QByteArray footer = "<?xml version=\"1.0\"?><w:ftr xmlns:w=\"http://schemas.openxmlformats.org/"
                              "wordprocessingml/2006/main\"><w:p><w:r><w:t>Pie</w:t></w:r></w:p></w:ftr>";
    const QByteArray documentRels =
        "<?xml version=\"1.0\"?><Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/settings\" "
        "Target=\"settings.xml\"/></Relationships>";
    const QByteArray settings =
        "<?xml version=\"1.0\"?><w:settings xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">"
        "<w:zoom w:percent=\"100\"/><w:mailMerge><w:mainDocumentType w:val=\"formLetters\"/>"
        "<w:dataSource r:id=\"rId9\"/></w:mailMerge><w:defaultTabStop w:val=\"708\"/></w:settings>";
    const QByteArray settingsRels =
        "<?xml version=\"1.0\"?><Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"rId9\" "
        "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/mailMergeSource\" "
        "Target=\"file:///C:/Informes/CartaDonantes.mdb\" TargetMode=\"External\"/>"
        "<Relationship Id=\"rId2\" "
        "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/attachedTemplate\" "
        "Target=\"Normal.dotm\" TargetMode=\"External\"/></Relationships>";
    parts << QPair<QString, QByteArray>{"word/styles.xml", styles} << QPair<QString, QByteArray>{"word/footer1.xml", footer}
          << QPair<QString, QByteArray>{"word/_rels/document.xml.rels", documentRels}
          << QPair<QString, QByteArray>{"word/settings.xml", settings}
          << QPair<QString, QByteArray>{"word/_rels/settings.xml.rels", settingsRels};

    const Parts merged = MergedParts(parts, kRecords);
    EXPECT_EQ(NamesOf(merged), NamesOf(parts));
    for (const QString name :
         {"[Content_Types].xml", "_rels/.rels", "word/styles.xml", "word/footer1.xml", "word/_rels/document.xml.rels"})
        EXPECT_EQ(PartOf(merged, name), PartOf(parts, name)) << name.toStdString();
    const QByteArray mergedSettings = PartOf(merged, "word/settings.xml");
    EXPECT_EQ(CountElements(mergedSettings, "w:mailMerge"), 0);
    EXPECT_EQ(CountElements(mergedSettings, "w:zoom") + CountElements(mergedSettings, "w:defaultTabStop"), 2);
    const QByteArray mergedSettingsRels = PartOf(merged, "word/_rels/settings.xml.rels");
    EXPECT_FALSE(mergedSettingsRels.contains("mailMergeSource"));
    EXPECT_TRUE(mergedSettingsRels.contains("Normal.dotm"));
}

TEST(MailMerge, ALetterThatOpensWithATableStartsAfterABreakParagraph)
{
    const QString body =
        R"(<w:tbl><w:tr><w:tc><w:p><w:fldSimple w:instr="MERGEFIELD &quot;NIF&quot;"/></w:p></w:tc></w:tr></w:tbl>
        <w:p><w:r><w:t>Fin</w:t></w:r></w:p><w:sectPr/>)";
    const QByteArray document = PartOf(MergedParts(WordPackage(body),
                                                   {{{"NIF", "12345678Z"}}, {{"NIF", "X1234567L"}}, {{"nif", "B12345674"}}}),
                                       "word/document.xml");
    EXPECT_EQ(Letters(document), (QList<QStringList>{{"12345678Z", "Fin"}, {"X1234567L", "Fin"}, {"B12345674", "Fin"}}));
    EXPECT_EQ(PageBreaks(document), 2);
    EXPECT_EQ(CountElements(document, "w:pageBreakBefore"), 0);
}

TEST(MailMerge, ValuesWithLineBreaksTabsAndControlCharactersStayValidDocumentText)
{
    const QString body =
        R"(<w:p><w:fldSimple w:instr=" MERGEFIELD Direccion "><w:r><w:t>x</w:t></w:r></w:fldSimple></w:p><w:sectPr/>)";
    const QByteArray document = PartOf(MergedParts(WordPackage(body), {{{"Direccion", "C/ Mayor 1\r\n2.º B\tizq.\x01"}}}),
                                       "word/document.xml");
    EXPECT_EQ(Letters(document), (QList<QStringList>{{"C/ Mayor 12.º B\tizq."}}));
    EXPECT_EQ(ChildNames(document, "w:r"), (QList<QStringList>{{"w:t", "w:br", "w:t", "w:tab", "w:t"}}));
    EXPECT_FALSE(document.contains('\x01'));
}

TEST(MailMerge, WritesTheFileAndNamesEveryTemplateItCannotUse)
{
    QTemporaryDir dir;
    const QString good = dir.filePath("Certificado de Donaciones97.doc");
    {
        QFile file(good);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(Zip(WordPackage(kBody)));
    }
    const QString output = dir.filePath("Certificados de Donaciones.docx");
    MailMerge::FromFile(good).MergeToFile(kRecords, output);
    QFile written(output);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(Letters(PartOf(Unzip(written.readAll()), "word/document.xml")).size(), 3);

    const QByteArray valid = Zip(WordPackage(kBody));
    Parts withoutDocument = WordPackage(kBody);
    withoutDocument.removeLast();
    Parts brokenXml = WordPackage(kBody);
    brokenXml.last().second.chop(20);
    Parts noBody = WordPackage("");
    noBody.last().second.replace("w:body", "w:bodi");
    const QString damaged = "La plantilla «plantilla.doc» no es un documento de Word válido o está dañada. "
                            "Sustitúyala por la plantilla original y vuelva a intentarlo.";
    const std::pair<QByteArray, const char *> cases[] = {
        {"esto no es un documento", "not a zip"},
        {valid.left(valid.size() / 2), "cut in half"},
        {QByteArray(), "empty file"},
        {Zip(withoutDocument), "no document part"},
        {Zip(brokenXml), "unfinished XML"},
        {Zip(noBody), "no body"},
    };
    for (const auto &[bytes, what] : cases)
        EXPECT_EQ(MergeErrorOf([&] { MailMerge(bytes, "plantilla.doc"); }), damaged) << what;

    const QString missing = dir.filePath("Certificado de Donaciones2000.doc");
    EXPECT_EQ(MergeErrorOf([&] { MailMerge::FromFile(missing); }),
              "No se encuentra la plantilla de los certificados «" + missing
                  + "». Copie la plantilla en la carpeta de informes y vuelva a intentarlo.");
    const QString notWritable = dir.filePath("no existe/Certificados de Donaciones.docx");
    const QString message = MergeErrorOf([&] { MailMerge::FromFile(good).MergeToFile(kRecords, notWritable); });
    EXPECT_TRUE(message.startsWith("No se pudo escribir el documento de los certificados «" + notWritable + "» ("))
        << message;
    EXPECT_TRUE(message.endsWith("). Ciérrelo si está abierto y compruebe que se puede escribir en la carpeta.")) << message;
}

} // namespace
