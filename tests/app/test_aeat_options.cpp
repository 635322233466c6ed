// What each option of "modelo182 aeat" changes in the file: the declaration
// id, the complementary or substitutive mark and the previous id of the
// type-1 record, and where the file goes.
#include "AeatTest.h"

namespace {

struct IdCase
{
    const char *name;
    QStringList words;
    QByteArray ids; // positions 108-135
};

} // namespace

TEST_F(AeatTest, EachOptionSetsTheDeclarationIdsOfTheTypeOneRecord)
{
    FillSmallDeclaration();
    const QByteArray zeros(13, '0');
    const QList<IdCase> cases{
        {"the settings' id", {}, kSettingsId + "  " + zeros},
        {"--justificante", {"--justificante", "1821111111111"}, "1821111111111  " + zeros},
        {"--complementaria",
         {"--justificante", "1821111111111", "--complementaria", "1829999999999"},
         "1821111111111C 1829999999999"},
        {"--sustitutiva", {"--sustitutiva", "1829999999999"}, kSettingsId + " S1829999999999"},
        {"--sustitutiva first",
         {"--sustitutiva", "1828888888888", "--justificante", "1827777777777"},
         "1827777777777 S1828888888888"},
    };
    for (const IdCase &c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(Run(c.words), AeatCommand::kWritten) << errors.toStdString();
        EXPECT_EQ(errors, QString());
        const QList<QByteArray> records = Records(ReportsFile());
        ASSERT_EQ(records.size(), 3);
        EXPECT_RECORD(records[0], ExpectedDeclarant(c.ids));
    }
}

TEST_F(AeatTest, SummaryNamesTheDeclarantTheYearTheRecordsTheTotalAndTheFile)
{
    FillSmallDeclaration();

    ASSERT_EQ(Run({}), AeatCommand::kWritten);

    EXPECT_EQ(output, "Modelo 182 del ejercicio 2024\n"
                      "Declarante: COLEGIO SANT JORDI (NIF A58818501)\n"
                      "Registros de donantes: 2\n"
                      "Importe total: 1.220,00 €\n"
                      "Fichero: "
                          + ReportsFile() + "\n");
    const QList<QByteArray> records = Records(ReportsFile());
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[1].mid(17, 9), "11111111H");
    EXPECT_EQ(records[1].mid(83, 13), "0000000002000");
    EXPECT_EQ(records[2].mid(17, 9), "12345678Z");
    EXPECT_EQ(records[2].mid(83, 13), "0000000120000");
}

TEST_F(AeatTest, WithoutAnyIdTheFileCarriesTheBlankIdAndTheSummaryWarns)
{
    FillSmallDeclaration();
    WriteSettings("Locale=es_ES\n");

    ASSERT_EQ(Run({}), AeatCommand::kWritten);

    EXPECT_EQ(Records(ReportsFile()).value(0).mid(107, 28), "1820000000000  0000000000000");
    EXPECT_TRUE(output.contains("\nAviso: Falta el número de justificante: el fichero lleva 1820000000000."))
        << output.toStdString();
}

TEST_F(AeatTest, DevelopmentInstallationsWriteIntoTheDevelopmentReportsFolder)
{
    FillSmallDeclaration();
    WriteSettings("Locale=es_ES\ndesarrollo=true\n");

    ASSERT_EQ(Run({}), AeatCommand::kWritten);

    const QString file = Path("app/QXInformes/Informes .rpt/Modelo182_2024.txt");
    EXPECT_TRUE(output.contains("Fichero: " + file + "\n")) << output.toStdString();
    EXPECT_EQ(Records(file).size(), 3);
    EXPECT_FALSE(QFile::exists(ReportsFile()));
}

TEST_F(AeatTest, OutNamesTheFileAndDbWritesBesideTheDatabase)
{
    FillSmallDeclaration();

    ASSERT_EQ(Run({"--out", Path("salida/fichero.182")}), AeatCommand::kWritten) << errors.toStdString();
    EXPECT_EQ(Records(Path("salida/fichero.182")).size(), 3);
    EXPECT_FALSE(QFile::exists(ReportsFile()));

    ASSERT_EQ(Run({"--db", Path("datos/Modelo182.mdb"), "--justificante", "1823333333333"}), AeatCommand::kWritten)
        << errors.toStdString();
    EXPECT_TRUE(output.contains("Fichero: " + Path("datos/Modelo182_2024.txt") + "\n")) << output.toStdString();
    EXPECT_EQ(Records(Path("datos/Modelo182_2024.txt")).value(0).mid(107, 28), "1823333333333  0000000000000");
}

TEST_F(AeatTest, ADatabaseServerInstallationLooksForTheDatabaseBesideTheProgram)
{
    QFile file(Ini());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[Sesion]\nrutaaplicacion=app\nRutaBD=datos\nsqlserver=true\n[Modelo182]\nLocale=es_ES\n");
    file.close();

    EXPECT_EQ(Run({}), AeatCommand::kCommandRefused);

    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    const QString database = QFileInfo(program).absolutePath() + "/Informes/Modelo182.mdb";
    EXPECT_EQ(errors, "No existe la base de datos de la declaración «" + database
                          + "»: genere antes la declaración desde el asistente, o indique la base de datos con --db.\n");
}
