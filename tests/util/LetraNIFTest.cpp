#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

// The published rule: the remainder of the number divided by 23, taken as
// never negative, indexes this table.
QString publishedLetter(long long number)
{
    static const char table[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    const long long remainder = ((number % 23) + 23) % 23;
    return QString(QLatin1Char(table[remainder]));
}

class LetraNIFTest : public ::testing::Test
{
};

TEST_F(LetraNIFTest, EveryRemainderSelectsItsLetter)
{
    const char *letters = "TRWAGMYFPDXBNJZSQVHLCKE";
    for (int r = 0; r < 23; ++r) {
        SCOPED_TRACE(r);
        EXPECT_EQ(LetraNIF(r), QString(QLatin1Char(letters[r])));
        EXPECT_EQ(LetraNIF(r + 23 * 1000), QString(QLatin1Char(letters[r])));
    }
}

TEST_F(LetraNIFTest, KnownNumbers)
{
    const struct {
        qint32 number;
        const char *letter;
    } cases[] = {
        {12345678, "Z"}, // 12345678 = 23 * 536768 + 14
        {1234567, "L"},  // remainder 19
        {99999999, "R"}, // remainder 1
        {87654321, "X"}, // remainder 10
        {0, "T"},
        {23, "T"},
        {22, "E"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.number);
        EXPECT_EQ(LetraNIF(c.number), QString::fromLatin1(c.letter));
    }
}

TEST_F(LetraNIFTest, NegativeNumbersUseTheNonNegativeRemainder)
{
    EXPECT_EQ(LetraNIF(-1), QStringLiteral("E"));  // -1 = 23 * -1 + 22
    EXPECT_EQ(LetraNIF(-23), QStringLiteral("T")); // remainder 0
    EXPECT_EQ(LetraNIF(-24), QStringLiteral("E")); // -24 = 23 * -2 + 22
}

TEST_F(LetraNIFTest, ExtremesOfTheIntegerRange)
{
    // 2147483647 = 23 * 93368854 + 5; -2147483648 = 23 * -93368855 + 17.
    EXPECT_EQ(LetraNIF(std::numeric_limits<qint32>::max()), QStringLiteral("M"));
    EXPECT_EQ(LetraNIF(std::numeric_limits<qint32>::min()), QStringLiteral("V"));
}

TEST_F(LetraNIFTest, AgreesWithThePublishedRuleOverARange)
{
    for (qint32 n = -5000; n <= 5000; ++n)
        ASSERT_EQ(LetraNIF(n), publishedLetter(n)) << n;
    for (qint32 n = 99990000; n <= 99999999; ++n)
        ASSERT_EQ(LetraNIF(n), publishedLetter(n)) << n;
}

} // namespace
