#include "util/NifCif.h"
#include "UtilTest.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

const QString kTable = "TRWAGMYFPDXBNJZSQVHLCKE"; // the published NIF letters, by remainder modulo 23
static bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

TEST(LetraNIFTest, RemainderModulo23SelectsTheLetterAlsoBelowZero)
{
    for (int r = 0; r < 23; ++r)
        for (const qint32 n : {r, r + 23 * 1000, r - 23 * 1000})
            EXPECT_EQ(LetraNIF(n), kTable.mid(r, 1)) << n;
    // 2147483647 = 23 * 93368854 + 5; -2147483648 = 23 * -93368855 + 17.
    EXPECT_EQ(LetraNIF(std::numeric_limits<qint32>::max()) + LetraNIF(std::numeric_limits<qint32>::min()), "MV");
}

TEST(NIFConLetraTest, TextAsTypedThenHyphenAndLetterOrEmpty)
{
    // Letters: 12345678 Z, 1234567 L, -1 E, 12 N, 14 Z. Decimals round half to even: 12.5 -> 12, 13.5 -> 14.
    const struct
    {
        const char *digits;
        bool english;
        const char *hyphen, *noHyphen;
    } cases[] = {
        {"12345678", false, "12345678-Z", "12345678Z"},
        {"01234567", false, "01234567-L", "01234567L"},
        {"-1", false, "-1-E", "1E"},
        {"12,5", false, "12,5-N", "12,5N"},
        {"13,5", true, "13,5-Z", "13,5Z"},
        {"1.234.567", false, "1.234.567-L", "1.234.567L"},
        {"1.234.567", true, "", ""},
        {"2147483648", false, "", ""},
        {"", false, "", ""},
        {"abc", false, "", ""},
        {"1e5", false, "", ""},
    };
    for (const auto &c : cases) {
        const QLocale locale = c.english ? english() : spanish();
        EXPECT_EQ(NIFConLetra(c.digits, true, locale), c.hyphen) << c.digits;
        EXPECT_EQ(NIFConLetra(c.digits, false, locale), c.noHyphen) << c.digits;
    }
}

TEST(ValidarNIFTest, PaddedToNineAndCorrectedSoThatTheSecondCallValidates)
{
    // Letters: 12345678 Z, 1234567 L, 23456789 D, 1234 S, 0 T.
    const struct
    {
        const char *input;
        bool valid;
        const char *after;
    } cases[] = {
        {"12345678Z", true, "12345678Z"}, {"1234567L", true, "01234567L"},   {"123456789D", true, "23456789D"},
        {"12345678", false, "12345678Z"}, {"12345678A", false, "12345678Z"}, {"12345678z", false, "12345678Z"},
        {"", false, "00000000T"},         {"1234A678Z", false, "00001234S"}, {"ABCDEFGHI", false, "00000000T"},
    };
    for (const auto &c : cases) {
        QString id = c.input;
        EXPECT_EQ(ValidarNIF(id), c.valid) << c.input;
        EXPECT_EQ(id, c.after) << c.input;
        EXPECT_TRUE(ValidarNIF(id) && id == c.after) << c.input;
    }
}

TEST(ValidarNIFCIFTest, NormalisedThenCheckedAsNifNieOrCif)
{
    // Y1234567X and Z1234567D would be right as the numbers 11234567 and 21234567; CIF body 5881850 takes A or 1.
    const struct
    {
        const char *input;
        bool valid;
        const char *after;
    } cases[] = {
        {"12345678-Z", true, "12345678Z"},  {"12345678-z", true, "12345678Z"},  {" 1234-5678-Z ", true, "12345678Z"},
        {"12345678-A", false, "12345678Z"}, {"12345678", false, "12345678"},    {"         ", false, ""},
        {"X1234567L", true, "X1234567L"},   {"x-1234567-l", true, "X1234567L"}, {"X1234567A", false, "X1234567A"},
        {"Y1234567X", false, "Y1234567X"},  {"Z1234567D", false, "Z1234567D"},  {"N5881850A", false, "N5881850A"},
        {"Ñ5881850A", false, "Ñ5881850A"},  {"a-58818501", true, "A58818501"},  {" p-5881850-a ", true, "P5881850A"},
    };
    for (const auto &c : cases) {
        QString id = c.input;
        EXPECT_EQ(ValidarNIFCIF(id), c.valid) << c.input;
        EXPECT_EQ(id, c.after) << c.input;
    }
}

TEST(ValidarNIFCIFTest, CifControlOfEveryFirstLetter)
{
    // By hand: digits at 3, 5, 7 summed; those at 2, 4, 6, 8 doubled and their digits summed; d = 10 - last
    // digit. 5881850: 14 + (1+0 + 1+6 + 1+6 + 0) = 29, d = 1. 1234567: 12 + 14 = 26, d = 4.
    // 0801234: 12 + 12 = 24, d = 6. 1111111: 3 + 8 = 11, d = 9. 3141592: 11 + 19 = 30, d = 10.
    const struct
    {
        const char *body;
        char letter, digit;
    } bodies[] = {
        {"5881850", 'A', '1'}, {"1234567", 'D', '4'}, {"0801234", 'F', '6'}, {"1111111", 'I', '9'}, {"3141592", 'J', '0'},
    };
    for (const char first : QByteArray("ABCDEFGHKLMPQRS"))
        for (const auto &b : bodies)
            for (const char control : QByteArray("0123456789ABCDEFGHIJZ")) {
                const QString expected = QLatin1Char(first) + QString(b.body) + QLatin1Char(control);
                QString id = expected;
                EXPECT_EQ(ValidarNIFCIF(id),
                          control == b.letter || (!QByteArray("PQRS").contains(first) && control == b.digit))
                    << expected.toStdString();
                EXPECT_EQ(id, expected);
            }
}

TEST(ValidarNIFCIFTest, CifWithANonDigitAt3Or5Or7RaisesAfterNormalising)
{
    for (const auto &[input, normalised] :
         {std::pair{"A5X818501", "A5X818501"}, {"a-588x8501", "A588X8501"}, {"P58818X0A", "P58818X0A"}}) {
        QString id = input;
        const QString message = errorOf([&] { ValidarNIFCIF(id); });
        EXPECT_TRUE(message.startsWith("El identificador fiscal «" + QString(normalised) + "»")) << input;
        EXPECT_EQ(id, normalised);
    }
}

TEST(NifCifFuzzTest, RandomTextsNeverCrashAndKeepEachContract)
{
    std::mt19937 random(182u);
    const auto below = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); };
    const auto pick = [&](const char *from) { return QString(from).at(below(int(QString(from).size()))); };
    int valid = 0, raised = 0, lettered = 0;
    for (int i = 0; i < 20000; ++i) {
        QString input = pick("0123456789XYZABCDEFGHKLMPQRSNxapñ -"); // mostly a letter or digit and digits
        for (int k = below(12); k > 0; --k)
            input += pick(below(8) ? "0123456789" : "ABCDEFKLMPQRSTXYZabxz--  .,+ñé\t");
        if (below(50) == 0)
            input.insert(below(int(input.size()) + 1), QChar(0));
        SCOPED_TRACE(input.toStdString());
        QString id = input; // ValidarNIF: the padded text, or eight digits and their letter that then validate
        if (ValidarNIF(id))
            ASSERT_EQ(id, ("000000000" + input).right(9));
        else
            ASSERT_TRUE(id.size() == 9 && std::all_of(id.begin(), id.begin() + 8, isDigit)
                        && id[8] == kTable[id.left(8).toInt() % 23] && ValidarNIF(id))
                << id.toStdString();
        const QString normalised = QString(input).remove(QLatin1Char('-')).trimmed().toUpper();
        id = input; // ValidarNIFCIF: only normalises or corrects a NIF; raises only for a CIF without a digit
        try {
            const bool result = ValidarNIFCIF(id);
            valid += result;
            if (!result && normalised.size() == 9 && isDigit(normalised[0]))
                ASSERT_TRUE(ValidarNIFCIF(id));
            else
                ASSERT_EQ(id, normalised);
        } catch (const ConversionError &) {
            ++raised;
            ASSERT_EQ(id, normalised);
            ASSERT_TRUE(id.size() == 9 && QString("ABCDEFGHKLMPQRS").contains(id[0])
                        && !(isDigit(id[2]) && isDigit(id[4]) && isDigit(id[6])));
        }
        const bool hyphen = below(2); // NIFConLetra: empty, or the text, "-" and a letter
        const QString result = NIFConLetra(input, hyphen, spanish()), withLetter = input + "-" + result.right(1);
        lettered += !result.isEmpty();
        ASSERT_TRUE(
            result.isEmpty()
            || (kTable.contains(result.back()) && result == (hyphen ? withLetter : QString(withLetter).remove('-'))));
    }
    EXPECT_GT(valid, 0);
    EXPECT_GT(raised, 0);
    EXPECT_GT(lettered, 0);
}

// The identifier is the user's text: its own "%1", "%2" never take the place
// of the message's position or character.
TEST(NifCifMessages, AnIdentifierHoldingPlaceMarkersIsQuotedAsTyped)
{
    for (const QString &typed : {QString("S%2#bpos^"), QString("B1%1%2%3X"), QString("q%2%1aaaa")}) {
        QString id = typed;
        try {
            ValidarNIFCIF(id);
            ADD_FAILURE() << "no error for " << typed.toStdString();
        } catch (const ConversionError &error) {
            const QString normalised = typed.toUpper();
            int position = 3; // the first of the digits a CIF must have at 3, 5 and 7
            while (normalised.at(position - 1).isDigit())
                position += 2;
            EXPECT_EQ(QString::fromUtf8(error.what()), "El identificador fiscal «" + normalised
                                                           + "» no es válido: el carácter " + QString::number(position)
                                                           + " («" + normalised.at(position - 1) + "») no es un dígito.");
        }
    }
}
