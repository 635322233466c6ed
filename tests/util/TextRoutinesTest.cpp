#include "util/TextRoutines.h"
#include "UtilTest.h"
#include <gtest/gtest.h>

TEST(FixedWidthTest, TrimmedThenCutToTheWidthOrFilledInFront)
{
    const struct
    {
        QVariant text;
        int width;
        const char *fill, *expected;
    } cases[] = {
        {"1234567Z", 9, "0", "01234567Z"},
        {"  123  ", 9, "0", "000000123"},
        {"1234567890Z", 9, "0", "123456789"},
        {QVariant(), 3, "x", "xxx"},
        {"x", 4, "ab", "abababx"},
        {42, 5, "0", "00042"},
        {"abc", 0, "0", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(FixedWidth(c.text, c.width, c.fill), c.expected) << c.expected;
}

TEST(CutAtNulTest, TextEndsBeforeTheFirstNul)
{
    EXPECT_EQ(CutAtNul(QString("PC-SECRETARIA") + QChar(0) + "x" + QChar(0)), "PC-SECRETARIA");
    EXPECT_EQ(CutAtNul(QChar(0) + QString("abc")), "");
    EXPECT_EQ(CutAtNul("sin nulo "), "sin nulo ");
}

TEST(ContainsAsciiNoCaseTest, FindsTheWordInAnyCaseAndNothingElse)
{
    EXPECT_TRUE(ContainsAsciiNoCase(u"UPDATE T SET a=True", QLatin1StringView("true")));
    EXPECT_TRUE(ContainsAsciiNoCase(u"x LEFT join (y", QLatin1StringView("JOIN")));
    EXPECT_TRUE(ContainsAsciiNoCase(u"fAlSe", QLatin1StringView("false")));
    EXPECT_TRUE(ContainsAsciiNoCase(u"anything", QLatin1StringView("")));
    EXPECT_FALSE(ContainsAsciiNoCase(u"tru", QLatin1StringView("true")));
    EXPECT_FALSE(ContainsAsciiNoCase(u"t r u e", QLatin1StringView("true")));
    // Only ASCII letters fold: "Ĵoin" is not "join", "[" is not "{".
    EXPECT_FALSE(ContainsAsciiNoCase(u"Ĵoin", QLatin1StringView("join")));
    EXPECT_FALSE(ContainsAsciiNoCase(u"{", QLatin1StringView("[")));
}
