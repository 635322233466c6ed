// The real program run as a user runs it: "modelo182 aeat" on an
// installation, then a refusal.
#include "AeatTest.h"

#include <QProcess>

namespace {

QString Program()
{
    const QString self = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
    return QFileInfo(self).absolutePath() + QStringLiteral("/modelo182");
}

struct Finished
{
    int code = -1;
    QString out;
    QString err;
};

Finished RunProgram(const QStringList &arguments)
{
    QProcess process;
    process.start(Program(), arguments);
    Finished finished;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return finished;
    finished.code = process.exitCode();
    finished.out = QString::fromUtf8(process.readAllStandardOutput());
    finished.err = QString::fromUtf8(process.readAllStandardError());
    return finished;
}

} // namespace

TEST_F(AeatTest, TheProgramWritesTheFileAndRefusesWithExitCodes)
{
    if (!QFileInfo(Program()).isExecutable())
        GTEST_SKIP() << "the program is built only with the windows (M182_BUILD_GUI)";
    FillSmallDeclaration();
    db->Close();

    const Finished written = RunProgram({"aeat", "--session", Ini(), "--justificante", "1825555555555"});
    EXPECT_EQ(written.code, 0) << written.err.toStdString();
    EXPECT_TRUE(written.out.startsWith("Modelo 182 del ejercicio 2024\n")) << written.out.toStdString();
    EXPECT_TRUE(written.out.contains("\nFichero: " + ReportsFile() + "\n")) << written.out.toStdString();
    const QList<QByteArray> records = Records(ReportsFile());
    ASSERT_EQ(records.size(), 3);
    EXPECT_RECORD(records[0], ExpectedDeclarant("1825555555555  0000000000000"));

    const QByteArray before = ReadAll(ReportsFile());
    const Finished refused = RunProgram(
        {"aeat", "--session", Ini(), "--sustitutiva", "1825555555555", "--complementaria", "1826666666666"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(refused.out, QString());
    EXPECT_TRUE(refused.err.startsWith("Indique --complementaria o --sustitutiva, no las dos")) << refused.err.toStdString();
    EXPECT_EQ(ReadAll(ReportsFile()), before);
}
