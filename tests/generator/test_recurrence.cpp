// Position 132: recurrent donors, from the totals kept per tax year.
#include "GeneratorTest.h"

#include "generator/DonorHistory.h"

namespace {

struct Gift
{
    const char *nif;
    const char *importe;
    const char *deduccion = "08000";
};

} // namespace

TEST(RecurrenceMark, OneOnlyAfterTwoYearsOfGiftsThatNeverDecrease)
{
    struct Case
    {
        std::optional<qint64> yearBefore;
        std::optional<qint64> lastYear;
        qint64 current;
        char mark;
    };
    const QList<Case> cases = {
        {100, 100, 100, '1'},
        {100, 150, 200, '1'},
        {100, 150, 150, '1'},
        {100, 150, 140, '2'},          // this year below last year
        {200, 150, 300, '2'},          // last year below the year before
        {std::nullopt, 100, 100, '2'}, // no gift two years ago
        {100, std::nullopt, 100, '2'}, // no gift last year
        {std::nullopt, std::nullopt, 5, '2'},
        {0, 0, 0, '2'},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(Aeat::RecurrenceMark(c.yearBefore, c.lastYear, c.current), c.mark)
            << c.yearBefore.value_or(-1) << " " << c.lastYear.value_or(-1) << " " << c.current;
    }
}

TEST_F(GeneratorTest, MarksRecurrentDonorsFromTheTotalsOfTheTwoPreviousYears)
{
    auto declare = [&](const char *year, const QList<Gift> &gifts) {
        db->Execute("DELETE FROM Declarantes");
        DeclarantValues declarant;
        declarant.ejercicio = year;
        InsertDeclarant(*db, declarant);
        for (const Gift &gift : gifts) {
            DonorValues d;
            d.nombre = QStringLiteral("Donant");
            d.nif = gift.nif;
            d.importe = gift.importe;
            d.deduccion = gift.deduccion;
            InsertDonor(*db, d);
        }
        const Modelo182Result result = Generate();
        EXPECT_TRUE(result.generado) << result.Resumen(options.locale).toStdString();
        return Records(result.fichero);
    };
    // 11111111H gives more each year; 12345678Z gave less this year than
    // last; 22222222J skipped 2022; 33333333P gives twice at two percentages.
    declare("2022", {{"11111111H", "100,00"}, {"12345678Z", "100,00"}, {"33333333P", "50,00"}});
    declare("2023", {{"11111111H", "100,00"}, {"12345678Z", "300,00"}, {"22222222J", "10,00"}, {"33333333P", "60,00"}});
    // A first run of 2024 whose figures are then corrected: the history of
    // 2024 is replaced, never added to.
    declare("2024", {{"11111111H", "1,00"}});
    const QList<QByteArray> records = declare("2024", {{"11111111H", "100,00"},
                                                       {"11111111H", "50,00"},
                                                       {"12345678Z", "200,00"},
                                                       {"22222222J", "20,00"},
                                                       {"33333333P", "30,00", "08000"},
                                                       {"33333333P", "40,00", "04000"},
                                                       {"44444444A", "5,00"}});

    ASSERT_EQ(records.size(), 7);
    QStringList marks;
    for (int i = 1; i < records.size(); ++i)
        marks << QString::fromLatin1(records[i].mid(17, 9) + " " + records[i].mid(78, 5) + " " + records[i].mid(131, 1));
    EXPECT_EQ(marks, QStringList({"11111111H 08000 1", "12345678Z 08000 2", "22222222J 08000 2", "33333333P 04000 1",
                                  "33333333P 08000 1", "44444444A 08000 2"}));
    QStringList history;
    for (Recordset rs = db->Execute("SELECT ejercicio, nif, importe FROM HistorialDonantes WHERE ejercicio = 2024 "
                                    "ORDER BY nif");
         !rs.Eof(); rs.MoveNext())
        history << rs.Fields(0).toString() + " " + rs.Fields(1).toString() + " " + rs.Fields(2).toString();
    EXPECT_EQ(history, QStringList({"2024 11111111H 15000", "2024 12345678Z 20000", "2024 22222222J 2000",
                                    "2024 33333333P 7000", "2024 44444444A 500"}));
}
