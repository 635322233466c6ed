#include "UtilTest.h"
#include "util/NullRegistry.h"
#include "util/OfficeDetector.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QStringList>

#include <functional>

namespace {

const QString kUninstall = "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
const QString kOffice = "Microsoft Office 2000 Premium";

// An in-memory registry: keys are full paths below "HKLM" or "HKCR", compared
// without case as on Windows; subkeys enumerate in the order they were added;
// "" names the default value. Records every connection and the open handles.
class FakeRegistry : public RegistryReader
{
public:
    bool reachMachine = true, reachClasses = true;
    QStringList connections, unopenable;

    void addKey(const QString &path) // and every key above it
    {
        QString parent;
        for (const QString &part : path.split("\\")) {
            const QString child = parent.isEmpty() ? part : parent + "\\" + part;
            if (!m_subkeys.contains(child.toLower())) {
                m_subkeys[child.toLower()];
                if (!parent.isEmpty())
                    m_subkeys[parent.toLower()] << part;
            }
            parent = child;
        }
    }
    void setValue(const QString &path, const QString &name, const QString &text)
    {
        addKey(path);
        m_values[path.toLower()][name] = text;
    }
    // An installed program; its uninstall subkey is named after it.
    void install(const QString &name) { setValue(kUninstall + name, "DisplayName", name); }
    // "Word=Word.Application.9" is the CurVer of Word; "Word" alone a CurVer key without a value.
    void curVer(const QString &setting)
    {
        const QString path = "HKCR\\" + setting.section('=', 0, 0) + ".Application\\CurVer";
        setting.contains('=') ? setValue(path, "", setting.section('=', 1)) : addKey(path);
    }
    int openHandles() const { return int(m_open.size()); }

    bool Connect(const QString &computer, Hive hive, Key *root) override
    {
        const QString name = hive == Hive::LocalMachine ? "HKLM" : "HKCR";
        connections << name + " " + computer;
        addKey(name);
        return (hive == Hive::LocalMachine ? reachMachine : reachClasses) && open(name, root);
    }
    bool OpenKey(Key parent, const QString &path, Key *key) override
    {
        return m_open.contains(parent) && open(m_open[parent] + "\\" + path, key);
    }
    bool EnumKey(Key key, int index, QString *name) override
    {
        const QStringList subkeys = m_subkeys.value(m_open.value(key).toLower()); // none for a closed key
        if (index < 0 || index >= subkeys.size())
            return false;
        *name = subkeys[index];
        return true;
    }
    bool QueryValue(Key key, const QString &valueName, QString *value) override
    {
        const QMap<QString, QString> values = m_values.value(m_open.value(key).toLower());
        if (!values.contains(valueName))
            return false;
        *value = values[valueName];
        return true;
    }
    void CloseKey(Key key) override { m_open.remove(key); }

private:
    bool open(const QString &path, Key *key)
    {
        if (!m_subkeys.contains(path.toLower()) || unopenable.contains(path, Qt::CaseInsensitive))
            return false;
        *key = ++m_lastHandle;
        m_open[*key] = path;
        return true;
    }

    QMap<QString, QStringList> m_subkeys; // lower-case path -> subkey names
    QMap<QString, QMap<QString, QString>> m_values;
    QMap<Key, QString> m_open;
    Key m_lastHandle = 100;
};

QString computerName() { return "PC-SECRETARIA"; }

TEST(OfficeDetectorTest, VersionOfTheLastRecognisedProgramAndTheSoftwareFound)
{
    const struct {
        const char *what;
        QStringList installed, curVers, lotusNotes;
        const char *version;
        QStringList found;
    } cases[] = {
        {"8", {kOffice}, {"Word=Word.Application.8"}, {}, "Versión 97", {"Microsoft Word Versión 97"}},
        {"9", {kOffice}, {"Word=Word.Application.9"}, {}, "Versión 2000", {"Microsoft Word Versión 2000"}},
        {"4", {kOffice}, {"Word=Word.Application.4"}, {}, "Versión 2000", {"Microsoft Word Versión 2000"}},
        {"10", {kOffice}, {"Word=Word.Application.10"}, {}, "Versión XP", {"Microsoft Word Versión XP"}},
        {"5", {kOffice}, {"Word=Word.Application.5"}, {}, "Versión XP", {"Microsoft Word Versión XP"}},
        {"11", {kOffice}, {"Word=Word.Application.11"}, {}, "", {"Microsoft Word "}},
        {"12", {kOffice}, {"Word=Word.Application.12"}, {}, "", {"Microsoft Word "}},
        {"7", {kOffice}, {"Word=Word.Application.7"}, {}, "", {"Microsoft Word "}},
        {"08", {kOffice}, {"Word=Word.Application.08"}, {}, "", {"Microsoft Word "}},
        {"no number", {kOffice}, {"Word=Word.Application"}, {}, "", {"Microsoft Word "}},
        {"empty value", {kOffice}, {"Word="}, {}, "", {"Microsoft  "}},
        {"no readable CurVer value", {kOffice}, {"Word"}, {}, "", {}},
        {"no Office entry", {"7-Zip 9.20"}, {"Word=Word.Application.9"}, {}, "", {}},
        {"FrontPage 4 alone", {kOffice}, {"FrontPage=FrontPage.Application.4"}, {}, "Versión 2000",
         {"Microsoft FrontPage Versión 2000"}},
        {"seven programs, added in another order than the one they are read in", {kOffice},
         {"Publisher=Publisher.Application.5", "Word=Word.Application.8", "OutLook=Outlook.Application.9",
          "Excel=Excel.Application.9", "FrontPage=FrontPage.Application.4", "Access=Access.Application.10",
          "PowerPoint=PowerPoint.Application.8"},
         {}, "Versión XP",
         {"Microsoft Word Versión 97", "Microsoft Excel Versión 2000", "Microsoft Access Versión XP",
          "Microsoft PowerPoint Versión 97", "Microsoft FrontPage Versión 2000", "Microsoft Outlook Versión 2000",
          "Microsoft Publisher Versión XP"}},
        {"a later program wins", {kOffice}, {"Word=Word.Application.10", "Publisher=Publisher.Application.8"}, {},
         "Versión 97", {"Microsoft Word Versión XP", "Microsoft Publisher Versión 97"}},
        {"an unrecognised number keeps the text before", {kOffice},
         {"Word=Word.Application.9", "Excel=Excel.Application.11", "Outlook=Outlook.Application.12"}, {},
         "Versión 2000",
         {"Microsoft Word Versión 2000", "Microsoft Excel Versión 2000", "Microsoft Outlook Versión 2000"}},
        {"only the seven programs", {kOffice}, {"Visio=Visio.Application.10", "Project=Project.Application.9"}, {},
         "", {}},
        {"every Office entry scans the programs",
         {"Microsoft Office XP Professional", "Adobe Reader", "Microsoft Office Proof (Spanish)"},
         {"Word=Word.Application.10"}, {}, "Versión XP", {"Microsoft Word Versión XP", "Microsoft Word Versión XP"}},
        {"Lotus Notes versions", {"Lotus Notes 6.5 (Español)"}, {}, {"6.5", "7.0"}, "",
         {"Lotus Notes 6.5", "Lotus Notes 7.0"}},
        {"a Notes entry without the Lotus key", {"Lotus Notes 6", kOffice}, {"Word=Word.Application.9"}, {},
         "Versión 2000", {"Microsoft Word Versión 2000"}},
        {"items in the order of the entries", {"Microsoft Office 2000", "Lotus Notes"},
         {"Excel=Excel.Application.9"}, {"5.0"}, "Versión 2000", {"Microsoft Excel Versión 2000", "Lotus Notes 5.0"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        FakeRegistry registry;
        for (const QString &name : c.installed)
            registry.install(name);
        for (const QString &setting : c.curVers)
            registry.curVer(setting);
        for (const QString &version : c.lotusNotes)
            registry.addKey("HKLM\\SOFTWARE\\Lotus\\Notes\\" + version);
        OfficeDetector detector(registry, computerName);
        EXPECT_EQ(detector.Detect(), c.version);
        EXPECT_EQ(detector.FoundSoftware(), c.found);
        EXPECT_EQ(registry.openHandles(), 0); // every key opened is closed
    }
}

TEST(OfficeDetectorTest, RegistryFailuresAreSilentAndTheScanGoesOnAsFarAsItCan)
{
    const struct {
        const char *what;
        std::function<void(FakeRegistry &)> setUp;
        const char *version;
        QStringList found, diagnostics;
    } cases[] = {
        {"an entry that cannot be opened is skipped",
         [](FakeRegistry &r) {
             r.install("Microsoft Office 97");
             r.unopenable << kUninstall + "Microsoft Office 97";
             r.install(kOffice);
         },
         "Versión 2000", {"Microsoft Word Versión 2000"},
         {"Unable to open registry key:SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
          "Microsoft Office 97 Machine: PC-SECRETARIA"}},
        {"an entry without DisplayName is ignored", [](FakeRegistry &r) { r.addKey(kUninstall + "SinNombre"); },
         "", {}, {}},
        {"no Uninstall key", [](FakeRegistry &) {}, "", {}, {"Cannot open key. Computer: PC-SECRETARIA"}},
        {"the machine cannot be reached",
         [](FakeRegistry &r) { r.install(kOffice); r.reachMachine = false; },
         "", {}, {"Cannot connect to machine.PC-SECRETARIA", "Cannot open key. Computer: PC-SECRETARIA"}},
        {"the classes cannot be reached",
         [](FakeRegistry &r) { r.install(kOffice); r.reachClasses = false; },
         "", {}, {"Cannot connect to host PC-SECRETARIA"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        FakeRegistry registry;
        registry.curVer("Word=Word.Application.9");
        c.setUp(registry);
        OfficeDetector detector(registry, computerName);
        EXPECT_EQ(detector.Detect(), c.version);
        EXPECT_EQ(detector.FoundSoftware(), c.found);
        EXPECT_EQ(detector.Diagnostics(), c.diagnostics);
        EXPECT_EQ(registry.openHandles(), 0);
    }
}

TEST(OfficeDetectorTest, ConnectsToTheComputerByNameOnceMoreForEachOfficeEntry)
{
    FakeRegistry registry;
    registry.install(kOffice);
    registry.install("Microsoft Office Proof (Spanish)");
    OfficeDetector(registry, computerName).Detect();
    EXPECT_EQ(registry.connections,
              (QStringList{"HKLM PC-SECRETARIA", "HKCR PC-SECRETARIA", "HKCR PC-SECRETARIA"}));
}

TEST(OfficeDetectorTest, EachDetectionStartsAfresh)
{
    FakeRegistry registry;
    registry.install(kOffice);
    registry.curVer("Word=Word.Application.9");
    OfficeDetector detector(registry, computerName);
    EXPECT_EQ(detector.Detect(), "Versión 2000");
    registry.curVer("Word=Word.Application.11");
    EXPECT_EQ(detector.Detect(), "");
    EXPECT_EQ(detector.FoundSoftware(), QStringList{"Microsoft Word "});
}

TEST(OfficeDetectorTest, WithoutAWindowsRegistryNothingIsFound)
{
    NullRegistry none;
    OfficeDetector detector(none, computerName);
    EXPECT_EQ(detector.Detect(), "");
    EXPECT_TRUE(detector.FoundSoftware().isEmpty());
#ifndef _WIN32 // on Windows the answer depends on the Office installed
    EXPECT_EQ(ObtenerVersionOffice(), "");
#endif
}

} // namespace
