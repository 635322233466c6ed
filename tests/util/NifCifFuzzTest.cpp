// Random identifiers through the four routines: none may crash, and each
// keeps its contract whatever it is given.
#include "util/ConversionError.h"
#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <limits>
#include <ostream>
#include <random>

void PrintTo(const QString &text, std::ostream *os);

namespace {

const QString kTable = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE");

class NifCifFuzzTest : public ::testing::Test
{
protected:
    std::mt19937 random{182u};

    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }

    // Mostly identifier-like texts: digits, letters in both cases, hyphens,
    // blanks, separators and a few characters outside ASCII.
    QString randomText() { return below(4) == 0 ? identifierLike() : randomCharacters(); }

    // A letter or none, eight characters that are mostly digits, a control
    // character: near misses and some valid identifiers, in any case.
    QString identifierLike()
    {
        static const QString firsts = QStringLiteral("0123456789XYZABCDEFGHKLMPQRSN");
        static const QString controls = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKEO0123456789");
        QString text(1, firsts[below(int(firsts.size()))]);
        for (int i = 0; i < 7; ++i)
            text += below(40) == 0 ? QChar(QLatin1Char('A' + below(26))) : QChar(QLatin1Char('0' + below(10)));
        text += controls[below(int(controls.size()))];
        if (below(3) == 0)
            text.insert(8, QLatin1Char('-'));
        if (below(3) == 0)
            text = text.toLower();
        if (below(4) == 0)
            text = QStringLiteral("  ") + text + QLatin1Char(' ');
        return text;
    }

    QString randomCharacters()
    {
        static const QString alphabet = QStringLiteral(
            "0123456789012345678901234567890123456789ABCDEFGHKLMNPQRSXYZabcdeklmpqrsxyz"
            "TRWAGMYFPDXBNJZSQVHLCKEO---   .,+ñÑéß\t");
        QString text;
        const int length = below(13);
        for (int i = 0; i < length; ++i)
            text += alphabet[below(int(alphabet.size()))];
        if (below(50) == 0)
            text.insert(below(int(text.size()) + 1), QChar(0));
        return text;
    }

    static QString normalised(const QString &text)
    {
        QString s = text;
        return s.remove(QLatin1Char('-')).trimmed().toUpper();
    }

    static bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }
};

TEST_F(NifCifFuzzTest, ValidarNIFAlwaysLeavesNineCharacters)
{
    for (int i = 0; i < 300000; ++i) {
        const QString input = randomText();
        QString id = input;
        const bool valid = ValidarNIF(id);
        ASSERT_EQ(id.size(), 9) << input.toStdString();
        if (valid) {
            ASSERT_EQ(id, (QStringLiteral("000000000") + input).right(9));
        } else {
            // Eight digits and their letter, which now validates unchanged.
            for (int k = 0; k < 8; ++k)
                ASSERT_TRUE(isDigit(id[k])) << input.toStdString();
            ASSERT_TRUE(kTable.contains(id[8])) << input.toStdString();
            const QString corrected = id;
            ASSERT_TRUE(ValidarNIF(id));
            ASSERT_EQ(id, corrected);
        }
    }
}

TEST_F(NifCifFuzzTest, ValidarNIFCIFOnlyNormalisesOrCorrectsANif)
{
    int valid = 0;
    int raised = 0;
    for (int i = 0; i < 300000; ++i) {
        const QString input = randomText();
        const QString expected = normalised(input);
        QString id = input;
        bool result = false;
        try {
            result = ValidarNIFCIF(id);
        } catch (const ConversionError &) {
            ++raised;
            // Only a nine-character CIF with a non-digit at 3, 5 or 7 may raise.
            ASSERT_EQ(id, expected);
            ASSERT_EQ(id.size(), 9);
            ASSERT_TRUE(QStringLiteral("ABCDEFGHPQRSKLM").contains(id[0])) << input.toStdString();
            ASSERT_FALSE(isDigit(id[2]) && isDigit(id[4]) && isDigit(id[6])) << input.toStdString();
            continue;
        }
        if (result) {
            ++valid;
            ASSERT_EQ(id, expected) << input.toStdString();
            ASSERT_TRUE(ValidarNIFCIF(id));
            ASSERT_EQ(id, expected);
        } else if (expected.size() == 9 && isDigit(expected[0])) {
            ASSERT_EQ(id.size(), 9);
            ASSERT_TRUE(ValidarNIFCIF(id)) << input.toStdString();
        } else {
            ASSERT_EQ(id, expected) << input.toStdString();
        }
    }
    EXPECT_GT(valid, 0);
    EXPECT_GT(raised, 0);
}

TEST_F(NifCifFuzzTest, LetraNIFAlwaysGivesATableLetter)
{
    std::uniform_int_distribution<qint32> any(std::numeric_limits<qint32>::min(),
                                              std::numeric_limits<qint32>::max());
    for (int i = 0; i < 200000; ++i) {
        const qint32 n = any(random);
        const QString letter = LetraNIF(n);
        const long long remainder = ((static_cast<long long>(n) % 23) + 23) % 23;
        ASSERT_EQ(letter, kTable.mid(remainder, 1)) << n;
    }
}

TEST_F(NifCifFuzzTest, NIFConLetraGivesEmptyOrTheTextAndALetter)
{
    const QLocale spanish(QLocale::Spanish, QLocale::Spain);
    int lettered = 0;
    for (int i = 0; i < 300000; ++i) {
        const QString input = randomText();
        const bool hyphen = below(2) == 0;
        const QString result = NIFConLetra(input, hyphen, spanish);
        if (result.isEmpty())
            continue;
        ++lettered;
        ASSERT_TRUE(kTable.contains(result.back())) << input.toStdString();
        QString expected = input + QLatin1Char('-') + result.back();
        if (!hyphen)
            expected.remove(QLatin1Char('-'));
        ASSERT_EQ(result, expected);
    }
    EXPECT_GT(lettered, 0);
}

} // namespace
