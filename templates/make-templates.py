#!/usr/bin/env python3
"""Writes the two donation certificate templates of this folder.

    python3 templates/make-templates.py [output folder]

Both are WordprocessingML (.docx) packages, whatever their file names say,
so that Word and LibreOffice open them and the program's merge fills them.
Their merge fields are the columns of CartaDonantes (Nombre, Apellido1,
Apellido2, NIF, Importe, Direccion, CodPos, Poblacion, Provincia) and what
the merge adds (Entidad, NIFEntidad, Ejercicio, Fecha). The output is the
same byte for byte on every run: the committed files are this script's.
"""

import os
import sys
import zipfile
from xml.sax.saxutils import escape

W_NS = "http://schemas.openxmlformats.org/wordprocessingml/2006/main"
R_NS = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
REL = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
DECLARATION = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'

LAW = ("Ley 49/2002, de 23 de diciembre, de régimen fiscal de las entidades sin fines "
       "lucrativos y de los incentivos fiscales al mecenazgo")

# Twentieths of a point: A4 and its margins (3 cm left, 2.5 cm elsewhere).
PAGE_WIDTH, PAGE_HEIGHT = 11906, 16838
MARGIN_LEFT, MARGIN_OTHER = 1701, 1418
TEXT_WIDTH = PAGE_WIDTH - MARGIN_LEFT - MARGIN_OTHER


# ---------------------------------------------------------------- runs

def run_properties(bold=False, italic=False, caps=False, small_caps=False, size=None, colour=None,
                   spacing=None, no_proof=False):
    """rPr in the order the schema fixes."""
    parts = []
    if bold:
        parts.append("<w:b/><w:bCs/>")
    if italic:
        parts.append("<w:i/><w:iCs/>")
    if caps:
        parts.append("<w:caps/>")
    if small_caps:
        parts.append("<w:smallCaps/>")
    if no_proof:
        parts.append("<w:noProof/>")
    if colour:
        parts.append('<w:color w:val="%s"/>' % colour)
    if spacing:
        parts.append('<w:spacing w:val="%d"/>' % spacing)
    if size:
        parts.append('<w:sz w:val="%d"/><w:szCs w:val="%d"/>' % (size, size))
    return "<w:rPr>%s</w:rPr>" % "".join(parts) if parts else ""


def text(value, **format):
    return '<w:r>%s<w:t xml:space="preserve">%s</w:t></w:r>' % (run_properties(**format), escape(value))


def line_break(**format):
    return "<w:r>%s<w:br/></w:r>" % run_properties(**format)


class Fields:
    """Merge fields in one of Word's two forms: complex (fldChar runs, as
    Word writes them) or simple (fldSimple)."""

    def __init__(self, simple):
        self.simple = simple

    def __call__(self, name, before=None, after=None, **format):
        instruction = " MERGEFIELD %s " % name
        if before:
            instruction += '\\b "%s" ' % before
        if after:
            instruction += '\\f "%s" ' % after
        instruction += "\\* MERGEFORMAT "
        shown = "%s«%s»%s" % (before or "", name, after or "")
        result = '<w:r>%s<w:t xml:space="preserve">%s</w:t></w:r>' % (
            run_properties(no_proof=True, **format), escape(shown))
        if self.simple:
            return '<w:fldSimple w:instr="%s">%s</w:fldSimple>' % (escape(instruction, {'"': "&quot;"}), result)
        rpr = run_properties(**format)
        return ('<w:r>%s<w:fldChar w:fldCharType="begin"/></w:r>'
                '<w:r>%s<w:instrText xml:space="preserve">%s</w:instrText></w:r>'
                '<w:r>%s<w:fldChar w:fldCharType="separate"/></w:r>%s'
                '<w:r>%s<w:fldChar w:fldCharType="end"/></w:r>') % (
                    rpr, rpr, escape(instruction), rpr, result, rpr)


# ---------------------------------------------------------- paragraphs

def paragraph(*runs, align=None, before=0, after=120, line=None, indent_left=None, first_line=None,
              keep_next=False, border_top=False, border_bottom=False, shading=None):
    """A paragraph; properties in the schema's order."""
    ppr = []
    if keep_next:
        ppr.append("<w:keepNext/>")
    if border_top or border_bottom:
        borders = ""
        if border_top:
            borders += '<w:top w:val="single" w:sz="8" w:space="4" w:color="1F3864"/>'
        if border_bottom:
            borders += '<w:bottom w:val="single" w:sz="8" w:space="4" w:color="1F3864"/>'
        ppr.append("<w:pBdr>%s</w:pBdr>" % borders)
    if shading:
        ppr.append('<w:shd w:val="clear" w:color="auto" w:fill="%s"/>' % shading)
    spacing = '<w:spacing w:before="%d" w:after="%d"' % (before, after)
    if line:
        spacing += ' w:line="%d" w:lineRule="auto"' % line
    ppr.append(spacing + "/>")
    if indent_left is not None or first_line is not None:
        ind = "<w:ind"
        if indent_left is not None:
            ind += ' w:left="%d"' % indent_left
        if first_line is not None:
            ind += ' w:firstLine="%d"' % first_line
        ppr.append(ind + "/>")
    if align:
        ppr.append('<w:jc w:val="%s"/>' % align)
    return "<w:p><w:pPr>%s</w:pPr>%s</w:p>" % ("".join(ppr), "".join(runs))


def table(rows, widths, borders=False, indent=0, valign="center"):
    """rows: lists of cells, each a list of paragraphs."""
    border = ('<w:%s w:val="single" w:sz="4" w:space="0" w:color="8EAADB"/>' if borders
              else '<w:%s w:val="nil"/>')
    edges = "".join(border % edge for edge in ("top", "left", "bottom", "right", "insideH", "insideV"))
    xml = ['<w:tbl><w:tblPr><w:tblW w:w="%d" w:type="dxa"/><w:tblInd w:w="%d" w:type="dxa"/>'
           '<w:tblBorders>%s</w:tblBorders><w:tblLayout w:type="fixed"/>'
           '<w:tblCellMar><w:left w:w="85" w:type="dxa"/><w:right w:w="85" w:type="dxa"/></w:tblCellMar>'
           '<w:tblLook w:val="0000" w:firstRow="0" w:lastRow="0" w:firstColumn="0" w:lastColumn="0" '
           'w:noHBand="1" w:noVBand="1"/></w:tblPr>' % (sum(widths), indent, edges)]
    xml.append("<w:tblGrid>%s</w:tblGrid>" % "".join('<w:gridCol w:w="%d"/>' % w for w in widths))
    for cells in rows:
        xml.append("<w:tr><w:trPr><w:cantSplit/></w:trPr>")
        for width, (content, fill) in zip(widths, cells):
            shading = '<w:shd w:val="clear" w:color="auto" w:fill="%s"/>' % fill if fill else ""
            xml.append('<w:tc><w:tcPr><w:tcW w:w="%d" w:type="dxa"/>%s<w:vAlign w:val="%s"/></w:tcPr>%s</w:tc>'
                       % (width, shading, valign, "".join(content)))
        xml.append("</w:tr>")
    xml.append("</w:tbl>")
    return "".join(xml)


def section(footer=False):
    reference = '<w:footerReference w:type="default" r:id="rIdFooter"/>' if footer else ""
    return ('<w:sectPr>%s<w:pgSz w:w="%d" w:h="%d"/>'
            '<w:pgMar w:top="%d" w:right="%d" w:bottom="%d" w:left="%d" w:header="709" w:footer="567" w:gutter="0"/>'
            '<w:cols w:space="708"/><w:docGrid w:linePitch="360"/></w:sectPr>') % (
                reference, PAGE_WIDTH, PAGE_HEIGHT, MARGIN_OTHER, MARGIN_OTHER, MARGIN_OTHER, MARGIN_LEFT)


def document(body):
    return (DECLARATION + '<w:document xmlns:w="%s" xmlns:r="%s"><w:body>%s</w:body></w:document>'
            % (W_NS, R_NS, body))


# ------------------------------------------------- the certificate text

def donor_name(field, **format):
    """"ANA ORTIZ RUIZ"; no blank is left where a surname is missing."""
    return [field("Nombre", **format), field("Apellido1", before=" ", **format),
            field("Apellido2", before=" ", **format)]


def domicile(field):
    """", con domicilio en C/ Mayor 1, 28001 Madrid (Madrid)": each piece only when known."""
    return [field("Direccion", before=", con domicilio en "), field("CodPos", before=", "),
            field("Poblacion", before=" "), field("Provincia", before=" (", after=")")]


BODY_TEXT = dict(align="both", after=140, line=276)


def statements(field, donor_identified_above):
    """The five things the certificate must state, in four numbered points."""
    if donor_identified_above:
        donor = [text("Que el donante arriba identificado, "), *donor_name(field, bold=True),
                 text(", con NIF "), field("NIF", bold=True)]
    else:
        donor = [text("Que D./D.ª "), *donor_name(field, bold=True), text(", con NIF "),
                 field("NIF", bold=True), *domicile(field)]
    return [
        paragraph(text("Primero. ", bold=True), text("Que "), field("Entidad"), text(", con NIF "),
                  field("NIFEntidad"), text(", es una de las entidades beneficiarias del mecenazgo a las que "
                                            "se refiere el artículo 16 de la " + LAW + "."), **BODY_TEXT),
        paragraph(text("Segundo. ", bold=True), *donor,
                  text(", ha entregado a esta entidad durante el ejercicio "), field("Ejercicio", bold=True),
                  text(", en concepto de donativo dinerario, la cantidad total de "), field("Importe", bold=True),
                  text(" euros.", bold=True), **BODY_TEXT),
        paragraph(text("Tercero. ", bold=True),
                  text("Que la donación se destina a los fines propios de la entidad, en particular al "
                       "sostenimiento y la mejora de las actividades educativas del centro."), **BODY_TEXT),
        paragraph(text("Cuarto. ", bold=True),
                  text("Que la donación tiene carácter irrevocable, sin perjuicio de lo establecido en las "
                       "normas imperativas civiles que regulan la revocación de donaciones."), **BODY_TEXT),
        paragraph(text("Y para que conste a los efectos previstos en el artículo 24 de la citada Ley 49/2002, "
                       "se expide el presente certificado."), **BODY_TEXT),
    ]


def place_and_date(field):
    return paragraph(text("En ______________________, a "), field("Fecha"), text("."),
                     align="right", before=240, after=480, keep_next=True)


def signatures():
    half = TEXT_WIDTH // 2
    cell = lambda *lines: ([paragraph(text(lines[0], bold=True), align="center", after=0, keep_next=True),
                            paragraph(align="center", after=0, keep_next=True),
                            paragraph(align="center", after=0, keep_next=True),
                            paragraph(align="center", after=0, keep_next=True),
                            paragraph(text(lines[1]), align="center", after=0, keep_next=True),
                            paragraph(text(lines[2], italic=True, size=18, colour="595959"),
                                      align="center", after=0)], None)
    return table([[cell("El Secretario", "Fdo.: ______________________", "(sello de la entidad)"),
                   cell("V.º B.º La Dirección", "Fdo.: ______________________", "")]],
                 [half, TEXT_WIDTH - half], valign="top")


TAX_NOTE = ("Este certificado acredita el donativo a efectos de las deducciones previstas en los artículos "
            "19 y 20 de la Ley 49/2002 (Impuesto sobre la Renta de las Personas Físicas e Impuesto sobre "
            "Sociedades). Sus datos coinciden con los declarados por la entidad en el modelo 182.")


def certificate_97():
    """A letter: the entity's heading, the donor's address where a window
    envelope shows it, the title and the statements."""
    field = Fields(simple=False)
    heading = [
        paragraph(field("Entidad", bold=True, small_caps=True, size=26, colour="1F3864"), after=0),
        paragraph(text("NIF "), field("NIFEntidad"), after=0, border_bottom=True),
    ]
    address = [
        paragraph(*donor_name(field), before=480, after=0, indent_left=4820),
        paragraph(field("Direccion"), after=0, indent_left=4820),
        paragraph(field("CodPos"), field("Poblacion", before=" "), after=0, indent_left=4820),
        paragraph(field("Provincia"), after=0, indent_left=4820),
    ]
    title = [
        paragraph(text("CERTIFICADO DE DONACIONES", bold=True, size=32, spacing=20, colour="1F3864"),
                  align="center", before=600, after=60),
        paragraph(text("Ejercicio "), field("Ejercicio"), text(" · Artículo 24 de la Ley 49/2002", italic=False),
                  align="center", after=360),
    ]
    opening = [
        paragraph(text("El Secretario de "), field("Entidad"), text(", con NIF "), field("NIFEntidad"),
                  text(", entidad receptora de la donación,"), **BODY_TEXT),
        paragraph(text("CERTIFICA:", bold=True, spacing=20), before=120, after=140),
    ]
    note = paragraph(text(TAX_NOTE, italic=True, size=17, colour="595959"), align="both", before=360, after=0,
                     border_top=True)
    body = (heading + address + title + opening + statements(field, donor_identified_above=False)
            + [place_and_date(field), signatures(), note])
    return document("".join(body) + section())


def certificate_2000():
    """A form: the title in a band, the donor's data in a table, then the
    statements; the tax note goes to the page footer."""
    field = Fields(simple=True)
    label = lambda caption: ([paragraph(text(caption, bold=True, size=20, colour="1F3864"), after=0)], "DEEAF6")
    value = lambda *runs: ([paragraph(*runs, after=0)], None)
    title = [
        paragraph(text("CERTIFICADO DE DONACIONES", bold=True, size=32, spacing=20, colour="1F3864"),
                  align="center", before=120, after=0, border_top=True, shading="DEEAF6"),
        paragraph(text("Ley 49/2002, de 23 de diciembre · Ejercicio "), field("Ejercicio"),
                  align="center", after=360, border_bottom=True, shading="DEEAF6"),
    ]
    entity = [
        paragraph(text("Entidad receptora", bold=True, size=20, colour="1F3864", caps=True), after=60),
        table([[label("Denominación"), value(field("Entidad", bold=True))],
               [label("NIF"), value(field("NIFEntidad"))]], [2268, TEXT_WIDTH - 2268], borders=True),
    ]
    donor = [
        paragraph(text("Donante", bold=True, size=20, colour="1F3864", caps=True), before=240, after=60),
        table([[label("Nombre y apellidos"), value(*donor_name(field, bold=True))],
               [label("NIF"), value(field("NIF", bold=True))],
               [label("Domicilio"), value(field("Direccion"), field("CodPos", before=", "),
                                          field("Poblacion", before=" "),
                                          field("Provincia", before=" (", after=")"))],
               [label("Ejercicio"), value(field("Ejercicio"))],
               [label("Importe donado"), value(field("Importe", bold=True), text(" euros", bold=True))]],
              [2268, TEXT_WIDTH - 2268], borders=True),
    ]
    opening = [
        paragraph(text("El Secretario de la entidad receptora arriba identificada,"), before=360, **BODY_TEXT),
        paragraph(text("CERTIFICA:", bold=True, spacing=20), before=60, after=140),
    ]
    body = (title + entity + donor + opening + statements(field, donor_identified_above=True)
            + [place_and_date(field), signatures()])
    return document("".join(body) + section(footer=True))


def footer_2000():
    return (DECLARATION + '<w:ftr xmlns:w="%s" xmlns:r="%s">%s</w:ftr>'
            % (W_NS, R_NS, paragraph(text(TAX_NOTE, italic=True, size=16, colour="595959"),
                                     align="both", after=0, border_top=True)))


# ------------------------------------------------------ package parts

STYLES = (DECLARATION + '<w:styles xmlns:w="%s">'
          '<w:docDefaults><w:rPrDefault><w:rPr>'
          '<w:rFonts w:ascii="Times New Roman" w:hAnsi="Times New Roman" w:eastAsia="Times New Roman" '
          'w:cs="Times New Roman"/><w:sz w:val="23"/><w:szCs w:val="23"/>'
          '<w:lang w:val="es-ES" w:eastAsia="es-ES" w:bidi="ar-SA"/></w:rPr></w:rPrDefault>'
          '<w:pPrDefault><w:pPr><w:spacing w:after="120" w:line="240" w:lineRule="auto"/></w:pPr></w:pPrDefault>'
          '</w:docDefaults>'
          '<w:style w:type="paragraph" w:default="1" w:styleId="Normal"><w:name w:val="Normal"/><w:qFormat/>'
          '<w:pPr><w:widowControl/></w:pPr></w:style>'
          '<w:style w:type="character" w:default="1" w:styleId="DefaultParagraphFont">'
          '<w:name w:val="Default Paragraph Font"/><w:uiPriority w:val="1"/><w:semiHidden/></w:style>'
          '<w:style w:type="table" w:default="1" w:styleId="TableNormal"><w:name w:val="Normal Table"/>'
          '<w:semiHidden/><w:tblPr><w:tblInd w:w="0" w:type="dxa"/><w:tblCellMar>'
          '<w:top w:w="0" w:type="dxa"/><w:left w:w="108" w:type="dxa"/><w:bottom w:w="0" w:type="dxa"/>'
          '<w:right w:w="108" w:type="dxa"/></w:tblCellMar></w:tblPr></w:style>'
          '</w:styles>' % W_NS)

SETTINGS = (DECLARATION + '<w:settings xmlns:w="%s"><w:defaultTabStop w:val="708"/>'
            '<w:hyphenationZone w:val="425"/><w:characterSpacingControl w:val="doNotCompress"/>'
            '<w:compat><w:compatSetting w:name="compatibilityMode" w:uri="http://schemas.microsoft.com/office/word" '
            'w:val="15"/></w:compat></w:settings>' % W_NS)

FONT_TABLE = (DECLARATION + '<w:fonts xmlns:w="%s"><w:font w:name="Times New Roman">'
              '<w:panose1 w:val="02020603050405020304"/><w:charset w:val="00"/><w:family w:val="roman"/>'
              '<w:pitch w:val="variable"/></w:font></w:fonts>' % W_NS)


def content_types(footer):
    overrides = [("/word/document.xml", "wordprocessingml.document.main"),
                 ("/word/styles.xml", "wordprocessingml.styles"),
                 ("/word/settings.xml", "wordprocessingml.settings"),
                 ("/word/fontTable.xml", "wordprocessingml.fontTable")]
    if footer:
        overrides.append(("/word/footer1.xml", "wordprocessingml.footer"))
    xml = ['<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
           '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
           '<Default Extension="xml" ContentType="application/xml"/>']
    xml += ['<Override PartName="%s" ContentType="application/vnd.openxmlformats-officedocument.%s+xml"/>'
            % override for override in overrides]
    xml.append('<Override PartName="/docProps/core.xml" '
               'ContentType="application/vnd.openxmlformats-package.core-properties+xml"/></Types>')
    return DECLARATION + "".join(xml)


def relationships(links):
    return (DECLARATION + '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
            + "".join('<Relationship Id="%s" Type="%s" Target="%s"/>' % link for link in links)
            + "</Relationships>")


CORE = (DECLARATION + '<cp:coreProperties '
        'xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties" '
        'xmlns:dc="http://purl.org/dc/elements/1.1/">'
        '<dc:title>Certificado de donaciones</dc:title><dc:language>es-ES</dc:language>'
        '</cp:coreProperties>')


def package(document_xml, footer_xml=None):
    links = [("rIdStyles", REL + "styles", "styles.xml"), ("rIdSettings", REL + "settings", "settings.xml"),
             ("rIdFonts", REL + "fontTable", "fontTable.xml")]
    if footer_xml:
        links.append(("rIdFooter", REL + "footer", "footer1.xml"))
    parts = [("[Content_Types].xml", content_types(footer_xml is not None)),
             ("_rels/.rels", relationships([
                 ("rId1", REL + "officeDocument", "word/document.xml"),
                 ("rId2", "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties",
                  "docProps/core.xml")])),
             ("docProps/core.xml", CORE),
             ("word/document.xml", document_xml),
             ("word/_rels/document.xml.rels", relationships(links)),
             ("word/styles.xml", STYLES),
             ("word/settings.xml", SETTINGS),
             ("word/fontTable.xml", FONT_TABLE)]
    if footer_xml:
        parts.append(("word/footer1.xml", footer_xml))
    return parts


def write(path, parts):
    with zipfile.ZipFile(path, "w") as archive:
        for name, xml in parts:
            info = zipfile.ZipInfo(name, date_time=(1980, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_DEFLATED
            info.external_attr = 0o644 << 16
            archive.writestr(info, xml.encode("utf-8"))


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    write(os.path.join(folder, "Certificado de Donaciones97.doc"), package(certificate_97()))
    write(os.path.join(folder, "Certificado de Donaciones2000.doc"), package(certificate_2000(), footer_2000()))


if __name__ == "__main__":
    main()
