#include "util/ConversionError.h"
#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

class ValidarNIFCIFTest : public ::testing::Test
{
protected:
    struct Case
    {
        const char *input;
        bool valid;
        const char *after; // the caller's string afterwards
    };

    static void check(const Case &c)
    {
        SCOPED_TRACE(c.input);
        QString id = QString::fromUtf8(c.input);
        EXPECT_EQ(ValidarNIFCIF(id), c.valid);
        EXPECT_EQ(id, QString::fromUtf8(c.after));
    }
};

TEST_F(ValidarNIFCIFTest, NifWithHyphenAndAnyCase)
{
    const Case cases[] = {
        {"12345678-Z", true, "12345678Z"},
        {"12345678-z", true, "12345678Z"},
        {"12345678z", true, "12345678Z"},
        {"  12345678Z  ", true, "12345678Z"},
        {"1234-5678-Z", true, "12345678Z"},
        {"-12345678Z-", true, "12345678Z"},
        {"01234567-l", true, "01234567L"},
    };
    for (const auto &c : cases)
        check(c);
}

TEST_F(ValidarNIFCIFTest, NifWithWrongLetterIsCorrected)
{
    check({"12345678-A", false, "12345678Z"});
    check({"87654321x ", true, "87654321X"});
    check({"87654321T", false, "87654321X"});
}

TEST_F(ValidarNIFCIFTest, EightDigitNifFailsTheLengthTestAndStaysAsTyped)
{
    check({"12345678", false, "12345678"});
    check({" 1234-5678 ", false, "12345678"});
}

TEST_F(ValidarNIFCIFTest, BlanksAndEmptyAreFalse)
{
    check({"         ", false, ""});
    check({"", false, ""});
    check({"---------", false, ""});
}

TEST_F(ValidarNIFCIFTest, WrongLengthIsFalseWithoutCorrection)
{
    check({"123456789Z", false, "123456789Z"});
    check({"A588185", false, "A588185"});
    check({"A588185011", false, "A588185011"});
}

TEST_F(ValidarNIFCIFTest, NieWithXIsCheckedWithoutCorrectingTheCaller)
{
    // X1234567L is checked as 01234567L: 1234567 leaves remainder 19, "L".
    check({"X1234567L", true, "X1234567L"});
    check({"x-1234567-l", true, "X1234567L"});
    check({"X1234567A", false, "X1234567A"});
    check({"X0000000T", true, "X0000000T"});
}

TEST_F(ValidarNIFCIFTest, NieWithYOrZIsRefused)
{
    // As 11234567 and 21234567 these would have the letters X and D.
    check({"Y1234567X", false, "Y1234567X"});
    check({"Z1234567D", false, "Z1234567D"});
}

TEST_F(ValidarNIFCIFTest, FirstLettersOutsideTheListAreRefused)
{
    // Body 5881850 has control A / 1 (see the CIF cases).
    for (const char *id : {"N5881850A", "W5881850A", "T58818501", "J5881850A", "U58818501", "V58818501",
                           "Ñ5881850A", "#58818501"}) {
        check({id, false, id});
    }
}

// Control characters worked out by hand. For body 5881850 (positions 2 to 8):
// positions 3, 5, 7: 8 + 1 + 5 = 14; positions 2, 4, 6, 8 doubled: 10, 16, 16,
// 0, digits added: 1 + 7 + 7 + 0 = 15; sum 29, d = 10 - 9 = 1: "A" or "1".
// Body 1234567: 2 + 4 + 6 = 12; 2, 6, 10, 14 -> 2 + 6 + 1 + 5 = 14; sum 26, d = 4.
// Body 2808100: 8 + 8 + 0 = 16; 4, 0, 2, 0 -> 6; sum 22, d = 8.
// Body 4302111: 3 + 2 + 1 = 6; 8, 0, 2, 2 -> 12; sum 18, d = 2.
// Body 0801234: 8 + 1 + 3 = 12; 0, 0, 4, 8 -> 12; sum 24, d = 6.
// Body 2718281: 7 + 8 + 8 = 23; 4, 2, 4, 2 -> 12; sum 35, d = 5.
// Body 1111111: 1 + 1 + 1 = 3; 2, 2, 2, 2 -> 8; sum 11, d = 9.
// Body 0500100: 5 + 0 + 0 = 5; 0, 0, 2, 0 -> 2; sum 7, d = 3.
// Body 3141592: 1 + 1 + 9 = 11; 6, 8, 10, 4 -> 6 + 8 + 1 + 4 = 19; sum 30, d = 10.
struct CifBody
{
    const char *body;
    char letter;
    char digit;
};

const CifBody kBodies[] = {
    {"5881850", 'A', '1'}, {"1234567", 'D', '4'}, {"2808100", 'H', '8'}, {"4302111", 'B', '2'},
    {"0801234", 'F', '6'}, {"2718281", 'E', '5'}, {"1111111", 'I', '9'}, {"0500100", 'C', '3'},
    {"3141592", 'J', '0'},
};

TEST_F(ValidarNIFCIFTest, EveryFirstLetterOutsidePQSRAcceptsLetterOrDigit)
{
    for (const char first : QByteArray("ABCDEFGHKLM")) {
        for (const auto &b : kBodies) {
            const QString body = QLatin1Char(first) + QString::fromLatin1(b.body);
            SCOPED_TRACE(body.toStdString());
            QString withLetter = body + QLatin1Char(b.letter);
            QString withDigit = body + QLatin1Char(b.digit);
            EXPECT_TRUE(ValidarNIFCIF(withLetter));
            EXPECT_TRUE(ValidarNIFCIF(withDigit));
            EXPECT_EQ(withLetter, body + QLatin1Char(b.letter));
            EXPECT_EQ(withDigit, body + QLatin1Char(b.digit));

            // Any other control character is refused and left alone.
            for (const char wrong : QByteArray("0123456789ABCDEFGHIJZ")) {
                if (wrong == b.letter || wrong == b.digit)
                    continue;
                QString id = body + QLatin1Char(wrong);
                EXPECT_FALSE(ValidarNIFCIF(id)) << wrong;
                EXPECT_EQ(id, body + QLatin1Char(wrong));
            }
        }
    }
}

TEST_F(ValidarNIFCIFTest, FirstLettersPQSRAcceptOnlyTheLetter)
{
    for (const char first : QByteArray("PQRS")) {
        for (const auto &b : kBodies) {
            const QString body = QLatin1Char(first) + QString::fromLatin1(b.body);
            SCOPED_TRACE(body.toStdString());
            QString withLetter = body + QLatin1Char(b.letter);
            QString withDigit = body + QLatin1Char(b.digit);
            EXPECT_TRUE(ValidarNIFCIF(withLetter));
            EXPECT_FALSE(ValidarNIFCIF(withDigit));
        }
    }
}

TEST_F(ValidarNIFCIFTest, SumEndingInZeroGivesZeroOrJ)
{
    // Body 0000000: sum 0, d = 10. Body 8001001: 0 + 0 + 1 = 1; 16, 0, 0, 2 ->
    // 7 + 0 + 0 + 2 = 9; sum 10, d = 10.
    check({"B0000000J", true, "B0000000J"});
    check({"B00000000", true, "B00000000"});
    check({"G80010010", true, "G80010010"});
    check({"G8001001J", true, "G8001001J"});
    check({"Q0000000J", true, "Q0000000J"});
    check({"Q00000000", false, "Q00000000"});
    check({"S8001001J", true, "S8001001J"});
    check({"S80010010", false, "S80010010"});
}

TEST_F(ValidarNIFCIFTest, CifIsNormalisedLikeANif)
{
    check({"a-58818501", true, "A58818501"});
    check({" b-0000000-j ", true, "B0000000J"});
    check({"p5881850a", true, "P5881850A"});
}

TEST_F(ValidarNIFCIFTest, NonDigitAtAnOddPositionThrows)
{
    for (const char *id : {"A5X818501", "A588X8501", "A58818X01", "P5 81850A", "B58818.01"}) {
        SCOPED_TRACE(id);
        QString text = QString::fromLatin1(id);
        try {
            ValidarNIFCIF(text);
            ADD_FAILURE() << "no error for " << id;
        } catch (const ConversionError &error) {
            EXPECT_TRUE(error.message().contains(QString::fromLatin1(id))) << error.what();
            EXPECT_TRUE(error.message().startsWith(QStringLiteral("El identificador fiscal")));
        }
    }
}

TEST_F(ValidarNIFCIFTest, StringIsNormalisedBeforeTheErrorIsRaised)
{
    QString id = QStringLiteral("a-5x818501");
    EXPECT_THROW(ValidarNIFCIF(id), ConversionError);
    EXPECT_EQ(id, QStringLiteral("A5X818501"));
}

TEST_F(ValidarNIFCIFTest, NonDigitAtAnEvenPositionCountsAsZero)
{
    // "AX881850?": position 2 counts 0, so the control is that of body 0881850:
    // 8 + 1 + 5 = 14; 0, 16, 16, 0 -> 0 + 7 + 7 + 0 = 14; sum 28, d = 2.
    check({"AX8818502", true, "AX8818502"});
    check({"AX881850B", true, "AX881850B"});
    check({"A08818502", true, "A08818502"});
    check({"AX8818501", false, "AX8818501"});
}

TEST_F(ValidarNIFCIFTest, ValidIdentifierValidatesAgainUnchanged)
{
    for (const char *input : {"12345678-z", "x1234567l", "a58818501", "Q-0000000-J", " 87654321X"}) {
        SCOPED_TRACE(input);
        QString id = QString::fromLatin1(input);
        ASSERT_TRUE(ValidarNIFCIF(id));
        const QString normalised = id;
        EXPECT_TRUE(ValidarNIFCIF(id));
        EXPECT_EQ(id, normalised);
    }
}

TEST_F(ValidarNIFCIFTest, CorrectedNifValidatesOnTheSecondCall)
{
    QString id = QStringLiteral("12345678-a");
    EXPECT_FALSE(ValidarNIFCIF(id));
    EXPECT_EQ(id, QStringLiteral("12345678Z"));
    EXPECT_TRUE(ValidarNIFCIF(id));
    EXPECT_EQ(id, QStringLiteral("12345678Z"));
}

} // namespace
