// The settings file reader and writer: values written by hand come back
// exactly, the writer's files read back the same, comments only where a
// blank comes before them, malformed lines named by their number.
#include "data/SettingsFile.h"

#include "test_data.h"

#include <QFile>

namespace {

struct HandWritten
{
    const char *written;  // what follows "k=" in the file
    const char *expected; // the value read back
};

// Expected values worked out from the file's rules by hand.
const HandWritten kHandWritten[] = {
    {"Provider=SQLite;Data Source=datos/entrada.db", "Provider=SQLite;Data Source=datos/entrada.db"},
    {"Provider=SQLite; Data Source=datos/curso 2023.db", "Provider=SQLite; Data Source=datos/curso 2023.db"},
    {"Calle Mayor, 5, 28001 Madrid", "Calle Mayor, 5, 28001 Madrid"},
    {"Colegio San José, Madrid", "Colegio San José, Madrid"},
    {"C:\\Vendelar\\datos", "C:\\Vendelar\\datos"},
    {"C:\\Vendelar\\datos\\", "C:\\Vendelar\\datos\\"},
    {"false   ; the host's flag", "false"},
    {"false\t# tab then comment", "false"},
    {"\"   Colegio con blancos delante\"", "   Colegio con blancos delante"},
    {"\"Madrid ; Centro # 2\"   ; quoted, then a comment", "Madrid ; Centro # 2"},
    {"\"dice \\\"hola\\\" en C:\\\\temp\\\\\"", "dice \"hola\" en C:\\temp\\"},
    {"\"C:\\Vendelar\\nuevo\"", "C:\\Vendelar\\nuevo"},
    {"", ""},
    {"\"\"", ""},
    {"   ; only a comment", ""},
    {"a=b=c", "a=b=c"},
    {"%1 y %2", "%1 y %2"},
    {"Donativo 🎓 curso 2024-2025 ✓", "Donativo 🎓 curso 2024-2025 ✓"},
    {"   blancos delante y detrás   ", "blancos delante y detrás"},
    {";no es un comentario", ";no es un comentario"},
    {"#1 de la calle", "#1 de la calle"},
    {"Madrid;Centro#2", "Madrid;Centro#2"},
    {"sede \"principal\"", "sede \"principal\""},
    {"Mª Ñúñez O'Connor", "Mª Ñúñez O'Connor"},
};

QString FileWith(const QString &lineEnd)
{
    QString text = "; written by hand" + lineEnd + lineEnd + "[Sesion]   ; the host's values" + lineEnd;
    int n = 0;
    for (const HandWritten &row : kHandWritten)
        text += QString("k%1=").arg(++n, 2, 10, QChar('0')) + QString::fromUtf8(row.written) + lineEnd;
    return text + "  # indented comment" + lineEnd + "[Otra]" + lineEnd + "k01 = otro" + lineEnd;
}

class SettingsFileTest : public data_test::DataTest
{
protected:
    QString WriteBytes(const QByteArray &bytes)
    {
        QFile file(Path("ajustes.ini"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
};

TEST_F(SettingsFileTest, HandWrittenValuesReadBackExactlyWithLfOrCrlf)
{
    for (const QString lineEnd : {"\n", "\r\n"}) {
        SCOPED_TRACE(lineEnd == "\n" ? "LF" : "CRLF");
        const SettingsFile file = SettingsFile::Read(WriteBytes(FileWith(lineEnd).toUtf8()));
        ASSERT_EQ(file.Sections().size(), 2);
        const SettingsSection &sesion = file.Sections().at(0);
        EXPECT_EQ(sesion.name, "Sesion");
        ASSERT_EQ(sesion.entries.size(), int(std::size(kHandWritten)));
        for (int i = 0; i < sesion.entries.size(); ++i) {
            SCOPED_TRACE(kHandWritten[i].written);
            EXPECT_EQ(sesion.entries.at(i).key, QString("k%1").arg(i + 1, 2, 10, QChar('0')));
            EXPECT_EQ(sesion.entries.at(i).value, QString::fromUtf8(kHandWritten[i].expected));
        }
        EXPECT_EQ(file.Value("Otra", "k01"), "otro");
    }
}

TEST_F(SettingsFileTest, WrittenValuesReadBackIdenticallyAndQuotesOnlyWhenNeeded)
{
    // Value -> how the writer puts it after "=".
    const QList<QPair<QString, QString>> table = {
        {"Provider=SQLite;Data Source=datos/entrada.db", "Provider=SQLite;Data Source=datos/entrada.db"},
        {"Calle Mayor, 5, 28001 Madrid", "Calle Mayor, 5, 28001 Madrid"},
        {"C:\\Vendelar\\datos", "C:\\Vendelar\\datos"},
        {"sede \"principal\"", "sede \"principal\""},
        {";al principio", ";al principio"},
        {"", ""},
        {"   Colegio", "\"   Colegio\""},
        {"Colegio\t", "\"Colegio\t\""},
        {"Madrid ; Centro", "\"Madrid ; Centro\""},
        {"nº\t#2", "\"nº\t#2\""},
        {"\"entre comillas\"", "\"\\\"entre comillas\\\"\""},
        {"C:\\temp\\ ", "\"C:\\\\temp\\\\ \""},
    };
    SettingsFile written;
    for (int i = 0; i < table.size(); ++i) {
        EXPECT_EQ(SettingsFile::Encode(table.at(i).first), table.at(i).second) << table.at(i).first;
        written.Add("Sesion", QString("k%1").arg(i), table.at(i).first);
    }
    int n = 0;
    for (const HandWritten &row : kHandWritten)
        written.Add("Modelo182", QString("m%1").arg(++n), QString::fromUtf8(row.expected));
    written.Write(Path("escrito.ini"));
    const SettingsFile read = SettingsFile::Read(Path("escrito.ini"));
    ASSERT_EQ(read.Sections().size(), 2);
    for (int s = 0; s < 2; ++s) {
        const QList<SettingsEntry> &in = written.Sections().at(s).entries, &out = read.Sections().at(s).entries;
        ASSERT_EQ(out.size(), in.size());
        for (int i = 0; i < in.size(); ++i)
            EXPECT_TRUE(out.at(i).key == in.at(i).key && out.at(i).value == in.at(i).value)
                << in.at(i).key << " " << in.at(i).value << " read back as " << out.at(i).value;
    }

    SettingsFile small;
    small.Add("Sesion", "IDCentro", "7");
    small.Add("Modelo182", "Delegacion", "");
    small.Add("Sesion", "RutaBD", "datos");
    EXPECT_EQ(small.Text(), "[Sesion]\nIDCentro=7\nRutaBD=datos\n\n[Modelo182]\nDelegacion=\n");
    EXPECT_THROW(small.Add("Modelo182", "Domicilio", "dos\nlíneas"), SettingsFileError);
    EXPECT_THROW(small.Add("Modelo182", "a=b", "x"), std::invalid_argument);
}

TEST_F(SettingsFileTest, LookupsGiveTheLastValueAndTellEmptyFromAbsent)
{
    const SettingsFile file = SettingsFile::Parse("k=1\n[S]\nk=1\nvacío=\nk=2\n[T]\n[S]\nk=3\n");
    EXPECT_EQ(file.Value("", "k"), "1");  // before any section
    EXPECT_EQ(file.Value("S", "k"), "3"); // a repeated section continues the first
    EXPECT_EQ(file.Section("S")->entries.size(), 4);
    EXPECT_TRUE(file.Value("S", "vacío").isEmpty() && !file.Value("S", "vacío").isNull());
    EXPECT_TRUE(file.Value("S", "nada").isNull());
    EXPECT_TRUE(file.Value("sin", "k").isNull());
    EXPECT_EQ(file.Text(), "k=1\n\n[S]\nk=1\nvacío=\nk=2\nk=3\n\n[T]\n");
}

TEST_F(SettingsFileTest, MalformedLinesAreRefusedWithTheirNumber)
{
    struct Case
    {
        const char *text;
        int line;
        QString message;
    };
    const QString notALine = "La línea %1 no es una sección «[nombre]», un comentario ni una línea «clave=valor»: "
                             "«%2». Corríjala o bórrela.";
    const Case cases[] = {
        {"[Sesion]\nsin igual\n", 2, notALine.arg("2", "sin igual")},
        {"[Sesion\nk=1\n", 1, notALine.arg("1", "[Sesion")},
        {"[Sesion];comentario pegado\n", 1, notALine.arg("1", "[Sesion];comentario pegado")},
        {"\r\n; c\r\n[Sesion]\r\n  =valor\r\n", 4, notALine.arg("4", "  =valor")},
        {"[S]\nk=1\nk=\"abierto\n", 3,
         "En la línea 3 falta la comilla que cierra el valor de «k». Añádala al final del valor."},
        {"[S]\nk=\"a\" b\n", 2,
         "En la línea 2 hay texto tras la comilla que cierra el valor de «k». Ponga todo el valor entre las comillas."},
        {"[S]\nk=\"a\";b\n", 2,
         "En la línea 2 hay texto tras la comilla que cierra el valor de «k». Ponga todo el valor entre las comillas."},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.text);
        try {
            SettingsFile::Parse(QString::fromUtf8(c.text));
            ADD_FAILURE() << "accepted";
        } catch (const SettingsFileError &error) {
            EXPECT_EQ(error.Line(), c.line);
            EXPECT_EQ(error.Message(), c.message);
        }
    }
    // Through a file, the message names it.
    const QString path = WriteBytes("[S]\nk=1\n%1\n");
    try {
        SettingsFile::Read(path);
        ADD_FAILURE() << "accepted";
    } catch (const SettingsFileError &error) {
        EXPECT_EQ(error.Message(), "Fichero «" + path + "». " + notALine.arg("3", "%1"));
    }
    try {
        SettingsFile::Read(WriteBytes("[S]\nk=Jos\xe9\n")); // Latin-1, not UTF-8
        ADD_FAILURE() << "accepted";
    } catch (const SettingsFileError &error) {
        EXPECT_EQ(error.Message(), "El fichero «" + path + "» no está en UTF-8. Guárdelo con esa codificación.");
    }
}

} // namespace
