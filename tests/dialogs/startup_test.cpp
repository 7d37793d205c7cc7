// SPDX-License-Identifier: MIT
#include "app/testwindow.h"
#include "dialogs/dialogguard.h"
#include "dialogs/homefiles.h"
#include "dialogs/startedwindow.h"
#include "support/files.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QFile>
#include <QJsonDocument>
#include <QTest>

namespace
{
const TestHome OuterHome;

const QString NoProject = QStringLiteral("Error    Could not create project file");
const QStringList NewProjectLines = {"Error    Source video file access error!",
                                     "Run      Project file opened!",
                                     "Run      Project file written!"};
const QStringList OpenedLines = {"Run      Project file opened!"};
}  // namespace

/** What the program opens at its start, and what it leaves on disk. */
class StartupTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void EmptyHome();
    void StartProjectIsThere();
    void LastProject();
    void LastProjectIsMissing();
    void LastProjectIsEmpty();
    void MissingProjectTakesTheStartProjectOver();
    void LastProjectIsBroken_data();
    void LastProjectIsBroken();
    void ArgumentGoesBeforeTheLastProject() { OpenArgument(true); }
    void ArgumentOpensThoughTheLastProjectDoesNot() { OpenArgument(false); }
    void ArgumentInAnEmptyHome();
    void ArgumentWithOldExtension();
    void BadArgument_data();
    void BadArgument();
    void BadArgumentAndNothingToLoad_data() { BadArgument_data(); }
    void BadArgumentAndNothingToLoad();
    void BadArgumentAndNoLastProject_data();
    void BadArgumentAndNoLastProject();
    void ExportGoesToTheProjectsDirectory_data();
    void ExportGoesToTheProjectsDirectory();
    void BrokenConfiguration();
    void RecentListGrowsByTheProject();

private:
    [[nodiscard]] QString InHome(const char* name) const
    {
        return Home->Path(QString::fromLatin1(name));
    }
    /** Makes a project "Last" and a configuration that names it. */
    void MakeLast(bool autoLoad) const;
    /** Starts with a project "Trip" as argument beside the last one. */
    void OpenArgument(bool autoLoad) const;

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestHome> Home;
};

void StartupTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Home = std::make_unique<TestHome>();
}

void StartupTest::cleanup()
{
    Home.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void StartupTest::MakeLast(bool autoLoad) const
{
    const QString last = InHome("Last/Last.mvprj");
    WriteObject(last, SmallProject(QStringLiteral("/videos/last.mov")));
    WriteConfiguration(last, autoLoad);
}

void StartupTest::EmptyHome()
{
    const StartedWindow window;
    QVERIFY(QFile::exists(StartProjectPath()));
    QCOMPARE(window.Title(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(window.Log(), NewProjectLines);
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(window.Text("lineEditTrackingPathFile"), InHome("Molvane/Start/Tracking.dat"));
    QCOMPARE(window.Text("lineEditStabilizeFile"), InHome("Molvane/Start/Stabilize.dat"));
    QCOMPARE(window.Text("lineEditExportVideo"), InHome("Molvane/Start/Export.mp4"));
    QCOMPARE(window.Number("spinBoxMaxTrackingPoints"), 800.0);
    QCOMPARE(window.Number("spinBoxRescaleXAxis"), 1920.0);
    const QJsonObject configuration = ReadObject(ConfigurationPath());
    QCOMPARE(configuration.value("ProjectFile").toString(), StartProjectPath());
    QCOMPARE(configuration.value("AutoLoadLastProject"), QJsonValue(true));
    QCOMPARE(configuration.value("StyleSheet").toString(), QStringLiteral("standard.css"));
    QCOMPARE(RecentProjects(), QStringList(StartProjectPath()));
}

void StartupTest::StartProjectIsThere()
{
    WriteObject(StartProjectPath(), SmallProject(QStringLiteral("/videos/clip.mov")));
    const QByteArray before = ReadBytes(StartProjectPath());
    const StartedWindow window;
    QCOMPARE(window.Log(), OpenedLines);
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("/videos/clip.mov"));
    QCOMPARE(ReadBytes(StartProjectPath()), before);
}

void StartupTest::LastProject()
{
    MakeLast(true);
    const StartedWindow window;
    QCOMPARE(window.Title(), QStringLiteral("IDLE Last.mvprj @ Molvane"));
    QCOMPARE(window.Log(), OpenedLines);
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("/videos/last.mov"));
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void StartupTest::LastProjectIsMissing()
{
    WriteConfiguration(InHome("gone/gone.mvprj"), true);
    const StartedWindow window;
    QCOMPARE(window.Title(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(window.Log(), NewProjectLines);
    QVERIFY(QFile::exists(StartProjectPath()));
    QVERIFY(!QFile::exists(InHome("gone")));
    const QStringList recent = {InHome("gone/gone.mvprj"), StartProjectPath()};
    QCOMPARE(RecentProjects(), recent);
}

void StartupTest::LastProjectIsEmpty()
{
    WriteConfiguration(QString(), true);
    const StartedWindow window;
    QCOMPARE(window.Title(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QVERIFY(QFile::exists(StartProjectPath()));
}

void StartupTest::MissingProjectTakesTheStartProjectOver()
{
    WriteObject(StartProjectPath(), SmallProject(QStringLiteral("/videos/clip.mov")));
    WriteConfiguration(InHome("gone.mvprj"), true);
    const StartedWindow window;
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 800);
}

void StartupTest::LastProjectIsBroken_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("no JSON") << QByteArray("a text");
    QTest::newRow("none of the keys") << QByteArray("{}");
}

/** Only an argument is looked at closely; here each value takes its default. */
void StartupTest::LastProjectIsBroken()
{
    QFETCH(QByteArray, content);
    const QString last = InHome("Last/Last.mvprj");
    WriteBytes(last, content);
    WriteConfiguration(last, true);
    const StartedWindow window;
    QCOMPARE(window.Title(), QStringLiteral("IDLE Last.mvprj @ Molvane"));
    QCOMPARE(window.Log(), OpenedLines);
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(window.Text("lineEditTrackingPathFile"), QStringLiteral("Tracking.dat"));
    QCOMPARE(window.Number("spinBoxMaxTrackingPoints"), 800.0);
    QCOMPARE(ReadBytes(last), content);
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void StartupTest::OpenArgument(bool autoLoad) const
{
    MakeLast(autoLoad);
    const QString path = InHome("Trip/Trip.mvprj");
    WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    const StartedWindow window(path);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(window.Log(), OpenedLines);
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("/videos/trip.mov"));
    QCOMPARE(window.Number("doubleSpinBoxZoom"), 125.0);
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), path);
    QCOMPARE(ReadObject(ConfigurationPath()).value("AutoLoadLastProject"), QJsonValue(autoLoad));
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void StartupTest::ArgumentInAnEmptyHome()
{
    const QString path = InHome("Trip/Trip.mvprj");
    WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    const StartedWindow window(path);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(window.Log(), OpenedLines);
    QVERIFY(!QFile::exists(InHome("Molvane")));  // nor is the start project made
}

void StartupTest::ArgumentWithOldExtension()
{
    const QString path = InHome("Trip/Trip.json");
    WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    const StartedWindow window(path);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(ReadObject(InHome("Trip/Trip.mvprj")), ReadObject(path));
}

void StartupTest::BadArgument_data()
{
    QTest::addColumn<QByteArray>("content");  // no file when null
    const auto without = [](const char* key)
    {
        QJsonObject project = SmallProject(QStringLiteral("/videos/trip.mov"));
        project.remove(QLatin1String(key));
        return QJsonDocument(project).toJson();
    };
    QJsonObject wrongType = SmallProject(QStringLiteral("/videos/trip.mov"));
    wrongType["CropFactor"] = QStringLiteral("1.1");
    QTest::newRow("no such file") << QByteArray();
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("no JSON") << QByteArray("a text");
    QTest::newRow("none of the keys") << QByteArray("{}");
    for (const char* key : {"TrackingFile", "StabilizeType", "MaxTrackingPoints", "EnableCrop",
                            "CropFactor", "EnRescale"})
    {
        QTest::newRow(QByteArray("without ") + key) << without(key);
    }
    QTest::newRow("a text for a number") << QJsonDocument(wrongType).toJson();
}

void StartupTest::BadArgument()
{
    QFETCH(QByteArray, content);
    MakeLast(true);
    const QString path = InHome("bad.mvprj");
    if (!content.isNull())
    {
        WriteBytes(path, content);
    }
    const StartedWindow window(path);
    QCOMPARE(window.Log(), QStringList(NoProject) + OpenedLines);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Last.mvprj @ Molvane"));
    QCOMPARE(window.Text("lineEditSourceVideo"), QStringLiteral("/videos/last.mov"));
}

void StartupTest::BadArgumentAndNothingToLoad()
{
    QFETCH(QByteArray, content);
    MakeLast(false);
    const QString path = InHome("bad.mvprj");
    if (!content.isNull())
    {
        WriteBytes(path, content);
    }
    const StartedWindow window(path);
    QCOMPARE(window.Log(), QStringList(NoProject));
    QCOMPARE(window.Text("lineEditSourceVideo"), QString());
    QCOMPARE(window.Number("spinBoxRescaleXAxis"), 99.0);
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(),
             InHome("Last/Last.mvprj"));
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void StartupTest::BadArgumentAndNoLastProject_data()
{
    QTest::addColumn<QString>("stored");  // no configuration when null
    QTest::newRow("no configuration") << QString();
    QTest::newRow("the last project is gone") << "gone.mvprj";
}

void StartupTest::BadArgumentAndNoLastProject()
{
    QFETCH(QString, stored);
    if (!stored.isNull())
    {
        WriteConfiguration(Home->Path(stored), true);
    }
    const StartedWindow window(InHome("bad.mvprj"));
    QCOMPARE(window.Log(), QStringList(NoProject) + NewProjectLines);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), StartProjectPath());
    QVERIFY(!QFile::exists(InHome("bad.mvprj")));
}

void StartupTest::ExportGoesToTheProjectsDirectory_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("directory");
    QTest::newRow("of the start project") << QString() << "Molvane/Start";
    QTest::newRow("of the argument") << "Trip/Trip.mvprj"
                                     << "Trip";
}

void StartupTest::ExportGoesToTheProjectsDirectory()
{
    QFETCH(QString, argument);
    QFETCH(QString, directory);
    const QString path = argument.isEmpty() ? QString() : Home->Path(argument);
    if (!argument.isEmpty())
    {
        WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    }
    const TestWindow window(path);
    const auto dialog = AnswerModal::FileDialog(InHome("clip.mov"));
    window.Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(window.Text("lineEditExportVideo"), Home->Path(directory + "/clip.mp4"));
}

void StartupTest::BrokenConfiguration()
{
    WriteBytes(ConfigurationPath(), "{ broken");
    const StartedWindow window;
    QCOMPARE(window.Title(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(window.Log(), NewProjectLines);
    QCOMPARE(RecentProjects(), QStringList(StartProjectPath()));
}

void StartupTest::RecentListGrowsByTheProject()
{
    MakeLast(true);
    const QString last = InHome("Last/Last.mvprj");
    WriteConfiguration(last, true, {last, "/old.mvprj"});
    const QStringList expected = {last, "/old.mvprj", last};
    for (int i = 0; i < 2; ++i)  // the second start adds nothing
    {
        const StartedWindow window;
        QCOMPARE(RecentProjects(), expected);
    }
}

QTEST_MAIN(StartupTest)
#include "startup_test.moc"
