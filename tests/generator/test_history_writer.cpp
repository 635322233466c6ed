// The year's donor totals are rewritten only where they differ from what
// is stored: the same declaration written again changes no row.
#include "GeneratorTest.h"

#include "data/DatabaseError.h"
#include "generator/DonorHistory.h"
#include "generator/DonorOrder.h"

#include <algorithm>

namespace {

struct HistoryRow
{
    QByteArray nif; // as stored; a null one is NULL
    int ejercicio;
    qint64 importe;
};

struct Total
{
    QByteArray nif;
    qint64 cents;
};

QString Describe(const HistoryRow &row)
{
    return (row.nif.isNull() ? QStringLiteral("NULL") : QString::fromUtf8(row.nif)) + QLatin1Char(' ')
           + QString::number(row.ejercicio) + QLatin1Char(' ') + QString::number(row.importe);
}

// The table's rows, described and sorted, whatever order SQLite gives.
QStringList HistoryRows(Connection &connection)
{
    QStringList rows;
    for (Recordset rs = connection.Execute("SELECT nif, ejercicio, importe FROM HistorialDonantes"); !rs.Eof();
         rs.MoveNext()) {
        const QVariant nif = rs.Fields(0);
        rows << Describe(
            {nif.isNull() ? QByteArray() : nif.toString().toUtf8(), rs.Fields(1).toInt(), rs.Fields(2).toLongLong()});
    }
    rows.sort();
    return rows;
}

QStringList Described(const QList<HistoryRow> &rows)
{
    QStringList described;
    for (const HistoryRow &row : rows)
        described << Describe(row);
    described.sort();
    return described;
}

void Store(Connection &connection, const QList<HistoryRow> &rows)
{
    Aeat::EnsureDonorHistoryTable(connection);
    for (const HistoryRow &row : rows) {
        const QString nif = row.nif.isNull() ? QStringLiteral("NULL")
                                             : QLatin1Char('\'') + QString::fromUtf8(row.nif) + QLatin1Char('\'');
        connection.Execute("INSERT INTO HistorialDonantes (nif, ejercicio, importe) VALUES (" + nif + ", "
                           + QString::number(row.ejercicio) + ", " + QString::number(row.importe) + ")");
    }
}

// Rows inserted, updated and deleted on the connection so far.
qint64 RowsChanged(Connection &connection)
{
    return connection.Execute("SELECT total_changes()").Fields(0).toLongLong();
}

QByteArray Dni(int number)
{
    static const char kLetters[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    return QByteArray::number(number).rightJustified(8, '0') + kLetters[number % 23];
}

// One row per donor from `from` to `to` (excluded).
template <typename Row, typename Make> QList<Row> Donors(int from, int to, Make make)
{
    QList<Row> rows;
    for (int d = from; d < to; ++d)
        rows << make(d);
    return rows;
}

} // namespace

TEST_F(GeneratorTest, TheYearsHistoryChangesOnlyWhereTheTotalsDiffer)
{
    struct Case
    {
        const char *name;
        QList<HistoryRow> stored;
        QList<Total> totals; // as the writer gives them
        QList<HistoryRow> expected;
        qint64 rowsChanged;
    };
    const auto year = [](int from, int to, qint64 (*cents)(int)) {
        return Donors<HistoryRow>(from, to, [&](int d) { return HistoryRow{Dni(d), 2024, cents(d)}; });
    };
    const auto totals = [](int from, int to, qint64 (*cents)(int)) {
        return Donors<Total>(from, to, [&](int d) { return Total{Dni(d), cents(d)}; });
    };
    qint64 (*own)(int) = [](int d) { return qint64(d); };
    qint64 (*everyFiftiethChanged)(int) = [](int d) { return qint64(d % 50 == 0 ? d + 1 : d); };
    const QList<Case> cases = {
        {"first writing",
         {},
         {{"11111111H", 100}, {"22222222J", 200}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}},
         2},
        {"the same totals again",
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}},
         {{"11111111H", 100}, {"22222222J", 200}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}},
         0},
        {"one amount changed",
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}, {"33333333P", 2024, 300}},
         {{"11111111H", 100}, {"22222222J", 250}, {"33333333P", 300}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 250}, {"33333333P", 2024, 300}},
         1},
        {"one donor gone",
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}, {"33333333P", 2024, 300}},
         {{"11111111H", 100}, {"33333333P", 300}},
         {{"11111111H", 2024, 100}, {"33333333P", 2024, 300}},
         1},
        {"one donor new",
         {{"11111111H", 2024, 100}, {"33333333P", 2024, 300}},
         {{"11111111H", 100}, {"22222222J", 200}, {"33333333P", 300}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}, {"33333333P", 2024, 300}},
         1},
        {"an identifier stored twice",
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}, {"11111111H", 2024, 100}},
         {{"11111111H", 100}, {"22222222J", 200}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}},
         1},
        {"the rows of other years left alone",
         {{"11111111H", 2023, 50}, {"11111111H", 2024, 100}, {"22222222J", 2025, 7}},
         {{"11111111H", 100}, {"33333333P", 5}},
         {{"11111111H", 2023, 50}, {"11111111H", 2024, 100}, {"33333333P", 2024, 5}, {"22222222J", 2025, 7}},
         1},
        {"identifiers not as the file writes them",
         {{"1234567Z", 2024, 100},
          {"12345678\xc3\x91", 2024, 100},
          {"12345678z", 2024, 100},
          {QByteArray(), 2024, 1},
          {"11111111H", 2024, 100}},
         {{"11111111H", 100}, {"12345678Z", 100}},
         {{"11111111H", 2024, 100}, {"12345678Z", 2024, 100}},
         5},
        {"totals out of order",
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 200}, {"33333333P", 2024, 300}},
         {{"33333333P", 300}, {"11111111H", 100}, {"22222222J", 250}},
         {{"11111111H", 2024, 100}, {"22222222J", 2024, 250}, {"33333333P", 2024, 300}},
         1},
        // 100 gone, 300 new (more than one batch of inserts), 6 changed.
        {"hundreds of donors", year(0, 400, own), totals(100, 700, everyFiftiethChanged),
         year(100, 700, everyFiftiethChanged), 100 + 300 + 6},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        db->Execute("DROP TABLE IF EXISTS HistorialDonantes");
        Store(*db, c.stored);
        const qint64 before = RowsChanged(*db);

        Aeat::DonorHistoryWriter writer(*db, 2024);
        for (const Total &total : c.totals)
            writer.Add(Aeat::PackDonorKey(total.nif), total.cents);
        writer.Finish();

        EXPECT_EQ(RowsChanged(*db) - before, c.rowsChanged);
        EXPECT_EQ(HistoryRows(*db), Described(c.expected));
    }
}

TEST_F(GeneratorTest, WritingTheSameDeclarationAgainLeavesTheDatabaseFileAsItWas)
{
    InsertDeclarant(*db, DeclarantValues());
    for (const char *nif : {"33333333P", "11111111H", "22222222J"}) {
        DonorValues donor;
        donor.nombre = QStringLiteral("Donant");
        donor.nif = nif;
        donor.importe = QStringLiteral("10,00");
        InsertDonor(*db, donor);
    }
    ASSERT_TRUE(Generate().generado);
    const QByteArray database = ReadAll(Path("Modelo182.mdb"));
    const qint64 before = RowsChanged(*db);

    ASSERT_TRUE(Generate().generado);

    EXPECT_EQ(RowsChanged(*db), before);
    EXPECT_TRUE(ReadAll(Path("Modelo182.mdb")) == database);
    EXPECT_EQ(HistoryRows(*db), QStringList({"11111111H 2024 1000", "22222222J 2024 1000", "33333333P 2024 1000"}));
}

TEST_F(GeneratorTest, ARefusedWritingLeavesTheStoredHistoryAsItWas)
{
    InsertDeclarant(*db, DeclarantValues());
    DonorValues donor;
    donor.nombre = QStringLiteral("Donant");
    donor.nif = QStringLiteral("11111111H");
    donor.importe = QStringLiteral("10,00");
    InsertDonor(*db, donor);
    donor.nif = QStringLiteral("22222222J");
    InsertDonor(*db, donor);
    ASSERT_TRUE(Generate().generado);
    // One amount changed, one donor gone, one new, and a row the file
    // cannot take.
    db->Execute("UPDATE Donantes SET importe = '15,00' WHERE nif = '11111111H'");
    db->Execute("DELETE FROM Donantes WHERE nif = '22222222J'");
    donor.nif = QStringLiteral("33333333P");
    InsertDonor(*db, donor);
    donor.nif = QStringLiteral("44444444A");
    donor.importe = QStringLiteral("diez");
    InsertDonor(*db, donor);

    const Modelo182Result result = Generate();

    EXPECT_FALSE(result.generado);
    EXPECT_FALSE(db->InTransaction());
    EXPECT_EQ(HistoryRows(*db), QStringList({"11111111H 2024 1000", "22222222J 2024 1000"}));
}
