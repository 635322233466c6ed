// The field rules of the tax agency's file, one table per kind of field.
#include "GeneratorTest.h"

#include "generator/AeatText.h"
#include "generator/Donation.h"

TEST(AeatFields, AlphanumericFieldsAreUpperCasePlainAndPadded)
{
    struct Case
    {
        const char *text;
        int width;
        QByteArray latin1;
    };
    const QList<Case> cases = {
        {"José", 6, "JOSE  "},
        {"muñoz", 5, "MU\xD1OZ"},
        {"Garçon", 6, "GAR\xC7ON"},
        {"  Àngel Üñez  ", 12,
         "ANGEL U\xD1"
         "EZ "},
        {"A&B, S.L. (c/ Nou: 3; 4_5) \\x", 30, "A&B, S.L. (C/ NOU: 3; 4_5) \\X"},
        {"Ana@correo #1 · €", 17, "ANA CORREO  1"},
        {"L'Hospitalet", 4, "L'HO"},
        {"", 3, "   "},
        // Letters of U+0080 to U+00FF come from a table worked out once.
        {"Straße", 7, "STRASSE"},
        {"\xC2\xA0ÿ µ×Øç\xC2\xA0", 6, "Y    \xC7"},
    };
    for (const Case &c : cases) {
        const QString field = Aeat::AlphanumericField(QString::fromUtf8(c.text), c.width);
        EXPECT_EQ(field.size(), c.width) << c.text;
        EXPECT_EQ(field.toLatin1(), c.latin1.leftJustified(c.width, ' ')) << c.text;
    }
}

TEST(AeatFields, NumericNifAndDigitFieldsAreRightJustifiedWithZeros)
{
    EXPECT_EQ(Aeat::NumericField(123450, 13), "0000000123450");
    EXPECT_EQ(Aeat::NumericField(0, 5), "00000");
    EXPECT_EQ(Aeat::NumericField(100000, 5), ""); // does not fit
    EXPECT_EQ(Aeat::NumericField(-1, 5), "");
    EXPECT_EQ(Aeat::NifField("1234567L"), "01234567L");
    EXPECT_EQ(Aeat::NifField(" x-1234567-l "), "X1234567L");
    EXPECT_EQ(Aeat::NifField(""), "         ");
    EXPECT_EQ(Aeat::DigitsField("93 456-78-90", 9), "934567890");
    EXPECT_EQ(Aeat::DigitsField("+34 934 567 890", 9), "934567890");
    EXPECT_EQ(Aeat::DigitsField("", 9), "000000000");
}

TEST(AeatFields, APersonIsSurnamesThenName)
{
    EXPECT_EQ(Aeat::PersonName("Puig", "Ferrer", "Núria"), "Puig Ferrer Núria");
    EXPECT_EQ(Aeat::PersonName(" Puig ", "", "Núria"), "Puig Núria");
    EXPECT_EQ(Aeat::PersonName("Puig", "-", "-"), "Puig");
}

TEST(AeatFields, ARecordRefusesAFieldOutOfPlace)
{
    Aeat::Record record;
    record.Put(249, 2, "AB");
    EXPECT_EQ(record.Encoded().size(), 252);
    EXPECT_EQ(record.Encoded().right(4), "AB\r\n");
    EXPECT_THROW(record.Put(250, 2, "AB"), std::logic_error);
    EXPECT_THROW(record.Put(1, 3, "AB"), std::logic_error);
}

TEST(AeatFields, AmountsAreReadInWholeCentsInEitherConvention)
{
    const QLocale es(QLocale::Spanish, QLocale::Spain);
    const QLocale us(QLocale::English, QLocale::UnitedStates);
    struct Case
    {
        const char *text;
        QLocale locale;
        bool ok;
        qint64 cents;
    };
    const QList<Case> cases = {
        {"1.234,50", es, true, 123450}, {"1,234.50", us, true, 123450},
        {"1,234.50", es, true, 123450}, // the other convention still reads
        {"1.234,50", us, true, 123450}, {"12.345.678.901,23", es, true, 1234567890123},
        {"0,07", es, true, 7},          {"12,5", es, true, 1250},
        {" 7,00 ", es, true, 700},      {"-3,25", es, true, -325},
        {"12,x5", es, false, 0},        {"", es, false, 0},
        {"1.234,50 €", es, false, 0},   {"1.234,5€", es, false, 0},
        {"١٢,٥٠", es, false, 0}, // digits of another script are not amounts
    };
    for (const Case &c : cases) {
        qint64 cents = 0;
        EXPECT_EQ(Aeat::AmountInCents(QString::fromUtf8(c.text), c.locale, cents), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(cents, c.cents) << c.text;
        }
        // The stored bytes read the same, without decoding them first.
        cents = 0;
        EXPECT_EQ(Aeat::AmountInCents(QByteArrayView(c.text), c.locale, cents), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(cents, c.cents) << c.text;
        }
    }
}
