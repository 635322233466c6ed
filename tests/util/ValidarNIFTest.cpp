#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

QString publishedLetter(long long number)
{
    static const char table[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    return QString(QLatin1Char(table[((number % 23) + 23) % 23]));
}

class ValidarNIFTest : public ::testing::Test
{
protected:
    struct Outcome
    {
        bool valid;
        QString text;
    };

    static Outcome run(const QString &input)
    {
        QString id = input;
        const bool valid = ValidarNIF(id);
        return {valid, id};
    }
};

TEST_F(ValidarNIFTest, RightLetterIsValidAndUnchanged)
{
    for (const char *nif : {"12345678Z", "01234567L", "99999999R", "87654321X", "00000000T"}) {
        SCOPED_TRACE(nif);
        const auto out = run(QString::fromLatin1(nif));
        EXPECT_TRUE(out.valid);
        EXPECT_EQ(out.text, QString::fromLatin1(nif));
    }
}

TEST_F(ValidarNIFTest, ShortNifIsPaddedWithZeros)
{
    const auto out = run(QStringLiteral("1234567L"));
    EXPECT_TRUE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("01234567L"));
}

TEST_F(ValidarNIFTest, EightDigitsGetTheirLetterAppended)
{
    const auto out = run(QStringLiteral("12345678"));
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("12345678Z"));
}

TEST_F(ValidarNIFTest, SevenDigitsArePaddedAndGetTheirLetter)
{
    const auto out = run(QStringLiteral("1234567"));
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("01234567") + publishedLetter(1234567));
}

TEST_F(ValidarNIFTest, WrongLetterIsReplaced)
{
    const auto out = run(QStringLiteral("12345678A"));
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("12345678Z"));
}

TEST_F(ValidarNIFTest, LowerCaseLetterIsCorrectedToUpperCase)
{
    const auto out = run(QStringLiteral("12345678z"));
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("12345678Z"));
}

TEST_F(ValidarNIFTest, EmptyStringBecomesZerosAndT)
{
    const auto out = run(QString());
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("00000000T"));
}

TEST_F(ValidarNIFTest, LongerTextKeepsItsLastNineCharacters)
{
    // "123456789Z" keeps "23456789Z"; 23456789 takes its letter from the rule.
    const QString letter = publishedLetter(23456789);
    const auto right = run(QStringLiteral("1") + QStringLiteral("23456789") + letter);
    EXPECT_TRUE(right.valid);
    EXPECT_EQ(right.text, QStringLiteral("23456789") + letter);

    const auto wrong = run(QStringLiteral("ABC12345678Q"));
    EXPECT_FALSE(wrong.valid);
    EXPECT_EQ(wrong.text, QStringLiteral("12345678Z"));
}

TEST_F(ValidarNIFTest, NonDigitsCountAsTheValueOfTheLeadingDigits)
{
    // "1234A678" counts as 1234; the ninth character is not a digit, so the
    // number comes from the first eight characters.
    const auto out = run(QStringLiteral("1234A678Z"));
    EXPECT_FALSE(out.valid);
    EXPECT_EQ(out.text, QStringLiteral("00001234") + publishedLetter(1234));

    const auto letters = run(QStringLiteral("ABCDEFGHI"));
    EXPECT_FALSE(letters.valid);
    EXPECT_EQ(letters.text, QStringLiteral("00000000T"));

    // Ninth character a digit: characters two to nine, "2345B789", count as 2345.
    const auto digitLast = run(QStringLiteral("12345B789"));
    EXPECT_FALSE(digitLast.valid);
    EXPECT_EQ(digitLast.text, QStringLiteral("00002345") + publishedLetter(2345));
}

TEST_F(ValidarNIFTest, CorrectedStringValidatesOnTheSecondCall)
{
    for (const char *input : {"12345678", "12345678A", "", "1", "7654321", "ABCDEFGHI", "1234A678Z",
                              "99999999Z", "0000000000000"}) {
        SCOPED_TRACE(input);
        QString id = QString::fromLatin1(input);
        EXPECT_FALSE(ValidarNIF(id));
        const QString corrected = id;
        EXPECT_EQ(corrected.size(), 9);
        EXPECT_TRUE(ValidarNIF(id));
        EXPECT_EQ(id, corrected);
    }
}

TEST_F(ValidarNIFTest, LettersAgreeWithThePublishedRule)
{
    for (int n = 0; n < 100000000; n += 1234567) {
        SCOPED_TRACE(n);
        const QString digits = QStringLiteral("%1").arg(n, 8, 10, QLatin1Char('0'));
        const auto out = run(digits);
        EXPECT_FALSE(out.valid);
        EXPECT_EQ(out.text, digits + publishedLetter(n));
    }
}

} // namespace
