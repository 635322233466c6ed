#include "UtilTest.h"
#include "util/ConversionError.h"
#include "util/OverflowError.h"
#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

const double kNaN = std::nan("");

TEST(FormatNumberTest, PatternsInBothLocales)
{
    const char *totals = "#,###,##0.00";
    const struct { const char *pattern; double value; const char *spanish, *english; } cases[] = {
        // Totals always group thousands, whatever the locale's own minimum grouping.
        {totals, 1234.5, "1.234,50", "1,234.50"}, {totals, 1000, "1.000,00", "1,000.00"},
        {totals, 999.99, "999,99", "999.99"}, {totals, 0, "0,00", "0.00"}, {totals, 0.5, "0,50", "0.50"},
        {totals, 12345678.9, "12.345.678,90", "12,345,678.90"}, {totals, -1234.5, "-1.234,50", "-1,234.50"},
        {totals, 1234567.891, "1.234.567,89", "1,234,567.89"},
        {totals, 123456789012.34, "123.456.789.012,34", "123,456,789,012.34"},
        // Cells never group.
        {"0.00", 1234.5, "1234,50", "1234.50"}, {"0.00", 12, "12,00", "12.00"}, {"0.00", 0.07, "0,07", "0.07"},
        {"0.00", -3, "-3,00", "-3.00"}, {"0.00", 1234567.8, "1234567,80", "1234567.80"},
        // Halves round away from zero on the decimal value typed (2.675 and
        // 1.005 are stored just below it).
        {"0.00", 2.675, "2,68", "2.68"}, {"0.00", 1.005, "1,01", "1.01"}, {"0.00", 0.125, "0,13", "0.13"},
        {"0.00", -2.675, "-2,68", "-2.68"}, {"0.00", 2.674, "2,67", "2.67"}, {"0.00", 0.1 + 0.2, "0,30", "0.30"},
        {"0", 12.5, "13", "13"}, {totals, 999.995, "1.000,00", "1,000.00"},
        {totals, 999999.999, "1.000.000,00", "1,000,000.00"}, {totals, -999.995, "-1.000,00", "-1,000.00"},
        // A value that rounds to zero has no sign.
        {"0.00", -0.001, "0,00", "0.00"}, {totals, -0.004, "0,00", "0.00"}, {"0.00", -0.0, "0,00", "0.00"},
        {"#,##0", 1234567, "1.234.567", "1,234,567"}, {"00000", 25, "00025", "00025"},
        {"0.0#", 2.5, "2,5", "2.5"}, {"0.0#", 2.567, "2,57", "2.57"}, {"0.0#", 2, "2,0", "2.0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << c.pattern << " " << c.value);
        EXPECT_EQ(FormatNumber(c.value, c.pattern, spanish()), c.spanish);
        EXPECT_EQ(FormatNumber(c.value, c.pattern, english()), c.english);
    }
}

TEST(FormatNumberTest, UnsupportedPatternIsAProgrammingError)
{
    EXPECT_THROW(FormatNumber(1, "0.00 €", spanish()), std::invalid_argument);
    EXPECT_THROW(FormatNumber(1, "Currency", spanish()), std::invalid_argument);
}

TEST(NumberReadingTest, IsNumericAndToDoubleInBothLocales)
{
    const double no = kNaN; // not a number in that locale
    const struct { const char *text; double spanish, english; } cases[] = {
        // A single separator is the decimal one, whichever it is.
        {"12,5", 12.5, 12.5}, {"12.5", 12.5, 12.5}, {"0,07", 0.07, 0.07}, {"1.234", 1.234, 1.234},
        {",5", 0.5, 0.5}, {"5.", 5, 5}, {"0", 0, 0}, {"12345678", 12345678, 12345678}, {"  7 ", 7, 7},
        {"-3,25", -3.25, -3.25}, {"+4", 4, 4}, {"007", 7, 7},
        // Both: the last is the decimal separator, the other groups.
        {"1.234,50", 1234.5, 1234.5}, {"1,234.50", 1234.5, 1234.5}, {"-12.345.678,9", -12345678.9, -12345678.9},
        {"1.234,50,1", no, no}, {"1,234.5.0", no, no},
        // A repeated separator groups only when it is the locale's own.
        {"1.234.567", 1234567, no}, {"1,234,567", no, 1234567},
        // Grouping stands between digits, before the decimal separator.
        {"1..234", no, no}, {".1.234", no, no}, {"1.234.", no, no}, {"1.,5", no, no}, {"1,234.,5", no, no},
        {"", no, no}, {"   ", no, no}, {"abc", no, no}, {"12a", no, no}, {"a12", no, no}, {"1e5", no, no},
        {"-", no, no}, {"+", no, no}, {".", no, no}, {",", no, no}, {"--1", no, no}, {"1-", no, no},
        {"1 000", no, no}, {"12 €", no, no}, {"&H10", no, no}, {"(5)", no, no},
    };
    for (const auto &c : cases) {
        for (const bool inEnglish : {false, true}) {
            const QLocale locale = inEnglish ? english() : spanish();
            const double expected = inEnglish ? c.english : c.spanish;
            SCOPED_TRACE(testing::Message() << "\"" << c.text << "\" " << locale.name().toStdString());
            EXPECT_EQ(IsNumeric(c.text, locale), !std::isnan(expected));
            if (std::isnan(expected))
                EXPECT_THROW(ToDouble(c.text, locale), ConversionError);
            else
                EXPECT_DOUBLE_EQ(ToDouble(c.text, locale), expected);
        }
    }
}

TEST(NumberReadingTest, ConversionErrorNamesTheText)
{
    try {
        ToDouble("doce", spanish());
        FAIL() << "no error";
    } catch (const ConversionError &error) {
        EXPECT_EQ(error.message(), "El valor «doce» no es un número válido.");
    }
}

TEST(CIntTest, HalvesToEvenAndOverflowAfterRounding)
{
    const struct { double value; qint16 expected; } cases[] = {
        {12.5, 12}, {13.5, 14}, {-2.5, -2}, {-3.5, -4}, {0.5, 0}, {1.5, 2}, {-0.5, 0}, {2.4, 2}, {2.6, 3},
        {-2.6, -3}, {-2.4, -2}, {7, 7}, {32767.4, 32767}, {-32768.5, -32768},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CInt(c.value), c.expected) << c.value;
    for (const double value : {32767.5, -32768.6, 40000.0, -1e10, kNaN, std::numeric_limits<double>::infinity()})
        EXPECT_THROW(CInt(value), OverflowError) << value;
}

TEST(CIntTest, OverflowIsAConversionErrorWithASpanishMessage)
{
    try {
        CInt(40000);
        FAIL() << "no error";
    } catch (const ConversionError &error) {
        EXPECT_NE(dynamic_cast<const OverflowError *>(&error), nullptr);
        EXPECT_TRUE(error.message().startsWith("Desbordamiento: ") && error.message().contains("40000"))
            << error.what();
    }
}

TEST(CLngTest, HalvesToEvenAndOverflowAfterRounding)
{
    const struct { double value; qint32 expected; } cases[] = {
        {12.5, 12}, {13.5, 14}, {-2.5, -2}, {12345678.5, 12345678}, {12345679.5, 12345680},
        {99999999.4, 99999999}, {2147483647.4, 2147483647}, {-2147483648.5, std::numeric_limits<qint32>::min()},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CLng(c.value), c.expected) << c.value;
    for (const double value : {2147483647.5, -2147483648.6, 1e12, kNaN})
        EXPECT_THROW(CLng(value), OverflowError) << value;
}

} // namespace
