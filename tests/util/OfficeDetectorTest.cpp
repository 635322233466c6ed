#include "util/NullRegistry.h"
#include "util/OfficeDetector.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QSet>
#include <QStringList>

#include <map>
#include <ostream>

void PrintTo(const QString &text, std::ostream *os);

namespace {

// An in-memory registry: keys by full path (case-insensitive, as on Windows),
// each with its subkeys in insertion order and its named values ("" is the
// default value). Records what was connected and which handles stay open.
class FakeRegistry : public RegistryReader
{
public:
    bool connectLocalMachine = true;
    bool connectClassesRoot = true;
    QSet<QString> unopenable;   // keys that exist but cannot be opened
    QStringList connectedTo;    // the computer of every connection
    int connectionsToClassesRoot = 0;

    // Creates the key and every key above it.
    void addKey(Hive hive, const QString &path)
    {
        QString parent = root(hive);
        for (const QString &part : path.split(QLatin1Char('\\'))) {
            const QString child = parent + QLatin1Char('\\') + part;
            if (!m_keys.contains(norm(child))) {
                m_keys[norm(child)] = {};
                m_keys[norm(parent)].subkeys << part;
            }
            parent = child;
        }
    }

    void setValue(Hive hive, const QString &path, const QString &name, const QString &value)
    {
        addKey(hive, path);
        m_keys[norm(root(hive) + QLatin1Char('\\') + path)].values[name] = value;
    }

    void addUninstallEntry(const QString &subkey, const QString &displayName)
    {
        setValue(Hive::LocalMachine, uninstall() + QLatin1Char('\\') + subkey, QStringLiteral("DisplayName"),
                 displayName);
    }

    void setCurVer(const QString &program, const QString &value)
    {
        setValue(Hive::ClassesRoot, program + QStringLiteral(".Application\\CurVer"), QString(), value);
    }

    static QString uninstall() { return QStringLiteral("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall"); }

    int openHandles() const { return int(m_open.size()); }

    bool Connect(const QString &computer, Hive hive, Key *rootKey) override
    {
        connectedTo << computer;
        if (hive == Hive::ClassesRoot)
            ++connectionsToClassesRoot;
        if (!(hive == Hive::LocalMachine ? connectLocalMachine : connectClassesRoot))
            return false;
        m_keys[norm(root(hive))]; // the hive itself always exists
        *rootKey = newHandle(root(hive));
        return true;
    }

    bool OpenKey(Key parent, const QString &path, Key *key) override
    {
        if (!m_open.contains(parent))
            return false;
        const QString full = m_open[parent] + QLatin1Char('\\') + path;
        if (!m_keys.contains(norm(full)) || unopenable.contains(norm(full)))
            return false;
        *key = newHandle(full);
        return true;
    }

    bool EnumKey(Key key, int index, QString *name) override
    {
        if (!m_open.contains(key))
            return false;
        const QStringList &subkeys = m_keys[norm(m_open[key])].subkeys;
        if (index < 0 || index >= subkeys.size())
            return false;
        *name = subkeys[index];
        return true;
    }

    bool QueryValue(Key key, const QString &valueName, QString *value) override
    {
        if (!m_open.contains(key))
            return false;
        const auto &values = m_keys[norm(m_open[key])].values;
        if (!values.contains(valueName))
            return false;
        *value = values[valueName];
        return true;
    }

    void CloseKey(Key key) override { m_open.remove(key); }

    static QString norm(const QString &path) { return path.toLower(); }

private:
    struct Node
    {
        QStringList subkeys;
        QMap<QString, QString> values;
    };

    static QString root(Hive hive)
    {
        return hive == Hive::LocalMachine ? QStringLiteral("HKLM") : QStringLiteral("HKCR");
    }

    Key newHandle(const QString &path)
    {
        m_open[++m_lastHandle] = path;
        return m_lastHandle;
    }

    QMap<QString, Node> m_keys;
    QMap<Key, QString> m_open;
    Key m_lastHandle = 100;
};

class OfficeDetectorTest : public ::testing::Test
{
protected:
    FakeRegistry registry;
    OfficeDetector detector{registry, [] { return QStringLiteral("PC-SECRETARIA"); }};

    void installOffice() { registry.addUninstallEntry(QStringLiteral("{90000C0A-6000-11D3-8CFE-0050048383C9}"), QStringLiteral("Microsoft Office 2000 Premium")); }
};

TEST_F(OfficeDetectorTest, EachVersionNumberMapsToItsText)
{
    const struct {
        const char *value;
        const char *version;
    } cases[] = {
        {"Word.Application.8", "Versión 97"},   {"Word.Application.9", "Versión 2000"},
        {"Word.Application.4", "Versión 2000"}, {"Word.Application.10", "Versión XP"},
        {"Word.Application.5", "Versión XP"},   {"Word.Application.11", ""},
        {"Word.Application.12", ""},            {"Word.Application.7", ""},
        {"Word.Application.08", ""},            {"Word.Application", ""},
        {"", ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        FakeRegistry fresh;
        fresh.addUninstallEntry(QStringLiteral("Office"), QStringLiteral("Microsoft Office Professional"));
        fresh.setCurVer(QStringLiteral("Word"), QString::fromLatin1(c.value));
        OfficeDetector d(fresh, [] { return QStringLiteral("PC"); });
        EXPECT_EQ(d.Detect(), QString::fromUtf8(c.version));
    }
}

TEST_F(OfficeDetectorTest, NoOfficeEntryGivesEmpty)
{
    registry.addUninstallEntry(QStringLiteral("7-Zip"), QStringLiteral("7-Zip 9.20"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_TRUE(detector.FoundSoftware().isEmpty());
}

TEST_F(OfficeDetectorTest, NoReadableCurVerKeyGivesEmpty)
{
    installOffice();
    registry.addKey(RegistryReader::Hive::ClassesRoot, QStringLiteral("Word.Application\\CurVer")); // no value
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_TRUE(detector.FoundSoftware().isEmpty());
}

TEST_F(OfficeDetectorTest, FrontPageFourAloneIsVersion2000)
{
    installOffice();
    registry.setCurVer(QStringLiteral("FrontPage"), QStringLiteral("FrontPage.Application.4"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    EXPECT_EQ(detector.FoundSoftware(), QStringList{QStringLiteral("Microsoft FrontPage Versión 2000")});
}

TEST_F(OfficeDetectorTest, ProgramsAreReadInTheirOrderAndTheLastRecognisedWins)
{
    installOffice();
    // Added in another order than the one they are read in.
    registry.setCurVer(QStringLiteral("Publisher"), QStringLiteral("Publisher.Application.5"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.8"));
    registry.setCurVer(QStringLiteral("OutLook"), QStringLiteral("Outlook.Application.9"));
    registry.setCurVer(QStringLiteral("Excel"), QStringLiteral("Excel.Application.9"));
    registry.setCurVer(QStringLiteral("FrontPage"), QStringLiteral("FrontPage.Application.4"));
    registry.setCurVer(QStringLiteral("Access"), QStringLiteral("Access.Application.10"));
    registry.setCurVer(QStringLiteral("PowerPoint"), QStringLiteral("PowerPoint.Application.8"));

    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión XP"));
    EXPECT_EQ(detector.FoundSoftware(), (QStringList{
                                            QStringLiteral("Microsoft Word Versión 97"),
                                            QStringLiteral("Microsoft Excel Versión 2000"),
                                            QStringLiteral("Microsoft Access Versión XP"),
                                            QStringLiteral("Microsoft PowerPoint Versión 97"),
                                            QStringLiteral("Microsoft FrontPage Versión 2000"),
                                            QStringLiteral("Microsoft Outlook Versión 2000"),
                                            QStringLiteral("Microsoft Publisher Versión XP"),
                                        }));
}

TEST_F(OfficeDetectorTest, LaterProgramOverridesEarlierOne)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.10"));
    registry.setCurVer(QStringLiteral("Publisher"), QStringLiteral("Publisher.Application.8"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 97"));
}

TEST_F(OfficeDetectorTest, UnrecognisedNumberKeepsThePreviousText)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    registry.setCurVer(QStringLiteral("Excel"), QStringLiteral("Excel.Application.11"));
    registry.setCurVer(QStringLiteral("Outlook"), QStringLiteral("Outlook.Application.12"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    EXPECT_EQ(detector.FoundSoftware(), (QStringList{
                                            QStringLiteral("Microsoft Word Versión 2000"),
                                            QStringLiteral("Microsoft Excel Versión 2000"),
                                            QStringLiteral("Microsoft Outlook Versión 2000"),
                                        }));
}

TEST_F(OfficeDetectorTest, UnrecognisedFirstProgramIsListedWithoutVersion)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.11"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_EQ(detector.FoundSoftware(), QStringList{QStringLiteral("Microsoft Word ")});
}

TEST_F(OfficeDetectorTest, OnlyTheSevenProgramsAreRead)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Visio"), QStringLiteral("Visio.Application.10"));
    registry.setCurVer(QStringLiteral("Project"), QStringLiteral("Project.Application.9"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_TRUE(detector.FoundSoftware().isEmpty());
}

TEST_F(OfficeDetectorTest, EveryOfficeEntryScansThePrograms)
{
    registry.addUninstallEntry(QStringLiteral("A"), QStringLiteral("Microsoft Office XP Professional"));
    registry.addUninstallEntry(QStringLiteral("B"), QStringLiteral("Adobe Reader"));
    registry.addUninstallEntry(QStringLiteral("C"), QStringLiteral("Microsoft Office Proof (Spanish)"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.10"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión XP"));
    EXPECT_EQ(detector.FoundSoftware(), (QStringList{QStringLiteral("Microsoft Word Versión XP"),
                                                     QStringLiteral("Microsoft Word Versión XP")}));
    EXPECT_EQ(registry.connectionsToClassesRoot, 2);
}

TEST_F(OfficeDetectorTest, LotusNotesVersionsAreListed)
{
    registry.addUninstallEntry(QStringLiteral("Lotus Notes 6.5"), QStringLiteral("Lotus Notes 6.5 (Español)"));
    registry.addKey(RegistryReader::Hive::LocalMachine, QStringLiteral("SOFTWARE\\Lotus\\Notes\\6.5"));
    registry.addKey(RegistryReader::Hive::LocalMachine, QStringLiteral("SOFTWARE\\Lotus\\Notes\\7.0"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_EQ(detector.FoundSoftware(),
              (QStringList{QStringLiteral("Lotus Notes 6.5"), QStringLiteral("Lotus Notes 7.0")}));
}

TEST_F(OfficeDetectorTest, NotesEntryWithoutLotusKeyAddsNothing)
{
    registry.addUninstallEntry(QStringLiteral("N"), QStringLiteral("Lotus Notes 6"));
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    EXPECT_EQ(detector.FoundSoftware(), QStringList{QStringLiteral("Microsoft Word Versión 2000")});
}

TEST_F(OfficeDetectorTest, LotusAndOfficeItemsFollowTheUninstallOrder)
{
    registry.addUninstallEntry(QStringLiteral("Office"), QStringLiteral("Microsoft Office 2000"));
    registry.addUninstallEntry(QStringLiteral("Notes"), QStringLiteral("Lotus Notes"));
    registry.addKey(RegistryReader::Hive::LocalMachine, QStringLiteral("SOFTWARE\\Lotus\\Notes\\5.0"));
    registry.setCurVer(QStringLiteral("Excel"), QStringLiteral("Excel.Application.9"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    EXPECT_EQ(detector.FoundSoftware(), (QStringList{QStringLiteral("Microsoft Excel Versión 2000"),
                                                     QStringLiteral("Lotus Notes 5.0")}));
}

TEST_F(OfficeDetectorTest, EntryThatCannotBeOpenedIsSkipped)
{
    registry.addUninstallEntry(QStringLiteral("Roto"), QStringLiteral("Microsoft Office 97"));
    registry.unopenable << FakeRegistry::norm(QStringLiteral("HKLM\\") + FakeRegistry::uninstall()
                                              + QStringLiteral("\\Roto"));
    registry.addUninstallEntry(QStringLiteral("Bueno"), QStringLiteral("Microsoft Office 2000"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    EXPECT_EQ(detector.FoundSoftware(), QStringList{QStringLiteral("Microsoft Word Versión 2000")});
    EXPECT_EQ(detector.Diagnostics(),
              QStringList{QStringLiteral("Unable to open registry key:SOFTWARE\\Microsoft\\Windows\\"
                                         "CurrentVersion\\Uninstall\\Roto Machine: PC-SECRETARIA")});
}

TEST_F(OfficeDetectorTest, EntryWithoutDisplayNameIsIgnored)
{
    registry.addKey(RegistryReader::Hive::LocalMachine, FakeRegistry::uninstall() + QStringLiteral("\\SinNombre"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_TRUE(detector.Diagnostics().isEmpty());
}

TEST_F(OfficeDetectorTest, MissingUninstallKeyIsSilent)
{
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_EQ(detector.Diagnostics(), QStringList{QStringLiteral("Cannot open key. Computer: PC-SECRETARIA")});
}

TEST_F(OfficeDetectorTest, MachineThatCannotBeReachedGivesEmpty)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    registry.connectLocalMachine = false;
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_EQ(detector.Diagnostics(), (QStringList{QStringLiteral("Cannot connect to machine.PC-SECRETARIA"),
                                                   QStringLiteral("Cannot open key. Computer: PC-SECRETARIA")}));
}

TEST_F(OfficeDetectorTest, ClassesThatCannotBeReachedGiveEmpty)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    registry.connectClassesRoot = false;
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_TRUE(detector.FoundSoftware().isEmpty());
    EXPECT_EQ(detector.Diagnostics(), QStringList{QStringLiteral("Cannot connect to host PC-SECRETARIA")});
}

TEST_F(OfficeDetectorTest, ConnectsToTheComputerByName)
{
    installOffice();
    detector.Detect();
    EXPECT_EQ(registry.connectedTo,
              (QStringList{QStringLiteral("PC-SECRETARIA"), QStringLiteral("PC-SECRETARIA")}));
}

TEST_F(OfficeDetectorTest, EveryOpenedKeyIsClosed)
{
    installOffice();
    registry.addUninstallEntry(QStringLiteral("Notes"), QStringLiteral("Lotus Notes"));
    registry.addKey(RegistryReader::Hive::LocalMachine, QStringLiteral("SOFTWARE\\Lotus\\Notes\\6.0"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    registry.setCurVer(QStringLiteral("Excel"), QStringLiteral("Excel.Application.9"));
    registry.addKey(RegistryReader::Hive::ClassesRoot, QStringLiteral("Access.Application\\CurVer"));
    detector.Detect();
    EXPECT_EQ(registry.openHandles(), 0);
}

TEST_F(OfficeDetectorTest, EachDetectionStartsAfresh)
{
    installOffice();
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.9"));
    EXPECT_EQ(detector.Detect(), QStringLiteral("Versión 2000"));
    registry.setCurVer(QStringLiteral("Word"), QStringLiteral("Word.Application.11"));
    EXPECT_EQ(detector.Detect(), QString());
    EXPECT_EQ(detector.FoundSoftware(), QStringList{QStringLiteral("Microsoft Word ")});
}

TEST_F(OfficeDetectorTest, NullRegistryFindsNothing)
{
    NullRegistry none;
    OfficeDetector d(none, [] { return QStringLiteral("PC"); });
    EXPECT_EQ(d.Detect(), QString());
    EXPECT_TRUE(d.FoundSoftware().isEmpty());
}

TEST_F(OfficeDetectorTest, PlatformQueryWithoutWindowsRegistryIsEmpty)
{
#ifdef _WIN32
    GTEST_SKIP() << "the answer depends on the Office installed on this computer";
#else
    EXPECT_EQ(ObtenerVersionOffice(), QString());
#endif
}

} // namespace
