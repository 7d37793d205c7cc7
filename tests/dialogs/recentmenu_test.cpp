// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"

#include <QAction>
#include <QMenu>
#include <QTest>

namespace
{
const TestHome OuterHome;
}  // namespace

/** "Open Recent", and which commands can be taken during a job. */
class RecentMenuTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void NewestAtTheBottom();
    void EachPathOnce();
    void PathsThatDifferInCase();
    void KeepsWhatTheListForgets();
    void NextStartShowsTheList();
    void Opens();
    void OpenedProjectIsNoted();
    void NewNameOfAnOldProjectComesWithTheNextCommand();
    void Question();
    void CancelTheQuestion();
    void YesSavesTheOldProject();
    void MissingFile();
    void OffDuringAJob_data();
    void OffDuringAJob();
    void OneSwitchForTheCommands();

private:
    [[nodiscard]] QString Make(const QString& name) const;
};

/** Writes a project with the source "/videos/NAME.mov". */
QString RecentMenuTest::Make(const QString& name) const
{
    QString path = InHome(name + QStringLiteral(".mvprj"));
    WriteObject(path, SmallProject(QStringLiteral("/videos/%1.mov").arg(name)));
    return path;
}

void RecentMenuTest::NewestAtTheBottom()
{
    const QString a = Make(QStringLiteral("a"));
    const QString b = Make(QStringLiteral("b"));
    QCOMPARE(RecentEntries(), QStringList(StartProjectPath()));
    OpenProject(b);
    OpenProject(a);
    const QStringList expected = {StartProjectPath(), b, a};
    QCOMPARE(RecentEntries(), expected);
    QCOMPARE(RecentProjects(), expected);
}

void RecentMenuTest::EachPathOnce()
{
    const QString a = Make(QStringLiteral("a"));
    const QString b = Make(QStringLiteral("b"));
    OpenProject(a);
    OpenProject(b);
    OpenProject(a);
    const QStringList list = {StartProjectPath(), a, b, a};
    const QStringList menu = {StartProjectPath(), a, b};
    QCOMPARE(RecentProjects(), list);
    QCOMPARE(RecentEntries(), menu);
}

void RecentMenuTest::PathsThatDifferInCase()
{
    const QString small = Make(QStringLiteral("a"));
    const QString big = Make(QStringLiteral("A"));
    OpenProject(small);
    OpenProject(big);
    const QStringList expected = {StartProjectPath(), small, big};
    QCOMPARE(RecentEntries(), expected);
}

void RecentMenuTest::KeepsWhatTheListForgets()
{
    QStringList all = {StartProjectPath()};
    for (int i = 0; i < 10; ++i)
    {
        all.append(Make(QStringLiteral("p%1").arg(i)));
        OpenProject(all.last());
    }
    QCOMPARE(all.size(), 11);
    QCOMPARE(RecentEntries(), all);
    QCOMPARE(RecentProjects(), all.mid(1));  // the oldest of eleven is gone
    ClickRecent(StartProjectPath(), QMessageBox::No);
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(RecentEntries(), all);
    QCOMPARE(RecentProjects(), all.mid(2) + QStringList(StartProjectPath()));
}

void RecentMenuTest::NextStartShowsTheList()
{
    const QString a = Make(QStringLiteral("a"));
    const QString b = Make(QStringLiteral("b"));
    OpenProject(a);
    OpenProject(b);
    OpenProject(a);
    Window.reset();
    Window = std::make_unique<TestWindow>();
    const QStringList expected = {StartProjectPath(), a, b};
    QCOMPARE(RecentEntries(), expected);
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE a.mvprj @ Molvane"));
}

void RecentMenuTest::Opens()
{
    const QString a = Make(QStringLiteral("a"));
    OpenProject(a);
    ClickRecent(StartProjectPath(), QMessageBox::No);
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    NewLines();
    ClickRecent(a, QMessageBox::No);
    QCOMPARE(NewLines(), QStringList({"Run      Project file opened!",
                                      NotOpened(QStringLiteral("/videos/a.mov"))}));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE a.mvprj @ Molvane"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("/videos/a.mov"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 321.0);
}

void RecentMenuTest::OpenedProjectIsNoted()
{
    const QString a = Make(QStringLiteral("a"));
    OpenProject(a);
    ClickRecent(StartProjectPath(), QMessageBox::No);
    const QStringList list = {StartProjectPath(), a, StartProjectPath()};
    QCOMPARE(RecentProjects(), list);
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), StartProjectPath());
}

/**
 * A list of former days names an old ".json" project; opening it notes it under its new name, but
 * leaves the menu to the commands that keep it up to date.
 */
void RecentMenuTest::NewNameOfAnOldProjectComesWithTheNextCommand()
{
    const QString old = InHome(QStringLiteral("old.json"));
    const QString moved = InHome(QStringLiteral("old.mvprj"));
    WriteObject(old, SmallProject(QStringLiteral("/videos/old.mov")));
    const QStringList before = {old, StartProjectPath()};
    Window.reset();
    WriteConfiguration(StartProjectPath(), true, before);
    Window = std::make_unique<TestWindow>();
    QCOMPARE(RecentEntries(), before);
    ClickRecent(old, QMessageBox::No);
    const QStringList noted = {old, StartProjectPath(), moved};
    QCOMPARE(RecentProjects(), noted);
    QCOMPARE(RecentEntries(), before);
    Trigger("actionsave_project");  // keeps the menu as well
    QCOMPARE(RecentEntries(), before);
    OpenProject(StartProjectPath());
    QCOMPARE(RecentEntries(), noted);
}

void RecentMenuTest::Question()
{
    const ShownQuestion shown =
        CancelledQuestion([this] { RecentMenu()->actions().first()->trigger(); });
    QCOMPARE(shown.Title, QStringLiteral("Open Project"));
}

void RecentMenuTest::CancelTheQuestion()
{
    const QString a = Make(QStringLiteral("a"));
    OpenProject(a);
    NewLines();
    ClickRecent(StartProjectPath(), QMessageBox::Cancel);
    QCOMPARE(NewLines(), QStringList());
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE a.mvprj @ Molvane"));
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), a);
}

void RecentMenuTest::YesSavesTheOldProject()
{
    const QString a = Make(QStringLiteral("a"));
    OpenProject(a);
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    ClickRecent(StartProjectPath(), QMessageBox::Yes);
    QCOMPARE(ReadObject(a).value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 800);
}

void RecentMenuTest::MissingFile()
{
    const QString a = Make(QStringLiteral("a"));
    const QString b = Make(QStringLiteral("b"));
    OpenProject(a);
    OpenProject(b);
    QVERIFY(QFile::remove(a));
    NewLines();
    ClickRecent(a, QMessageBox::No);
    QCOMPARE(NewLines(), QStringList({"Error    Project file access error!",
                                      NotOpened(QStringLiteral("/videos/b.mov"))}));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE a.mvprj @ Molvane"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("/videos/b.mov"));
    QVERIFY(!QFile::exists(a));
}

void RecentMenuTest::OffDuringAJob_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("idle") << int(JobNone) << true;
    QTest::newRow("analysis") << int(JobAnalyse) << false;
    QTest::newRow("export") << int(JobExport) << false;
    QTest::newRow("tracking data are there") << int(JobTrackingReady) << true;
    QTest::newRow("path data are there") << int(JobPathReady) << true;
    QTest::newRow("path is calculated") << int(JobPathCalculated) << true;
}

void RecentMenuTest::OffDuringAJob()
{
    QFETCH(int, state);
    QFETCH(bool, isOn);
    OpenProject(Make(QStringLiteral("a")));
    QCOMPARE(RecentMenu()->actions().size(), 2);
    (*Window)->ProcessUpdate(state);
    for (const char* name :
         {"actionnew_project", "actionopen_project", "actionsave_project_as", "actionexit"})
    {
        QVERIFY2(Window->Find<QAction>(name)->isEnabled() == isOn, name);
    }
    for (const QAction* action : RecentMenu()->actions())
    {
        QCOMPARE(action->isEnabled(), isOn);
    }
    QVERIFY(Window->Find<QAction>("actionsave_project")->isEnabled());
    QVERIFY(Window->Find<QAction>("actionFile_Settings")->isEnabled());
}

void RecentMenuTest::OneSwitchForTheCommands()
{
    for (const bool isOn : {false, true})
    {
        (*Window)->MenuProjChangeable(isOn);
        QCOMPARE(Window->Find<QAction>("actionopen_project")->isEnabled(), isOn);
        QCOMPARE(RecentMenu()->actions().first()->isEnabled(), isOn);
        QVERIFY(Window->Find<QAction>("actionsave_project")->isEnabled());
    }
}

QTEST_MAIN(RecentMenuTest)
#include "recentmenu_test.moc"
