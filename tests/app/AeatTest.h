#pragma once
// Shared set-up of the "modelo182 aeat" tests: an installation of its own
// (settings file, Modelo182.mdb with a declaration), the command run on it,
// and the type-1 record the tax agency's table gives for it.

#include "AeatCommand.h"
#include "GeneratorTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The settings' declaration id.
inline const QByteArray kSettingsId = "1820000000001";

class AeatTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        ASSERT_TRUE(QDir().mkpath(Path("datos")));
        db = CreateDeclarationFile(Path("datos/Modelo182.mdb"));
        WriteSettings();
    }

    QString Path(const QString &name) const { return m_dir.filePath(name); }
    QString Ini() const { return Path("modelo182.ini"); }
    // Where the file goes by default: the reports folder below rutaaplicacion.
    QString ReportsFile() const { return Path("app/Informes/Modelo182_2024.txt"); }

    void WriteSettings(const QString &modelo182Section = QStringLiteral("Locale=es_ES\nNumeroJustificante=")
                                                         + QString::fromLatin1(kSettingsId) + QStringLiteral("\n"),
                       const QString &extraSesion = QString())
    {
        QFile file(Ini());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(("[Sesion]\nrutaaplicacion=app\nRutaBD=datos\nsqlserver=false\nIDCentro=1\n" + extraSesion
                    + "\n[Modelo182]\n" + modelo182Section)
                       .toUtf8());
    }

    // Two donors, the first with two activities at 80 % (one record), the
    // second one row; amounts as the Spanish wizard writes them.
    void FillSmallDeclaration(const DeclarantValues &declarant = DeclarantValues())
    {
        InsertDeclarant(*db, declarant);
        InsertDonor(*db, Donor("Marta", "Soler", "Vidal", "12345678Z", "1.100,50"));
        InsertDonor(*db, Donor("Pau", "Roig", "", "11111111H", "20,00"));
        InsertDonor(*db, Donor("Marta", "Soler", "Vidal", "12345678Z", "99,50"));
    }

    static DonorValues Donor(const char *nombre, const char *apellido1, const char *apellido2, const char *nif,
                             const char *importe)
    {
        DonorValues d;
        d.nombre = QString::fromUtf8(nombre);
        d.apellido1 = QString::fromUtf8(apellido1);
        d.apellido2 = QString::fromUtf8(apellido2);
        d.nif = QString::fromUtf8(nif);
        d.importe = QString::fromUtf8(importe);
        return d;
    }

    // The whole type-1 record of the small declaration, built field by field
    // from the layout; `ids` is positions 108-135.
    static QByteArray ExpectedDeclarant(const QByteArray &ids)
    {
        return ExpectedRecord()
            .Text(1, 1, "1")
            .Text(2, 3, "182")
            .Number(5, 4, "2024")
            .Text(9, 9, "A58818501")
            .Text(18, 40, "COLEGIO SANT JORDI")
            .Text(58, 1, "T")
            .Number(59, 9, "934567890")
            .Text(68, 40, "PUIG FERRER NURIA")
            .Text(108, 28, ids)
            .Number(136, 9, "2")
            .Number(145, 15, "122000") // 1.100,50 + 99,50 + 20,00
            .Text(160, 1, "1")
            .Bytes();
    }

    int Run(const QStringList &words)
    {
        AeatCommand command(Ini());
        command.SetToday([] { return QDate(2025, 2, 10); });
        if (progress)
            command.SetProgress(progress);
        const int code = command.Run(words);
        output = command.Output();
        errors = command.Errors();
        return code;
    }

    // The records of a file; checks every one is 250 bytes followed by CR LF.
    static QList<QByteArray> Records(const QString &path)
    {
        const QByteArray bytes = ReadAll(path);
        EXPECT_EQ(bytes.size() % 252, 0) << path.toStdString() << ": " << bytes.size() << " bytes";
        QList<QByteArray> records;
        for (qsizetype at = 0; at + 252 <= bytes.size(); at += 252) {
            EXPECT_EQ(bytes.mid(at + 250, 2), QByteArray("\r\n")) << "record " << records.size() + 1;
            records << bytes.mid(at, 250);
        }
        return records;
    }

    static QByteArray ReadAll(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Folder contents, to see that nothing else (a temporary file) is left.
    static QStringList Files(const QString &folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    static void Write(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    std::shared_ptr<Connection> db;
    ProgressSink *progress = nullptr;
    QString output;
    QString errors;

private:
    QTemporaryDir m_dir;
};
