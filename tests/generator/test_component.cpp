// The component as the donor window calls it: 17 arguments, the flag, the
// progress, the reports folder below the application folder.
#include "GeneratorTest.h"

#include "generator/cModelo182.h"

#include <QDir>

namespace {

class RecordedProgress : public ProgressSink
{
public:
    void SetMax(int max) override { calls << "max " + QString::number(max); }
    void SetValue(int value) override { values << value; }
    QStringList calls;
    QList<int> values;
};

DonorValues Donor(const char *nif, const char *importe)
{
    DonorValues d;
    d.nombre = QStringLiteral("Marta");
    d.apellido1 = QStringLiteral("Soler");
    d.nif = QString::fromUtf8(nif);
    d.importe = QString::fromUtf8(importe);
    return d;
}

} // namespace

TEST_F(GeneratorTest, ComponentWritesIntoTheApplicationsReportsFolderAndSetsTheFlag)
{
    InsertDeclarant(*db, DeclarantValues());
    db->BeginTrans();
    for (int i = 0; i < 3000; ++i)
        InsertDonor(*db, Donor(i % 2 ? "12345678Z" : "11111111H", "1,00"));
    db->CommitTrans();
    options.reportsFolder.clear();
    cModelo182 generator(options);
    bool generado = false;
    RecordedProgress progress;

    const Modelo182Result result = generator.GenerarModelo182(*db, generado, false, Path("app"), QStringLiteral("a"),
                                                              QStringLiteral("b"), 0, QVariant(), true, QVariant(), false,
                                                              false, QVariant(), 0, QVariant(), QString(), progress);

    EXPECT_TRUE(generado);
    EXPECT_EQ(result.fichero, QDir(Path("app/Informes")).filePath("Modelo182_2024.txt"));
    EXPECT_EQ(progress.calls, QStringList{"max 3000"});
    ASSERT_FALSE(progress.values.isEmpty());
    EXPECT_EQ(progress.values.first(), 0);
    EXPECT_EQ(progress.values.last(), 3000);
    EXPECT_TRUE(std::is_sorted(progress.values.begin(), progress.values.end()));
    const QList<QByteArray> records = Records(result.fichero);
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[1].mid(83, 13), "0000000150000");
    EXPECT_EQ(records[2].mid(83, 13), "0000000150000");
    EXPECT_EQ(result.Resumen(QLocale(QLocale::Spanish, QLocale::Spain)), "Modelo 182 del ejercicio 2024\n"
                                                                         "Declarante: COLEGIO SANT JORDI (NIF A58818501)\n"
                                                                         "Registros de donantes: 2\n"
                                                                         "Importe total: 3.000,00 €\n"
                                                                         "Fichero: "
                                                                             + result.fichero);
}

TEST_F(GeneratorTest, ComponentRefusalLeavesTheFlagDown)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("12345678Z", "diez"));
    cModelo182 generator(options);
    bool generado = true;
    RecordedProgress progress;

    const Modelo182Result result = generator.GenerarModelo182(*db, generado, false, Path("app"), QString(), QString(), 0,
                                                              QVariant(), true, QVariant(), false, false, QVariant(), 0,
                                                              QVariant(), QString(), progress);

    EXPECT_FALSE(generado);
    EXPECT_EQ(result.rechazos.size(), 1);
    EXPECT_TRUE(progress.calls.isEmpty());
    EXPECT_FALSE(QFile::exists(FilePath()));
}

TEST_F(GeneratorTest, RunsInsideTheCallersTransactionWithoutClosingIt)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("12345678Z", "10,00"));
    db->BeginTrans();

    EXPECT_TRUE(Generate().generado);

    EXPECT_TRUE(db->InTransaction());
    db->RollbackTrans();
    EXPECT_TRUE(db->Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'").Eof());
}
