#include "util/ConversionError.h"
#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class NumberReadingTest : public ::testing::Test
{
protected:
    const QLocale spanish{QLocale::Spanish, QLocale::Spain};
    const QLocale english{QLocale::English, QLocale::UnitedStates};

    void expectNumber(const char *text, const QLocale &locale, double value)
    {
        SCOPED_TRACE(testing::Message() << "\"" << text << "\" " << locale.name().toStdString());
        const QString s = QString::fromUtf8(text);
        EXPECT_TRUE(IsNumeric(s, locale));
        EXPECT_DOUBLE_EQ(ToDouble(s, locale), value);
    }

    void expectNotNumber(const char *text, const QLocale &locale)
    {
        SCOPED_TRACE(testing::Message() << "\"" << text << "\" " << locale.name().toStdString());
        const QString s = QString::fromUtf8(text);
        EXPECT_FALSE(IsNumeric(s, locale));
        EXPECT_THROW(ToDouble(s, locale), ConversionError);
    }
};

TEST_F(NumberReadingTest, EitherSeparatorIsTheDecimalOne)
{
    for (const QLocale &locale : {spanish, english}) {
        expectNumber("12,5", locale, 12.5);
        expectNumber("12.5", locale, 12.5);
        expectNumber("0,07", locale, 0.07);
        expectNumber("1.234", locale, 1.234);
        expectNumber(",5", locale, 0.5);
        expectNumber("5.", locale, 5);
    }
}

TEST_F(NumberReadingTest, IntegersSignsAndBlanks)
{
    for (const QLocale &locale : {spanish, english}) {
        expectNumber("0", locale, 0);
        expectNumber("12345678", locale, 12345678);
        expectNumber("  7 ", locale, 7);
        expectNumber("-3,25", locale, -3.25);
        expectNumber("+4", locale, 4);
        expectNumber("007", locale, 7);
    }
}

TEST_F(NumberReadingTest, BothSeparatorsMeanGroupingAndDecimal)
{
    for (const QLocale &locale : {spanish, english}) {
        expectNumber("1.234,50", locale, 1234.5);
        expectNumber("1,234.50", locale, 1234.5);
        expectNumber("-12.345.678,9", locale, -12345678.9);
        expectNotNumber("1.234,50,1", locale);
        expectNotNumber("1,234.5.0", locale);
    }
}

TEST_F(NumberReadingTest, RepeatedSeparatorGroupsOnlyWhenItIsTheLocalesOwn)
{
    expectNumber("1.234.567", spanish, 1234567);
    expectNotNumber("1.234.567", english);
    expectNumber("1,234,567", english, 1234567);
    expectNotNumber("1,234,567", spanish);
}

TEST_F(NumberReadingTest, GroupingMustStandBetweenDigits)
{
    expectNotNumber("1..234", spanish);
    expectNotNumber(".1.234", spanish);
    expectNotNumber("1.234.", spanish);
    expectNotNumber("1.,5", spanish);
    expectNotNumber("1,234.,5", english);
}

TEST_F(NumberReadingTest, TextsThatAreNotNumbers)
{
    for (const QLocale &locale : {spanish, english}) {
        for (const char *text : {"", "   ", "abc", "12a", "a12", "1e5", "-", "+", ".", ",", "--1", "1-",
                                 "1 000", "12 €", "&H10", "(5)"}) {
            expectNotNumber(text, locale);
        }
    }
}

TEST_F(NumberReadingTest, ConversionErrorNamesTheText)
{
    try {
        ToDouble(QStringLiteral("doce"), spanish);
        FAIL() << "no error";
    } catch (const ConversionError &error) {
        EXPECT_EQ(error.message(), QStringLiteral("El valor «doce» no es un número válido."));
    }
}

} // namespace
