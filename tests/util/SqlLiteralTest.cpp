#include "UtilTest.h"
#include "util/ConversionError.h"
#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class SqlDecimalTest : public ::testing::Test
{
protected:
    // The default locale must not leak into a statement: make it one with a decimal comma.
    void SetUp() override { QLocale::setDefault(spanish()); }
    void TearDown() override { QLocale::setDefault(saved); }

    const QLocale saved;
};

TEST_F(SqlDecimalTest, PointAsDecimalSeparatorNoTrailingZerosNoExponent)
{
    const struct { double value; const char *text; } cases[] = {
        {12.5, "12.5"}, {12, "12"}, {0.1, "0.1"}, {-3.25, "-3.25"}, {0, "0"}, {-0.0, "0"},
        {1234567.89, "1234567.89"}, {100.10, "100.1"}, {2.675, "2.675"}, {0.1 + 0.2, "0.3"},
        {0.000012, "0.000012"}, {1e20, "100000000000000000000"}, {-1234.5, "-1234.5"}, {25.0 / 100.0, "0.25"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(SqlDecimal(c.value), c.text) << c.value;
    EXPECT_THROW(SqlDecimal(std::nan("")), ConversionError);
    EXPECT_THROW(SqlDecimal(std::numeric_limits<double>::infinity()), ConversionError);
}

TEST(SqlTextTest, QuotesDoubledWithAndWithoutSurroundingQuotes)
{
    const struct { const char *value, *literal, *escaped; } cases[] = {
        {"D'Souza", "'D''Souza'", "D''Souza"}, {"O'Neil's", "'O''Neil''s'", "O''Neil''s"}, {"", "''", ""},
        {"'", "''''", "''"}, {"''", "''''''", "''''"},
        {"Colegio Nuestra Señora", "'Colegio Nuestra Señora'", "Colegio Nuestra Señora"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(SqlText(c.value), c.literal) << c.value;
        EXPECT_EQ(SqlEscape(c.value), c.escaped) << c.value;
    }
}

TEST(SqlBoolTest, TrueIsMinusOneFalseIsZero)
{
    EXPECT_EQ(SqlBool(true), "-1");
    EXPECT_EQ(SqlBool(false), "0");
}

} // namespace
