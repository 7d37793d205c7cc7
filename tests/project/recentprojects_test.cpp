// SPDX-License-Identifier: MIT
#include "project/configuration.h"
#include "project/settingsfiles.h"
#include "support/files.h"
#include "support/testhome.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

namespace
{
const TestHome Home;

QString ConfigurationFile()
{
    return Home.Path("Molvane/.MolvaneConfiguration.json");
}
}  // namespace

/** Which projects stand in the recent list, and in which order. */
class RecentProjectsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(QDir().mkpath(Home.Path("Molvane"))); }
    void AddRecent_data();
    void AddRecent();
    void ReadsRecentList_data();
    void ReadsRecentList();
    void SaveRecordsTheProject();
};

void RecentProjectsTest::AddRecent_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const QStringList& before, const QStringList& paths,
                        const QStringList& expected)
    { QTest::newRow(name) << before << paths << expected; };
    row("A, B, A", {}, {"A", "B", "A"}, {"A", "B", "A"});
    row("the same ten times", {}, QStringList(QVector<QString>(10, "A").toList()), {"A"});
    row("capitals differ", {}, {"/a", "/A"}, {"/a", "/A"});
    row("slashes differ", {}, {"/a/b", "/a//b"}, {"/a/b", "/a//b"});
    row("an empty path", {}, {""}, {""});
    row("an empty path behind others", {"A"}, {"", ""}, {"A", ""});
    row("the tenth", Numbers(1, 9), {"10"}, Numbers(1, 10));
    row("the eleventh pushes out the oldest", Numbers(1, 10), {"11"}, Numbers(2, 11));
    row("the tenth once more", Numbers(1, 10), {"10"}, Numbers(1, 10));
    row("one from the middle comes again", Numbers(1, 10), {"5"}, Numbers(2, 10) << "5");
    row("too long a list is cut", Numbers(1, 15), {"16"}, Numbers(7, 16));
    row("also when nothing is added", Numbers(1, 15), {"15"}, Numbers(6, 15));
}

void RecentProjectsTest::AddRecent()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, paths);
    QFETCH(QStringList, expected);
    GlobalConfiguration configuration;
    configuration.RecentList = before;
    for (const QString& path : paths)
    {
        configuration.AddRecent(path);
    }
    QCOMPARE(configuration.RecentList, expected);
    QCOMPARE(configuration.ProjectFile, QString());
}

void RecentProjectsTest::ReadsRecentList_data()
{
    QTest::addColumn<QJsonValue>("list");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const QJsonValue& list, const QStringList& expected)
    { QTest::newRow(name) << list << expected; };
    const QJsonObject a{{"ProjectFile", "A"}};
    row("the project is added", Entries("ProjectFile", {"A", "B"}), {"A", "B", "P"});
    row("the project is the last", Entries("ProjectFile", {"A", "P"}), {"A", "P"});
    row("the project is not the last", Entries("ProjectFile", {"P", "A"}), {"P", "A", "P"});
    row("repetitions in the file stay", Entries("ProjectFile", {"A", "A"}), {"A", "A", "P"});
    row("15 entries", Entries("ProjectFile", Numbers(1, 15)), Numbers(7, 15) << "P");
    row("15 entries, the project last", Entries("ProjectFile", Numbers(1, 14) << "P"),
        Numbers(6, 14) << "P");
    row("10 entries", Entries("ProjectFile", Numbers(1, 10)), Numbers(2, 10) << "P");
    row("9 entries", Entries("ProjectFile", Numbers(1, 9)), Numbers(1, 9) << "P");
    row("an object without the key", QJsonArray{QJsonObject{{"Dir", "x"}}, a}, {"A", "P"});
    row("elements that are no objects", QJsonArray{1, "x", QJsonValue(), a}, {"A", "P"});
    row("a value that is no string", QJsonArray{a, QJsonObject{{"ProjectFile", 5}}},
        {"A", "", "P"});
    row("a value that is null", QJsonArray{QJsonObject{{"ProjectFile", QJsonValue()}}}, {"", "P"});
    row("an empty array", QJsonArray(), {"P"});
    row("a string is no array", "A", {"P"});
    row("an object is no array", a, {"P"});
}

void RecentProjectsTest::ReadsRecentList()
{
    QFETCH(QJsonValue, list);
    QFETCH(QStringList, expected);
    WriteObject(ConfigurationFile(), {{"RecentList", list}, {"ProjectFile", "P"}});
    GlobalConfiguration configuration;
    configuration.RecentList = QStringList{"old", "older"};
    configuration.Load();
    QCOMPARE(configuration.RecentList, expected);
    QCOMPARE(configuration.DirList, QStringList());
}

void RecentProjectsTest::SaveRecordsTheProject()
{
    GlobalConfiguration configuration;
    for (const QString project : {"A", "B", "B", "A"})
    {
        configuration.ProjectFile = project;
        configuration.Save();
    }
    QCOMPARE(configuration.RecentList, QStringList({"A", "B", "A"}));
    configuration.RecentList = Numbers(1, 10);
    configuration.Save();
    QCOMPARE(configuration.RecentList, Numbers(2, 10) << "A");
    QCOMPARE(ReadObject(ConfigurationFile())["RecentList"],
             QJsonValue(Entries("ProjectFile", Numbers(2, 10) << "A")));
}

QTEST_APPLESS_MAIN(RecentProjectsTest)
#include "recentprojects_test.moc"
