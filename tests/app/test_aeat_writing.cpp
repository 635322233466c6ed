// How "modelo182 aeat" puts its file in place (a temporary file renamed over
// the old one), what an interrupted run leaves, and that its records are
// those the donor window's component writes for the same tables.
#include "AeatTest.h"

#include "generator/cModelo182.h"

#include <functional>
#include <stdexcept>
#include <sys/stat.h>

namespace {

// Runs `last` when the generator reports its last donor row, i.e. after
// every record is written and before the file is renamed into place.
class AtLastRow : public ProgressSink
{
public:
    explicit AtLastRow(std::function<void()> last) : m_last(std::move(last)) {}
    void SetMax(int max) override { m_max = max; }
    void SetValue(int value) override
    {
        if (value == m_max && m_max > 0)
            m_last();
    }

private:
    std::function<void()> m_last;
    int m_max = -1;
};

const QByteArray kPrevious = "the file of an earlier run\r\n";

ino_t Inode(const QString &path)
{
    struct stat info
    {
    };
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_ino : 0;
}

qint64 HistoryRows(Connection &connection)
{
    Recordset rs = connection.Execute("SELECT name FROM sqlite_master WHERE name = 'HistorialDonantes'");
    if (rs.Eof())
        return 0;
    return connection.Execute("SELECT COUNT(*) FROM HistorialDonantes").Fields(0).toLongLong();
}

} // namespace

TEST_F(AeatTest, TheNewFileReplacesTheOldOneOnlyOnceItIsComplete)
{
    FillSmallDeclaration();
    Write(ReportsFile(), kPrevious);
    const ino_t previousInode = Inode(ReportsFile());
    QByteArray seenBeforeRename;
    QStringList filesBeforeRename;
    AtLastRow watcher([&] {
        seenBeforeRename = ReadAll(ReportsFile());
        filesBeforeRename = Files(Path("app/Informes"));
    });
    progress = &watcher;

    ASSERT_EQ(Run({}), AeatCommand::kWritten) << errors.toStdString();

    // With every record written the old file still stood whole under its
    // name (the new one grows in a temporary file, named or unnamed)...
    EXPECT_EQ(seenBeforeRename, kPrevious);
    EXPECT_TRUE(filesBeforeRename.contains("Modelo182_2024.txt"));
    EXPECT_LE(filesBeforeRename.size(), 2) << filesBeforeRename.join(' ').toStdString();
    // ...and the name now belongs to another file: renamed into place, not
    // rewritten where it was.
    EXPECT_NE(Inode(ReportsFile()), previousInode);
    EXPECT_EQ(Files(Path("app/Informes")), QStringList{"Modelo182_2024.txt"});
    EXPECT_EQ(Records(ReportsFile()).size(), 3);
}

TEST_F(AeatTest, ARunInterruptedBeforeTheRenameLeavesThePreviousFileAndTheHistory)
{
    FillSmallDeclaration();
    Write(ReportsFile(), kPrevious);
    // The failure comes once every record is in the temporary file, the
    // latest moment before it would be renamed into place.
    AtLastRow failure([] { throw std::runtime_error("disco lleno"); });
    progress = &failure;

    EXPECT_EQ(Run({}), AeatCommand::kDataRefused);

    EXPECT_EQ(errors, "No se ha generado el fichero del modelo 182: disco lleno\n");
    EXPECT_EQ(output, QString());
    EXPECT_EQ(ReadAll(ReportsFile()), kPrevious);
    EXPECT_EQ(Files(Path("app/Informes")), QStringList{"Modelo182_2024.txt"});
    EXPECT_EQ(HistoryRows(*db), 0);

    // The next run, uninterrupted, writes the file and the history.
    progress = nullptr;
    EXPECT_EQ(Run({}), AeatCommand::kWritten);
    EXPECT_EQ(Records(ReportsFile()).size(), 3);
    EXPECT_EQ(HistoryRows(*db), 2);
}

TEST_F(AeatTest, AFolderThatCannotBeMadeEndsWithTheGeneratorsMessage)
{
    FillSmallDeclaration();
    Write(Path("ocupado"), "a file where the folder should be");

    EXPECT_EQ(Run({"--out", Path("ocupado/Modelo182.txt")}), AeatCommand::kDataRefused);

    EXPECT_EQ(errors, "No se ha generado el fichero del modelo 182.\nNo se puede crear la carpeta «" + Path("ocupado")
                          + "»: compruebe la ruta de la carpeta de informes.\n");
}

TEST_F(AeatTest, RecordsEqualThoseTheDonorWindowsComponentWrites)
{
    // 150 donors, each with two activities at 80 % and one at 40 %, then
    // two donors of the donor window's own making.
    const int donors = 150;
    FillLargeDeclaration(*db, 3 * donors, QLocale(QLocale::Spanish, QLocale::Spain));
    DonorValues represented = Donor("Lluc", "Ferrer", "Puig", "11111111H", "1.234,56");
    represented.nifrepresentante = "12345678Z";
    InsertDonor(*db, represented);
    DonorValues inKind = Donor("Fundació", "Amics", "", "A58818501", "300,00");
    inKind.donativoenespecie = "X";
    inKind.tipoPersona = "J";
    InsertDonor(*db, inKind);
    db->Close();
    ASSERT_TRUE(QDir().mkpath(Path("component")));
    ASSERT_TRUE(QFile::copy(Path("datos/Modelo182.mdb"), Path("component/Modelo182.mdb")));

    ASSERT_EQ(Run({}), AeatCommand::kWritten) << errors.toStdString();

    Connection copy;
    copy.Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + Path("component/Modelo182.mdb"));
    Modelo182Options options;
    options.locale = QLocale(QLocale::Spanish, QLocale::Spain);
    options.numeroJustificante = QString::fromLatin1(kSettingsId);
    options.today = [] { return QDate(2025, 2, 10); };
    cModelo182 component(options);
    bool generado = false;
    NoProgress none;
    const Modelo182Result result = component.GenerarModelo182(copy, generado, false, Path("component/app"), QString(),
                                                              QString(), 0, QVariant(), true, QVariant(), false, false,
                                                              QVariant(), 0, QVariant(), QString(), none);
    ASSERT_TRUE(generado) << result.Resumen(options.locale).toStdString();

    const QByteArray fromCommand = ReadAll(ReportsFile());
    EXPECT_EQ(fromCommand, ReadAll(Path("component/app/Informes/Modelo182_2024.txt")));

    // And what the aggregation must give, worked out from the rows: donor d
    // pays 25.5 * (1 + d % 40) for activities 0 and 1 (plus 1 euro for
    // activity 1) at 80 %, and that plus 2 euros at 40 %.
    qint64 cents = 123456 + 30000;
    for (int d = 0; d < donors; ++d) {
        const qint64 base = 2550 * (1 + d % 40);
        cents += (2 * base + 100) + (base + 200);
    }
    const QList<QByteArray> records = Records(ReportsFile());
    ASSERT_EQ(records.size(), 1 + 2 * donors + 2);
    EXPECT_EQ(records[0].mid(135, 9), QByteArray::number(2 * donors + 2).rightJustified(9, '0'));
    EXPECT_EQ(records[0].mid(144, 15), QByteArray::number(cents).rightJustified(15, '0'));
    EXPECT_TRUE(output.contains(QStringLiteral("Registros de donantes: ") + QString::number(2 * donors + 2) + "\n"))
        << output.toStdString();
}
