// What stops the file: every problem listed at once, nothing written, the
// previous file left as it was.
#include "GeneratorTest.h"

#include "data/DatabaseError.h"
#include "generator/Modelo182Validation.h"

#include <QDir>

namespace {

DonorValues Donor(const char *nif, const char *importe, const char *surname = "García")
{
    DonorValues d;
    d.nombre = QStringLiteral("Pau");
    d.apellido1 = QString::fromUtf8(surname);
    d.apellido2 = QStringLiteral("Vidal");
    d.nif = QString::fromUtf8(nif);
    d.importe = QString::fromUtf8(importe);
    return d;
}

} // namespace

TEST_F(GeneratorTest, RefusesWithEveryProblemAndLeavesThePreviousFileUntouched)
{
    struct Case
    {
        const char *name;
        DeclarantValues declarant;
        QList<DonorValues> donors;
        QString justificante;
        QStringList problems;
    };
    DeclarantValues noNif;
    noNif.nif = QString();
    DeclarantValues badNif;
    badNif.nif = QStringLiteral("B1234567X");
    const QString retry = QStringLiteral(" y vuelva a generar la declaración.");
    const QList<Case> cases = {
        {"two invalid NIFs and a good one",
         DeclarantValues(),
         {Donor("12345678A", "10,00"), Donor("11111111H", "10,00"), Donor("2222222J", "5,00", "Muñoz")},
         "1821234567890",
         {"El NIF «12345678A» del donante García Vidal Pau no es válido: corríjalo en la columna DNI del asistente" + retry,
          "El NIF «2222222J» del donante Muñoz Vidal Pau no es válido: corríjalo en la columna DNI del asistente" + retry}},
        {"an amount that is not a number and a missing NIF",
         DeclarantValues(),
         {Donor("12345678Z", "12,x5"), Donor("", "3,00")},
         "1821234567890",
         {"El importe «12,x5» del donante García Vidal Pau no es un número: corríjalo en la rejilla de donantes" + retry,
          "Falta el NIF del donante García Vidal Pau: escríbalo en la columna DNI del asistente" + retry}},
        {"a declarant without NIF",
         noNif,
         {Donor("12345678Z", "10,00")},
         "1821234567890",
         {"El declarante no tiene NIF: escriba el CIF del centro en sus datos y vuelva a generar la declaración."}},
        {"an invalid declarant NIF and a negative amount",
         badNif,
         {Donor("12345678Z", "-10,00")},
         "1821234567890",
         {"El NIF «B1234567X» del declarante no es válido: corrija el CIF del centro en sus datos y vuelva a generar "
          "la declaración.",
          "El importe «-10,00» del donante García Vidal Pau es negativo: corríjalo en la rejilla de donantes" + retry}},
        {"a declaration id of the wrong form",
         DeclarantValues(),
         {Donor("12345678Z", "10,00")},
         "1831234567890",
         {"El número de justificante «1831234567890» no es válido: debe tener 13 dígitos y empezar por 182."}},
    };
    const QByteArray previous = "the file of the previous run\r\n";
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        db->Execute("DELETE FROM Declarantes");
        InsertDeclarant(*db, c.declarant);
        for (const DonorValues &d : c.donors)
            InsertDonor(*db, d);
        options.numeroJustificante = c.justificante;
        ASSERT_TRUE(QDir().mkpath(Path("Informes")));
        QFile old(FilePath());
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write(previous);
        old.close();

        const Modelo182Result result = Generate();

        EXPECT_FALSE(result.generado);
        EXPECT_EQ(result.rechazos, c.problems);
        EXPECT_EQ(ReadAll(FilePath()), previous);
        EXPECT_EQ(QDir(Path("Informes")).entryList(QDir::Files), QStringList{"Modelo182_2024.txt"});
        EXPECT_TRUE(db->Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'").Eof());
        EXPECT_TRUE(result.Resumen(options.locale)
                        .startsWith("No se ha generado el fichero del modelo 182.\n" + c.problems.first()));
    }
}

TEST_F(GeneratorTest, ValidationAloneReportsWithoutWritingAnything)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("12345678A", "1,00"));
    InsertDonor(*db, Donor("12345678Z", "abc"));

    const Modelo182Validation validation = ValidarModelo182(*db, options);

    EXPECT_EQ(validation.problemas.size(), 2);
    EXPECT_EQ(validation.filasDonantes, 2);
    EXPECT_FALSE(QFile::exists(FilePath()));
    EXPECT_TRUE(db->Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'").Eof());
}

TEST_F(GeneratorTest, RefusesWhenThereIsNoDeclarant)
{
    const Modelo182Result result = Generate();
    EXPECT_FALSE(result.generado);
    EXPECT_EQ(result.rechazos, QStringList{"No hay ningún declarante en la tabla Declarantes: genere la declaración "
                                           "desde el asistente."});
}

TEST_F(GeneratorTest, ReplacingAFileLeavesNoTemporaryFileBehind)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("12345678Z", "10,00"));
    ASSERT_TRUE(Generate().generado);
    db->Execute("UPDATE Donantes SET importe = '20,00'");

    ASSERT_TRUE(Generate().generado);

    EXPECT_EQ(QDir(Path("Informes")).entryList(QDir::Files | QDir::Hidden), QStringList{"Modelo182_2024.txt"});
    EXPECT_EQ(Records(FilePath()).value(1).mid(83, 13), "0000000002000");
}

TEST_F(GeneratorTest, AFolderThatCannotBeCreatedEndsWithAMessageAndNoHistory)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("12345678Z", "10,00"));
    QFile blocker(Path("blocker"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    options.reportsFolder = Path("blocker/Informes");

    const Modelo182Result result = Generate();

    EXPECT_FALSE(result.generado);
    EXPECT_EQ(result.error, "No se puede crear la carpeta «" + QDir::toNativeSeparators(Path("blocker/Informes"))
                                + "»: compruebe la ruta de la carpeta de informes.");
    EXPECT_TRUE(db->Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'").Eof());
    EXPECT_FALSE(db->InTransaction());
}

TEST_F(GeneratorTest, AFailureHalfWayLeavesThePreviousFileAndTheHistoryAsTheyWere)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("11111111H", "10,00"));
    InsertDonor(*db, Donor("22222222J", "20,00"));
    ASSERT_TRUE(Generate().generado);
    const QByteArray previous = ReadAll(FilePath());
    db->Execute("UPDATE Donantes SET importe = '99,00'");
    // The second donor's history row fails (its amount is updated), after
    // the first donor's record has gone into the new file and the first
    // donor's row was updated.
    db->Execute("CREATE TRIGGER HistorialFalla BEFORE UPDATE ON HistorialDonantes WHEN NEW.nif = '22222222J' "
                "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");

    EXPECT_THROW(Generate(), DatabaseError);

    EXPECT_EQ(ReadAll(FilePath()), previous);
    EXPECT_EQ(QDir(Path("Informes")).entryList(QDir::Files | QDir::Hidden), QStringList{"Modelo182_2024.txt"});
    EXPECT_FALSE(db->InTransaction());
    QStringList history;
    for (Recordset rs = db->Execute("SELECT nif, importe FROM HistorialDonantes ORDER BY nif"); !rs.Eof(); rs.MoveNext())
        history << rs.Fields(0).toString() + " " + rs.Fields(1).toString();
    EXPECT_EQ(history, QStringList({"11111111H 1000", "22222222J 2000"}));
}

TEST_F(GeneratorTest, WarnsAboutWhatTheAgencyWouldQuestionButStillWrites)
{
    DeclarantValues declarant;
    declarant.ejercicio = QStringLiteral("2023");
    InsertDeclarant(*db, declarant);
    DonorValues noProvince = Donor("11111111H", "10,00");
    noProvince.codigoprovincia = QStringLiteral("00");
    noProvince.comunidadAut = QStringLiteral("00");
    noProvince.deduccionCAut = QStringLiteral("00000");
    InsertDonor(*db, noProvince);
    InsertDonor(*db, noProvince);
    DonorValues noDeduction = Donor("22222222J", "10,00");
    noDeduction.deduccion = QStringLiteral("00000");
    InsertDonor(*db, noDeduction);

    const Modelo182Result result = Generate();

    EXPECT_TRUE(result.generado);
    EXPECT_EQ(result.avisos,
              QStringList({"La declaración es del ejercicio 2023 y no del 2024: compruebe que es el que quiere presentar.",
                           "2 filas de donantes llevan el código de provincia 00, que la AEAT no admite: revise la "
                           "provincia del domicilio de esos pagadores.",
                           "1 fila de donantes no tiene porcentaje de deducción: revise la deducción de sus "
                           "actividades."}));
    EXPECT_TRUE(QFile::exists(FilePath("2023")));
}
