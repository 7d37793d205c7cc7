// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/jobclips.h"
#include "app/testwindow.h"
#include "batch/exportsettings.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{
const TestHome Home;

constexpr int JobTime = 60000;  // milliseconds, far more than any job here takes

/** Where the calculation and the export are on after a job; the start buttons are on always. */
enum class Path
{
    None,
    Ready
};
}  // namespace

Q_DECLARE_METATYPE(Path)

/** The buttons and what they set going: real jobs on a real worker with small real clips. */
class JobsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void ShownBeforeItStarts();
    void Analyse();
    void AnalyseWithoutSource();
    void CalculateAfterAnalysis();
    void ExportCalculatesByItself();
    void ExportAfterCalculation();
    void GenerateAll();
    void GenerateAllWithoutSource();
    void ReadAfterAnalysis();
    void ReadWithoutFiles();
    void ReadWithoutStabilization();
    void RefusedExportKeepsThePath();
    void ExportWithoutSourceKeepsThePath();
    void FailedJobClearsThePaths();
    void AbortAnalysis();
    void AbortExport();
    void AbortWithoutJob();
    void CalculationWaitsForTheJob();
    void JobsInQuickSuccession();
    void EachButtonCommits_data();
    void EachButtonCommits();

private:
    [[nodiscard]] QString File(const char* name) const
    {
        return Directory->filePath(QString::fromLatin1(name));
    }
    void Run(const char* button, const char* word, Path path) const;
    void Start(const char* button, const char* word) const;
    void WaitForEnd(Path path) const;
    [[nodiscard]] bool WaitForAction(const char* start) const;
    [[nodiscard]] bool HasLine(const char* line) const;

    QTemporaryDir Clips;
    QString Short;  ///< path
    QString Long;   ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;  ///< of the data files and the export
    std::unique_ptr<TestWindow> Window;
};

void JobsTest::initTestCase()
{
    Short = Clips.filePath(QStringLiteral("short.avi"));
    Long = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(WriteShortClip(Short));
    QVERIFY(WriteLongClip(Long));
}

void JobsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(Short, Directory->path());
}

void JobsTest::cleanup()
{
    Window.reset();
    Directory.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

void JobsTest::Run(const char* button, const char* word, Path path) const
{
    Start(button, word);
    WaitForEnd(path);
}

/** The window shows the job before the click returns. */
void JobsTest::Start(const char* button, const char* word) const
{
    Window->Click(button);
    QCOMPARE(Window->Word(), QString::fromLatin1(word));
    QVERIFY(Window->IsEnabled("pushButtonAbort"));
    for (const char* other :
         {"pushButtonGenerateAll", "pushButtonAnalyseTrack", "pushButtonReadTrack",
          "pushButtonCalculateTrack", "pushButtonExportVideo", "lineEditSourceVideo"})
    {
        QVERIFY2(!Window->IsEnabled(other), other);
    }
}

void JobsTest::WaitForEnd(Path path) const
{
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
    QVERIFY(!Window->IsEnabled("pushButtonAbort"));
    for (const char* other : {"pushButtonGenerateAll", "pushButtonAnalyseTrack",
                              "pushButtonReadTrack", "lineEditSourceVideo"})
    {
        QVERIFY2(Window->IsEnabled(other), other);
    }
    QCOMPARE(Window->IsEnabled("pushButtonCalculateTrack"), path == Path::Ready);
    QCOMPARE(Window->IsEnabled("pushButtonExportVideo"), path == Path::Ready);
}

/** Waits for the last message to begin with @p start. */
bool JobsTest::WaitForAction(const char* start) const
{
    return QTest::qWaitFor([&] { return Window->LastAction().startsWith(QLatin1String(start)); },
                           JobTime);
}

bool JobsTest::HasLine(const char* line) const
{
    return Window->Log().contains(QString::fromLatin1(line));
}

void JobsTest::ShownBeforeItStarts()
{
    QStringList notes;  // word, state and whether the thread runs, at each new title
    const QObject context;
    connect(Window->operator->(), &QWidget::windowTitleChanged, &context,
            [&]
            {
                notes << Window->Word() << QString::number(ProgramHost.GetState())
                      << (ProgramHost.GetThread()->isRunning() ? "runs" : "rests");
            });
    Start("pushButtonAnalyseTrack", "BUSY");
    QCOMPARE(notes.mid(0, 3), QStringList({"BUSY", "0", "rests"}));  // still the state before
    WaitForEnd(Path::Ready);
}

void JobsTest::Analyse()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    for (const char* name :
         {"Tracking.dat", "Tracking.dat.cfg", "Stabilize.dat", "Stabilize.dat.cfg"})
    {
        QVERIFY2(QFile::exists(File(name)), name);
    }
    QVERIFY(HasLine("Run      Input: Frames= 12 h=160 v=120 fps=25"));
    QVERIFY(HasLine("Run      Tracking file written!"));
    QVERIFY(HasLine("Run      Stabilizing file written!"));
    QVERIFY(!PathHorizontal.HasValidData());  // not before the calculation
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void JobsTest::AnalyseWithoutSource()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Run("pushButtonAnalyseTrack", "BUSY", Path::None);
    QVERIFY(HasLine("Error    Open gone.avi failed!"));
    QVERIFY(!QFile::exists(File("Tracking.dat")));
}

void JobsTest::CalculateAfterAnalysis()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window->Click("pushButtonCalculateTrack");
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QVERIFY(path->HasValidData());
        QCOMPARE(path->Result.Correction.size(), ShortFrames);
    }
    QVERIFY(HasLine("Run      Generate Smoothing Path"));
    WaitForEnd(Path::Ready);
    Window->Click("pushButtonCalculateTrack");  // again, as after a changed setting
    QVERIFY(PathHorizontal.HasValidData());
}

void JobsTest::ExportCalculatesByItself()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Run("pushButtonExportVideo", "EXPORTING", Path::Ready);
    QVERIFY(HasLine("Run      Generate Smoothing Path"));
    QVERIFY(HasLine("Run      Exporting Video finished!"));
    QCOMPARE(CountFrames(File("Export.mp4")), ShortFrames);
}

void JobsTest::ExportAfterCalculation()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window->Click("pushButtonCalculateTrack");
    Run("pushButtonExportVideo", "EXPORTING", Path::Ready);
    QCOMPARE(Window->Log().count(QStringLiteral("Run      Generate Smoothing Path")), 1);
    QCOMPARE(CountFrames(File("Export.mp4")), ShortFrames);
}

void JobsTest::GenerateAll()
{
    Run("pushButtonGenerateAll", "BUSY", Path::Ready);
    QVERIFY(HasLine("Run      Stabilizing file written!"));
    QVERIFY(HasLine("Run      Generate Smoothing Path"));
    QVERIFY(HasLine("Run      Exporting Video finished!"));
    QVERIFY(QFile::exists(File("Tracking.dat")));
    QVERIFY(PathHorizontal.HasValidData());
    QCOMPARE(CountFrames(File("Export.mp4")), ShortFrames);
}

void JobsTest::GenerateAllWithoutSource()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Run("pushButtonGenerateAll", "BUSY", Path::None);
    QCOMPARE(Window->Log().count(QStringLiteral("Error    Open gone.avi failed!")), 1);
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void JobsTest::ReadAfterAnalysis()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window.reset();  // and with it all that is in memory
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(Short, Directory->path());
    Run("pushButtonReadTrack", "BUSY", Path::Ready);
    QVERIFY(HasLine("Run      Tracking file read successfully!"));
    QVERIFY(HasLine("Run      Stabilizing file read successfully!"));
    Window->Click("pushButtonCalculateTrack");
    QVERIFY(PathHorizontal.HasValidData());
}

void JobsTest::ReadWithoutFiles()
{
    Run("pushButtonReadTrack", "BUSY", Path::None);
    QVERIFY(HasLine("Error    Could not open matching file (.cfg)!"));
    QVERIFY(HasLine("Error    Tracking file loading failed!"));
}

void JobsTest::ReadWithoutStabilization()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    QVERIFY(QFile::remove(File("Stabilize.dat.cfg")));
    QSignalSpy finished(ProgramHost.GetThread(), &OpCVThread::SignalFinished);
    Run("pushButtonReadTrack", "BUSY", Path::None);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.at(0).at(0).toInt(), int(JobTrackingReady));
    QVERIFY(HasLine("Error    Stabilizing file loading failed!"));
}

void JobsTest::RefusedExportKeepsThePath()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window->SetChecked("checkBoxEnableZoom", true);
    Window->SetNumber("doubleSpinBoxZoom", 125.0);  // 128 by 96 of 160 by 120: 16 and 12 around
    Window->SetNumber("spinBoxExpOffsetH", 17);
    Run("pushButtonExportVideo", "EXPORTING", Path::Ready);
    QVERIFY(HasLine("Error    Offset horizontal=17 exceeds limits with higher value 161"));
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void JobsTest::ExportWithoutSourceKeepsThePath()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Run("pushButtonExportVideo", "EXPORTING", Path::Ready);
    QVERIFY(HasLine("Error    Open gone.avi failed!"));
}

void JobsTest::FailedJobClearsThePaths()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Window->Click("pushButtonCalculateTrack");
    QVERIFY(PathHorizontal.HasValidData());
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Run("pushButtonAnalyseTrack", "BUSY", Path::None);
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QVERIFY(!path->HasValidData());
        QVERIFY(path->DetectedShakiness.isEmpty());
    }
}

void JobsTest::AbortAnalysis()
{
    Window->SetText("lineEditSourceVideo", Long);
    Start("pushButtonAnalyseTrack", "BUSY");
    QVERIFY(WaitForAction("Frame: "));
    Window->Click("pushButtonAbort");
    WaitForEnd(Path::None);
    QVERIFY(HasLine("Run      Analyse aborted!"));
    QVERIFY(!QFile::exists(File("Tracking.dat")));
}

void JobsTest::AbortExport()
{
    Window->SetText("lineEditSourceVideo", Long);
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    Start("pushButtonExportVideo", "EXPORTING");
    QVERIFY(WaitForAction("Frame: "));
    Window->Click("pushButtonAbort");
    WaitForEnd(Path::Ready);
    QVERIFY(HasLine("Run      Export aborted!"));
    QVERIFY(!HasLine("Run      Exporting Video finished!"));
    const int frames = CountFrames(File("Export.mp4"));  // closed, so it can be read
    QVERIFY2(frames > 0 && frames < LongFrames, qPrintable(QString::number(frames)));
}

void JobsTest::AbortWithoutJob()
{
    (*Window)->on_pushButtonAbort_clicked();
    WaitForEnd(Path::None);
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    (*Window)->on_pushButtonAbort_clicked();
    WaitForEnd(Path::Ready);
}

void JobsTest::CalculationWaitsForTheJob()
{
    Window->SetText("lineEditSourceVideo", Long);
    Start("pushButtonAnalyseTrack", "BUSY");
    QVERIFY(WaitForAction("Frame: "));
    Window->SetNumber("spinBoxExpOffsetH", 5);
    // The graph tabs ask for the calculation too, and they stay on during a job.
    (*Window)->on_pushButtonCalculateTrack_clicked();
    QCOMPARE(PathHorizontal.Export->ExpOffH, 0);
    QCOMPARE(Window->Word(), QStringLiteral("BUSY"));
    QVERIFY(Window->IsEnabled("pushButtonAbort"));
    Window->Click("pushButtonAbort");
    WaitForEnd(Path::None);
    QVERIFY(!HasLine("Run      Generate Smoothing Path"));
    (*Window)->on_pushButtonCalculateTrack_clicked();
    QCOMPARE(PathHorizontal.Export->ExpOffH, 5);
    // Deliberate: its own result does not count, the window shows a calculated path.
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
}

void JobsTest::JobsInQuickSuccession()
{
    Run("pushButtonAnalyseTrack", "BUSY", Path::Ready);
    QSignalSpy finished(ProgramHost.GetThread(), &OpCVThread::SignalFinished);
    constexpr int Runs = 50;
    for (int i = 0; i < Runs; ++i)
    {
        Run("pushButtonReadTrack", "BUSY", Path::Ready);
    }
    QCOMPARE(finished.count(), Runs);
}

void JobsTest::EachButtonCommits_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char* button :
         {"pushButtonGenerateAll", "pushButtonAnalyseTrack", "pushButtonReadTrack",
          "pushButtonCalculateTrack", "pushButtonExportVideo"})
    {
        QTest::newRow(button) << QByteArray(button);
    }
}

void JobsTest::EachButtonCommits()
{
    QFETCH(QByteArray, button);
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    (*Window)->ProcessUpdate(JobPathReady);
    Window->SetNumber("spinBoxExpOffsetH", 7);
    Window->Click(button.constData());
    QCOMPARE(PathHorizontal.Export->ExpOffH, 7);
    QCOMPARE(PathHorizontal.Offset, 7);
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

QTEST_MAIN(JobsTest)
#include "jobs_test.moc"
