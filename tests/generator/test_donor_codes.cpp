// The one-letter codes and small numbers of a donor row as the wizard or a
// user may have left them (blanks around, lower case, words for the in-kind
// mark) and what the file carries for them, or why the row is refused.
#include "GeneratorTest.h"

namespace {

struct CodeCase
{
    const char *clave;
    const char *tipoPersona;
    const char *especie;
    const char *deduccion;
    QByteArray p78;  // key
    QByteArray p105; // nature of the donor
    QByteArray p97;  // in kind
    QByteArray p79;  // deduction percentage
};

DonorValues Pau(const CodeCase &c)
{
    DonorValues d;
    d.nombre = QStringLiteral("Pau");
    d.apellido1 = QStringLiteral("Garcia");
    d.apellido2 = QStringLiteral("Vidal");
    d.nif = QStringLiteral("12345678Z");
    d.importe = QStringLiteral("10,00");
    d.clave = QString::fromUtf8(c.clave);
    d.tipoPersona = QString::fromUtf8(c.tipoPersona);
    d.donativoenespecie = QString::fromUtf8(c.especie);
    d.deduccion = QString::fromUtf8(c.deduccion);
    return d;
}

} // namespace

TEST_F(GeneratorTest, CodesAreReadWithBlanksAroundAndInEitherCase)
{
    const QList<CodeCase> cases = {
        {" b ", " j ", " sí ", " 8000 ", "B", "J", "X", "08000"},
        {"", "", "no", "08000", "A", "F", " ", "08000"},
        {"g", "e", "true", "3750", "G", "E", "X", "03750"},
        {"A", "F", "-1", "10000", "A", "F", "X", "10000"},
        {"a", "f", "S", "", "A", "F", "X", "00000"},
        {"C", "J", "0", "02500", "C", "J", " ", "02500"},
        {"D", "E", "x", "0", "D", "E", "X", "00000"},
        // No-break and em spaces around count as blanks too.
        {"\u00A0c\u00A0", "\u2003e", "SÍ\u00A0", "\u00A02500", "C", "E", "X", "02500"},
    };
    for (const CodeCase &c : cases) {
        SCOPED_TRACE(std::string(c.clave) + "|" + c.tipoPersona + "|" + c.especie + "|" + c.deduccion);
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        InsertDonor(*db, Pau(c));
        const Modelo182Result result = Generate();
        ASSERT_TRUE(result.generado) << result.Resumen(options.locale).toStdString();
        const QList<QByteArray> records = Records(FilePath());
        ASSERT_EQ(records.size(), 2);
        EXPECT_EQ(records[1].mid(77, 1), c.p78);
        EXPECT_EQ(records[1].mid(104, 1), c.p105);
        EXPECT_EQ(records[1].mid(96, 1), c.p97);
        EXPECT_EQ(records[1].mid(78, 5), c.p79);
    }
}

TEST_F(GeneratorTest, CodesOfMoreThanOneLetterOrOutOfRangeAreRefused)
{
    struct Refusal
    {
        CodeCase row;
        QString problem;
    };
    const QString donor = QStringLiteral(" del donante Garcia Vidal Pau");
    const QString retry = QStringLiteral(" y vuelva a generar la declaración.");
    const QList<Refusal> cases = {
        {{"AB", "F", "", "08000", {}, {}, {}, {}},
         "La clave «AB»" + donor + " no es válida: debe ser una letra de la A a la G; corríjala" + retry},
        {{"é", "F", "", "08000", {}, {}, {}, {}},
         "La clave «é»" + donor + " no es válida: debe ser una letra de la A a la G; corríjala" + retry},
        {{"h", "F", "", "08000", {}, {}, {}, {}},
         "La clave «h»" + donor + " no es válida: debe ser una letra de la A a la G; corríjala" + retry},
        {{"A", "FJ", "", "08000", {}, {}, {}, {}},
         "El tipo de persona «FJ»" + donor + " no es válido: debe ser F, J o E; corríjalo" + retry},
        {{"A", "x", "", "08000", {}, {}, {}, {}},
         "El tipo de persona «x»" + donor + " no es válido: debe ser F, J o E; corríjalo" + retry},
        {{"A", "F", "", "080000", {}, {}, {}, {}},
         "El porcentaje de deducción «080000»" + donor + " no es válido: revise la deducción de sus actividades" + retry},
        {{"A", "F", "", "80,00", {}, {}, {}, {}},
         "El porcentaje de deducción «80,00»" + donor + " no es válido: revise la deducción de sus actividades" + retry},
        {{"A", "F", "", "10001", {}, {}, {}, {}},
         "El porcentaje de deducción «10001»" + donor + " no es válido: revise la deducción de sus actividades" + retry},
    };
    for (const Refusal &c : cases) {
        SCOPED_TRACE(c.problem.toStdString());
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        InsertDonor(*db, Pau(c.row));
        const Modelo182Result result = Generate();
        EXPECT_FALSE(result.generado);
        EXPECT_EQ(result.rechazos, QStringList{c.problem});
    }
}
