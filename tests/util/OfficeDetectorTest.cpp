#include "util/OfficeDetector.h"
#include "UtilTest.h"
#include "util/NullRegistry.h"
#include <algorithm>
#include <gtest/gtest.h>

const QString kUninstall = "HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
const QString kOffice = "Microsoft Office 2000 Premium";

// An in-memory registry: full key paths in the order added (the keys above them exist too), compared
// without case; "" names the default value. Records the connections and the handles still open.
class FakeRegistry : public RegistryReader
{
public:
    bool reachMachine = true, reachClasses = true;
    QStringList keys = {"HKLM", "HKCR"}, unopenable, connections;
    QMap<QString, QString> values; // lower-case path "|" value name -> text
    QMap<Key, QString> open;

    void install(const QString &name)
    {
        keys << kUninstall + name;
        values[(kUninstall + name).toLower() + "|DisplayName"] = name;
    }
    // "Word.Application.9" is the CurVer of Word; "Word" alone a CurVer key without a value.
    void curVer(const QString &value)
    {
        keys << "HKCR\\" + value.section('.', 0, 0) + ".Application\\CurVer";
        if (value.contains('.'))
            values[keys.last().toLower() + "|"] = value;
    }
    bool Connect(const QString &computer, Hive hive, Key *root) override
    {
        const bool machine = hive == Hive::LocalMachine;
        connections << (machine ? "HKLM " : "HKCR ") + computer;
        return (machine ? reachMachine : reachClasses) && openPath(machine ? "HKLM" : "HKCR", root);
    }
    bool OpenKey(Key parent, const QString &path, Key *key) override
    {
        return open.contains(parent) && openPath(open[parent] + "\\" + path, key);
    }
    bool EnumKey(Key key, int index, QString *name) override
    {
        QStringList names; // one level below, in the order added
        const QString below = open.value(key) + "\\";
        for (const QString &k : keys)
            if (k.startsWith(below, Qt::CaseInsensitive) && !names.contains(k.mid(below.size()).section('\\', 0, 0)))
                names << k.mid(below.size()).section('\\', 0, 0);
        *name = names.value(index);
        return index >= 0 && index < names.size();
    }
    bool QueryValue(Key key, const QString &valueName, QString *value) override
    {
        *value = values.value(open.value(key).toLower() + "|" + valueName);
        return values.contains(open.value(key).toLower() + "|" + valueName);
    }
    void CloseKey(Key key) override { open.remove(key); }
    bool openPath(const QString &path, Key *key)
    {
        const auto within = [&](const QString &k) { return (k + "\\").startsWith(path + "\\", Qt::CaseInsensitive); };
        if (std::none_of(keys.begin(), keys.end(), within) || unopenable.contains(path, Qt::CaseInsensitive))
            return false;
        open[ *key = ++lastHandle] = path;
        return true;
    }
    Key lastHandle = 100;
};

static QString computerName()
{
    return "PC-SECRETARIA";
}

TEST(OfficeDetectorTest, VersionOfTheLastRecognisedProgramAndTheSoftwareFound)
{
    const struct
    {
        const char *what;
        QStringList installed, curVers, lotusNotes;
        const char *version;
        QStringList found;
    } cases[] = {
        {"8", {kOffice}, {"Word.Application.8"}, {}, "Versión 97", {"Microsoft Word Versión 97"}},
        {"9", {kOffice}, {"Word.Application.9"}, {}, "Versión 2000", {"Microsoft Word Versión 2000"}},
        {"10", {kOffice}, {"Word.Application.10"}, {}, "Versión XP", {"Microsoft Word Versión XP"}},
        {"11 alone", {kOffice}, {"Word.Application.11"}, {}, "", {"Microsoft Word "}},
        {"FrontPage 4 alone",
         {kOffice},
         {"FrontPage.Application.4"},
         {},
         "Versión 2000",
         {"Microsoft FrontPage Versión 2000"}},
        {"no readable CurVer value", {kOffice}, {"Word"}, {}, "", {}},
        {"no Office entry", {"7-Zip 9.20"}, {"Word.Application.9"}, {}, "", {}},
        {"the last recognised wins, in program order, not the order added",
         {kOffice},
         {"Publisher.Application.5", "Word.Application.8", "Outlook.Application.9", "Access.Application.10",
          "Visio.Application.8"},
         {},
         "Versión XP",
         {"Microsoft Word Versión 97", "Microsoft Access Versión XP", "Microsoft Outlook Versión 2000",
          "Microsoft Publisher Versión XP"}},
        {"an unrecognised number keeps the text before",
         {kOffice},
         {"Word.Application.9", "Excel.Application.11"},
         {},
         "Versión 2000",
         {"Microsoft Word Versión 2000", "Microsoft Excel Versión 2000"}},
        {"every Office entry scans; Lotus Notes in the order of the entries",
         {"Microsoft Office XP", "Lotus Notes 6.5", "Microsoft Office Proof"},
         {"Word.Application.10"},
         {"6.5", "7.0"},
         "Versión XP",
         {"Microsoft Word Versión XP", "Lotus Notes 6.5", "Lotus Notes 7.0", "Microsoft Word Versión XP"}},
    };
    FakeRegistry registry;
    OfficeDetector detector(registry, computerName); // one detector for all: each detection starts afresh
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        registry = FakeRegistry();
        for (const QString &name : c.installed)
            registry.install(name);
        for (const QString &value : c.curVers)
            registry.curVer(value);
        for (const QString &version : c.lotusNotes)
            registry.keys << "HKLM\\SOFTWARE\\Lotus\\Notes\\" + version;
        EXPECT_EQ(detector.Detect(), c.version);
        EXPECT_EQ(detector.FoundSoftware(), c.found);
        for (const QString &connection : registry.connections)
            EXPECT_TRUE(connection.endsWith(" PC-SECRETARIA")) << connection.toStdString();
        EXPECT_TRUE(registry.open.isEmpty()); // every key opened is closed
    }
}

TEST(OfficeDetectorTest, RegistryFailuresAreSilentAndTheScanGoesOnAsFarAsItCan)
{
    const QString office97 = kUninstall + "Microsoft Office 97", host = "Cannot connect to host PC-SECRETARIA",
                  noKey = "Cannot open key. Computer: PC-SECRETARIA";
    const struct
    {
        QString unopenable;
        bool reachMachine, reachClasses;
        const char *version;
        QStringList found, diagnostics;
    } cases[] = {
        {office97,
         true,
         true,
         "Versión 2000",
         {"Microsoft Word Versión 2000"},
         {"Unable to open registry key:" + office97.mid(5) + " Machine: PC-SECRETARIA"}},
        {kUninstall.chopped(1), true, true, "", {}, {noKey}},
        {"", false, true, "", {}, {"Cannot connect to machine.PC-SECRETARIA", noKey}},
        {"", true, false, "", {}, {host, host}},
    };
    for (const auto &c : cases) {
        FakeRegistry registry;
        registry.install("Microsoft Office 97");
        registry.install(kOffice);
        registry.curVer("Word.Application.9");
        registry.unopenable << c.unopenable;
        registry.reachMachine = c.reachMachine;
        registry.reachClasses = c.reachClasses;
        OfficeDetector detector(registry, computerName);
        EXPECT_EQ(detector.Detect(), c.version);
        EXPECT_EQ(detector.FoundSoftware(), c.found);
        EXPECT_EQ(detector.Diagnostics(), c.diagnostics);
        EXPECT_TRUE(registry.open.isEmpty());
    }
}

TEST(OfficeDetectorTest, WithoutAWindowsRegistryNothingIsFound)
{
    NullRegistry none;
    EXPECT_EQ(OfficeDetector(none, computerName).Detect(), "");
#ifndef _WIN32 // on Windows the answer depends on the Office installed
    EXPECT_EQ(ObtenerVersionOffice(), "");
#endif
}
