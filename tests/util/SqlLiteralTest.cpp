#include "util/ConversionError.h"
#include "util/VbFormat.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <cmath>
#include <limits>
#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class SqlDecimalTest : public ::testing::Test
{
protected:
    // The default locale must not leak into a statement.
    void SetUp() override
    {
        saved = QLocale();
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    }
    void TearDown() override { QLocale::setDefault(saved); }

    QLocale saved;
};

TEST_F(SqlDecimalTest, PointAsDecimalSeparatorAndNoTrailingZeros)
{
    const struct {
        double value;
        const char *text;
    } cases[] = {
        {12.5, "12.5"},
        {12, "12"},
        {0.1, "0.1"},
        {-3.25, "-3.25"},
        {0, "0"},
        {-0.0, "0"},
        {1234567.89, "1234567.89"},
        {100.10, "100.1"},
        {2.675, "2.675"},
        {0.1 + 0.2, "0.3"},
        {0.000012, "0.000012"},
        {1e20, "100000000000000000000"},
        {-1234.5, "-1234.5"},
        {25.0 / 100.0, "0.25"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(SqlDecimal(c.value), QString::fromLatin1(c.text));
    }
}

TEST_F(SqlDecimalTest, NotANumberHasNoLiteral)
{
    EXPECT_THROW(SqlDecimal(std::nan("")), ConversionError);
    EXPECT_THROW(SqlDecimal(std::numeric_limits<double>::infinity()), ConversionError);
}

class SqlTextTest : public ::testing::Test
{
};

TEST_F(SqlTextTest, QuotedWithQuotesDoubled)
{
    EXPECT_EQ(SqlText(QStringLiteral("D'Souza")), QStringLiteral("'D''Souza'"));
    EXPECT_EQ(SqlText(QStringLiteral("O'Neil's")), QStringLiteral("'O''Neil''s'"));
    EXPECT_EQ(SqlText(QString()), QStringLiteral("''"));
    EXPECT_EQ(SqlText(QStringLiteral("''")), QStringLiteral("''''''"));
    EXPECT_EQ(SqlText(QStringLiteral("Colegio Nuestra Señora")), QStringLiteral("'Colegio Nuestra Señora'"));
}

class SqlEscapeTest : public ::testing::Test
{
};

TEST_F(SqlEscapeTest, QuotesDoubledWithoutSurroundingQuotes)
{
    EXPECT_EQ(SqlEscape(QStringLiteral("D'Souza")), QStringLiteral("D''Souza"));
    EXPECT_EQ(SqlEscape(QStringLiteral("sin comillas")), QStringLiteral("sin comillas"));
    EXPECT_EQ(SqlEscape(QStringLiteral("'")), QStringLiteral("''"));
    EXPECT_EQ(SqlEscape(QString()), QString());
}

class SqlBoolTest : public ::testing::Test
{
};

TEST_F(SqlBoolTest, TrueIsMinusOneFalseIsZero)
{
    EXPECT_EQ(SqlBool(true), QStringLiteral("-1"));
    EXPECT_EQ(SqlBool(false), QStringLiteral("0"));
}

} // namespace
