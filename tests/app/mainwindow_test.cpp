// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/testwindow.h"
#include "batch/jobstate.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QMenu>
#include <QMetaMethod>
#include <QStatusBar>
#include <QTest>

#include <memory>
#include <vector>

namespace
{
const TestHome Home;

/** The widgets that follow the job state, in groups that go on and off together. */
struct JobWidgets
{
    std::vector<const char*> StartButtons{"pushButtonGenerateAll", "pushButtonAnalyseTrack",
                                          "pushButtonReadTrack"};
    std::vector<const char*> PathButtons{"pushButtonCalculateTrack", "pushButtonExportVideo"};
    std::vector<const char*> FileFields{"lineEditSourceVideo",     "lineEditTrackingPathFile",
                                        "lineEditStabilizeFile",   "lineEditExportVideo",
                                        "pushButtonSourceVideo",   "pushButtonTrackingFile",
                                        "pushButtonStabilizeFile", "pushButtonExportVideoFile"};
    std::vector<const char*> ProjectCommands{"actionnew_project", "actionopen_project",
                                             "actionsave_project_as", "actionexit"};
};

/** What the window shows of a state. */
struct Look
{
    QString Word;
    bool Abort = false;
    bool Start = false;
    bool Path = false;
    bool Files = false;
};

const Look Idle{QStringLiteral("IDLE"), false, true, false, true};
const Look IdleWithPath{QStringLiteral("IDLE"), false, true, true, true};
const Look Busy{QStringLiteral("BUSY"), true, false, false, false};
const Look Exporting{QStringLiteral("EXPORTING"), true, false, false, false};

/** What differs, or nothing. */
QString Difference(const TestWindow& window, const Look& look)
{
    const JobWidgets widgets;
    QStringList found;
    const auto check = [&](const char* name, bool expected)
    {
        if (window.IsEnabled(name) != expected)
        {
            found.append(QString::fromLatin1(name));
        }
    };
    check("pushButtonAbort", look.Abort);
    for (const char* name : widgets.StartButtons)
    {
        check(name, look.Start);
    }
    for (const char* name : widgets.PathButtons)
    {
        check(name, look.Path);
    }
    for (const char* name : widgets.FileFields)
    {
        check(name, look.Files);
    }
    for (const char* name : widgets.ProjectCommands)
    {
        if (window.Find<QAction>(name)->isEnabled() != look.Files)
        {
            found.append(QString::fromLatin1(name));
        }
    }
    if (window.Word() != look.Word)
    {
        found.append(window->windowTitle());
    }
    return found.join(QStringLiteral(", "));
}

void Fill(CameraPath& path)
{
    path.DetectedShakiness = {1.0, 2.0};
    path.ShakinessPath = {1.0, 3.0};
    path.UsedShakiness = {1.0, 2.0};
    path.ModifiedPath = {1.0, 3.0};
    path.Result.Correction = {0.5, 0.25};
}
}  // namespace

Q_DECLARE_METATYPE(Look)

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotsInOrder();
    void StartsIdle();
    void StartsWithWorker();
    void Title();
    void LookOfState_data();
    void LookOfState();
    void NumberFieldsStayOn();
    void SaveStaysOn();
    void ProjectCommandsFollowOneSwitch();
    void PathsAreCleared_data();
    void PathsAreCleared();
    void HiddenParts();
    void SlotsWithoutEffect();
    void ExitClosesTheWindow();
    void MessagesReachTheWindow();
    void SecondWindowOfTheProcess();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void MainWindowTest::init()
{
    Guard = std::make_unique<MessageGuard>();
}

void MainWindowTest::cleanup()
{
    QCOMPARE(EndGuard(Guard), QStringList());
}

void MainWindowTest::SlotsInOrder()
{
    const QStringList all = {"closeEvent(QCloseEvent*)",
                             "on_actionnew_project_triggered()",
                             "on_actionopen_project_triggered()",
                             "on_actionsave_project_triggered()",
                             "on_actionsave_project_as_triggered()",
                             "on_actionexit_triggered()",
                             "on_actionFile_Settings_triggered()",
                             "on_actionDefault_Settings_triggered()",
                             "on_actionLook_Feel_triggered()",
                             "on_actionAbout_triggered()",
                             "on_actionAbout_Qt_triggered()",
                             "on_actionAbout_OpenCV_triggered()",
                             "on_actionAbout_Codecs_triggered()",
                             "on_actionHelp_triggered()",
                             "UpdateRecentMenu()",
                             "on_pushButtonTest_clicked()",
                             "on_pushButtonAbort_clicked()",
                             "on_pushButtonSourceVideo_clicked()",
                             "on_pushButtonExportVideoFile_clicked()",
                             "on_pushButtonTrackingFile_clicked()",
                             "on_pushButtonStabilizeFile_clicked()",
                             "on_pushButtonGenerateAll_clicked()",
                             "on_pushButtonAnalyseTrack_clicked()",
                             "on_pushButtonReadTrack_clicked()",
                             "on_pushButtonCalculateTrack_clicked()",
                             "on_pushButtonExportVideo_clicked()",
                             "MainTabChanged(int)",
                             "MenuProjChangeable(bool)",
                             "ProcessUpdate(int)",
                             "OpenRecent()",
                             "AskSaveProject(QString)"};
    const QMetaObject& meta = MainWindow::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(methods, all);
}

void MainWindowTest::StartsIdle()
{
    const TestWindow window;
    QCOMPARE(Difference(window, Idle), QString());
}

void MainWindowTest::StartsWithWorker()
{
    const TestWindow window;
    QVERIFY(ProgramHost.GetThread() != nullptr);
    QCOMPARE(ProgramHost.GetState(), int(JobNone));
}

void MainWindowTest::Title()
{
    const TestWindow window;
    QCOMPARE(window->windowTitle(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    window->ProcessUpdate(JobAnalyse);
    QCOMPARE(window->windowTitle(), QStringLiteral("BUSY Start.mvprj @ Molvane"));
    window->ProcessUpdate(JobExport);
    QCOMPARE(window->windowTitle(), QStringLiteral("EXPORTING Start.mvprj @ Molvane"));
}

void MainWindowTest::LookOfState_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<Look>("look");
    QTest::newRow("-1 is no state") << -1 << Busy;
    QTest::newRow("0 nothing usable") << 0 << Idle;
    QTest::newRow("1 is no state") << 1 << Busy;
    QTest::newRow("2 analyse") << 2 << Busy;
    QTest::newRow("3 stabilize") << 3 << Busy;
    QTest::newRow("4 export") << 4 << Exporting;
    QTest::newRow("5 generate all") << 5 << Busy;
    QTest::newRow("6 read tracking") << 6 << Busy;
    QTest::newRow("7 read all") << 7 << Busy;
    QTest::newRow("8 tracking ready") << 8 << Idle;
    QTest::newRow("9 path ready") << 9 << IdleWithPath;
    QTest::newRow("10 path calculated") << 10 << IdleWithPath;
    QTest::newRow("11 is no state") << 11 << Busy;
    QTest::newRow("12 is no state") << 12 << Busy;
    QTest::newRow("1000 is no state") << 1000 << Busy;
}

void MainWindowTest::LookOfState()
{
    QFETCH(int, state);
    QFETCH(Look, look);
    const TestWindow window;
    for (int former : {0, 2, 9})  // every widget has been on and off before
    {
        window->ProcessUpdate(former);
        window->ProcessUpdate(state);
        QCOMPARE(Difference(window, look), QString());
    }
}

void MainWindowTest::NumberFieldsStayOn()
{
    const TestWindow window;
    window->ProcessUpdate(JobAnalyse);
    for (const char* name : {"spinBoxMaxTrackingPoints", "checkBoxEnableZoom", "doubleSpinBoxZoom",
                             "checkBoxRescale", "spinBoxRescaleXAxis", "spinBoxRescaleYAxis",
                             "spinBoxExpOffsetH", "spinBoxExpOffsetV", "doubleSpinBoxExpRot"})
    {
        QVERIFY2(window.IsEnabled(name), name);
    }
}

void MainWindowTest::SaveStaysOn()
{
    const TestWindow window;
    for (int state = 0; state <= 10; ++state)
    {
        window->ProcessUpdate(state);
        QVERIFY(window.Find<QAction>("actionsave_project")->isEnabled());
    }
}

void MainWindowTest::ProjectCommandsFollowOneSwitch()
{
    const TestWindow window;
    for (bool isOn : {false, true})
    {
        window->MenuProjChangeable(isOn);
        for (const char* name : JobWidgets().ProjectCommands)
        {
            QCOMPARE(window.Find<QAction>(name)->isEnabled(), isOn);
        }
        QVERIFY(window.Find<QAction>("actionsave_project")->isEnabled());
        QVERIFY(window.Find<QAction>("actionFile_Settings")->isEnabled());
    }
}

void MainWindowTest::PathsAreCleared_data()
{
    QTest::addColumn<int>("state");
    for (int state = -1; state <= 12; ++state)
    {
        QTest::addRow("%d", state) << state;
    }
}

void MainWindowTest::PathsAreCleared()
{
    QFETCH(int, state);
    const TestWindow window;
    const int left = state == 0 ? 0 : 2;
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        Fill(*path);
    }
    window->ProcessUpdate(state);
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QCOMPARE(path->DetectedShakiness.size(), left);
        QCOMPARE(path->ShakinessPath.size(), left);
        QCOMPARE(path->UsedShakiness.size(), left);
        QCOMPARE(path->ModifiedPath.size(), left);
        QCOMPARE(path->Result.Correction.size(), 2);
    }
}

void MainWindowTest::HiddenParts()
{
    const TestWindow window;
    for (const char* name : {"actionDefault_Settings", "actionLook_Feel", "actionAbout_Codecs",
                             "actionproject_settings"})
    {
        QVERIFY2(!window.Find<QAction>(name)->isVisible(), name);
    }
    for (const char* name : {"actionnew_project", "actionopen_project", "actionsave_project",
                             "actionsave_project_as", "actionexit", "actionFile_Settings",
                             "actionAbout", "actionAbout_Qt", "actionAbout_OpenCV", "actionHelp"})
    {
        QVERIFY2(window.Find<QAction>(name)->isVisible(), name);
    }
    QVERIFY(window.Find<QStatusBar>("statusbar")->isHidden());
    QVERIFY(window.Find<QWidget>("pushButtonTest")->isHidden());
    QVERIFY(window.Find<QWidget>("pushButtonAbort")->isVisible());
}

void MainWindowTest::SlotsWithoutEffect()
{
    const TestWindow window;
    const QStringList log = window.Log();
    window->on_actionDefault_Settings_triggered();
    window->on_actionLook_Feel_triggered();
    window->on_actionexit_triggered();
    QVERIFY(window->isVisible());
    QCOMPARE(Difference(window, Idle), QString());
    QCOMPARE(window.Log(), log);
}

void MainWindowTest::ExitClosesTheWindow()
{
    const TestWindow window;
    const AnswerModal answer(QMessageBox::No);
    window.Find<QAction>("actionexit")->trigger();
    QVERIFY(answer.WasAnswered());
    QVERIFY(!window->isVisible());
}

void MainWindowTest::MessagesReachTheWindow()
{
    const TestWindow window;
    ProgramHost.Log(2, "by way of the queue");
    QTRY_VERIFY(window.Log().contains(QStringLiteral("Warning  by way of the queue")));
    QCOMPARE(window.LastAction(), QStringLiteral("by way of the queue"));
}

void MainWindowTest::SecondWindowOfTheProcess()
{
    for (int i = 0; i < 2; ++i)
    {
        TestWindow window;
        QCOMPARE(Difference(window, Idle), QString());
        window.End();
        ProgramHost.Log(3, "after the window");  // nobody to show it, and no harm done
        QCoreApplication::processEvents();
    }
}

QTEST_MAIN(MainWindowTest)
#include "mainwindow_test.moc"
