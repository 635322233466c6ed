#include "util/VbFormat.h"
#include "UtilTest.h"
#include "util/OverflowError.h"
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

const double kNaN = std::nan(""), kInf = std::numeric_limits<double>::infinity();

TEST(FormatNumberTest, CellsAndTotalsInBothLocales)
{
    const char *totals = "#,###,##0.00";
    const struct
    {
        const char *pattern;
        double value;
        const char *spanish, *english;
    } cases[] = {
        {totals, 1234.5, "1.234,50", "1,234.50"},
        {totals, 999.99, "999,99", "999.99"},
        {totals, 0, "0,00", "0.00"},
        {totals, -1234567.891, "-1.234.567,89", "-1,234,567.89"},
        {totals, 999.995, "1.000,00", "1,000.00"},
        {"0.00", 1234.5, "1234,50", "1234.50"},
        {"0.00", 0.07, "0,07", "0.07"},
        {"0.00", 2.675, "2,68", "2.68"},
        {"0.00", -2.675, "-2,68", "-2.68"}, // half away from zero, as typed
        {"0.00", -0.001, "0,00", "0.00"},
        {"0.0#", 2.5, "2,5", "2.5"},
        {"0.0#", 2.567, "2,57", "2.57"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(FormatNumber(c.value, c.pattern, spanish()), c.spanish) << c.pattern << " " << c.value;
        EXPECT_EQ(FormatNumber(c.value, c.pattern, english()), c.english) << c.pattern << " " << c.value;
    }
    EXPECT_THROW(FormatNumber(1, "0.00 €", spanish()), std::invalid_argument);
}

TEST(NumberReadingTest, IsNumericAndToDoubleInBothLocales)
{
    const double no = kNaN; // not a number in that locale
    const struct
    {
        const char *text;
        double spanish, english;
    } cases[] = {
        {"12,5", 12.5, 12.5},
        {"1.234", 1.234, 1.234},
        {"  -7 ", -7, -7},
        {"+4", 4, 4},
        {"1.234,50", 1234.5, 1234.5},
        {"1,234.50", 1234.5, 1234.5}, // both: the last one is the decimal mark
        {"1.234.567", 1234567, no},
        {"1,234,567", no, 1234567}, // repeated: the locale's grouping only
        {"1..234", no, no},
        {"1.234.", no, no},
        {"", no, no},
        {"12a", no, no},
        {"1e5", no, no},
        {"-", no, no},
    };
    for (const auto &c : cases)
        for (const bool inEnglish : {false, true}) {
            const double expected = inEnglish ? c.english : c.spanish;
            const QLocale locale = inEnglish ? english() : spanish();
            SCOPED_TRACE(testing::Message() << "\"" << c.text << "\" " << locale.name().toStdString());
            EXPECT_EQ(IsNumeric(c.text, locale), !std::isnan(expected));
            if (std::isnan(expected))
                EXPECT_THROW(ToDouble(c.text, locale), ConversionError);
            else
                EXPECT_DOUBLE_EQ(ToDouble(c.text, locale), expected);
        }
    EXPECT_EQ(errorOf([] { ToDouble("doce", spanish()); }), "El valor «doce» no es un número válido.");
}

TEST(CIntTest, HalvesToEvenAndOverflowAfterRounding)
{
    const struct
    {
        double value;
        qint16 expected;
    } cases[] = {
        {12.5, 12}, {13.5, 14}, {-2.5, -2}, {-3.5, -4}, {0.5, 0}, {2.6, 3}, {32767.4, 32767}, {-32768.5, -32768},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CInt(c.value), c.expected) << c.value;
    for (const double value : {32767.5, -32768.6, kNaN, kInf})
        EXPECT_THROW(CInt(value), OverflowError) << value;
    const QString message = errorOf([] { CInt(40000); });
    EXPECT_TRUE(message.startsWith("Desbordamiento: ") && message.contains("40000")) << message.toStdString();
}

TEST(SqlLiteralTest, DecimalPointTextQuotesDoubledAndBooleans)
{
    const QLocale saved; // the default locale must not leak into a statement: make it one with a decimal comma
    QLocale::setDefault(spanish());
    const struct
    {
        double value;
        const char *text;
    } decimals[] = {
        {12.5, "12.5"},
        {12, "12"},
        {-3.25, "-3.25"},
        {-0.0, "0"},
        {1234567.89, "1234567.89"},
        {0.1 + 0.2, "0.3"},
        {0.000012, "0.000012"},
        {1e20, "100000000000000000000"},
    };
    for (const auto &c : decimals)
        EXPECT_EQ(SqlDecimal(c.value), c.text) << c.value;
    for (const double value : {kNaN, kInf}) // no SQL literal
        EXPECT_THROW(SqlDecimal(value), ConversionError);
    QLocale::setDefault(saved);
    EXPECT_EQ(SqlText("O'Neil's"), "'O''Neil''s'");
    EXPECT_EQ(SqlText(""), "''");
    EXPECT_EQ(SqlEscape("D'Souza"), "D''Souza");
    EXPECT_EQ(SqlBool(true), "-1");
    EXPECT_EQ(SqlBool(false), "0");
}
