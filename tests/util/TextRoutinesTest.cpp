#include "util/TextRoutines.h"

#include <gtest/gtest.h>

#include <QVariant>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class FixedWidthTest : public ::testing::Test
{
};

TEST_F(FixedWidthTest, ShortTextGetsFillInFront)
{
    EXPECT_EQ(FixedWidth(QStringLiteral("1234567Z"), 9, QStringLiteral("0")), QStringLiteral("01234567Z"));
    EXPECT_EQ(FixedWidth(QStringLiteral("Z"), 9, QStringLiteral("0")), QStringLiteral("00000000Z"));
    EXPECT_EQ(FixedWidth(QStringLiteral("ab"), 5, QStringLiteral(" ")), QStringLiteral("   ab"));
}

TEST_F(FixedWidthTest, LongTextIsCutToItsFirstCharacters)
{
    EXPECT_EQ(FixedWidth(QStringLiteral("1234567890Z"), 9, QStringLiteral("0")), QStringLiteral("123456789"));
    EXPECT_EQ(FixedWidth(QStringLiteral("12345678Z"), 9, QStringLiteral("0")), QStringLiteral("12345678Z"));
}

TEST_F(FixedWidthTest, TextIsTrimmedFirst)
{
    EXPECT_EQ(FixedWidth(QStringLiteral("  123  "), 9, QStringLiteral("0")), QStringLiteral("000000123"));
    EXPECT_EQ(FixedWidth(QStringLiteral("  123456789  "), 9, QStringLiteral("0")), QStringLiteral("123456789"));
}

TEST_F(FixedWidthTest, NullAndEmptyAreTheEmptyText)
{
    EXPECT_EQ(FixedWidth(QVariant(), 9, QStringLiteral("0")), QStringLiteral("000000000"));
    EXPECT_EQ(FixedWidth(QVariant(QString()), 3, QStringLiteral("x")), QStringLiteral("xxx"));
    EXPECT_EQ(FixedWidth(QStringLiteral("   "), 4, QStringLiteral("0")), QStringLiteral("0000"));
}

TEST_F(FixedWidthTest, FillTextIsRepeatedWholeAndNumbersAreText)
{
    EXPECT_EQ(FixedWidth(QStringLiteral("x"), 4, QStringLiteral("ab")), QStringLiteral("abababx"));
    EXPECT_EQ(FixedWidth(QStringLiteral("x"), 4, QString()), QStringLiteral("x"));
    EXPECT_EQ(FixedWidth(QVariant(42), 5, QStringLiteral("0")), QStringLiteral("00042"));
}

TEST_F(FixedWidthTest, ZeroWidthIsEmpty)
{
    EXPECT_EQ(FixedWidth(QStringLiteral("abc"), 0, QStringLiteral("0")), QString());
    EXPECT_EQ(FixedWidth(QStringLiteral("abc"), -1, QStringLiteral("0")), QString());
}

class CutAtNulTest : public ::testing::Test
{
};

TEST_F(CutAtNulTest, TextEndsBeforeTheFirstNul)
{
    const QChar nul(0);
    EXPECT_EQ(CutAtNul(QStringLiteral("PC-SECRETARIA") + nul + QStringLiteral("   ")), QStringLiteral("PC-SECRETARIA"));
    EXPECT_EQ(CutAtNul(QStringLiteral("a") + nul + QStringLiteral("b") + nul), QStringLiteral("a"));
    EXPECT_EQ(CutAtNul(nul + QStringLiteral("abc")), QString());
    EXPECT_EQ(CutAtNul(QStringLiteral("sin nulo ")), QStringLiteral("sin nulo "));
    EXPECT_EQ(CutAtNul(QString()), QString());
}

} // namespace
