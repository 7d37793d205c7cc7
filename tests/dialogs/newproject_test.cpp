// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "stabilizer/camerapath.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QDir>
#include <QTest>

namespace
{
const TestHome OuterHome;
const QStringList NewProjectLines = {
    "Error    Source video file access error!", "Run      Project file opened!",
    "Run      Project file written!", "Error    Open Source.mp4 failed!"};
}  // namespace

/** "New Project". */
class NewProjectTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void MakesDirectoryAndFile();
    void ShowsTheDefaults();
    void ReplacesAllSettings();
    void PathsAreBoundAnewByTheNextCommit();
    void Question();
    void Dialog();
    void CancelTheQuestion();
    void YesSavesTheOldProject();
    void NoLeavesTheOldProject();
    void CancelTheDialog();
    void FileCannotBeMade();
    void OldProjectStaysInItsPlace();
    void OverAnExistingProject();
    void ForgetsTheCalculatedPath();
    void SecondNewProjectStandsBesideTheFirst();
};

void NewProjectTest::MakesDirectoryAndFile()
{
    NewProject(QStringLiteral("Trip"));
    QCOMPARE(NewLines(), NewProjectLines);
    const QString file = InHome(QStringLiteral("Molvane/Trip/Trip.mvprj"));
    const QJsonObject project = ReadObject(file);
    QCOMPARE(project.value("SourceFile").toString(), QStringLiteral("Source.mp4"));
    QCOMPARE(project.value("ExportFile").toString(),
             InHome(QStringLiteral("Molvane/Trip/Export.mp4")));
    QCOMPARE(project.value("TrackingFile").toString(),
             InHome(QStringLiteral("Molvane/Trip/Tracking.dat")));
    QCOMPARE(project.value("StabilizationFile").toString(),
             InHome(QStringLiteral("Molvane/Trip/Stabilize.dat")));
    QCOMPARE(project.value("MaxTrackingPoints").toInt(), 800);
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), file);
    const QStringList recent = {StartProjectPath(), file};
    QCOMPARE(RecentProjects(), recent);
    QCOMPARE(RecentEntries(), recent);
}

void NewProjectTest::ShowsTheDefaults()
{
    NewProject(QStringLiteral("Trip"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(Window->Text("lineEditExportVideo"),
             InHome(QStringLiteral("Molvane/Trip/Export.mp4")));
    QCOMPARE(Window->Text("lineEditTrackingPathFile"),
             InHome(QStringLiteral("Molvane/Trip/Tracking.dat")));
    QCOMPARE(Window->Text("lineEditStabilizeFile"),
             InHome(QStringLiteral("Molvane/Trip/Stabilize.dat")));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 800.0);
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), 110.0);
    QVERIFY(Window->IsChecked("checkBoxEnableZoom"));
    QVERIFY(!Window->IsChecked("checkBoxRescale"));
    QCOMPARE(Window->Number("spinBoxRescaleXAxis"), 1920.0);
    QCOMPARE(Window->Number("spinBoxRescaleYAxis"), 1080.0);
}

void NewProjectTest::ReplacesAllSettings()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("/videos/clip.mov"));
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Window->SetNumber("doubleSpinBoxExpRot", 3.5);
    NewProject(QStringLiteral("Trip"), QMessageBox::Yes);
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 800.0);
    QCOMPARE(Window->Number("doubleSpinBoxExpRot"), 0.0);
}

/** A new project has vertical settings of its own; until a commit the old binding holds. */
void NewProjectTest::PathsAreBoundAnewByTheNextCommit()
{
    const QString shared = InHome(QStringLiteral("Molvane/Shared/Shared.mvprj"));
    QJsonObject project = SmallProject(QStringLiteral("/videos/clip.mov"));
    project.insert(QStringLiteral("UseFlowVSettings"), false);
    WriteObject(shared, project);
    OpenProject(shared);
    const AxisFilterSettings* horizontal = PathHorizontal.Settings;
    QCOMPARE(PathVertical.Settings, PathHorizontal.Settings);
    NewProject(QStringLiteral("Trip"));
    const QJsonObject made = ReadObject(InHome(QStringLiteral("Molvane/Trip/Trip.mvprj")));
    QVERIFY(made.value("UseFlowVSettings").toBool());
    QCOMPARE(PathVertical.Settings, PathHorizontal.Settings);
    Trigger("actionsave_project");
    QVERIFY(PathVertical.Settings != PathHorizontal.Settings);
    QVERIFY(PathHorizontal.Settings == horizontal);
}

void NewProjectTest::Question()
{
    const ShownQuestion shown = QuestionOf("actionnew_project");
    QCOMPARE(shown.Title, QStringLiteral("Create new Project"));
    QCOMPARE(shown.Text, QStringLiteral("Save current project or cancel?"));
    QCOMPARE(shown.Buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    QCOMPARE(shown.Icon, QMessageBox::Question);
    QVERIFY(shown.IsCancelDefault);
    QVERIFY(shown.Parent == Window->operator->());
}

void NewProjectTest::Dialog()
{
    const ShownFileDialog shown = DialogOf("actionnew_project");
    QCOMPARE(shown.Title, QStringLiteral("New Project"));
    QCOMPARE(shown.Directory, InHome(QStringLiteral("Molvane")));
}

void NewProjectTest::CancelTheQuestion()
{
    const QByteArray before = ReadBytes(StartProjectPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Command("actionnew_project", QMessageBox::Cancel);
    QCOMPARE(NewLines(), QStringList());
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
    QCOMPARE(ReadBytes(StartProjectPath()), before);
}

void NewProjectTest::YesSavesTheOldProject()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    NewProject(QStringLiteral("Trip"), QMessageBox::Yes);
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(NewLines(), QStringList{"Run      Project file written!"} + NewProjectLines);
}

void NewProjectTest::NoLeavesTheOldProject()
{
    const QByteArray before = ReadBytes(StartProjectPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    NewProject(QStringLiteral("Trip"), QMessageBox::No);
    QCOMPARE(ReadBytes(StartProjectPath()), before);
}

void NewProjectTest::CancelTheDialog()
{
    const QString title = (*Window)->windowTitle();
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    NewProject(QString());
    QCOMPARE(NewLines(), QStringList{"Error    Could not create project file"});
    QCOMPARE((*Window)->windowTitle(), title);
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
    QCOMPARE(RecentProjects(), QStringList(StartProjectPath()));
}

void NewProjectTest::FileCannotBeMade()
{
    NewProject(QStringLiteral("Missing/Trip"));
    QCOMPARE(NewLines(), QStringList{"Error    Could not create project file"});
    QCOMPARE(RecentEntries(), QStringList(StartProjectPath()));
}

void NewProjectTest::OldProjectStaysInItsPlace()
{
    NewProject(QStringLiteral("Missing/Trip"));
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Trigger("actionsave_project");
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("/videos/clip.mov"));
    Window->Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(Window->Text("lineEditExportVideo"), InHome(QStringLiteral("Molvane/Start/clip.mp4")));
}

void NewProjectTest::OverAnExistingProject()
{
    const QString file = InHome(QStringLiteral("Molvane/Trip/Trip.mvprj"));
    WriteObject(file, SmallProject(QStringLiteral("/videos/clip.mov")));
    NewProject(QStringLiteral("Trip/Trip.mvprj"));
    QCOMPARE(ReadObject(file).value("SourceFile").toString(), QStringLiteral("Source.mp4"));
    QCOMPARE(ReadObject(file).value("MaxTrackingPoints").toInt(), 800);
}

void NewProjectTest::ForgetsTheCalculatedPath()
{
    (*Window)->ProcessUpdate(JobPathReady);
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
    NewProject(QStringLiteral("Trip"));
    QVERIFY(!Window->IsEnabled("pushButtonExportVideo"));
    QVERIFY(!Window->IsEnabled("pushButtonCalculateTrack"));
}

void NewProjectTest::SecondNewProjectStandsBesideTheFirst()
{
    NewProject(InHome(QStringLiteral("Trip")));
    NewProject(QStringLiteral("Later"));
    QVERIFY(QFile::exists(InHome(QStringLiteral("Later/Later.mvprj"))));
    QCOMPARE(Window->Text("lineEditExportVideo"), InHome(QStringLiteral("Later/Export.mp4")));
}

QTEST_MAIN(NewProjectTest)
#include "newproject_test.moc"
