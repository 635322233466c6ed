#include "UtilTest.h"
#include "util/TextRoutines.h"

#include <gtest/gtest.h>

#include <QVariant>

namespace {

TEST(FixedWidthTest, TrimmedThenCutToTheWidthOrFilledInFront)
{
    const struct { QVariant text; int width; const char *fill, *expected; } cases[] = {
        {"1234567Z", 9, "0", "01234567Z"}, {"Z", 9, "0", "00000000Z"}, {"ab", 5, " ", "   ab"},
        {"1234567890Z", 9, "0", "123456789"}, {"12345678Z", 9, "0", "12345678Z"},
        {"  123  ", 9, "0", "000000123"}, {"  123456789  ", 9, "0", "123456789"},
        {QVariant(), 9, "0", "000000000"}, {QString(), 3, "x", "xxx"}, {"   ", 4, "0", "0000"},
        {"x", 4, "ab", "abababx"}, {"x", 4, "", "x"}, {42, 5, "0", "00042"},
        {"abc", 0, "0", ""}, {"abc", -1, "0", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(FixedWidth(c.text, c.width, c.fill), c.expected) << c.text.toString().toStdString() << " " << c.width;
}

TEST(CutAtNulTest, TextEndsBeforeTheFirstNul)
{
    const QString nul(QChar(0));
    EXPECT_EQ(CutAtNul("PC-SECRETARIA" + nul + "   "), "PC-SECRETARIA");
    EXPECT_EQ(CutAtNul("a" + nul + "b" + nul), "a");
    EXPECT_EQ(CutAtNul(nul + "abc"), "");
    EXPECT_EQ(CutAtNul("sin nulo "), "sin nulo ");
    EXPECT_EQ(CutAtNul(QString()), "");
}

} // namespace
