// The writer's donor order and its records at the size of a federation:
// the key worked out in memory against SQLite's own expression, the
// records put straight into the output against the field-by-field ones,
// and a declaration of thousands of rows stored in any order and written
// the same whichever way its rows are ordered.
#include "GeneratorTest.h"

#include "generator/AeatText.h"
#include "generator/DeclarationRows.h"
#include "generator/DonorOrder.h"
#include "generator/Modelo182Records.h"

#include <QDir>
#include <QSqlQuery>

#include <map>
#include <optional>
#include <stdexcept>

using Aeat::DonorKeyText;
using Aeat::DonorSortKey;

namespace {

// The key SQLite gives a stored identifier (the expression the writer uses
// when it cannot work the key out itself).
QByteArray SqliteKey(Connection &connection, const QByteArray &stored)
{
    QSqlQuery query(connection.Database());
    EXPECT_TRUE(query.prepare("SELECT substr('000000000' || upper(trim(replace(?, '-', ''), "
                              "' ' || char(9, 10, 11, 12, 13))), -9)"));
    query.addBindValue(QString::fromUtf8(stored));
    EXPECT_TRUE(query.exec());
    EXPECT_TRUE(query.next());
    return query.value(0).toString().toUtf8();
}

// A valid DNI: eight digits and the letter of their remainder by 23.
QByteArray Dni(int number)
{
    static const char kLetters[] = "TRWAGMYFPDXBNJZSQVHLCKE";
    return QByteArray::number(number).rightJustified(8, '0') + kLetters[number % 23];
}

} // namespace

TEST_F(GeneratorTest, DonorKeysAreTheIdentifierAsTheFileWritesItAsSqliteComputesIt)
{
    struct Case
    {
        QByteArray stored;
        QByteArray key; // empty: left to SQL
    };
    const QList<Case> cases = {
        {"12345678Z", "12345678Z"},
        {"12345678-z", "12345678Z"},
        {" \t12345678Z\r\n", "12345678Z"},
        {"x-1234567-l", "X1234567L"},
        {"1234567L", "01234567L"},
        {"A58818501", "A58818501"},
        {"", "000000000"},
        {" - ", "000000000"},
        {"1234567890123Z", "67890123Z"},
        {"12 345678Z", "2 345678Z"}, // blanks inside stay (and the row is refused)
        {"12345678Z\xC2\xA0", ""},   // a no-break space: SQL's trim keeps it
        {"1234567\xC3\x91", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.stored.toStdString());
        const std::optional<Aeat::DonorKey> key = DonorSortKey(c.stored);
        if (c.key.isEmpty()) {
            EXPECT_FALSE(key.has_value());
            continue;
        }
        ASSERT_TRUE(key.has_value());
        EXPECT_EQ(DonorKeyText(*key), c.key);
        EXPECT_EQ(DonorKeyText(*key), SqliteKey(*db, c.stored));
    }
    EXPECT_FALSE(DonorSortKey(QByteArrayView()).has_value()); // NULL
    // Keys order as their texts do.
    EXPECT_LT(*DonorSortKey("09999999Z"), *DonorSortKey("10000000A"));
    EXPECT_LT(*DonorSortKey("12345678Y"), *DonorSortKey("12345678Z"));
    EXPECT_LT(*DonorSortKey("Z2345678A"), *DonorSortKey("ZZ2345678"));
}

TEST(DonorRecordEncoder, PutsTheSameBytesAsTheFieldByFieldRecord)
{
    Aeat::DeclarantHeader header;
    header.ejercicio = 2024;
    header.nif = QStringLiteral("A58818501");
    Aeat::Donation plain;
    plain.nif = QStringLiteral("12345678Z");
    plain.nifRepresentante = QString(9, QLatin1Char(' '));
    plain.nombre = Aeat::AlphanumericField(QStringLiteral("Muñoz Pérez José"), 40);
    plain.provincia = 8;
    plain.deduccion = 8000;
    plain.centimos = 123450;
    Aeat::Donation full = plain;
    full.nifRepresentante = QStringLiteral("00000000T");
    full.nombre = Aeat::AlphanumericField(QStringLiteral("Fundació Çelik i Amics de l'Escola"), 40);
    full.provincia = 99;
    full.clave = u'G';
    full.deduccion = 10000;
    full.enEspecie = true;
    full.comunidad = 17;
    full.deduccionComunidad = 2500;
    full.naturaleza = u'J';
    full.centimos = Aeat::kMaxRecordCents;
    Aeat::Donation zeros = plain;
    zeros.provincia = 0;
    zeros.deduccion = 0;
    zeros.centimos = 1;

    const Aeat::DonorRecordEncoder encoder(header);
    QByteArray out = "previous bytes";
    QByteArray expected = out;
    for (const Aeat::Donation *donation : {&plain, &full, &zeros}) {
        for (char recurrence : {'1', '2'}) {
            encoder.Append(out, *donation, recurrence);
            expected += Aeat::Record::Encode(DonorRecord(header, *donation, recurrence));
        }
    }
    EXPECT_EQ(out, expected);
    EXPECT_EQ(out.mid(14 + 2 * 252 + 35, 40), QByteArray("FUNDACIO \xC7"
                                                         "ELIK I AMICS DE L'ESCOLA")
                                                  .leftJustified(40));

    // A value its field cannot hold is a programming error, as field by field.
    Aeat::Donation tooBig = plain;
    tooBig.provincia = 100;
    EXPECT_THROW(encoder.Append(out, tooBig, '2'), std::logic_error);
    EXPECT_THROW(DonorRecord(header, tooBig, '2'), std::logic_error);
    Aeat::Donation shortName = plain;
    shortName.nombre = QStringLiteral("MUNOZ");
    EXPECT_THROW(encoder.Append(out, shortName, '2'), std::logic_error);
}

TEST_F(GeneratorTest, ThousandsOfDonorsStoredInAnyOrderGiveTheirRecordsInIdentifierOrder)
{
    // 1,500 donors, each an 80 % row, a 40 % row and another 80 % row,
    // stored activity by activity with the identifiers descending and
    // written four ways. With a no-break space around one identifier (which
    // only SQL can order) the file is the same.
    const int donors = 1500;
    for (bool oneOnlySqlOrders : {false, true}) {
        SCOPED_TRACE(oneOnlySqlOrders ? "ordered by SQL" : "ordered in memory");
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, DeclarantValues());
        struct Expected
        {
            QByteArray name;
            qint64 at80 = 0;
            qint64 at40 = 0;
        };
        std::map<QByteArray, Expected> expected;
        db->BeginTrans();
        for (int activity = 0; activity < 3; ++activity) {
            for (int d = 0; d < donors; ++d) {
                const QByteArray nif = Dni(99'000'000 - d * 37);
                QString stored = QString::fromLatin1(nif);
                if (d % 4 == 1)
                    stored = stored.left(8).toLower() + QStringLiteral("-") + stored.right(1).toLower();
                else if (d % 4 == 2)
                    stored = QStringLiteral("  ") + stored + QStringLiteral("\t");
                else if (d % 4 == 3 && oneOnlySqlOrders && d == 7)
                    stored = QChar(0xA0) + stored;
                DonorValues row;
                row.nombre = QStringLiteral("Ana");
                row.apellido1 = QStringLiteral("Soler");
                row.apellido2 = QString::number(d);
                row.nif = stored;
                const qint64 cents = 100 * (1 + d % 50) + activity;
                row.importe = QString::number(cents / 100) + QStringLiteral(",")
                              + QString::number(cents % 100).rightJustified(2, QLatin1Char('0'));
                row.deduccion = activity == 1 ? QStringLiteral("04000") : QStringLiteral("08000");
                InsertDonor(*db, row);
                Expected &e = expected[nif];
                e.name = "SOLER " + QByteArray::number(d) + " ANA";
                (activity == 1 ? e.at40 : e.at80) += cents;
            }
        }
        db->CommitTrans();

        const Modelo182Result result = Generate();

        ASSERT_TRUE(result.generado) << result.Resumen(options.locale).toStdString();
        QByteArray file;
        qint64 total = 0;
        for (const auto &[nif, e] : expected) {
            for (const auto &[deduction, cents] : {std::pair{"04000", e.at40}, std::pair{"08000", e.at80}}) {
                ExpectedRecord r;
                r.Number(1, 1, "2").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
                r.Text(18, 9, nif).Text(36, 40, e.name).Number(76, 2, "08").Text(78, 1, "A");
                r.Number(79, 5, deduction).Number(84, 13, QByteArray::number(cents)).Number(98, 2, "09");
                r.Number(100, 5, "02500").Text(105, 1, "F").Number(107, 4, "0").Number(132, 1, "2");
                file += r.Bytes() + "\r\n";
                total += cents;
            }
        }
        ExpectedRecord declarant;
        declarant.Number(1, 1, "1").Number(2, 3, "182").Number(5, 4, "2024").Text(9, 9, "A58818501");
        declarant.Text(18, 40, "COLEGIO SANT JORDI").Text(58, 1, "T").Number(59, 9, "934567890");
        declarant.Text(68, 40, "PUIG FERRER NURIA").Number(108, 13, "1821234567890").Number(123, 13, "0");
        declarant.Number(136, 9, QByteArray::number(2 * donors)).Number(145, 15, QByteArray::number(total));
        declarant.Number(160, 1, "1");
        file.prepend(declarant.Bytes() + "\r\n");
        const QByteArray written = ReadAll(FilePath());
        ASSERT_EQ(written.size(), file.size());
        const int at = FirstDifference(written, file);
        EXPECT_EQ(at, 0) << "record " << (at - 1) / 252 + 1 << ": [" << written.mid((at - 1) / 252 * 252, 250).toStdString()
                         << "]";
        EXPECT_EQ(result.registrosDonantes, 2 * donors);
        EXPECT_EQ(db->Execute("SELECT COUNT(*) FROM HistorialDonantes WHERE ejercicio = 2024").Fields(0).toLongLong(),
                  donors);
    }
}

TEST_F(GeneratorTest, ARowRefusedAfterAMegabyteOfRecordsLeavesNoFileNoFolderAndNoHistory)
{
    // 4,500 donors of one row sort before the refused one: their records
    // are already in the temporary file when its row is read. Another
    // problem, stored last, comes first in donor order; the refusal still
    // lists the problems as the table holds them.
    InsertDeclarant(*db, DeclarantValues());
    db->BeginTrans();
    DonorValues row;
    row.nombre = QStringLiteral("Ana");
    row.apellido1 = QStringLiteral("Soler");
    row.importe = QStringLiteral("10,00");
    DonorValues late = row;
    late.nif = QString::fromLatin1(Dni(99'999'999));
    late.importe = QStringLiteral("diez");
    InsertDonor(*db, late);
    for (int d = 0; d < 4500; ++d) {
        row.nif = QString::fromLatin1(Dni(20'000'000 + d));
        InsertDonor(*db, row);
    }
    DonorValues early = row;
    early.nif = QString::fromLatin1(Dni(10'000'000));
    early.codigoprovincia = QStringLiteral("77");
    InsertDonor(*db, early);
    db->CommitTrans();
    ASSERT_FALSE(QDir(Path("Informes")).exists());

    const Modelo182Result result = Generate();

    EXPECT_FALSE(result.generado);
    ASSERT_EQ(result.rechazos.size(), 2) << result.rechazos.join('\n').toStdString();
    EXPECT_TRUE(result.rechazos[0].startsWith("El importe «diez» del donante Soler Ana no es un número"))
        << result.rechazos[0].toStdString();
    EXPECT_TRUE(result.rechazos[1].startsWith("El código de provincia «77» del donante Soler Ana no es válido"))
        << result.rechazos[1].toStdString();
    EXPECT_FALSE(QDir(Path("Informes")).exists());
    EXPECT_TRUE(db->Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'").Eof());
}

TEST_F(GeneratorTest, DonorRowsComeInTheOrderSqliteGivesWhereverTheyAreRead)
{
    // 600 rows of 150 donors, stored activity by activity in a scrambled
    // donor order, the identifiers written three ways. Held in memory, read
    // again by rowid (no rows may be held, or the limits of bytes or rows
    // are passed halfway through the scan), or ordered
    // by SQL (an identifier the key in memory does not cover): the rows come
    // as SQLite's own ORDER BY gives them.
    struct Case
    {
        const char *name;
        Aeat::DonorOrder::Limits limits;
        bool onlySqlOrders;
    };
    const QList<Case> cases = {
        {"held", {}, false},
        {"read by rowid", {0, 1u << 20}, false},
        {"too many bytes to hold", {100'000, 2'000}, false},
        {"too many rows to hold", {250, 1u << 20}, false},
        {"ordered by SQL", {}, true},
    };
    const qint64 declarant = InsertDeclarant(*db, DeclarantValues());
    db->BeginTrans();
    for (int activity = 0; activity < 4; ++activity) {
        for (int i = 0; i < 150; ++i) {
            const int d = (i * 61) % 150;
            QString nif = QString::fromLatin1(Dni(30'000'000 + d * 1'000));
            if (d % 3 == 1)
                nif = nif.toLower();
            else if (d % 3 == 2)
                nif = QStringLiteral(" ") + nif.left(8) + QStringLiteral("-") + nif.right(1);
            DonorValues row;
            row.nombre = QStringLiteral("Donante ") + QString::number(d);
            row.nif = nif;
            row.importe = QString::number(activity * 1000 + i) + QStringLiteral(",00");
            InsertDonor(*db, row);
        }
    }
    db->CommitTrans();
    const QString sqliteOrder = QStringLiteral(
        "SELECT nif, importe FROM Donantes ORDER BY substr('000000000' || upper(trim(replace(nif, '-', ''), "
        "' ' || char(9, 10, 11, 12, 13))), -9), rowid");

    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QSqlQuery query(db->Database());
        if (c.onlySqlOrders) {
            ASSERT_TRUE(query.exec("UPDATE Donantes SET nif = nif || char(160) WHERE rowid = 77"));
        }
        ASSERT_TRUE(query.exec(sqliteOrder));
        QStringList expected;
        while (query.next())
            expected << query.value(0).toString() + QStringLiteral(" ") + query.value(1).toString();
        ASSERT_EQ(expected.size(), 600);

        Aeat::DonorRowStream rows(*db, declarant, Aeat::DonorRowStream::Order::ByDonor, c.limits);
        QStringList actual;
        Aeat::DonorRow row;
        while (rows.Next(row)) {
            const QString nif = QString::fromUtf8(row.nif);
            actual << nif + QStringLiteral(" ") + QString::fromUtf8(row.importe);
            // Each row's texts stay together.
            EXPECT_EQ(QString::fromUtf8(row.nombre).mid(8).toInt() % 3 == 1, nif.trimmed().back().isLower())
                << nif.toStdString();
        }
        EXPECT_EQ(actual, expected);
    }
}
