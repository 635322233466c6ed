#include "DeclarationFixture.h"

#include "data/DemoSavedWork.h"

#include <QDir>
#include <QProcess>

namespace {

struct Outcome
{
    int exitCode = -1;
    QString out;
    QString err;
};

Outcome RunProgram(const QStringList &arguments)
{
#ifdef M182_PROGRAM
    QProcess process;
    process.start(QStringLiteral(M182_PROGRAM), arguments);
    process.waitForFinished(600000);
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
            QString::fromLocal8Bit(process.readAllStandardError())};
#else
    (void)arguments;
    return {};
#endif
}

} // namespace

class Declarar : public DeclarationFixture
{
protected:
    void SetUp() override
    {
        DeclarationFixture::SetUp();
        if (IsSkipped())
            return;
#ifndef M182_PROGRAM
        GTEST_SKIP() << "the modelo182 program is not built here";
#endif
    }
};

TEST_F(Declarar, TheDemoInstallationDeclaresAsItStands)
{
    const QString demo = dir.filePath("demo");
    const Outcome created = RunProgram({"demo", demo});
    ASSERT_EQ(created.exitCode, 0) << created.err.toStdString();
    const QString informes = demo + "/app/Informes/";
    EXPECT_TRUE(QFileInfo::exists(informes + "Certificado de Donaciones97.doc"));

    const Outcome run = RunProgram({"declarar", "--session", demo + "/modelo182.ini"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString() << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("Declarante: COLEGIO SANTA TERESA DE LAS ACACIAS")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("Donantes con certificado: "));
    EXPECT_TRUE(run.out.contains("Registros de donantes: "));
    EXPECT_TRUE(run.out.contains("Importe total: "));
    EXPECT_TRUE(run.out.contains("Generación: ")); // progress on the terminal
    const QString ejercicio = QString::number(QDate::currentDate().year() - 1);
    for (const QString &file :
         {"Modelo182_" + ejercicio + ".txt", QString("CartaDonantes.mdb"), QString("Certificados de Donaciones.docx")}) {
        EXPECT_TRUE(run.out.contains(file)) << file.toStdString();
        EXPECT_TRUE(QFileInfo::exists(informes + file)) << file.toStdString();
    }
    // Donors left out by the saved work do not reach the declaration.
    const auto wrong = Rows(demo + "/datos/Modelo182.mdb", "SELECT COUNT(*) FROM Donantes WHERE nif=''");
    EXPECT_EQ(wrong.value(0).value(0), "0");
}

TEST_F(Declarar, AnInvalidIdentifierIsRefusedAndNothingChanges)
{
    AddPayer(301, "Ortiz", "Vega", "Pedro", "12345678A", "Madrid", 401, "Martín");
    AddPayer(302, "Soto", "Gil", "Marta", "87654321B", "Madrid", 402, "Zamora");
    description.savedWork = DemoSavedWork(description);
    for (SavedDonor &donor : description.savedWork.donors)
        donor.mostrar = true;
    paths = BuildInstallation(dir.path(), description);
    const auto before = Snapshot();

    const Outcome run = RunProgram({"declarar", "--session", paths.iniFile});
    EXPECT_NE(run.exitCode, 0);
    const QStringList lines = run.err.split('\n', Qt::SkipEmptyParts);
    const qsizetype first = lines.indexOf(
        "El CIF-NIF del miembro de familia Ortiz Vega, Pedro, del alumno Martín Ruiz, Eva no es válido");
    ASSERT_GE(first, 0) << run.err.toStdString();
    ASSERT_EQ(lines.size(), first + 2) << run.err.toStdString();
    EXPECT_EQ(lines[first + 1], "  alumno: Zamora Ruiz, Eva; miembro de familia: Soto Gil, Marta; CIF-NIF: 87654321B");
    EXPECT_EQ(Snapshot(), before);
    EXPECT_FALSE(QFileInfo::exists(CartaDonantesFile()));
}

TEST_F(Declarar, AMissingSessionFileSaysHowToCreateTheDemo)
{
    const Outcome run = RunProgram({"declarar", "--session", dir.filePath("no.ini")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith("No existe el fichero de sesión")) << run.err.toStdString();
}
