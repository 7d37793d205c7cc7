// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "dialogs/homefiles.h"
#include "dialogs/startedwindow.h"
#include "project/filedialogs.h"
#include "support/files.h"
#include "support/testhome.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/inotify.h>
#include <unistd.h>

#include <cstring>

namespace
{
const TestHome OuterHome;

/** Counts how often a file has been written and closed. */
class WriteCounter
{
public:
    explicit WriteCounter(const QString& path)
        : Queue(inotify_init1(IN_NONBLOCK)), Name(QFile::encodeName(QFileInfo(path).fileName()))
    {
        const QByteArray directory = QFile::encodeName(QFileInfo(path).path());
        // The changes keep apart the closings, which would come as one.
        IsWatching =
            inotify_add_watch(Queue, directory.constData(), IN_MODIFY | IN_CLOSE_WRITE) >= 0;
    }
    ~WriteCounter() { close(Queue); }
    WriteCounter(const WriteCounter&) = delete;
    WriteCounter& operator=(const WriteCounter&) = delete;

    /** @return -1 when the directory cannot be watched */
    [[nodiscard]] int Count() const
    {
        QByteArray events(65536, '\0');
        const ssize_t size = read(Queue, events.data(), static_cast<size_t>(events.size()));
        int count = IsWatching ? 0 : -1;
        for (ssize_t at = 0; at < size;)
        {
            inotify_event event{};
            std::memcpy(&event, events.constData() + at, sizeof(event));
            const char* name = events.constData() + at + sizeof(event);
            const bool isClosed = (event.mask & IN_CLOSE_WRITE) != 0;
            count += isClosed && event.len > 0 && Name == name ? 1 : 0;
            at += static_cast<ssize_t>(sizeof(event) + event.len);
        }
        return count;
    }

private:
    int Queue;
    QByteArray Name;
    bool IsWatching = false;
};
}  // namespace

/** What the steps of the start leave: written files, the sidebar, the menu. */
class StartOrderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ConfigurationIsWrittenTwice();
    void NoConfigurationWithoutItsDirectory();
    void QuickDirectoriesKeepTheirOrder();
    void DefaultQuickDirectoriesKeepTheirOrder();
    void SidebarKnowsTheProject();
    void SidebarWithoutAProject();
    void MainMenu();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestHome> Home;
};

void StartOrderTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Home = std::make_unique<TestHome>();
    SidebarUrls.clear();
}

void StartOrderTest::cleanup()
{
    Home.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void StartOrderTest::ConfigurationIsWrittenTwice()
{
    WriteConfiguration(QStringLiteral("/gone.mvprj"), false);
    const WriteCounter counter(ConfigurationPath());
    const StartedWindow window;
    QCOMPARE(counter.Count(), 2);  // no project is opened, which would write it too
}

void StartOrderTest::NoConfigurationWithoutItsDirectory()
{
    const QString path = Home->Path(QStringLiteral("Trip.mvprj"));
    WriteObject(path, SmallProject(QStringLiteral("/videos/trip.mov")));
    const StartedWindow window(path);
    QCOMPARE(window.Title(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QVERIFY(!QFile::exists(Home->Path(QStringLiteral("Molvane"))));
}

void StartOrderTest::QuickDirectoriesKeepTheirOrder()
{
    const QStringList directories = {"/a", "#SrcVideoFileDir", "/c"};
    WriteConfiguration(StartProjectPath(), true, {}, directories);
    for (int i = 0; i < 3; ++i)
    {
        const StartedWindow window;
        QCOMPARE(QuickDirectories(), directories);
    }
}

void StartOrderTest::DefaultQuickDirectoriesKeepTheirOrder()
{
    const QStringList defaults = {Home->Path(QStringLiteral("Molvane")), "#ProjectFilesDir",
                                  "#SrcVideoFileDir", "#ExportVideoFileDir"};
    for (int i = 0; i < 2; ++i)
    {
        const StartedWindow window;
        QCOMPARE(QuickDirectories(), defaults);
    }
}

void StartOrderTest::SidebarKnowsTheProject()
{
    const QString path = Home->Path(QStringLiteral("projects/Trip/Trip.mvprj"));
    QJsonObject project = SmallProject(QStringLiteral("/videos/trip.mov"));
    project["ExportFile"] = QStringLiteral("/exports/trip.mp4");
    WriteObject(path, project);
    WriteConfiguration(QStringLiteral("/old/Old/Old.mvprj"), false, {},
                       {"/c", "#ProjectFilesDir", "#SrcVideoFileDir", "#ExportVideoFileDir"});
    const StartedWindow window(path);
    // The second time the entries are taken from the last to the first of the flipped tree.
    const QList<QUrl> expected = {
        QUrl::fromLocalFile("/c"),
        QUrl::fromLocalFile(Home->Path(QStringLiteral("projects"))),
        QUrl::fromLocalFile("/videos"),
        QUrl::fromLocalFile("/exports"),
    };
    QCOMPARE(SidebarUrls, expected);
}

void StartOrderTest::SidebarWithoutAProject()
{
    WriteConfiguration(QStringLiteral("/old/Old/Old.mvprj"), false, {},
                       {"#SrcVideoFileDir", "#ProjectFilesDir"});
    const StartedWindow window;
    const QList<QUrl> expected = {QUrl(), QUrl::fromLocalFile("/old")};
    QCOMPARE(SidebarUrls, expected);
}

void StartOrderTest::MainMenu()
{
    const StartedWindow window;
    const QStringList expected = {
        "New Project", "-", "Open Project", "Open Recent", "-", "Save Project", "Save Project as",
        "-",           "-", "Exit"};
    QCOMPARE(window.Entries("menumain"), expected);
}

QTEST_MAIN(StartOrderTest)
#include "startorder_test.moc"
