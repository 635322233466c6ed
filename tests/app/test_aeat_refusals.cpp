// What "modelo182 aeat" refuses: a command it cannot run as asked ends with
// exit code 2, a declaration whose data the tax agency would refuse with 1;
// either way one Spanish line per problem on standard error and the
// previous file exactly as it was.
#include "AeatTest.h"

namespace {

struct Refusal
{
    QStringList words;
    QString message; // the first line of standard error
};

const QByteArray kPrevious = "the file of an earlier run\r\n";

} // namespace

TEST_F(AeatTest, RefusedCommandsWriteNothingAndSayWhatToChange)
{
    FillSmallDeclaration();
    Write(ReportsFile(), kPrevious);
    ASSERT_TRUE(QDir().mkpath(Path("carpeta")));
    const QString badId = "debe tener 13 dígitos y empezar por 182.";
    const QList<Refusal> cases{
        {{"--complementaria", "1829999999999", "--sustitutiva", "1828888888888"},
         "Indique --complementaria o --sustitutiva, no las dos: una declaración no puede ser complementaria y "
         "sustitutiva a la vez."},
        {{"--justificante", "182123"}, "El número de justificante «182123» no es válido: " + badId},
        {{"--justificante", "1831234567890"}, "El número de justificante «1831234567890» no es válido: " + badId},
        {{"--justificante", "18212345678AB"}, "El número de justificante «18212345678AB» no es válido: " + badId},
        {{"--justificante", "18212345678901"}, "El número de justificante «18212345678901» no es válido: " + badId},
        {{"--complementaria", "12"}, "El número de justificante de la declaración anterior «12» no es válido: " + badId},
        {{"--sustitutiva", "1831234567890"},
         "El número de justificante de la declaración anterior «1831234567890» no es válido: " + badId},
        {{"--justificante", "1821111111111", "--sustitutiva", "1821111111111"},
         "El número de justificante de la declaración anterior es el mismo que el de esta («1821111111111»): una "
         "declaración complementaria o sustitutiva lleva un número nuevo."},
        {{"--complementaria", QString::fromLatin1(kSettingsId)},
         "El número de justificante de la declaración anterior es el mismo que el de esta («1820000000001»): una "
         "declaración complementaria o sustitutiva lleva un número nuevo."},
        {{"--sin-firma"}, "Opción desconocida: «--sin-firma»."},
        {{"fichero.txt"}, "Opción desconocida: «fichero.txt»."},
        {{"--out"}, "Falta el valor de la opción --out."},
        {{"--justificante", "--out", "x.txt"}, "Falta el valor de la opción --justificante."},
        {{"--out", "a.txt", "--out", "b.txt"}, "La opción --out aparece más de una vez: indíquela solo una."},
        {{"--session", Path("otro.ini")},
         "No existe el fichero de sesión «" + Path("otro.ini")
             + "»: indique el suyo con --session, o cree la instalación de demostración con «modelo182 demo "
               "CARPETA»."},
        {{"--db", Path("otra/Modelo182.mdb")},
         "No existe la base de datos de la declaración «" + Path("otra/Modelo182.mdb")
             + "»: genere antes la declaración desde el asistente, o indique la base de datos con --db."},
        {{"--session", Ini(), "--db", Path("datos/Modelo182.mdb")},
         "Indique --session o --db, no las dos: la base de datos sale del fichero de sesión o se da directamente."},
        {{"--out", Path("carpeta")},
         "--out «" + Path("carpeta") + "» es una carpeta: indique el nombre del fichero que quiere escribir."},
    };
    const QStringList before = Files(Path("app/Informes"));
    for (const Refusal &c : cases) {
        SCOPED_TRACE(c.words.join(' ').toStdString());
        EXPECT_EQ(Run(c.words), AeatCommand::kCommandRefused);
        EXPECT_EQ(errors.section('\n', 0, 0), c.message);
        EXPECT_TRUE(errors.endsWith('\n'));
        EXPECT_EQ(output, QString());
        EXPECT_EQ(ReadAll(ReportsFile()), kPrevious);
        EXPECT_EQ(Files(Path("app/Informes")), before);
        EXPECT_TRUE(Files(Path("carpeta")).isEmpty());
    }
    EXPECT_FALSE(QFile::exists(Path("a.txt")));
    EXPECT_FALSE(QFile::exists(Path("datos/Modelo182_2024.txt")));
}

TEST_F(AeatTest, OptionMistakesShowTheCommandsUsage)
{
    EXPECT_EQ(Run({"--bogus"}), AeatCommand::kCommandRefused);
    EXPECT_EQ(errors, "Opción desconocida: «--bogus».\nUso:\n" + QString::fromUtf8(kAeatUsage));
}

TEST_F(AeatTest, AnInvalidIdInTheSettingsFileIsRefusedUnlessTheOptionReplacesIt)
{
    FillSmallDeclaration();
    WriteSettings("Locale=es_ES\nNumeroJustificante=18200001\n");

    EXPECT_EQ(Run({}), AeatCommand::kCommandRefused);
    EXPECT_EQ(errors, "El número de justificante «18200001» no es válido: debe tener 13 dígitos y empezar por 182. "
                      "(NumeroJustificante del fichero de sesión «"
                          + Ini() + "»; corríjalo allí o indique el número con --justificante)\n");
    EXPECT_FALSE(QFile::exists(ReportsFile()));

    EXPECT_EQ(Run({"--justificante", "1824444444444"}), AeatCommand::kWritten) << errors.toStdString();
    EXPECT_EQ(Records(ReportsFile()).value(0).mid(107, 13), "1824444444444");
}

TEST_F(AeatTest, ABrokenSettingsFileIsRefusedWithTheReadersMessage)
{
    Write(Ini(), "[Modelo182]\nLocale=es_ES\n");

    EXPECT_EQ(Run({}), AeatCommand::kCommandRefused);
    EXPECT_EQ(errors, "El fichero de sesión «" + Ini() + "» no tiene la sección [Sesion].\n");
}

TEST_F(AeatTest, DataTheAgencyWouldRefuseListsEveryProblemAndKeepsThePreviousFile)
{
    InsertDeclarant(*db, DeclarantValues());
    InsertDonor(*db, Donor("Marta", "Soler", "Vidal", "12345678A", "10,00"));
    InsertDonor(*db, Donor("Pau", "Roig", "", "11111111H", "diez"));
    InsertDonor(*db, Donor("Anna", "Mas", "", "X1234567A", "5,00"));
    InsertDonor(*db, Donor("Joan", "Pons", "", "87654321X", "7,00"));
    Write(ReportsFile(), kPrevious);

    EXPECT_EQ(Run({}), AeatCommand::kDataRefused);

    const QString retry = " y vuelva a generar la declaración.";
    EXPECT_EQ(errors, "No se ha generado el fichero del modelo 182.\n"
                      "El NIF «12345678A» del donante Soler Vidal Marta no es válido: corríjalo en la columna DNI del "
                      "asistente"
                          + retry
                          + "\n"
                            "El importe «diez» del donante Roig Pau no es un número: corríjalo en la rejilla de donantes"
                          + retry
                          + "\n"
                            "El NIF «X1234567A» del donante Mas Anna no es válido: corríjalo en la columna DNI del "
                            "asistente"
                          + retry + "\n");
    EXPECT_EQ(output, QString());
    EXPECT_EQ(ReadAll(ReportsFile()), kPrevious);
    EXPECT_EQ(Files(Path("app/Informes")), QStringList{"Modelo182_2024.txt"});
}

TEST_F(AeatTest, ADeclarantWithoutNifIsRefused)
{
    DeclarantValues declarant;
    declarant.nif.clear();
    FillSmallDeclaration(declarant);

    EXPECT_EQ(Run({}), AeatCommand::kDataRefused);

    EXPECT_EQ(errors, "No se ha generado el fichero del modelo 182.\n"
                      "El declarante no tiene NIF: escriba el CIF del centro en sus datos y vuelva a generar la "
                      "declaración.\n");
    EXPECT_FALSE(QFile::exists(ReportsFile()));
}
