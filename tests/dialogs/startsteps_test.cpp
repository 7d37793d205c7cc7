// SPDX-License-Identifier: MIT
#include "app/programapplication.h"
#include "dialogs/dialogguard.h"
#include "dialogs/homefiles.h"
#include "dialogs/startedwindow.h"
#include "dialogs/starttrace.h"
#include "project/filedialogs.h"
#include "support/files.h"
#include "support/testhome.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

namespace
{
const TestHome OuterHome;

const QString Old = QStringLiteral("/old/Old/Old.mvprj");
const QStringList Directories = {"/a", "#ProjectFilesDir", "#SrcVideoFileDir"};

/** Up to the first look at the configuration file, the same at each start. */
const QStringList Built = {"dialog About",
                           "dialog AboutQt",
                           "dialog AboutOpenCV",
                           "dialog AboutCodecs",
                           "dialog Help",
                           "title: Molvane",
                           "log",
                           "range of spinBoxRescaleXAxis",
                           "range of spinBoxRescaleYAxis",
                           "GraphWindow in scrollAreaXAxis",
                           "GraphWindow in scrollAreaYAxis",
                           "GraphWindow in scrollAreaAngle",
                           "PreviewPlayer in scrollAreaPlay",
                           "dialog DirSettings"};
const QStringList Menu = {"Open Recent before actionsave_project",
                          "separator before actionsave_project", "style sheet"};
const QStringList Hidden = {"hidden statusbar", "hidden pushButtonTest"};
}  // namespace

/** In which order the window builds, loads, writes and shows its parts. */
class StartStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void NothingOpens();
    void ArgumentOpens();
    void OldExtensionIsInTheTitleUntilTheEnd();
    void BadArgumentIsToldBeforeTheLastProjectOpens();
    void StartProjectIsMade();
    void StyleSheetOfTheConfiguration_data();
    void StyleSheetOfTheConfiguration();

private:
    /** What accepting the directories leaves; @p dirs and @p places in the order of the files. */
    static QStringList Accepted(const QString& project, const QStringList& recent,
                                const QStringList& dirs, const QStringList& places);
    static QString Written(const QString& project, const QStringList& recent,
                           const QStringList& dirs);
    static QStringList Turned(const QStringList& list);
    [[nodiscard]] QString MakeTrip(const char* name) const;

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestHome> Home;
};

void StartStepsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Home = std::make_unique<TestHome>();
    SidebarUrls.clear();
    ProgramApplication = qApp;
}

void StartStepsTest::cleanup()
{
    qApp->setStyleSheet(QString());
    ProgramApplication = nullptr;
    Home.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

QString StartStepsTest::Written(const QString& project, const QStringList& recent,
                                const QStringList& dirs)
{
    return QStringLiteral("configuration: %1; %2; %3")
        .arg(project, recent.join(QLatin1Char(',')), dirs.join(QLatin1Char(',')));
}

QStringList StartStepsTest::Accepted(const QString& project, const QStringList& recent,
                                     const QStringList& dirs, const QStringList& places)
{
    return {QStringLiteral("sidebar: ") + places.join(QLatin1Char(',')),
            Written(project, recent, dirs)};
}

QStringList StartStepsTest::Turned(const QStringList& list)
{
    return {list.rbegin(), list.rend()};
}

QString StartStepsTest::MakeTrip(const char* name) const
{
    QString path = Home->Path(QString::fromLatin1(name));
    WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    return path;
}

void StartStepsTest::NothingOpens()
{
    WriteConfiguration(Old, false, {}, Directories);
    StartTrace trace;
    const StartedWindow window;
    // No project: the source has no directory yet.
    const QStringList expected =
        Built + Accepted(Old, {Old}, Turned(Directories), {"", "/old", "/a"}) +
        Accepted(Old, {Old}, Directories, {"/a", "/old", ""}) + Menu +
        QStringList{"title: IDLE Old.mvprj @ Molvane", "worker", "settings form filled"} + Hidden;
    QCOMPARE(trace.Story(), expected);
}

void StartStepsTest::ArgumentOpens()
{
    const QString trip = MakeTrip("projects/Trip/Trip.mvprj");
    WriteConfiguration(Old, true, {}, Directories);
    StartTrace trace;
    const StartedWindow window(trip);
    const QStringList expected =
        Built + Accepted(Old, {Old}, Turned(Directories), {"", "/old", "/a"}) +
        QStringList{"title: IDLE Old.mvprj @ Molvane", "log: Run      Project file opened!",
                    "settings form filled", Written(trip, {Old, trip}, Turned(Directories))} +
        Accepted(trip, {Old, trip}, Directories, {"/a", Home->Path("projects"), "/videos"}) + Menu +
        QStringList{"title: IDLE Trip.mvprj @ Molvane", "worker"} + Hidden;
    QCOMPARE(trace.Story(), expected);
}

void StartStepsTest::OldExtensionIsInTheTitleUntilTheEnd()
{
    const QString last = MakeTrip("Trip.json");
    WriteConfiguration(last, true);
    StartTrace trace;
    const StartedWindow window;
    const QStringList story = trace.Story();
    const int before = story.indexOf(QStringLiteral("title: IDLE Trip.json @ Molvane"));
    const int after = story.indexOf(QStringLiteral("title: IDLE Trip.mvprj @ Molvane"));
    QVERIFY(before >= 0);
    QCOMPARE(after, story.indexOf(QStringLiteral("style sheet")) + 1);
}

void StartStepsTest::BadArgumentIsToldBeforeTheLastProjectOpens()
{
    const QString last = MakeTrip("Last.mvprj");
    WriteConfiguration(last, true, {}, Directories);
    StartTrace trace;
    const StartedWindow window(Home->Path(QStringLiteral("bad.mvprj")));
    const QString above = Home->Path().section(QLatin1Char('/'), 0, -2);
    const QStringList expected =
        Built + Accepted(last, {last}, Turned(Directories), {"", above, "/a"}) +
        QStringList{"log: Error    Could not create project file",
                    "title: IDLE Last.mvprj @ Molvane", "log: Run      Project file opened!",
                    "settings form filled"} +
        Accepted(last, {last}, Directories, {"/a", above, "/videos"}) + Menu +
        QStringList{"worker"} + Hidden;
    QCOMPARE(trace.Story(), expected);
}

void StartStepsTest::StartProjectIsMade()
{
    StartTrace trace;
    const StartedWindow window;
    const QString molvane = Home->Path(QStringLiteral("Molvane"));
    const QStringList defaults = {molvane, "#ProjectFilesDir", "#SrcVideoFileDir",
                                  "#ExportVideoFileDir"};
    // There is no directory for the configuration until the project gets its own.
    const QStringList expected =
        Built + QStringList{"sidebar: ,," + molvane + ',' + molvane} +
        QStringList{"title: IDLE Start.mvprj @ Molvane",
                    "log: Error    Source video file access error!",
                    "log: Run      Project file opened!",
                    "log: Run      Project file written!",
                    Written(StartProjectPath(), {StartProjectPath()}, Turned(defaults)),
                    "settings form filled"} +
        Accepted(StartProjectPath(), {StartProjectPath()}, defaults,
                 {molvane, molvane, "", molvane + "/Start"}) +
        Menu + QStringList{"worker"} + Hidden;
    QCOMPARE(trace.Story(), expected);
}

void StartStepsTest::StyleSheetOfTheConfiguration_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::newRow("a file of the user") << true;
    QTest::newRow("the compiled-in sheet for a file that is gone") << false;
}

void StartStepsTest::StyleSheetOfTheConfiguration()
{
    QFETCH(bool, isThere);
    const QString sheet = Home->Path(QStringLiteral("look.css"));
    if (isThere)
    {
        WriteBytes(sheet, "QLabel { color: #010203 }");
    }
    WriteObject(ConfigurationPath(),
                {{"ProjectFile", Old}, {"AutoLoadLastProject", false}, {"StyleSheet", sheet}});
    const StartedWindow window;
    const QByteArray expected = isThere ? QByteArray("QLabel { color: #010203 }")
                                        : ReadBytes(QStringLiteral(":/l/Logos/standard.css"));
    QVERIFY(!expected.isEmpty());
    QCOMPARE(qApp->styleSheet(), QString::fromLatin1(expected));
}

QTEST_MAIN(StartStepsTest)
#include "startsteps_test.moc"
