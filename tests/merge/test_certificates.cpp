// The certificates from the declaration's databases: the rows and the
// declarant read, the shipped templates, and the whole merge as the donor
// window runs it.
#include "test_merge.h"

#include "data/Connection.h"
#include "data/Schema.h"
#include "merge/CertificateSource.h"
#include "merge/Certificates.h"
#include "merge/TemplateInstaller.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace merge_test;

namespace {

const QString kJet = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
const QDate kToday(2026, 11, 23);

QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Modelo182.mdb with its declaration tables filled as the generation fills
// them, and CartaDonantes.mdb copied from it in surname order.
class CertificatesTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(m_dir.path()).mkpath("Informes"));
        m_modelo182 = m_dir.filePath("Modelo182.mdb");
        m_cartaDonantes = m_dir.filePath("Informes/CartaDonantes.mdb");
        auto db = Connection::CreateSQLite(m_modelo182, "Microsoft.Jet.OLEDB.4.0");
        Schema::CreateDeclarationDatabase(*db);
        db->Close();
    }

    void Declarant(const QString &year, const QString &name, const QString &nif)
    {
        Connection db(kJet + m_modelo182);
        db.Open();
        db.Execute("INSERT INTO Declarantes (ejercicio,nombre,nif,pcnombre,pcapellido1,pcapellido2,pctelefono,"
                   "regimenfiscal,delegacion,domicilio) VALUES ('"
                   + year + "','" + name + "','" + nif + "','JUAN','GARCÍA','DE LA FUENTE','915550101','1','','')");
    }

    // The generation's positional inserts, then the copy the merge reads.
    void Donors(const QStringList &values)
    {
        Connection db(kJet + m_modelo182);
        db.Open();
        for (const QString &row : values)
            db.Execute("INSERT INTO CartaDonantes VALUES (" + row + ")");
        db.Close();
        QFile::remove(m_cartaDonantes);
        auto letters = Connection::CreateSQLite(m_cartaDonantes, "Microsoft.Jet.OLEDB.4.0");
        letters->Execute("SELECT [CartaDonantes].* INTO [CartaDonantes] FROM [" + m_modelo182
                         + ";pwd=zq417tev].[CartaDonantes] ORDER BY Apellido1, Apellido2, Nombre");
    }

    void StandardDeclaration()
    {
        Declarant("2024", "COLEGIO VIEJO", "G00000000");
        Declarant("2025", "COLEGIO SAN ISIDRO", "R2800001A");
        Donors({"'ORTIZ','RUIZ','ANA','12345678Z','61,00','Madrid','C/ Mayor 1','28001','Madrid'",
                "'D''SOUZA','','PETER','X1234567L','1.234,50','Getafe','Av. de España, 3','28901','Madrid'",
                "'ÁLVAREZ','NÚÑEZ','LUCÍA','00000014Z','10,00',' ',' ',' ',' '"});
    }

    QTemporaryDir m_dir;
    QString m_modelo182;
    QString m_cartaDonantes;
};

TEST_F(CertificatesTest, ReadsTheDonorsInTableOrderWithTheDeclarantAndTodaysDate)
{
    StandardDeclaration();
    { // a row added after the sorted copy stays last: the table's order counts
        Connection letters(kJet + m_cartaDonantes);
        letters.Open();
        letters.Execute("INSERT INTO CartaDonantes VALUES ('ABAD','ABAD','AARON','00000023T','5,00','Toledo','Plaza "
                        "2','45001','Toledo')");
    }
    Connection declaration(kJet + m_modelo182);
    const CertificateData data = CertificateSource(declaration, [] { return kToday; }).Read(m_cartaDonantes);

    EXPECT_EQ(data.fieldNames, QStringList({"Apellido1", "Apellido2", "Nombre", "NIF", "Importe", "Poblacion", "Direccion",
                                            "CodPos", "Provincia", "Entidad", "NIFEntidad", "Ejercicio", "Fecha"}));
    QStringList rows;
    for (const MergeRecord &record : data.records) {
        QStringList values;
        for (const QString &field : data.fieldNames)
            values << record.value(field);
        rows << values.join('|');
    }
    const QString declarant = "COLEGIO SAN ISIDRO|R2800001A|2025|23 de noviembre de 2026";
    EXPECT_EQ(rows, QStringList({
                        "ÁLVAREZ|NÚÑEZ|LUCÍA|00000014Z|10,00|||||" + declarant,
                        "D'SOUZA||PETER|X1234567L|1.234,50|Getafe|Av. de España, 3|28901|Madrid|" + declarant,
                        "ORTIZ|RUIZ|ANA|12345678Z|61,00|Madrid|C/ Mayor 1|28001|Madrid|" + declarant,
                        "ABAD|ABAD|AARON|00000023T|5,00|Toledo|Plaza 2|45001|Toledo|" + declarant,
                    }));
    EXPECT_EQ(data.records.value(0).size(), data.fieldNames.size());
    // The declaration connection is left as it was found: closed.
    EXPECT_EQ(declaration.State(), Connection::adStateClosed);
    EXPECT_TRUE(ReadFile(m_cartaDonantes).startsWith("SQLite format 3"));
}

TEST_F(CertificatesTest, MergesTheShippedTemplatesIntoOneLetterPerDonor)
{
    StandardDeclaration();
    const QString reports = m_dir.filePath("Informes");
    EXPECT_EQ(InstallTemplates(reports),
              QStringList({reports + "/Certificado de Donaciones97.doc", reports + "/Certificado de Donaciones2000.doc"}));
    Connection declaration(kJet + m_modelo182);
    declaration.Open();
    const QString ejercicio = ", ha entregado a esta entidad durante el ejercicio 2025, en concepto de donativo "
                              "dinerario, la cantidad total de ";
    for (const char *name : {CertificateTemplates::kTemplate97, CertificateTemplates::kTemplate2000}) {
        const QString templatePath = reports + "/" + name;
        const QString output = Certificates::Merge(templatePath, m_cartaDonantes, declaration, [] { return kToday; });
        EXPECT_EQ(output, reports + "/Certificados de Donaciones.docx");
        const QByteArray document = PartOf(Unzip(ReadFile(output)), "word/document.xml");
        const QList<QStringList> letters = Letters(document, false);
        ASSERT_EQ(letters.size(), 3) << name;
        EXPECT_EQ(PageBreaks(document), 2);
        EXPECT_EQ(CountElements(document, "w:sectPr"), 1);
        const bool is97 = QString(name).contains("97");
        const QString donors[][2] = {{"LUCÍA ÁLVAREZ NÚÑEZ", "00000014Z"},
                                     {"PETER D'SOUZA", "X1234567L"},
                                     {"ANA ORTIZ RUIZ", "12345678Z"}};
        const QString domiciles[] = {"", ", con domicilio en Av. de España, 3, 28901 Getafe (Madrid)",
                                     ", con domicilio en C/ Mayor 1, 28001 Madrid (Madrid)"};
        const QString amounts[] = {"10,00", "1.234,50", "61,00"};
        for (int i = 0; i < 3; ++i) {
            const QStringList &letter = letters.at(i);
            const QString donor = is97 ? "Segundo. Que D./D.ª " + donors[i][0] + ", con NIF " + donors[i][1] + domiciles[i]
                                       : "Segundo. Que el donante arriba identificado, " + donors[i][0] + ", con NIF "
                                             + donors[i][1];
            EXPECT_TRUE(letter.contains(donor + ejercicio + amounts[i] + " euros.")) << name << " " << i;
            EXPECT_TRUE(letter.contains("CERTIFICADO DE DONACIONES"));
            EXPECT_TRUE(letter.contains("Primero. Que COLEGIO SAN ISIDRO, con NIF R2800001A, es una de las entidades "
                                        "beneficiarias del mecenazgo a las que se refiere el artículo 16 de la Ley "
                                        "49/2002, de 23 de diciembre, de régimen fiscal de las entidades sin fines "
                                        "lucrativos y de los incentivos fiscales al mecenazgo."));
            EXPECT_TRUE(letter.contains("Cuarto. Que la donación tiene carácter irrevocable, sin perjuicio de lo "
                                        "establecido en las normas imperativas civiles que regulan la revocación de "
                                        "donaciones."));
            EXPECT_TRUE(letter.contains("En ______________________, a 23 de noviembre de 2026.")) << letter.join('\n');
            EXPECT_FALSE(letter.join('\n').contains("«"));
        }
    }
    EXPECT_EQ(declaration.State(), Connection::adStateOpen);
}

TEST_F(CertificatesTest, ShippedTemplatesUseOnlyTheFieldsTheDataOffersAndInstallWithoutOverwriting)
{
    StandardDeclaration();
    Connection declaration(kJet + m_modelo182);
    const QStringList offered = CertificateSource(declaration).Read(m_cartaDonantes).fieldNames;
    const QString reports = m_dir.filePath("Informes");
    InstallTemplates(reports);
    for (const char *name : {CertificateTemplates::kTemplate97, CertificateTemplates::kTemplate2000}) {
        const QByteArray bytes = ReadFile(reports + "/" + name);
        EXPECT_EQ(bytes, ReadFile(QStringLiteral(M182_TEMPLATES_DIR "/") + name)) << "the resource is the repository's file";
        EXPECT_NO_THROW(MailMerge(bytes, name));
        QStringList used = MergeFieldNames(Unzip(bytes));
        used.removeDuplicates();
        for (const QString &field : used)
            EXPECT_TRUE(offered.contains(field)) << name << ": " << field;
        EXPECT_EQ(QSet<QString>(used.begin(), used.end()), QSet<QString>(offered.begin(), offered.end())) << name;
    }
    // A template the school adapted is kept; a deleted one comes back.
    const QString adapted = reports + "/Certificado de Donaciones97.doc";
    {
        QFile file(adapted);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("plantilla del colegio");
    }
    ASSERT_TRUE(QFile::remove(reports + "/Certificado de Donaciones2000.doc"));
    EXPECT_EQ(InstallTemplates(reports), QStringList{reports + "/Certificado de Donaciones2000.doc"});
    EXPECT_EQ(ReadFile(adapted), QByteArray("plantilla del colegio"));
    const QString blocked = m_dir.filePath("Modelo182.mdb/Informes");
    EXPECT_EQ(MergeErrorOf([&] { InstallTemplates(blocked); }),
              "No se pudo crear la carpeta de informes «" + blocked + "». Compruebe que se puede escribir en ella.");
}

TEST_F(CertificatesTest, EveryFailureGivesASpanishMessageAndWritesNothing)
{
    const QString reports = m_dir.filePath("Informes");
    InstallTemplates(reports);
    const QString templatePath = reports + "/Certificado de Donaciones97.doc";
    const QString output = reports + "/Certificados de Donaciones.docx";
    const QString generate = "Genere correctamente el modelo 182 antes de imprimir los certificados.";
    Connection declaration(kJet + m_modelo182);
    const auto merge = [&](const QString &templateFile) {
        return MergeErrorOf([&] { Certificates::Merge(templateFile, m_cartaDonantes, declaration, [] { return kToday; }); });
    };

    EXPECT_EQ(merge(templatePath), "No existe la base de datos de los certificados «" + m_cartaDonantes + "». " + generate);
    Donors({});
    EXPECT_EQ(merge(templatePath), "No hay ningún declarante en la base de datos del modelo 182. " + generate);
    Declarant("2025", "COLEGIO SAN ISIDRO", "R2800001A");
    EXPECT_EQ(merge(templatePath),
              "No hay ningún donante en «" + m_cartaDonantes
                  + "», así que no hay certificados que "
                    "imprimir. Marque en la rejilla los donantes que se declaran y genere de nuevo el modelo 182.");
    {
        Connection letters(kJet + m_cartaDonantes);
        letters.Open();
        letters.Execute("DROP TABLE CartaDonantes");
    }
    EXPECT_EQ(merge(templatePath),
              "No se pudieron leer los donantes de «" + m_cartaDonantes + "»: no such table: CartaDonantes. " + generate);
    const QString missing = reports + "/Certificado de Donaciones2000.doc";
    QFile::remove(missing);
    EXPECT_EQ(merge(missing), "No se encuentra la plantilla de los certificados «" + missing
                                  + "». Copie la plantilla en la carpeta de informes y vuelva a intentarlo.");
    {
        QFile file(templatePath);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write("{\\rtf1 plantilla antigua}");
    }
    EXPECT_EQ(merge(templatePath), "La plantilla «" + templatePath
                                       + "» no es un documento de Word válido o está dañada. "
                                         "Sustitúyala por la plantilla original y vuelva a intentarlo.");
    EXPECT_FALSE(QFileInfo::exists(output));
    EXPECT_EQ(declaration.State(), Connection::adStateClosed);
}

} // namespace
