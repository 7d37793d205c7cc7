// SPDX-License-Identifier: MIT
#include "app/jobclips.h"
#include "dialogs/homefiles.h"
#include "dialogs/projectwindow.h"
#include "userhands/answermodal.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

namespace
{
const TestHome OuterHome;
constexpr int JobTime = 60000;  // milliseconds, far more than any job here takes
const QString AllWritten = QStringLiteral("Run      Stabilizing file written!");
}  // namespace

/** Where a job's files land when the project gets another place. */
class SaveAsJobTest : public ProjectWindowTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void NextJobWritesToTheNewPlace();
    void RunningJobKeepsTheOldPlace();

private:
    void WaitForFiles() const;
    [[nodiscard]] QStringList DataFiles(const char* project) const;

    QTemporaryDir Clips;
    QString Short;  ///< path
    QString Long;   ///< path
};

namespace
{
const QStringList AllDataFiles = {"Stabilize.dat", "Stabilize.dat.cfg", "Tracking.dat",
                                  "Tracking.dat.cfg"};
}  // namespace

void SaveAsJobTest::initTestCase()
{
    Short = Clips.filePath(QStringLiteral("short.avi"));
    Long = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(WriteShortClip(Short));
    QVERIFY(WriteLongClip(Long));
}

void SaveAsJobTest::WaitForFiles() const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Log().contains(AllWritten); }, JobTime));
    QTRY_VERIFY(Window->IsEnabled("pushButtonCalculateTrack"));
}

QStringList SaveAsJobTest::DataFiles(const char* project) const
{
    const QDir directory(InHome(QStringLiteral("Molvane/") + QLatin1String(project)));
    return directory.entryList({"*.dat", "*.cfg"}, QDir::Files, QDir::Name);
}

void SaveAsJobTest::NextJobWritesToTheNewPlace()
{
    Window->SetText("lineEditSourceVideo", Short);
    SaveProjectAs(QStringLiteral("Later"));
    Window->Click("pushButtonAnalyseTrack");
    WaitForFiles();
    QCOMPARE(DataFiles("Later"), AllDataFiles);
    QCOMPARE(DataFiles("Start"), QStringList());
}

/** A project whose file is gone can get another place during a job: by "Save Project". */
void SaveAsJobTest::RunningJobKeepsTheOldPlace()
{
    Window->SetText("lineEditSourceVideo", Long);
    Window->Click("pushButtonAnalyseTrack");
    QVERIFY(QFile::remove(StartProjectPath()));
    Command("actionsave_project", QMessageBox::No, QStringLiteral("Later"));
    QCOMPARE(Window->Text("lineEditTrackingPathFile"),
             InHome(QStringLiteral("Molvane/Later/Tracking.dat")));
    QCOMPARE(Window->Word(), QStringLiteral("BUSY"));
    QVERIFY(Window->IsEnabled("pushButtonAbort"));
    QVERIFY(!Window->IsEnabled("pushButtonAnalyseTrack"));
    QVERIFY(!RecentMenu()->isEmpty());
    for (const QAction* recent : RecentMenu()->actions())
    {
        QVERIFY2(!recent->isEnabled(), qPrintable(recent->text()));
    }
    QVERIFY(!Window->Log().contains(AllWritten));  // the job was running all the time
    WaitForFiles();
    QCOMPARE(DataFiles("Start"), AllDataFiles);
    QCOMPARE(DataFiles("Later"), QStringList());
}

QTEST_MAIN(SaveAsJobTest)
#include "saveasjob_test.moc"
