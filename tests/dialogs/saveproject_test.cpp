// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QFile>
#include <QTest>

namespace
{
const TestHome OuterHome;
const QString Written = QStringLiteral("Run      Project file written!");
const QString NotSaved = QStringLiteral("Error    Could not save project file");
const QString NotMade = QStringLiteral("Error    Could not create project file");
}  // namespace

/** "Save Project" and "Save Project as". */
class SaveProjectTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void SaveWritesTheForm();
    void SaveWritesTheConfiguration();
    void SaveDuringAJob();
    void SaveOfAMissingFile();
    void SaveOfAMissingFileCancelled();
    void SaveOfAMissingFileDialogCancelled();
    void SaveAsMovesWhatTheProgramWrites();
    void SaveAsTakesTheForm();
    void SaveAsEntersConfigurationAndMenu();
    void SaveAsShowsTheNewName();
    void SaveAsForgetsTheCalculatedPath();
    void SaveAsQuestion();
    void SaveAsDialog();
    void SaveAsCancelled();
    void SaveAsDialogCancelled();
    void SaveAsFileCannotBeMade();
    void SaveAsAnswersForTheOldProject_data();
    void SaveAsAnswersForTheOldProject();

private:
    [[nodiscard]] QString Later() const
    {
        return InHome(QStringLiteral("Molvane/Later/Later.mvprj"));
    }
    void CheckStillAtStart();
};

/** The next save goes to the start project, and exports to its directory. */
void SaveProjectTest::CheckStillAtStart()
{
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), StartProjectPath());
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("/videos/still.mov"));
    Window->Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    Trigger("actionsave_project");
    QCOMPARE(ReadObject(StartProjectPath()).value("ExportFile").toString(),
             InHome(QStringLiteral("Molvane/Start/still.mp4")));
}

void SaveProjectTest::SaveWritesTheForm()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("/videos/clip.mov"));
    Window->SetText("lineEditExportVideo", QStringLiteral("/out/e.mp4"));
    Window->SetText("lineEditTrackingPathFile", QStringLiteral("/out/t.dat"));
    Window->SetText("lineEditStabilizeFile", QStringLiteral("/out/s.dat"));
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Window->SetNumber("doubleSpinBoxZoom", 150.0);
    Window->SetChecked("checkBoxRescale", true);
    Trigger("actionsave_project");  // without a question
    QCOMPARE(NewLines(), QStringList(Written));
    const QJsonObject project = ReadObject(StartProjectPath());
    QCOMPARE(project.value("SourceFile").toString(), QStringLiteral("/videos/clip.mov"));
    QCOMPARE(project.value("ExportFile").toString(), QStringLiteral("/out/e.mp4"));
    QCOMPARE(project.value("TrackingFile").toString(), QStringLiteral("/out/t.dat"));
    QCOMPARE(project.value("StabilizationFile").toString(), QStringLiteral("/out/s.dat"));
    QCOMPARE(project.value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(project.value("CropFactor").toDouble(), 1.5);
    QCOMPARE(project.value("EnRescale").toBool(), true);
}

void SaveProjectTest::SaveWritesTheConfiguration()
{
    QVERIFY(QFile::remove(ConfigurationPath()));
    Trigger("actionsave_project");
    QCOMPARE(RecentProjects(), QStringList(StartProjectPath()));
}

void SaveProjectTest::SaveDuringAJob()
{
    (*Window)->ProcessUpdate(JobAnalyse);
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Trigger("actionsave_project");
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(Window->Word(), QStringLiteral("BUSY"));
}

void SaveProjectTest::SaveOfAMissingFile()
{
    QVERIFY(QFile::remove(StartProjectPath()));
    Command("actionsave_project", QMessageBox::No, QStringLiteral("Later"));
    const QStringList expected = {NotSaved, Written};
    QCOMPARE(NewLines(), expected);
    QVERIFY(!QFile::exists(StartProjectPath()));
    QVERIFY(QFile::exists(Later()));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Later.mvprj @ Molvane"));
}

void SaveProjectTest::SaveOfAMissingFileCancelled()
{
    QVERIFY(QFile::remove(StartProjectPath()));
    Command("actionsave_project", QMessageBox::Cancel);
    QCOMPARE(NewLines(), QStringList(NotSaved));
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void SaveProjectTest::SaveOfAMissingFileDialogCancelled()
{
    QVERIFY(QFile::remove(StartProjectPath()));
    Command("actionsave_project", QMessageBox::No, QString());
    const QStringList expected = {NotSaved, NotMade};
    QCOMPARE(NewLines(), expected);
    QVERIFY(!QFile::exists(StartProjectPath()));
}

void SaveProjectTest::SaveAsMovesWhatTheProgramWrites()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("/videos/clip.mov"));
    Window->SetText("lineEditExportVideo", QStringLiteral("/far/away/clip.mp4"));
    Window->SetText("lineEditTrackingPathFile", QStringLiteral("T.dat"));
    SaveProjectAs(QStringLiteral("Later"));
    QCOMPARE(NewLines(), QStringList(Written));
    const QString directory = InHome(QStringLiteral("Molvane/Later"));
    const QJsonObject project = ReadObject(Later());
    QCOMPARE(project.value("SourceFile").toString(), QStringLiteral("/videos/clip.mov"));
    QCOMPARE(project.value("ExportFile").toString(), directory + QStringLiteral("/clip.mp4"));
    QCOMPARE(project.value("TrackingFile").toString(), directory + QStringLiteral("/T.dat"));
    QCOMPARE(project.value("StabilizationFile").toString(),
             directory + QStringLiteral("/Stabilize.dat"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("/videos/clip.mov"));
    QCOMPARE(Window->Text("lineEditExportVideo"), directory + QStringLiteral("/clip.mp4"));
    QCOMPARE(Window->Text("lineEditTrackingPathFile"), directory + QStringLiteral("/T.dat"));
    QCOMPARE(Window->Text("lineEditStabilizeFile"), directory + QStringLiteral("/Stabilize.dat"));
}

void SaveProjectTest::SaveAsTakesTheForm()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Window->SetNumber("doubleSpinBoxExpRot", -2.5);
    SaveProjectAs(QStringLiteral("Later"));
    QCOMPARE(ReadObject(Later()).value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(ReadObject(Later()).value("ExpAngle").toDouble(), -2.5);
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
}

void SaveProjectTest::SaveAsEntersConfigurationAndMenu()
{
    SaveProjectAs(QStringLiteral("Later"));
    const QStringList recent = {StartProjectPath(), Later()};
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), Later());
    QCOMPARE(RecentProjects(), recent);
    QCOMPARE(RecentEntries(), recent);
}

void SaveProjectTest::SaveAsShowsTheNewName()
{
    SaveProjectAs(QStringLiteral("Later"));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Later.mvprj @ Molvane"));
}

void SaveProjectTest::SaveAsForgetsTheCalculatedPath()
{
    (*Window)->ProcessUpdate(JobPathReady);
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
    SaveProjectAs(QStringLiteral("Later"));
    QVERIFY(!Window->IsEnabled("pushButtonExportVideo"));
}

void SaveProjectTest::SaveAsQuestion()
{
    QCOMPARE(QuestionOf("actionsave_project_as").Title, QStringLiteral("Save as new Project"));
}

void SaveProjectTest::SaveAsDialog()
{
    const ShownFileDialog shown = DialogOf("actionsave_project_as");
    QCOMPARE(shown.Title, QStringLiteral("Save as Project"));
    QCOMPARE(shown.Directory, InHome(QStringLiteral("Molvane")));
}

void SaveProjectTest::SaveAsCancelled()
{
    const QByteArray before = ReadBytes(StartProjectPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    Command("actionsave_project_as", QMessageBox::Cancel);
    QCOMPARE(NewLines(), QStringList());
    QCOMPARE(ReadBytes(StartProjectPath()), before);
    CheckStillAtStart();
}

void SaveProjectTest::SaveAsDialogCancelled()
{
    SaveProjectAs(QString());
    QCOMPARE(NewLines(), QStringList(NotMade));
    CheckStillAtStart();
}

void SaveProjectTest::SaveAsFileCannotBeMade()
{
    SaveProjectAs(QStringLiteral("Missing/Later"));
    QCOMPARE(NewLines(), QStringList(NotMade));
    QCOMPARE(Window->Text("lineEditExportVideo"),
             InHome(QStringLiteral("Molvane/Start/Export.mp4")));
    CheckStillAtStart();
}

void SaveProjectTest::SaveAsAnswersForTheOldProject_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("oldPoints");
    QTest::newRow("yes saves it too") << int(QMessageBox::Yes) << 77;
    QTest::newRow("no leaves it") << int(QMessageBox::No) << 800;
}

void SaveProjectTest::SaveAsAnswersForTheOldProject()
{
    QFETCH(int, answer);
    QFETCH(int, oldPoints);
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    SaveProjectAs(QStringLiteral("Later"), Button(answer));
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), oldPoints);
    QCOMPARE(ReadObject(StartProjectPath()).value("ExportFile").toString(),
             InHome(QStringLiteral("Molvane/Start/Export.mp4")));
    QCOMPARE(ReadObject(Later()).value("MaxTrackingPoints").toInt(), 77);
}

QTEST_MAIN(SaveProjectTest)
#include "saveproject_test.moc"
