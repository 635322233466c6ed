#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class NIFConLetraTest : public ::testing::Test
{
protected:
    const QLocale spanish{QLocale::Spanish, QLocale::Spain};
    const QLocale english{QLocale::English, QLocale::UnitedStates};
};

TEST_F(NIFConLetraTest, DigitsWithAndWithoutHyphen)
{
    const struct {
        const char *digits;
        const char *withHyphen;
        const char *withoutHyphen;
    } cases[] = {
        {"12345678", "12345678-Z", "12345678Z"},
        {"1234567", "1234567-L", "1234567L"},   // remainder 19
        {"01234567", "01234567-L", "01234567L"},
        {"99999999", "99999999-R", "99999999R"}, // remainder 1
        {"0", "0-T", "0T"},
        {"22", "22-E", "22E"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.digits);
        EXPECT_EQ(NIFConLetra(QString::fromLatin1(c.digits), true, spanish), QString::fromLatin1(c.withHyphen));
        EXPECT_EQ(NIFConLetra(QString::fromLatin1(c.digits), false, spanish),
                  QString::fromLatin1(c.withoutHyphen));
    }
}

TEST_F(NIFConLetraTest, NonNumericGivesEmpty)
{
    for (const char *text : {"", "   ", "abc", "1234567A", "12-34", "1e5", "-", "."}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(NIFConLetra(QString::fromLatin1(text), true, spanish), QString());
        EXPECT_EQ(NIFConLetra(QString::fromLatin1(text), false, spanish), QString());
    }
}

TEST_F(NIFConLetraTest, ArgumentIsKeptAsTyped)
{
    EXPECT_EQ(NIFConLetra(QStringLiteral(" 12345678 "), true, spanish), QStringLiteral(" 12345678 -Z"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("+12345678"), false, spanish), QStringLiteral("+12345678Z"));
}

TEST_F(NIFConLetraTest, NegativeNumberLosesItsSignWithoutHyphen)
{
    // -1 leaves remainder 22: "E".
    EXPECT_EQ(NIFConLetra(QStringLiteral("-1"), true, spanish), QStringLiteral("-1-E"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("-1"), false, spanish), QStringLiteral("1E"));
}

TEST_F(NIFConLetraTest, DecimalsAreRoundedHalfToEven)
{
    // 12.5 -> 12 ("N"), 13.5 -> 14 ("Z"), 12.6 -> 13 ("J").
    EXPECT_EQ(NIFConLetra(QStringLiteral("12.5"), true, spanish), QStringLiteral("12.5-N"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("12,5"), true, spanish), QStringLiteral("12,5-N"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("13,5"), true, english), QStringLiteral("13,5-Z"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("12.6"), false, english), QStringLiteral("12.6J"));
}

TEST_F(NIFConLetraTest, ThousandsSeparatorsFollowTheLocale)
{
    // 1234567: remainder 19, "L".
    EXPECT_EQ(NIFConLetra(QStringLiteral("1.234.567"), true, spanish), QStringLiteral("1.234.567-L"));
    EXPECT_EQ(NIFConLetra(QStringLiteral("1.234.567"), true, english), QString());
    EXPECT_EQ(NIFConLetra(QStringLiteral("1,234,567"), true, english), QStringLiteral("1,234,567-L"));
}

TEST_F(NIFConLetraTest, NumberBeyondThirtyTwoBitsGivesEmpty)
{
    EXPECT_EQ(NIFConLetra(QStringLiteral("2147483648"), true, spanish), QString());
    EXPECT_EQ(NIFConLetra(QStringLiteral("99999999999"), false, spanish), QString());
    // 2147483647 leaves remainder 5: "M".
    EXPECT_EQ(NIFConLetra(QStringLiteral("2147483647"), false, spanish), QStringLiteral("2147483647M"));
}

} // namespace
