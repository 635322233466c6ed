// The Modelo 182 file byte by byte: records, fields, encoding, aggregation.
#include "GeneratorTest.h"

namespace {

// The declarant and donor of the basic fixture.
DonorValues Jose(const QString &importe = QStringLiteral("1.234,50"))
{
    DonorValues d;
    d.nombre = QStringLiteral("José");
    d.apellido1 = QStringLiteral("Muñoz");
    d.apellido2 = QStringLiteral("Pérez");
    d.nif = QStringLiteral("12345678Z");
    d.importe = importe;
    return d;
}

ExpectedRecord DeclarantRecord(const QByteArray &count, const QByteArray &total)
{
    ExpectedRecord r;
    r.Number(1, 1, "1").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
    r.Text(18, 40, "COLEGIO SANT JORDI").Text(58, 1, "T").Number(59, 9, "934567890");
    r.Text(68, 40, "PUIG FERRER NURIA").Number(108, 13, "1821234567890");
    r.Number(123, 13, "0").Number(136, 9, count).Number(145, 15, total).Number(160, 1, "1");
    return r;
}

ExpectedRecord DonorRecord(const QByteArray &nif, const QByteArray &name, const QByteArray &deduction,
                           const QByteArray &amount, const QByteArray &recurrence = "2")
{
    ExpectedRecord r;
    r.Number(1, 1, "2").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
    r.Text(18, 9, nif).Text(36, 40, name).Number(76, 2, "08").Text(78, 1, "A");
    r.Number(79, 5, deduction).Number(84, 13, amount).Number(98, 2, "09").Number(100, 5, "02500");
    r.Text(105, 1, "F").Number(107, 4, "0").Number(132, 1, recurrence);
    return r;
}

qint64 Field(const QByteArray &record, int position, int length)
{
    return record.mid(position - 1, length).toLongLong();
}

} // namespace

TEST_F(GeneratorTest, WritesTheDeclarantAndEachDonorFieldByField)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Jose());

    const Modelo182Result result = Generate();

    ASSERT_TRUE(result.generado) << result.Resumen(options.locale).toStdString();
    EXPECT_EQ(result.fichero, FilePath());
    const QList<QByteArray> records = Records(FilePath());
    ASSERT_EQ(records.size(), 2);
    EXPECT_RECORD(records[0], DeclarantRecord("1", "123450").Bytes());
    EXPECT_RECORD(records[1], DonorRecord("12345678Z", "MU\xD1OZ PEREZ JOSE", "08000", "123450").Bytes());
    EXPECT_EQ(result.registrosDonantes, 1);
    EXPECT_EQ(result.totalCentimos, 123450);
    EXPECT_EQ(result.ejercicio, "2024");
    EXPECT_TRUE(result.avisos.isEmpty()) << result.avisos.join('\n').toStdString();
}

TEST_F(GeneratorTest, WritesEveryOptionalDonorFieldInItsPlace)
{
    InsertDeclarant(*db, DeclarantValues());
    DonorValues d;
    d.nombre = QStringLiteral("Íñigo");
    d.apellido1 = QStringLiteral("Sáez");
    d.apellido2 = QStringLiteral("Olañeta");
    d.nif = QStringLiteral("87654321x");
    d.nifrepresentante = QStringLiteral("00000000-T");
    d.importe = QStringLiteral("12.000,01");
    d.deduccion = QStringLiteral("03750");
    d.codigoprovincia = QStringLiteral("28");
    d.comunidadAut = QStringLiteral("12");
    d.deduccionCAut = QStringLiteral("01000");
    d.clave = QStringLiteral("b");
    d.donativoenespecie = QStringLiteral("X");
    d.tipoPersona = QStringLiteral("J");
    InsertDonor(*db, d);

    ASSERT_TRUE(Generate().generado);

    ExpectedRecord expected;
    expected.Number(1, 1, "2").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
    expected.Text(18, 9, "87654321X")
        .Text(27, 9, "00000000T")
        .Text(36, 40,
              "SAEZ OLA\xD1"
              "ETA I\xD1IGO");
    expected.Number(76, 2, "28").Text(78, 1, "B").Number(79, 5, "3750").Number(84, 13, "1200001");
    expected.Text(97, 1, "X").Number(98, 2, "12").Number(100, 5, "1000").Text(105, 1, "J");
    expected.Number(107, 4, "0").Number(132, 1, "2");
    const QList<QByteArray> records = Records(FilePath());
    ASSERT_EQ(records.size(), 2);
    EXPECT_RECORD(records[1], expected.Bytes());
    EXPECT_RECORD(records[0], DeclarantRecord("1", "1200001").Bytes());
}

TEST_F(GeneratorTest, SumsADonorsRowsPerPercentageAndKeepsTheTotalsConsistent)
{
    struct Row
    {
        const char *nif;
        const char *deduccion;
        const char *deduccionCAut;
        const char *importe;
    };
    struct Record
    {
        QByteArray nif;
        QByteArray deduction;
        QByteArray regional;
        qint64 cents;
    };
    struct Case
    {
        const char *name;
        QList<Row> rows;
        QList<Record> records;
    };
    const QList<Case> cases = {
        {"same percentage, one record",
         {{"12345678Z", "08000", "02500", "100,00"}, {"12345678Z", "08000", "02500", "50,50"}},
         {{"12345678Z", "08000", "02500", 15050}}},
        {"two percentages, two records",
         {{"12345678Z", "08000", "02500", "150,00"}, {"12345678Z", "04000", "02500", "1.000,00"}},
         {{"12345678Z", "04000", "02500", 100000}, {"12345678Z", "08000", "02500", 15000}}},
        {"rows of two donors interleaved",
         {{"22222222J", "08000", "02500", "10,00"},
          {"11111111H", "08000", "02500", "20,00"},
          {"22222222J", "08000", "02500", "30,00"}},
         {{"11111111H", "08000", "02500", 2000}, {"22222222J", "08000", "02500", 4000}}},
        {"another regional percentage, another record",
         {{"12345678Z", "08000", "02500", "10,00"}, {"12345678Z", "08000", "01500", "5,00"}},
         {{"12345678Z", "08000", "01500", 500}, {"12345678Z", "08000", "02500", 1000}}},
        {"one identifier written four ways, another donor between",
         {{"12345678Z", "08000", "02500", "1,00"},
          {"12345678z", "08000", "02500", "2,00"},
          {" 12345678-Z", "08000", "02500", "3,00"},
          {"11111111H", "08000", "02500", "0,50"},
          {"\t12345678Z\n", "08000", "02500", "4,00"}},
         {{"11111111H", "08000", "02500", 50}, {"12345678Z", "08000", "02500", 1000}}},
        {"a zero amount gives no record",
         {{"12345678Z", "08000", "02500", "0,00"}, {"11111111H", "08000", "02500", "0,01"}},
         {{"11111111H", "08000", "02500", 1}}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        for (const Row &row : c.rows) {
            DonorValues d = Jose(row.importe);
            d.nif = row.nif;
            d.deduccion = row.deduccion;
            d.deduccionCAut = row.deduccionCAut;
            InsertDonor(*db, d);
        }
        const Modelo182Result result = Generate();
        ASSERT_TRUE(result.generado) << result.Resumen(options.locale).toStdString();
        const QList<QByteArray> records = Records(FilePath());
        ASSERT_EQ(records.size(), c.records.size() + 1);
        qint64 sum = 0;
        for (int i = 0; i < c.records.size(); ++i) {
            const QByteArray &r = records[i + 1];
            EXPECT_EQ(r.left(1), "2");
            EXPECT_EQ(r.mid(17, 9), c.records[i].nif);
            EXPECT_EQ(r.mid(78, 5), c.records[i].deduction);
            EXPECT_EQ(r.mid(99, 5), c.records[i].regional);
            EXPECT_EQ(Field(r, 84, 13), c.records[i].cents);
            sum += Field(r, 84, 13);
        }
        EXPECT_EQ(Field(records[0], 136, 9), c.records.size());
        EXPECT_EQ(Field(records[0], 145, 15), sum);
    }
}

TEST_F(GeneratorTest, ReadsAmountsInTheLocaleTheWizardFormattedThemWith)
{
    struct Case
    {
        QLocale locale;
        const char *importe;
        QByteArray field;
    };
    const QList<Case> cases = {
        {QLocale(QLocale::Spanish, QLocale::Spain), "1.234,50", "0000000123450"},
        {QLocale(QLocale::English, QLocale::UnitedStates), "1,234.50", "0000000123450"},
        {QLocale(QLocale::Spanish, QLocale::Spain), "1.234.567,89", "0000123456789"},
        {QLocale(QLocale::English, QLocale::UnitedStates), "1,234,567.89", "0000123456789"},
        {QLocale(QLocale::Spanish, QLocale::Spain), "0,75", "0000000000075"},
        {QLocale(QLocale::English, QLocale::UnitedStates), "0.10", "0000000000010"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.importe);
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        InsertDonor(*db, Jose(c.importe));
        options.locale = c.locale;
        ASSERT_TRUE(Generate().generado);
        const QList<QByteArray> records = Records(FilePath());
        ASSERT_EQ(records.size(), 2);
        EXPECT_EQ(records[1].mid(83, 13), c.field);
        EXPECT_EQ(records[0].mid(144, 15), "00" + c.field);
    }
}

TEST_F(GeneratorTest, WritesNamesUpperCaseWithoutAccentsKeepingEnyeAndCedilla)
{
    struct Case
    {
        const char *surname1;
        const char *surname2;
        const char *name;
        QByteArray field;
    };
    const QList<Case> cases = {
        {"Muñoz", "Pérez", "José", "MU\xD1OZ PEREZ JOSE"},
        {"Çelik", "Núñez", "Zoë",
         "\xC7"
         "ELIK NU\xD1"
         "EZ ZOE"},
        {"D'Souza", "", "Ana-María", "D'SOUZA ANA-MARIA"},
        {"García", "-", "Joan", "GARCIA JOAN"},
        {"López #1", "Ruiz", "Pau (hijo)", "LOPEZ  1 RUIZ PAU (HIJO)"},
        {"Fernández-Villaverde", "de la Concepción", "María Auxiliadora", "FERNANDEZ-VILLAVERDE DE LA CONCEPCION MA"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.surname1);
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        DonorValues d = Jose();
        d.apellido1 = QString::fromUtf8(c.surname1);
        d.apellido2 = QString::fromUtf8(c.surname2);
        d.nombre = QString::fromUtf8(c.name);
        InsertDonor(*db, d);
        ASSERT_TRUE(Generate().generado);
        const QList<QByteArray> records = Records(FilePath());
        ASSERT_EQ(records.size(), 2);
        EXPECT_EQ(records[1].mid(35, 40), c.field.leftJustified(40, ' '));
    }
}

TEST_F(GeneratorTest, WritesPercentagesProvinceAndInKindMarkInTheirFields)
{
    struct Case
    {
        const char *deduccion;
        const char *provincia;
        const char *comunidad;
        const char *regional;
        const char *especie;
        QByteArray p79;
        QByteArray p76;
        QByteArray p97;
        QByteArray p98;
        QByteArray p100;
    };
    const QList<Case> cases = {
        {"02500", "08", "09", "02500", "", "02500", "08", " ", "09", "02500"},
        {"03750", "8", "09", "01000", "", "03750", "08", " ", "09", "01000"},
        {"08000", "28", "12", "00000", "X", "08000", "28", "X", "12", "00000"},
        // A community code of 00 carries no regional percentage.
        {"04500", "48", "00", "02500", "", "04500", "48", " ", "00", "00000"},
        {"", "99", "", "", "", "00000", "99", " ", "00", "00000"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.p79.toStdString());
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        DonorValues d = Jose();
        d.deduccion = c.deduccion;
        d.codigoprovincia = c.provincia;
        d.comunidadAut = c.comunidad;
        d.deduccionCAut = c.regional;
        d.donativoenespecie = c.especie;
        InsertDonor(*db, d);
        ASSERT_TRUE(Generate().generado);
        const QList<QByteArray> records = Records(FilePath());
        ASSERT_EQ(records.size(), 2);
        EXPECT_EQ(records[1].mid(78, 5), c.p79);
        EXPECT_EQ(records[1].mid(75, 2), c.p76);
        EXPECT_EQ(records[1].mid(96, 1), c.p97);
        EXPECT_EQ(records[1].mid(97, 2), c.p98);
        EXPECT_EQ(records[1].mid(99, 5), c.p100);
    }
}

TEST_F(GeneratorTest, WithoutDeclarationIdWritesZerosAndWarns)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Jose());
    options.numeroJustificante.clear();

    const Modelo182Result result = Generate();

    ASSERT_TRUE(result.generado);
    EXPECT_EQ(Records(FilePath()).value(0).mid(107, 13), "1820000000000");
    EXPECT_EQ(result.avisos, QStringList{"Falta el número de justificante: el fichero lleva 1820000000000. Escriba "
                                         "en él el número de 13 dígitos que da la AEAT antes de presentarlo."});
    EXPECT_TRUE(result.Resumen(options.locale).contains("Aviso: Falta el número de justificante"));
}

TEST_F(GeneratorTest, MarksComplementaryAndSubstitutiveDeclarations)
{
    struct Case
    {
        Modelo182Options::Tipo tipo;
        QByteArray p121to135;
    };
    const QList<Case> cases = {
        {Modelo182Options::Tipo::Normal, "  0000000000000"},
        {Modelo182Options::Tipo::Complementaria, "C 1829999999999"},
        {Modelo182Options::Tipo::Sustitutiva, " S1829999999999"},
    };
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Jose());
    for (const Case &c : cases) {
        options.tipo = c.tipo;
        options.justificanteAnterior = QStringLiteral("1829999999999");
        ASSERT_TRUE(Generate().generado);
        EXPECT_EQ(Records(FilePath()).value(0).mid(120, 15), c.p121to135);
    }
}

TEST_F(GeneratorTest, TakesTelephoneDigitsAndContactNameFromTheDeclarant)
{
    DeclarantValues declarant;
    declarant.pctelefono = QStringLiteral("+34 93 456 78 90");
    declarant.pcnombre = QStringLiteral("María José");
    declarant.pcapellido1 = QStringLiteral("Ibáñez");
    declarant.pcapellido2 = QStringLiteral("-");
    declarant.nombre = QStringLiteral("Escola Pia de Catalunya, Fundació Privada - Sant Antoni Abat");
    InsertDeclarant(*db, declarant);
    options.naturaleza = '2';

    const Modelo182Result result = Generate();

    ASSERT_TRUE(result.generado);
    const QList<QByteArray> records = Records(FilePath());
    ASSERT_EQ(records.size(), 1);
    ExpectedRecord expected;
    expected.Number(1, 1, "1").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
    expected.Text(18, 40, "ESCOLA PIA DE CATALUNYA, FUNDACIO PRIVAD").Text(58, 1, "T").Number(59, 9, "934567890");
    expected
        .Text(68, 40,
              "IBA\xD1"
              "EZ MARIA JOSE")
        .Number(108, 13, "1821234567890");
    expected.Number(123, 13, "0").Number(136, 9, "0").Number(145, 15, "0").Number(160, 1, "2");
    EXPECT_RECORD(records[0], expected.Bytes());
    EXPECT_EQ(result.avisos, QStringList{"La declaración no tiene ningún donante."});
}
