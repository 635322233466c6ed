#include "UtilTest.h"
#include "util/ConversionError.h"
#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(LetraNIFTest, EveryRemainderSelectsItsLetterAlsoBelowZero)
{
    const QString letters = "TRWAGMYFPDXBNJZSQVHLCKE";
    for (int r = 0; r < 23; ++r) {
        EXPECT_EQ(LetraNIF(r), letters.mid(r, 1)) << r;
        EXPECT_EQ(LetraNIF(r + 23 * 1000), letters.mid(r, 1)) << r;
        EXPECT_EQ(LetraNIF(r - 23 * 1000), letters.mid(r, 1)) << r;
    }
}

TEST(LetraNIFTest, KnownNumbersAndTheEndsOfTheRange)
{
    // 12345678 = 23 * 536768 + 14; -24 = 23 * -2 + 22; 2147483647 = 23 * 93368854 + 5;
    // -2147483648 = 23 * -93368855 + 17.
    const struct { qint32 number; const char *letter; } cases[] = {
        {12345678, "Z"}, {1234567, "L"}, {99999999, "R"}, {87654321, "X"}, {-1, "E"}, {-24, "E"},
        {std::numeric_limits<qint32>::max(), "M"}, {std::numeric_limits<qint32>::min(), "V"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(LetraNIF(c.number), c.letter) << c.number;
}

TEST(NIFConLetraTest, TextAsTypedThenHyphenAndLetterOrEmpty)
{
    // Letters: 12345678 Z, 1234567 L, 99999999 R, 0 T, -1 E, 12 N, 13 J, 14 Z, 2147483647 M.
    // Decimals round half to even: 12.5 -> 12, 13.5 -> 14, 12.6 -> 13.
    const struct { const char *digits; bool english; const char *hyphen, *noHyphen; } cases[] = {
        {"12345678", false, "12345678-Z", "12345678Z"}, {"01234567", false, "01234567-L", "01234567L"},
        {"99999999", false, "99999999-R", "99999999R"}, {"0", false, "0-T", "0T"},
        {" 12345678 ", false, " 12345678 -Z", " 12345678 Z"}, {"+12345678", false, "+12345678-Z", "+12345678Z"},
        {"-1", false, "-1-E", "1E"}, // without the hyphen every "-" goes
        {"12.5", false, "12.5-N", "12.5N"}, {"12,5", false, "12,5-N", "12,5N"},
        {"13,5", true, "13,5-Z", "13,5Z"}, {"12.6", true, "12.6-J", "12.6J"},
        // Thousands separators follow the locale.
        {"1.234.567", false, "1.234.567-L", "1.234.567L"}, {"1,234,567", true, "1,234,567-L", "1,234,567L"},
        {"1.234.567", true, "", ""},
        {"2147483647", false, "2147483647-M", "2147483647M"}, {"2147483648", false, "", ""},
        {"99999999999", false, "", ""},
        {"", false, "", ""}, {"   ", false, "", ""}, {"abc", false, "", ""}, {"1234567A", false, "", ""},
        {"12-34", false, "", ""}, {"1e5", false, "", ""}, {"-", false, "", ""}, {".", false, "", ""},
    };
    for (const auto &c : cases) {
        const QLocale locale = c.english ? english() : spanish();
        EXPECT_EQ(NIFConLetra(c.digits, true, locale), c.hyphen) << c.digits;
        EXPECT_EQ(NIFConLetra(c.digits, false, locale), c.noHyphen) << c.digits;
    }
}

TEST(ValidarNIFTest, PaddedToNineAndCorrectedWhenTheLetterIsWrongOrMissing)
{
    // Letters: 12345678 Z, 1234567 L, 23456789 D, 1234 S, 2345 E, 0 T.
    const struct { const char *input; bool valid; const char *after; } cases[] = {
        {"12345678Z", true, "12345678Z"}, {"99999999R", true, "99999999R"}, {"87654321X", true, "87654321X"},
        {"00000000T", true, "00000000T"},
        {"1234567L", true, "01234567L"},   // padded with zeros
        {"123456789D", true, "23456789D"}, // longer texts keep their last nine
        {"12345678", false, "12345678Z"},  // typed without letter: it is appended
        {"1234567", false, "01234567L"},
        {"12345678A", false, "12345678Z"}, // a wrong letter is replaced
        {"12345678z", false, "12345678Z"},
        {"ABC12345678Q", false, "12345678Z"},
        {"", false, "00000000T"},          // "000000000" ends in "0", not "T"
        {"1234A678Z", false, "00001234S"}, // a non-digit ends the value
        {"12345B789", false, "00002345E"}, // ninth a digit: characters two to nine
        {"ABCDEFGHI", false, "00000000T"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.input);
        QString id = c.input;
        EXPECT_EQ(ValidarNIF(id), c.valid);
        EXPECT_EQ(id, c.after);
        EXPECT_TRUE(ValidarNIF(id)); // what is left behind validates unchanged
        EXPECT_EQ(id, c.after);
    }
}

class ValidarNIFCIFTest : public ::testing::Test
{
protected:
    struct Case { const char *input; bool valid; const char *after; };

    // The result and the caller's string; a valid identifier validates again unchanged.
    static void check(const Case &c)
    {
        SCOPED_TRACE(c.input);
        QString id = c.input;
        EXPECT_EQ(ValidarNIFCIF(id), c.valid);
        EXPECT_EQ(id, c.after);
        if (c.valid) {
            EXPECT_TRUE(ValidarNIFCIF(id));
            EXPECT_EQ(id, c.after);
        }
    }
};

TEST_F(ValidarNIFCIFTest, NormalisedThenANifIsCheckedAndCorrectedAsValidarNIFDoes)
{
    const Case cases[] = {
        {"12345678-Z", true, "12345678Z"}, {"12345678-z", true, "12345678Z"}, {"  12345678Z  ", true, "12345678Z"},
        {"1234-5678-Z", true, "12345678Z"}, {"-12345678Z-", true, "12345678Z"}, {"01234567-l", true, "01234567L"},
        {"87654321x ", true, "87654321X"}, {"12345678-A", false, "12345678Z"}, {"87654321T", false, "87654321X"},
        // Not nine characters: false, left as normalised.
        {"12345678", false, "12345678"}, {" 1234-5678 ", false, "12345678"}, {"123456789Z", false, "123456789Z"},
        {"A588185", false, "A588185"}, {"A588185011", false, "A588185011"},
        {"         ", false, ""}, {"", false, ""}, {"---------", false, ""},
    };
    for (const auto &c : cases)
        check(c);
}

TEST_F(ValidarNIFCIFTest, NieWithXIsCheckedOnACopyOtherFirstLettersAreRefused)
{
    // X1234567L is checked as 01234567L. As numbers 11234567 and 21234567 the
    // Y and Z identifiers would have the letters X and D; body 5881850 has the
    // CIF control A / 1.
    const Case cases[] = {
        {"X1234567L", true, "X1234567L"}, {"x-1234567-l", true, "X1234567L"}, {"X0000000T", true, "X0000000T"},
        {"X1234567A", false, "X1234567A"}, {"Y1234567X", false, "Y1234567X"}, {"Z1234567D", false, "Z1234567D"},
        {"N5881850A", false, "N5881850A"}, {"W5881850A", false, "W5881850A"}, {"T58818501", false, "T58818501"},
        {"J5881850A", false, "J5881850A"}, {"U58818501", false, "U58818501"}, {"V58818501", false, "V58818501"},
        {"Ñ5881850A", false, "Ñ5881850A"}, {"#58818501", false, "#58818501"},
    };
    for (const auto &c : cases)
        check(c);
}

TEST_F(ValidarNIFCIFTest, CifControlIsTheLetterOrOutsidePQRSAlsoTheDigit)
{
    // Worked out by hand: positions 3, 5, 7 summed; positions 2, 4, 6, 8
    // doubled and their digits summed; d = 10 - last digit of the total.
    // 5881850: 8+1+5 = 14; 10,16,16,0 -> 15; 29, d = 1.   1234567: 12; 2,6,10,14 -> 14; 26, d = 4.
    // 2808100: 16; 4,0,2,0 -> 6; 22, d = 8.               4302111: 6; 8,0,2,2 -> 12; 18, d = 2.
    // 0801234: 12; 0,0,4,8 -> 12; 24, d = 6.              2718281: 23; 4,2,4,2 -> 12; 35, d = 5.
    // 1111111: 3; 2,2,2,2 -> 8; 11, d = 9.                0500100: 5; 0,0,2,0 -> 2; 7, d = 3.
    // 3141592: 11; 6,8,10,4 -> 19; 30, d = 10 ("J" or "0").
    const struct { const char *body; char letter, digit; } bodies[] = {
        {"5881850", 'A', '1'}, {"1234567", 'D', '4'}, {"2808100", 'H', '8'}, {"4302111", 'B', '2'},
        {"0801234", 'F', '6'}, {"2718281", 'E', '5'}, {"1111111", 'I', '9'}, {"0500100", 'C', '3'},
        {"3141592", 'J', '0'},
    };
    for (const char first : QByteArray("ABCDEFGHKLMPQRS")) {
        const bool letterOnly = QByteArray("PQRS").contains(first);
        for (const auto &b : bodies) {
            for (const char control : QByteArray("0123456789ABCDEFGHIJZ")) {
                const QString expected = QLatin1Char(first) + QString(b.body) + QLatin1Char(control);
                QString id = expected;
                EXPECT_EQ(ValidarNIFCIF(id), control == b.letter || (!letterOnly && control == b.digit))
                    << expected.toStdString();
                EXPECT_EQ(id, expected);
            }
        }
    }
}

TEST_F(ValidarNIFCIFTest, CifEdgeCases)
{
    // 0000000: sum 0, d = 10. 8001001: 0+0+1 = 1; 16,0,0,2 -> 9; 10, d = 10.
    // AX881850?: a non-digit at position 2 counts 0, as body 0881850: 14; 0,16,16,0 -> 14; 28, d = 2.
    const Case cases[] = {
        {"B0000000J", true, "B0000000J"}, {"B00000000", true, "B00000000"}, {"G80010010", true, "G80010010"},
        {"G8001001J", true, "G8001001J"}, {"Q0000000J", true, "Q0000000J"}, {"Q00000000", false, "Q00000000"},
        {"S8001001J", true, "S8001001J"}, {"S80010010", false, "S80010010"},
        {"a-58818501", true, "A58818501"}, {" b-0000000-j ", true, "B0000000J"}, {"p5881850a", true, "P5881850A"},
        {"AX8818502", true, "AX8818502"}, {"AX881850B", true, "AX881850B"}, {"AX8818501", false, "AX8818501"},
    };
    for (const auto &c : cases)
        check(c);
}

TEST_F(ValidarNIFCIFTest, NonDigitAtPosition3Or5Or7ThrowsAfterNormalising)
{
    const struct { const char *input, *normalised; } cases[] = {
        {"A5X818501", "A5X818501"}, {"a-588x8501", "A588X8501"}, {"A58818X01", "A58818X01"},
        {"P5 81850A", "P5 81850A"}, {" b58818.01", "B58818.01"},
    };
    for (const auto &c : cases) {
        QString id = c.input;
        try {
            ValidarNIFCIF(id);
            ADD_FAILURE() << "no error for " << c.input;
        } catch (const ConversionError &error) {
            EXPECT_TRUE(error.message().startsWith("El identificador fiscal «" + QString(c.normalised) + "»"))
                << error.what();
        }
        EXPECT_EQ(id, c.normalised);
    }
}

} // namespace
