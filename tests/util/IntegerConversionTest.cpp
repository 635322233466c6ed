#include "util/OverflowError.h"
#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

class CIntTest : public ::testing::Test
{
};

TEST_F(CIntTest, HalvesRoundToEven)
{
    const struct {
        double value;
        qint16 expected;
    } cases[] = {
        {12.5, 12}, {13.5, 14}, {-2.5, -2}, {-3.5, -4}, {0.5, 0}, {1.5, 2}, {-0.5, 0},
        {2.4, 2},   {2.6, 3},   {-2.6, -3}, {-2.4, -2}, {7, 7},   {0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(CInt(c.value), c.expected);
    }
}

TEST_F(CIntTest, LimitsAreCheckedAfterRounding)
{
    EXPECT_EQ(CInt(32767), 32767);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(CInt(-32768), -32768);
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_THROW(CInt(32767.5), OverflowError);
    EXPECT_THROW(CInt(-32768.6), OverflowError);
    EXPECT_THROW(CInt(40000), OverflowError);
    EXPECT_THROW(CInt(-1e10), OverflowError);
    EXPECT_THROW(CInt(std::nan("")), OverflowError);
    EXPECT_THROW(CInt(std::numeric_limits<double>::infinity()), OverflowError);
}

TEST_F(CIntTest, OverflowMessageIsSpanish)
{
    try {
        CInt(40000);
        FAIL() << "no error";
    } catch (const OverflowError &error) {
        EXPECT_TRUE(error.message().startsWith(QStringLiteral("Desbordamiento: ")));
        EXPECT_TRUE(error.message().contains(QStringLiteral("40000")));
    }
}

TEST_F(CIntTest, OverflowIsAConversionError)
{
    EXPECT_THROW(CInt(1e6), ConversionError);
}

class CLngTest : public ::testing::Test
{
};

TEST_F(CLngTest, HalvesRoundToEven)
{
    EXPECT_EQ(CLng(12.5), 12);
    EXPECT_EQ(CLng(13.5), 14);
    EXPECT_EQ(CLng(-2.5), -2);
    EXPECT_EQ(CLng(12345678.5), 12345678);
    EXPECT_EQ(CLng(12345679.5), 12345680);
    EXPECT_EQ(CLng(99999999.4), 99999999);
}

TEST_F(CLngTest, LimitsAreCheckedAfterRounding)
{
    EXPECT_EQ(CLng(2147483647.4), 2147483647);
    EXPECT_EQ(CLng(-2147483648.5), std::numeric_limits<qint32>::min());
    EXPECT_THROW(CLng(2147483647.5), OverflowError);
    EXPECT_THROW(CLng(-2147483648.6), OverflowError);
    EXPECT_THROW(CLng(1e12), OverflowError);
    EXPECT_THROW(CLng(std::nan("")), OverflowError);
}

} // namespace
