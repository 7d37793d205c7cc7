// SPDX-License-Identifier: MIT
#include "app/endguard.h"
#include "app/jobclips.h"
#include "app/testwindow.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "support/loglines.h"
#include "support/testhome.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <thread>

namespace
{
const TestHome Home;

constexpr int JobTime = 60000;    // milliseconds, far more than any job here takes
constexpr int PromptTime = 5000;  // milliseconds; an abort takes one frame and 10 ms

/** Holds the engine lock, so that the worker waits at the calculation of the camera path. */
class HeldEngine
{
public:
    HeldEngine() : Holder([this] { Hold(); })
    {
        while (!IsHeld)
        {
            std::this_thread::yield();
        }
    }
    ~HeldEngine() { Holder.join(); }

private:
    /**
     * Lets go when the window's end has taken the job's state back, which its first abort does, or
     * else in the end, so that a fault fails the test and does not hang it.
     */
    void Hold()
    {
        const std::lock_guard<std::recursive_mutex> lock(EngineLock);
        IsHeld = true;
        QElapsedTimer clock;
        clock.start();
        while ((!MayGo || IsJob(ProgramHost.GetState())) && clock.elapsed() < JobTime)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

public:
    std::atomic<bool> MayGo{false};

private:
    std::atomic<bool> IsHeld{false};
    std::thread Holder;  // last: uses the rest
};
}  // namespace

/** The end of the window while the worker is at any point of a job. */
class WindowEndTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void WithoutJob();
    void AfterJob();
    void RightAfterTheStart_data();
    void RightAfterTheStart();
    void DuringAnalysis();
    void DuringExport();
    void DuringAnalysisOfGenerateAll();
    void BetweenAnalysisAndExport();
    void DuringExportOfGenerateAll();

private:
    [[nodiscard]] QString File(const char* name) const
    {
        return Directory->filePath(QString::fromLatin1(name));
    }
    [[nodiscard]] bool WaitForAction(const char* start) const;
    void Analyse() const;
    void EndPromptly() const;

    QTemporaryDir Clips;
    QString Long;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<TestWindow> Window;
};

void WindowEndTest::initTestCase()
{
    Long = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(WriteLongClip(Long));
}

void WindowEndTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    Window = std::make_unique<TestWindow>();
    Window->SetPaths(Long, Directory->path());
    Window->SetChecked("checkBoxEnableZoom", false);
}

void WindowEndTest::cleanup()
{
    Window.reset();
    Directory.reset();
    QCOMPARE(EndGuard(Guard), QStringList());
}

bool WindowEndTest::WaitForAction(const char* start) const
{
    return QTest::qWaitFor([&] { return Window->LastAction().startsWith(QLatin1String(start)); },
                           JobTime);
}

void WindowEndTest::Analyse() const
{
    Window->Click("pushButtonAnalyseTrack");
    QVERIFY(QTest::qWaitFor([this] { return Window->Word() == QLatin1String("IDLE"); }, JobTime));
}

void WindowEndTest::EndPromptly() const
{
    QElapsedTimer clock;
    clock.start();
    Window->End();
    QVERIFY2(clock.elapsed() < PromptTime, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(!ProgramHost.GetThread()->isRunning());
    QCoreApplication::processEvents();  // the worker's last words find no window
}

void WindowEndTest::WithoutJob()
{
    EndPromptly();
}

void WindowEndTest::AfterJob()
{
    Window->SetText("lineEditSourceVideo", QStringLiteral("gone.avi"));
    Analyse();
    EndPromptly();
}

void WindowEndTest::RightAfterTheStart_data()
{
    QTest::addColumn<QByteArray>("button");
    for (const char* button : {"pushButtonGenerateAll", "pushButtonAnalyseTrack",
                               "pushButtonReadTrack", "pushButtonExportVideo"})
    {
        QTest::newRow(button) << QByteArray(button);
    }
}

void WindowEndTest::RightAfterTheStart()
{
    QFETCH(QByteArray, button);
    (*Window)->ProcessUpdate(JobPathReady);
    Window->Click(button.constData());
    EndPromptly();
    QVERIFY(!QFile::exists(File("Tracking.dat")));
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void WindowEndTest::DuringAnalysis()
{
    Window->Click("pushButtonAnalyseTrack");
    QVERIFY(WaitForAction("Frame: "));
    LogLines lines;  // the window's own go with it
    EndPromptly();
    QVERIFY(lines.Has(QStringLiteral("1 Analyse aborted!")));
    QVERIFY(!QFile::exists(File("Tracking.dat")));
}

void WindowEndTest::DuringExport()
{
    Analyse();
    Window->Click("pushButtonExportVideo");
    QVERIFY(WaitForAction("Frame: "));
    LogLines lines;
    EndPromptly();
    QVERIFY(lines.Has(QStringLiteral("1 Export aborted!")));
    QVERIFY(CountFrames(File("Export.mp4")) < LongFrames);
}

void WindowEndTest::DuringAnalysisOfGenerateAll()
{
    Window->Click("pushButtonGenerateAll");
    QVERIFY(WaitForAction("Frame: "));
    LogLines lines;
    EndPromptly();
    QVERIFY(lines.Has(QStringLiteral("1 Analyse aborted!")));
    QVERIFY(!lines.Has(QStringLiteral("1 Start exporting Video")));
    QVERIFY(!QFile::exists(File("Export.mp4")));
}

void WindowEndTest::BetweenAnalysisAndExport()
{
    // The worker is in no job that could be aborted and is about to begin the next one.
    Window->Click("pushButtonGenerateAll");
    HeldEngine engine;  // the commit of the click has had the lock; the analysis takes a while
    const bool isBetween = WaitForAction("Generate Smoothing Path");
    LogLines lines;
    engine.MayGo = true;
    EndPromptly();
    QVERIFY(isBetween);
    QVERIFY(lines.Has(QStringLiteral("1 Export aborted!")));
    QVERIFY(!lines.Has(QStringLiteral("1 Exporting Video finished!")));
    QVERIFY(CountFrames(File("Export.mp4")) < LongFrames);
}

void WindowEndTest::DuringExportOfGenerateAll()
{
    Window->Click("pushButtonGenerateAll");
    QVERIFY(QTest::qWaitFor(
        [this] { return Window->LastAction().endsWith(QLatin1String("exported!")); }, JobTime));
    LogLines lines;
    EndPromptly();
    QVERIFY(lines.Has(QStringLiteral("1 Export aborted!")));
    QVERIFY(CountFrames(File("Export.mp4")) < LongFrames);
}

QTEST_MAIN(WindowEndTest)
#include "windowend_test.moc"
