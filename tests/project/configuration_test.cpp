// SPDX-License-Identifier: MIT
#include "project/configuration.h"
#include "project/configurationfields.h"
#include "project/settingsfiles.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testhome.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QtTest>

#include <memory>

namespace
{
const TestHome Home;

QString ConfigurationFile()
{
    return Home.Path("Molvane/.MolvaneConfiguration.json");
}

QString DefaultProject()
{
    return Home.Path("Molvane/Start/Start.mvprj");
}

QStringList Defaults()
{
    return {"true", DefaultProject(), "standard.css", "recent:", DefaultProject(), "directories:"};
}

/** Loads over a record whose fields all differ from the defaults. */
GlobalConfiguration Loaded()
{
    GlobalConfiguration configuration = UnusualConfiguration();
    configuration.Load();
    return configuration;
}

GlobalConfiguration LoadedFrom(const QJsonObject& root)
{
    WriteObject(ConfigurationFile(), root);
    return Loaded();
}
}  // namespace

class ConfigurationTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ConstructedEmpty();
    void DefaultsWithoutFile();
    void DefaultsFromUselessFiles_data();
    void DefaultsFromUselessFiles();
    void EachKey_data();
    void EachKey();
    void EmptyProjectFileStays();
    void ReadsDirList_data();
    void ReadsDirList();
    void SavesByteForByte();
    void EmptyListsAreLeftOut();
    void SavesWithoutDirectory();
    void SaveReplacesTheFile();
    void RoundTrip();
    void HomeIsAskedEachTime();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void ConfigurationTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    QVERIFY(QDir(Home.Path("Molvane")).removeRecursively());
    QVERIFY(QDir().mkpath(Home.Path("Molvane")));
}

void ConfigurationTest::cleanup()
{
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void ConfigurationTest::ConstructedEmpty()
{
    const GlobalConfiguration configuration;
    QCOMPARE(configuration.RecentList, QStringList());
    QCOMPARE(configuration.DirList, QStringList());
    QCOMPARE(configuration.StyleSheet, QString());
    QCOMPARE(configuration.ProjectFile, QString());
}

void ConfigurationTest::DefaultsWithoutFile()
{
    QCOMPARE(FieldsOf(Loaded()), Defaults());
    QVERIFY(QDir(Home.Path("Molvane")).isEmpty());  // reading makes no file
}

void ConfigurationTest::DefaultsFromUselessFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("syntax error") << QByteArray("{\"ProjectFile\": \"/p\",}");
    QTest::newRow("array") << QByteArray("[{\"ProjectFile\": \"/p\"}]");
    QTest::newRow("no key") << QByteArray("{}");
    QTest::newRow("unknown keys") << QByteArray("{\"projectfile\": \"/p\", \"Dir\": \"/d\"}");
    QTest::newRow("zero bytes") << QByteArray(100, '\0');
}

void ConfigurationTest::DefaultsFromUselessFiles()
{
    QFETCH(QByteArray, bytes);
    WriteBytes(ConfigurationFile(), bytes);
    QCOMPARE(FieldsOf(Loaded()), Defaults());
    QCOMPARE(ReadBytes(ConfigurationFile()), bytes);
}

void ConfigurationTest::EachKey_data()
{
    QTest::addColumn<QJsonValue>("project");
    QTest::addColumn<QJsonValue>("autoLoad");
    QTest::addColumn<QJsonValue>("styleSheet");
    const QJsonValue none(QJsonValue::Undefined);
    QTest::newRow("project") << QJsonValue("/p//x.mvprj") << none << none;
    QTest::newRow("load last project: no") << none << QJsonValue(false) << none;
    QTest::newRow("load last project: yes") << none << QJsonValue(true) << none;
    QTest::newRow("style sheet") << none << none << QJsonValue("/s.css");
    QTest::newRow("no style sheet") << none << none << QJsonValue("");
    QTest::newRow("numbers") << QJsonValue(1) << QJsonValue(0) << QJsonValue(1);
    QTest::newRow("null") << QJsonValue() << QJsonValue() << QJsonValue();
    QTest::newRow("strings and bools mixed up")
        << QJsonValue(true) << QJsonValue("false") << QJsonValue(false);
}

void ConfigurationTest::EachKey()
{
    QFETCH(QJsonValue, project);
    QFETCH(QJsonValue, autoLoad);
    QFETCH(QJsonValue, styleSheet);
    QJsonObject root{
        {"ProjectFile", project}, {"AutoLoadLastProject", autoLoad}, {"StyleSheet", styleSheet}};
    const GlobalConfiguration configuration = LoadedFrom(root);
    QCOMPARE(configuration.ProjectFile, project.isString() ? project.toString() : DefaultProject());
    QCOMPARE(configuration.AutoLoadLastProject, autoLoad.isBool() ? autoLoad == true : true);
    QCOMPARE(configuration.StyleSheet,
             styleSheet.isString() ? styleSheet.toString() : "standard.css");
    QCOMPARE(configuration.RecentList, QStringList(configuration.ProjectFile));
}

void ConfigurationTest::EmptyProjectFileStays()
{
    const GlobalConfiguration configuration = LoadedFrom({{"ProjectFile", ""}});
    QCOMPARE(configuration.ProjectFile, QString());
    QCOMPARE(configuration.RecentList, QStringList(QString()));
}

void ConfigurationTest::ReadsDirList_data()
{
    QTest::addColumn<QJsonValue>("list");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const QJsonValue& list, const QStringList& expected)
    { QTest::newRow(name) << list << expected; };
    const QJsonObject a{{"Dir", "A"}};
    row("as the user typed them", Entries("Dir", {"%HOME%/x", "", "/a//b", "/a//b"}),
        {"%HOME%/x", "", "/a//b", "/a//b"});
    row("20 entries", Entries("Dir", Numbers(1, 20)), Numbers(1, 20));
    row("1000 entries", Entries("Dir", Numbers(1, 1000)), Numbers(1, 1000));
    row("an object without the key", QJsonArray{QJsonObject{{"ProjectFile", "x"}}, a}, {"A"});
    row("elements that are no objects", QJsonArray{1, "x", QJsonValue(), a}, {"A"});
    row("a value that is no string", QJsonArray{QJsonObject{{"Dir", true}}, a}, {"", "A"});
    row("an empty array", QJsonArray(), {});
    row("a string is no array", "A", {});
}

void ConfigurationTest::ReadsDirList()
{
    QFETCH(QJsonValue, list);
    QFETCH(QStringList, expected);
    const QStringList recent = Numbers(1, 9);
    const GlobalConfiguration configuration = LoadedFrom(
        {{"DirList", list}, {"RecentList", Entries("ProjectFile", recent)}, {"ProjectFile", "P"}});
    QCOMPARE(configuration.DirList, expected);
    QCOMPARE(configuration.RecentList, QStringList(recent) << "P");
}

void ConfigurationTest::SavesByteForByte()
{
    GlobalConfiguration configuration;
    configuration.AutoLoadLastProject = false;
    configuration.ProjectFile = "/p/B.mvprj";
    configuration.StyleSheet = "s.css";
    configuration.RecentList = QStringList{"/p/A.mvprj"};
    configuration.DirList = QStringList{"%HOME%", "/b"};
    configuration.Save();
    QCOMPARE(QString::fromUtf8(ReadBytes(ConfigurationFile())).split('\n'), QString(R"({
    "AutoLoadLastProject": false,
    "DirList": [
        {
            "Dir": "%HOME%"
        },
        {
            "Dir": "/b"
        }
    ],
    "ProjectFile": "/p/B.mvprj",
    "RecentList": [
        {
            "ProjectFile": "/p/A.mvprj"
        },
        {
            "ProjectFile": "/p/B.mvprj"
        }
    ],
    "StyleSheet": "s.css"
}
)")
                                                                                .split('\n'));
    QCOMPARE(QDir(Home.Path("Molvane"))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(".MolvaneConfiguration.json"));
}

void ConfigurationTest::EmptyListsAreLeftOut()
{
    GlobalConfiguration configuration;
    configuration.AutoLoadLastProject = true;
    configuration.Save();
    // The recent list is never empty: the project comes in first, even without a name.
    QCOMPARE(ReadObject(ConfigurationFile()),
             (QJsonObject{{"AutoLoadLastProject", true},
                          {"ProjectFile", ""},
                          {"StyleSheet", ""},
                          {"RecentList", QJsonArray{QJsonObject{{"ProjectFile", ""}}}}}));
}

void ConfigurationTest::SavesWithoutDirectory()
{
    QVERIFY(QDir(Home.Path("Molvane")).removeRecursively());
    GlobalConfiguration configuration;
    configuration.ProjectFile = "/p.mvprj";
    configuration.Save();
    QVERIFY(!QFileInfo::exists(Home.Path("Molvane")));
    QVERIFY(QDir(Home.Path()).isEmpty());
    QCOMPARE(configuration.RecentList, QStringList("/p.mvprj"));
}

void ConfigurationTest::SaveReplacesTheFile()
{
    WriteObject(ConfigurationFile(), {{"other", 1}, {"DirList", Entries("Dir", {"old"})}});
    GlobalConfiguration().Save();
    QVERIFY(!ReadObject(ConfigurationFile()).contains("other"));
    QVERIFY(!ReadObject(ConfigurationFile()).contains("DirList"));
}

void ConfigurationTest::RoundTrip()
{
    GlobalConfiguration configuration;
    configuration.AutoLoadLastProject = false;
    configuration.ProjectFile = QString::fromUtf8("/ü \"%1\"//x.mvprj");
    configuration.StyleSheet = "../s.css";
    configuration.RecentList = QStringList{"A", "", "A"};
    configuration.DirList = Numbers(1, 30) << ""
                                           << "%VIDEO%";
    configuration.Save();
    QCOMPARE(configuration.RecentList, QStringList({"A", "", "A", configuration.ProjectFile}));
    QCOMPARE(FieldsOf(Loaded()), FieldsOf(configuration));
}

void ConfigurationTest::HomeIsAskedEachTime()
{
    WriteObject(ConfigurationFile(), {{"ProjectFile", "first"}});
    {
        const TestHome other;
        QVERIFY(QDir().mkpath(other.Path("Molvane")));
        GlobalConfiguration configuration = Loaded();
        QCOMPARE(configuration.ProjectFile, other.Path("Molvane/Start/Start.mvprj"));
        configuration.Save();
        QVERIFY(QFileInfo::exists(other.Path("Molvane/.MolvaneConfiguration.json")));
    }
    QCOMPARE(Loaded().ProjectFile, QString("first"));
}

QTEST_APPLESS_MAIN(ConfigurationTest)
#include "configuration_test.moc"
