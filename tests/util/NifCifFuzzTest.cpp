// Random identifiers through the four routines: none may crash, and each
// keeps its contract whatever it is given.
#include "UtilTest.h"
#include "util/ConversionError.h"
#include "util/NifCif.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace {

const QString kTable = "TRWAGMYFPDXBNJZSQVHLCKE";

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

class NifCifFuzzTest : public ::testing::Test
{
protected:
    std::mt19937 random{182u};

    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); }
    QString pick(const QString &from) { return from.mid(below(int(from.size())), 1); }

    // One text in four is identifier-like (perhaps with a hyphen, in lower case, between blanks); the others
    // are up to twelve digits, letters, hyphens, blanks, separators, non-ASCII letters, now and then a NUL.
    QString randomText()
    {
        QString text;
        if (below(4) == 0) {
            text = pick("0123456789XYZABCDEFGHKLMPQRSN");
            for (int i = 0; i < 7; ++i)
                text += below(40) == 0 ? pick("ABCDEFGHIJKLMNOPQRSTUVWXYZ") : pick("0123456789");
            text += pick(kTable + "O0123456789");
            if (below(3) == 0)
                text.insert(8, QLatin1Char('-'));
            if (below(3) == 0)
                text = text.toLower();
            return below(4) == 0 ? "  " + text + " " : text;
        }
        for (int i = below(13); i > 0; --i)
            text += pick("01234567890123456789012345678901234567890ABCDEFGHKLMNPQRSXYZabcdeklmpqrsxyz" + kTable
                         + "O---   .,+ñÑéß\t");
        if (below(50) == 0)
            text.insert(below(int(text.size()) + 1), QChar(0));
        return text;
    }
};

TEST_F(NifCifFuzzTest, ValidarNIFLeavesTheInputPaddedOrEightDigitsAndTheirLetter)
{
    for (int i = 0; i < 200000; ++i) {
        const QString input = randomText();
        QString id = input;
        if (ValidarNIF(id)) {
            ASSERT_EQ(id, ("000000000" + input).right(9));
            continue;
        }
        ASSERT_EQ(id.size(), 9) << input.toStdString();
        ASSERT_TRUE(std::all_of(id.begin(), id.begin() + 8, isDigit) && kTable.contains(id[8])) << input.toStdString();
        const QString corrected = id;
        ASSERT_TRUE(ValidarNIF(id) && id == corrected) << input.toStdString();
    }
}

TEST_F(NifCifFuzzTest, ValidarNIFCIFOnlyNormalisesOrCorrectsANif)
{
    int valid = 0, raised = 0;
    for (int i = 0; i < 200000; ++i) {
        const QString input = randomText();
        const QString normalised = QString(input).remove(QLatin1Char('-')).trimmed().toUpper();
        QString id = input;
        bool result = false;
        try {
            result = ValidarNIFCIF(id);
        } catch (const ConversionError &) {
            // Only a nine-character CIF with a non-digit at 3, 5 or 7 may raise.
            ++raised;
            ASSERT_EQ(id, normalised);
            ASSERT_TRUE(id.size() == 9 && QString("ABCDEFGHPQRSKLM").contains(id[0])
                        && !(isDigit(id[2]) && isDigit(id[4]) && isDigit(id[6])))
                << input.toStdString();
            continue;
        }
        valid += result;
        if (!result && normalised.size() == 9 && isDigit(normalised[0])) {
            ASSERT_TRUE(ValidarNIFCIF(id)) << input.toStdString(); // a NIF, corrected
        } else {
            ASSERT_EQ(id, normalised) << input.toStdString();
            ASSERT_EQ(ValidarNIFCIF(id), result);
            ASSERT_EQ(id, normalised);
        }
    }
    EXPECT_GT(valid, 0);
    EXPECT_GT(raised, 0);
}

TEST_F(NifCifFuzzTest, LetraNIFFollowsThePublishedRuleOverTheWholeRange)
{
    std::uniform_int_distribution<qint32> any(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    for (int i = 0; i < 200000; ++i) {
        const qint32 n = any(random);
        ASSERT_EQ(LetraNIF(n), publishedLetter(n)) << n;
    }
}

TEST_F(NifCifFuzzTest, NIFConLetraGivesEmptyOrTheTextAndALetter)
{
    int lettered = 0;
    for (int i = 0; i < 200000; ++i) {
        const QString input = randomText();
        const bool hyphen = below(2) == 0;
        const QString result = NIFConLetra(input, hyphen, spanish());
        if (result.isEmpty())
            continue;
        ++lettered;
        ASSERT_TRUE(kTable.contains(result.back())) << input.toStdString();
        const QString expected = input + "-" + result.back();
        ASSERT_EQ(result, hyphen ? expected : QString(expected).remove(QLatin1Char('-')));
    }
    EXPECT_GT(lettered, 0);
}

} // namespace
