#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <limits>
#include <ostream>
#include <stdexcept>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class FormatNumberTest : public ::testing::Test
{
protected:
    const QLocale spanish{QLocale::Spanish, QLocale::Spain};
    const QLocale english{QLocale::English, QLocale::UnitedStates};

    struct Case
    {
        double value;
        const char *spanish;
        const char *english;
    };

    void check(const QString &pattern, const Case &c)
    {
        SCOPED_TRACE(testing::Message() << pattern.toStdString() << " " << c.value);
        EXPECT_EQ(FormatNumber(c.value, pattern, spanish), QString::fromUtf8(c.spanish));
        EXPECT_EQ(FormatNumber(c.value, pattern, english), QString::fromUtf8(c.english));
    }
};

TEST_F(FormatNumberTest, TotalsPatternAlwaysGroupsThousands)
{
    const Case cases[] = {
        {1234.5, "1.234,50", "1,234.50"},
        {1000, "1.000,00", "1,000.00"},
        {999.99, "999,99", "999.99"},
        {0, "0,00", "0.00"},
        {0.5, "0,50", "0.50"},
        {12345678.9, "12.345.678,90", "12,345,678.90"},
        {1234567.891, "1.234.567,89", "1,234,567.89"},
        {100, "100,00", "100.00"},
        {-1234.5, "-1.234,50", "-1,234.50"},
        {-0.5, "-0,50", "-0.50"},
    };
    for (const auto &c : cases)
        check(QStringLiteral("#,###,##0.00"), c);
}

TEST_F(FormatNumberTest, CellPatternHasNoGrouping)
{
    const Case cases[] = {
        {1234.5, "1234,50", "1234.50"},
        {0, "0,00", "0.00"},
        {12, "12,00", "12.00"},
        {0.07, "0,07", "0.07"},
        {-3, "-3,00", "-3.00"},
        {1234567.8, "1234567,80", "1234567.80"},
    };
    for (const auto &c : cases)
        check(QStringLiteral("0.00"), c);
}

TEST_F(FormatNumberTest, HalvesRoundAwayFromZeroOnTheDecimalValue)
{
    // 2.675 and 1.005 are stored just below the half in binary; the decimal
    // value the user typed is what is rounded.
    const Case cases[] = {
        {2.675, "2,68", "2.68"},
        {1.005, "1,01", "1.01"},
        {0.125, "0,13", "0.13"},
        {0.135, "0,14", "0.14"},
        {-0.125, "-0,13", "-0.13"},
        {-2.675, "-2,68", "-2.68"},
        {2.674, "2,67", "2.67"},
        {0.1 + 0.2, "0,30", "0.30"},
    };
    for (const auto &c : cases)
        check(QStringLiteral("0.00"), c);
}

TEST_F(FormatNumberTest, RoundingCarriesIntoTheThousands)
{
    check(QStringLiteral("#,###,##0.00"), {999.995, "1.000,00", "1,000.00"});
    check(QStringLiteral("#,###,##0.00"), {999999.999, "1.000.000,00", "1,000,000.00"});
    check(QStringLiteral("#,###,##0.00"), {-999.995, "-1.000,00", "-1,000.00"});
}

TEST_F(FormatNumberTest, ValueThatRoundsToZeroHasNoSign)
{
    check(QStringLiteral("0.00"), {-0.001, "0,00", "0.00"});
    check(QStringLiteral("#,###,##0.00"), {-0.004, "0,00", "0.00"});
    check(QStringLiteral("0.00"), {-0.0, "0,00", "0.00"});
}

TEST_F(FormatNumberTest, OtherPlaceholderPatterns)
{
    check(QStringLiteral("0"), {12.5, "13", "13"});
    check(QStringLiteral("0"), {13.5, "14", "14"});
    check(QStringLiteral("#,##0"), {1234567, "1.234.567", "1,234,567"});
    check(QStringLiteral("00000"), {25, "00025", "00025"});
    check(QStringLiteral("0.0#"), {2.5, "2,5", "2.5"});
    check(QStringLiteral("0.0#"), {2.567, "2,57", "2.57"});
    check(QStringLiteral("0.0#"), {2, "2,0", "2.0"});
}

TEST_F(FormatNumberTest, LargeAmountsKeepFifteenSignificantDigits)
{
    check(QStringLiteral("#,###,##0.00"), {123456789012.34, "123.456.789.012,34", "123,456,789,012.34"});
}

TEST_F(FormatNumberTest, UnsupportedPatternIsAProgrammingError)
{
    EXPECT_THROW(FormatNumber(1, QStringLiteral("0.00 €"), spanish), std::invalid_argument);
    EXPECT_THROW(FormatNumber(1, QStringLiteral("Currency"), spanish), std::invalid_argument);
}

} // namespace
