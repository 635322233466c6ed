#include "catalogue/LinkStatements.h"

#include <gtest/gtest.h>

// Percentages kept in single precision read as they were typed.
TEST(PercentageText, ShowsTheSinglesDecimalValueInTheUsersFormat)
{
    const QLocale spanish(QLocale::Spanish, QLocale::Spain), english(QLocale::English, QLocale::UnitedStates);
    const struct
    {
        float value;
        const QLocale &locale;
        const char *text;
    } cases[] = {{13.3f, spanish, "13,3"},   {12.5f, spanish, "12,5"}, {80.0f, spanish, "80"},  {0.0f, spanish, "0"},
                 {33.33f, spanish, "33,33"}, {12.5f, english, "12.5"}, {100.0f, english, "100"}};
    for (const auto &c : cases)
        EXPECT_EQ(PercentageText(c.value, c.locale), QString(c.text)) << c.text;
}

// Each link's state after a sequence of adds (+) and removes (-) on a
// stored (s) or new pair, and the statements accepting would send.
TEST(DeductionLinks, StatesFollowAddsAndRemovesAndOnlyRealChangesAreWritten)
{
    const struct
    {
        bool stored;
        const char *steps;
        int count; // links held afterwards
        int state; // of the one link, when held
        QStringList sql;
    } cases[] = {
        {true, "", 1, 0, {}},
        {true, "-", 1, 3, {"DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=9 AND codTipoDonativo=2"}},
        {true, "-+", 1, 0, {}},
        {true, "-+-", 1, 3, {"DELETE FROM TipoDonativos_Deducciones WHERE coddeduccion=9 AND codTipoDonativo=2"}},
        {false, "+", 1, 1, {"INSERT INTO TipoDonativos_Deducciones VALUES (2,9)"}},
        {false, "+-", 0, 0, {}},
        {false, "+-+", 1, 1, {"INSERT INTO TipoDonativos_Deducciones VALUES (2,9)"}},
    };
    for (const auto &c : cases) {
        TypeLinks links;
        if (c.stored)
            links.Load(2, 9, 35.0f);
        for (const char step : std::string(c.steps)) {
            if (step == '+')
                links.Add(2, 9, 35.0f);
            else
                links.Remove(links.Find(2, 9));
        }
        EXPECT_EQ(links.Items().Count(), c.count) << c.steps;
        if (c.count == 1) {
            EXPECT_EQ(links.Find(2, 9)->Estado, c.state) << c.steps;
        }
        EXPECT_EQ(LinkStatements(CommunityLinks(), links), c.sql) << c.steps;
        EXPECT_EQ(links.Listed(2).size(), c.count == 1 && c.state != 3 ? 1 : 0) << c.steps;
    }
}

TEST(DeductionLinks, APairAlreadyListedIsReportedAndAPairStoredTwiceIsHeldOnce)
{
    CommunityLinks links;
    links.Load(1, 4, 10.0f);
    links.Load(1, 4, 10.0f);
    EXPECT_EQ(links.Items().Count(), 1);
    EXPECT_EQ(links.Add(1, 4, 10.0f), CommunityLinks::Added::AlreadyThere);
    EXPECT_EQ(links.Add(1, 5, 15.0f), CommunityLinks::Added::Nuevo);
    EXPECT_EQ(links.Add(1, 5, 15.0f), CommunityLinks::Added::AlreadyThere);
    links.Remove(links.Find(1, 4));
    EXPECT_EQ(links.Add(1, 4, 10.0f), CommunityLinks::Added::Restored);
    EXPECT_EQ(links.Listed(2).size(), 0);
    EXPECT_EQ(links.Listed(1).size(), 2);
}
