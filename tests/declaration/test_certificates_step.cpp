#include "DeclarationFixture.h"

#include "data/MailMergeDatabase.h"
#include "generator/cModelo182.h"
#include "merge/TemplateInstaller.h"
#include "wizard/CertificateFormat.h"
#include "wizard/DonorDeclarationWriter.h"

#include <QFile>

TEST(CertificateFormat, EngineTypeAndTemplateFollowTheOfficeVersion)
{
    struct Case
    {
        QString version;
        int engine;
        QString plantilla;
    };
    const QList<Case> cases = {
        {"Versión 97", 4, "Certificado de Donaciones97.doc"},   {"Versión 2000", 5, "Certificado de Donaciones2000.doc"},
        {"Versión XP", 5, "Certificado de Donaciones2000.doc"}, {"", 4, "Certificado de Donaciones97.doc"},
        {"Versión 2003", 4, "Certificado de Donaciones97.doc"}, {"versión xp", 4, "Certificado de Donaciones97.doc"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.version.toStdString());
        const CertificateFormat format = CertificateFormatFor(c.version);
        EXPECT_EQ(format.engineType, c.engine);
        EXPECT_EQ(format.plantilla, c.plantilla);
    }
}

TEST(DeclarationCodes, PercentagesAreHundredthsInFiveDigits)
{
    const QList<QPair<double, QString>> cases = {{25, "02500"}, {12.5, "01250"}, {0, "00000"},
                                                 {80, "08000"}, {37.5, "03750"}, {100, "10000"}};
    for (const auto &c : cases)
        EXPECT_EQ(EncodePercentage(c.first), c.second) << c.first;
}

TEST(DeclarationCodes, APayerNameWithADashMatchesAnEmptyPart)
{
    cAlumno payer;
    payer.AP1_MFP = "García";
    payer.Nom_MFP = "Juan";
    EXPECT_TRUE(PayerNameMatches(payer, "García -, Juan"));
    EXPECT_TRUE(PayerNameMatches(payer, "García , Juan"));
    EXPECT_FALSE(PayerNameMatches(payer, "García Pérez, Juan"));
    payer.AP2_MFP = "de la Fuente";
    EXPECT_TRUE(PayerNameMatches(payer, "García de la Fuente, Juan"));
    EXPECT_TRUE(PayerNameMatches(payer, "García delaFuente,Juan"));
    EXPECT_FALSE(PayerNameMatches(payer, "GARCÍA DE LA FUENTE, JUAN"));
}

TEST(MailMergeDatabaseTest, AnExistingFileIsReplacedByAnEmptyDatabase)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("CartaDonantes.mdb");
    {
        auto old = Connection::CreateSQLite(path);
        old->Execute("CREATE TABLE CartaDonantes (Apellido1 TEXT)");
        old->Execute("INSERT INTO CartaDonantes VALUES ('Viejo')");
        old->Close();
    }
    Connection declaration("Provider=Microsoft.Jet.OLEDB.4.0;Jet OLEDB:Engine Type=4;Data Source=x.mdb");
    const QString text = MailMergeDatabase::Create(path, 5, declaration);
    EXPECT_EQ(text, "Provider=Microsoft.Jet.OLEDB.4.0;Jet OLEDB:Engine Type=5;Data Source=" + path);
    EXPECT_TRUE(declaration.ConnectionString().contains("Jet OLEDB:Engine Type=5;"));
    Connection created(text);
    created.Open();
    Recordset tables = created.Execute("SELECT name FROM sqlite_master");
    EXPECT_TRUE(tables.Eof());
}

class CertificatesStep : public DeclarationFixture
{
};

TEST_F(CertificatesStep, WithoutTheMailMergeDatabaseItAsksForTheDeclarationFirst)
{
    frmActividadAlumno &form = WalkToDonors();
    QFile::remove(CartaDonantesFile());
    form.cmdCarta.Press();
    ExpectOnlyMessage("Debe generar correctamente el modelo 182", vbInformation);
    EXPECT_TRUE(ui.Opened().isEmpty());
    EXPECT_EQ(ui.Pointers().value(0), vbHourglass);
    EXPECT_EQ(ui.Pointers().last(), vbDefault);
}

TEST_F(CertificatesStep, TheLettersAreMergedAndOpened)
{
    frmActividadAlumno &form = WalkToDonors();
    CertificateTemplates::Install(paths.informes);
    form.cmdAceptar.Press();
    ui.ClearLog();
    form.cmdCarta.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    const QString merged = paths.informes + "/Certificados de Donaciones.docx";
    EXPECT_EQ(ui.Opened(), QStringList{merged});
    EXPECT_TRUE(QFileInfo::exists(merged));
    EXPECT_EQ(ui.Pointers(), (QList<int>{vbHourglass, vbDefault}));
}

TEST_F(CertificatesStep, AFailingMergeIsPassedOverSilently)
{
    // No template in the reports folder: nothing to merge, nothing said.
    frmActividadAlumno &form = WalkToDonors();
    form.cmdAceptar.Press();
    ui.ClearLog();
    form.cmdCarta.Press();
    EXPECT_TRUE(ui.Messages().isEmpty());
    EXPECT_TRUE(ui.Opened().isEmpty());
    EXPECT_EQ(ui.Pointers().last(), vbDefault);
}

TEST_F(CertificatesStep, TheAeatFileIsWhatTheGeneratorWritesFromTheTables)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "11111111H", "Madrid", 401, "Martín");
    description.session.numeroJustificante = "1820000000001";
    frmActividadAlumno &form = WalkToDonors();
    form.cmdAceptar.Press();
    const QString written = paths.informes + "/Modelo182_2025.txt";
    ASSERT_TRUE(QFileInfo::exists(written)) << ui.MessageTexts().join('\n').toStdString();

    QTemporaryDir other;
    Modelo182Options options;
    options.locale = QLocale(QLocale::Spanish, QLocale::Spain);
    options.numeroJustificante = "1820000000001";
    options.outputFile = other.filePath("again.txt");
    Connection declaration("Provider=SQLite;Data Source=" + paths.modelo182File);
    declaration.Open();
    bool generado = false;
    NoProgress progress;
    cModelo182(options).GenerarModelo182(declaration, generado, false, paths.rutaAplicacion, "", "", 0, {}, true, {}, false,
                                         false, {}, 0, {}, "", progress);
    ASSERT_TRUE(generado);
    QFile a(written), b(options.outputFile);
    ASSERT_TRUE(a.open(QIODevice::ReadOnly));
    ASSERT_TRUE(b.open(QIODevice::ReadOnly));
    const QByteArray bytes = a.readAll();
    EXPECT_EQ(bytes, b.readAll());
    // One declarant and two donors of 950.00 each at record length 250 + CRLF.
    ASSERT_EQ(bytes.size(), 3 * 252);
    EXPECT_EQ(bytes.mid(0, 8), "11822025");
    EXPECT_EQ(bytes.mid(135, 9), "000000002");
    EXPECT_EQ(bytes.mid(144, 15), "000000000190000");
}
