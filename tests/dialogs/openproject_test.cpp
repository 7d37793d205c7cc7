// SPDX-License-Identifier: MIT
#include "batch/jobstate.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "support/files.h"
#include "userhands/answermodal.h"

#include <QTest>

namespace
{
const TestHome OuterHome;
const QString Clip = QStringLiteral("/videos/clip.mov");
}  // namespace

/** "Open Project". A project "Trip" lies in a directory of its own. */
class OpenProjectTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void ShowsTheProject();
    void EntersConfigurationAndMenu();
    void Question();
    void Dialog();
    void CancelTheQuestion();
    void YesSavesTheOldProject();
    void NoLeavesTheOldProject();
    void CancelTheDialog();
    void MissingFile();
    void NoJson();
    void OldExtension();
    void ItsDirectoryTakesTheExports();
    void ForgetsTheCalculatedPath();
    void SameProjectAgain();

private:
    [[nodiscard]] QString Trip() const { return InHome(QStringLiteral("Trip/Trip.mvprj")); }
    /** The player opens the source with the project and once more behind it. */
    [[nodiscard]] static QStringList LinesOf(const char* opened, const QString& source)
    {
        return {QString::fromLatin1(opened), NotOpened(source), NotOpened(source)};
    }
    void MakeTrip() { WriteObject(Trip(), SmallProject(Clip)); }
};

void OpenProjectTest::ShowsTheProject()
{
    MakeTrip();
    OpenProject(Trip());
    QCOMPARE(NewLines(), LinesOf("Run      Project file opened!", Clip));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), Clip);
    QCOMPARE(Window->Text("lineEditTrackingPathFile"), QStringLiteral("/data/T.dat"));
    QCOMPARE(Window->Text("lineEditStabilizeFile"), QStringLiteral("Stabilize.dat"));  // default
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 321.0);
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), 125.0);
}

void OpenProjectTest::EntersConfigurationAndMenu()
{
    MakeTrip();
    OpenProject(Trip());
    const QStringList recent = {StartProjectPath(), Trip()};
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), Trip());
    QCOMPARE(RecentProjects(), recent);
    QCOMPARE(RecentEntries(), recent);
}

void OpenProjectTest::Question()
{
    QCOMPARE(QuestionOf("actionopen_project").Title, QStringLiteral("Open Project"));
}

void OpenProjectTest::Dialog()
{
    const ShownFileDialog shown = DialogOf("actionopen_project");
    QCOMPARE(shown.Title, QStringLiteral("Open Project"));
    QCOMPARE(shown.Filters, QStringList{"Project Files (*.json *.mvprj)"});
    QCOMPARE(shown.Directory, InHome(QStringLiteral("Molvane/Start")));
    QCOMPARE(shown.Name, QStringLiteral("Start.mvprj"));
}

void OpenProjectTest::CancelTheQuestion()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    const QByteArray before = ReadBytes(StartProjectPath());
    Command("actionopen_project", QMessageBox::Cancel);
    QCOMPARE(NewLines(), QStringList());
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
    QCOMPARE(ReadBytes(StartProjectPath()), before);
}

void OpenProjectTest::YesSavesTheOldProject()
{
    MakeTrip();
    const QByteArray trip = ReadBytes(Trip());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    OpenProject(Trip(), QMessageBox::Yes);
    QCOMPARE(ReadObject(StartProjectPath()).value("MaxTrackingPoints").toInt(), 77);
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 321.0);
    QCOMPARE(ReadBytes(Trip()), trip);
}

void OpenProjectTest::NoLeavesTheOldProject()
{
    MakeTrip();
    const QByteArray before = ReadBytes(StartProjectPath());
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    OpenProject(Trip(), QMessageBox::No);
    QCOMPARE(ReadBytes(StartProjectPath()), before);
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 321.0);
}

void OpenProjectTest::CancelTheDialog()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    OpenProject(QString());
    QCOMPARE(NewLines(), QStringList{"Error    Could not open project file"});
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Start.mvprj @ Molvane"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 77.0);
    QCOMPARE(RecentEntries(), QStringList(StartProjectPath()));
}

void OpenProjectTest::MissingFile()
{
    MakeTrip();
    OpenProject(Trip());
    NewLines();
    OpenProject(InHome(QStringLiteral("gone.mvprj")));
    QCOMPARE(NewLines(), LinesOf("Error    Project file access error!", Clip));
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE gone.mvprj @ Molvane"));
    QCOMPARE(Window->Text("lineEditSourceVideo"), Clip);
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 321.0);
    QVERIFY(!QFile::exists(InHome(QStringLiteral("gone.mvprj"))));
}

void OpenProjectTest::NoJson()
{
    WriteBytes(Trip(), "not a project");
    OpenProject(Trip());
    QCOMPARE(NewLines(), LinesOf("Run      Project file opened!", QStringLiteral("Source.mp4")));
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    QCOMPARE(Window->Text("lineEditExportVideo"), QStringLiteral("Export.mp4"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 800.0);
}

void OpenProjectTest::OldExtension()
{
    const QString old = InHome(QStringLiteral("Trip/Trip.json"));
    WriteObject(old, SmallProject(Clip));
    OpenProject(old);
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.json @ Molvane"));
    QCOMPARE(NewLines(), LinesOf("Run      Project file opened!", Clip));
    QVERIFY(QFile::exists(old));
    QCOMPARE(ReadObject(Trip()), ReadObject(old));
    const QStringList recent = {StartProjectPath(), Trip()};
    QCOMPARE(RecentEntries(), recent);
    QCOMPARE(ReadObject(ConfigurationPath()).value("ProjectFile").toString(), Trip());
    (*Window)->ProcessUpdate(JobPathReady);
    QCOMPARE((*Window)->windowTitle(), QStringLiteral("IDLE Trip.mvprj @ Molvane"));
}

void OpenProjectTest::ItsDirectoryTakesTheExports()
{
    MakeTrip();
    OpenProject(Trip());
    const auto dialog = AnswerModal::FileDialog(QStringLiteral("/videos/other.mov"));
    Window->Click("pushButtonSourceVideo");
    QVERIFY(dialog.WasAnswered());
    QCOMPARE(Window->Text("lineEditExportVideo"), InHome(QStringLiteral("Trip/other.mp4")));
}

void OpenProjectTest::ForgetsTheCalculatedPath()
{
    MakeTrip();
    (*Window)->ProcessUpdate(JobPathReady);
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
    OpenProject(Trip());
    QVERIFY(!Window->IsEnabled("pushButtonExportVideo"));
}

void OpenProjectTest::SameProjectAgain()
{
    Window->SetNumber("spinBoxMaxTrackingPoints", 77);
    OpenProject(StartProjectPath());
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 800.0);  // as on disk
    QCOMPARE(RecentProjects(), QStringList(StartProjectPath()));
}

QTEST_MAIN(OpenProjectTest)
#include "openproject_test.moc"
