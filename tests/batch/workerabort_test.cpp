// SPDX-License-Identifier: MIT
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "batch/workersetup.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <limits>
#include <memory>
#include <thread>

namespace
{
/** Plays a job: as long as this object lives, a request to stop is noted and answered. */
class AnsweringJob
{
public:
    explicit AnsweringJob(Stabilize& stabilizer) : Status(stabilizer.JobStatus)
    {
        Status = JobRunning;
        Helper = std::thread([this] { Answer(); });
    }
    AnsweringJob(const AnsweringJob&) = delete;
    AnsweringJob& operator=(const AnsweringJob&) = delete;
    ~AnsweringJob()
    {
        IsOver = true;
        Helper.join();
    }

    [[nodiscard]] bool WasAsked() const { return IsAsked; }

private:
    void Answer()
    {
        while (!IsOver && !IsAsked)
        {
            QThread::msleep(1);
            if (Status == JobAbortRequested)
            {
                IsAsked = true;
                Status = JobEnded;
            }
        }
    }

    volatile std::int32_t& Status;
    std::atomic<bool> IsOver{false};
    std::atomic<bool> IsAsked{false};
    std::thread Helper;
};
}  // namespace

/** Stopping a job from the user interface thread. The jobs are held at a frame, not raced. */
class WorkerAbortTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void NothingToAbort();
    void TakesBackTheStateBefore();
    void Analyse_data();
    void Analyse();
    void Export_data();
    void Export();
    void GenerateAllStopsAtTheAnalysis();
    void GenerateAllStopsBehindTheDataFiles();
    void ReadingIsNotStopped();
    void ComesBackSoon();
    void ComesBackAtOnceWithoutAJob();
    void JobAfterAnAbort();
    void NoneAsksARunningJobToStop();
    void EndAsksInAJobStateOnly_data();
    void EndAsksInAJobStateOnly();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void WorkerAbortTest::NothingToAbort()
{
    WorkerSetup setup;
    setup.Object.RequestAbort();
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    setup.Thread->AbortJob();
    ProgramHost.Abort();
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QCoreApplication::processEvents();
    QCOMPARE(setup.Finished.States, QVector<int>());
    QCOMPARE(setup.Lines.All(), QStringList());
}

void WorkerAbortTest::TakesBackTheStateBefore()
{
    WorkerSetup setup;
    QCOMPARE(setup.RunJob(JobTrackingReady), 8);  // from 0
    QCOMPARE(setup.RunJob(JobPathReady), 9);      // from 8
    ProgramHost.Abort();
    QCOMPARE(setup.Thread->GetState(), 8);
    QCOMPARE(ProgramHost.GetState(), 8);
}

void WorkerAbortTest::Analyse_data()
{
    QTest::addColumn<int>("heldAt");
    QTest::addColumn<bool>("isAborted");
    QTest::newRow("before the first pair") << 0 << true;
    QTest::newRow("at the first pair") << 1 << true;
    QTest::newRow("in the middle") << 2 << true;
    QTest::newRow("at the last pair: too late, it completes") << 4 << false;
    QTest::newRow("at the last step: too late, it completes") << 5 << false;
}

void WorkerAbortTest::Analyse()
{
    QFETCH(int, heldAt);
    QFETCH(bool, isAborted);
    WorkerSetup setup;
    WriteBytes(setup.Path("Tracking.dat"), "of an earlier run");
    setup.Object.OnPrepare = [&]
    {
        if (heldAt == 0)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Object.OnTrack = [&](int call, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        if (call == heldAt)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(setup.WaitUntilHeld());
    QCOMPARE(ProgramHost.GetState(), int{JobAnalyse});
    ProgramHost.Abort();
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});  // it waits for the end of the job
    QTRY_COMPARE(setup.Finished.States, QVector<int>{isAborted ? 0 : 9});
    QVERIFY(setup.Thread->wait(20000));
    QCoreApplication::processEvents();
    QCOMPARE(setup.Finished.States.size(), 1);
    QCOMPARE(setup.Lines.Has("1 Analyse aborted!"), isAborted);
    QCOMPARE(setup.Object.TrackingLoaded, !isAborted);
    QCOMPARE(setup.Object.GrayPairs.size(), static_cast<std::size_t>(isAborted ? heldAt : 5));
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")) == "of an earlier run", isAborted);
}

void WorkerAbortTest::Export_data()
{
    QTest::addColumn<int>("heldAt");
    QTest::addColumn<int>("written");
    QTest::newRow("before the first frame") << -1 << 0;
    QTest::newRow("at the first frame") << 0 << 1;
    QTest::newRow("in the middle") << 2 << 3;
    QTest::newRow("at the last frame but one") << 3 << 4;
    QTest::newRow("at the last frame: too late, it completes") << 4 << 5;
}

void WorkerAbortTest::Export()
{
    QFETCH(int, heldAt);
    QFETCH(int, written);
    const bool isAborted = written < 5;
    WorkerSetup setup;
    setup.Object.PretendDataLoaded();
    setup.Object.PathGenerated = false;
    SetZeroCorrections(5);
    setup.Object.OnGenerate = [&]
    {
        if (heldAt == -1)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Object.OnWarp = [&](int frame)
    {
        if (frame == heldAt)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobExport);
    QVERIFY(setup.WaitUntilHeld());
    ProgramHost.Abort();
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    // The file is closed by now, whether or not the thread has left.
    QCOMPARE(TestVideo::ReadAllFrames(setup.Path("export.mp4")).size(),
             static_cast<std::size_t>(written));
    QTRY_COMPARE(setup.Finished.States, QVector<int>{9});
    QCOMPARE(setup.Lines.All().constLast(),
             QString(isAborted ? "1 Export aborted!" : "1 Exporting Video finished!"));
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
}

void WorkerAbortTest::GenerateAllStopsAtTheAnalysis()
{
    WorkerSetup setup;
    setup.Object.OnTrack = [&](int call, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        if (call == 2)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobGenerateAll);
    QVERIFY(setup.WaitUntilHeld());
    ProgramHost.Abort();
    QTRY_COMPARE(setup.Finished.States, QVector<int>{0});
    QCOMPARE(setup.Lines.All(),
             QStringList({"1 Input: Frames= 5 h=64 v=64 fps=25", "1 Analyse aborted!"}));
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void WorkerAbortTest::GenerateAllStopsBehindTheDataFiles()
{
    // The analysis looks up no more while it writes, and the export begins as if nobody had asked.
    WorkerSetup setup;
    SetZeroCorrections(5);
    setup.Object.OnWrite = [&] { setup.HoldUntilAbort(); };
    setup.Object.OnWarp = [&](int frame)
    {
        if (frame == 0)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobGenerateAll);
    QVERIFY(setup.WaitUntilHeld());
    ProgramHost.Abort();
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QTRY_COMPARE(setup.Finished.States, QVector<int>{9});
    const char input[] = "1 Input: Frames= 5 h=64 v=64 fps=25";
    // The path in between is the host's, whose own stabilizer has measured nothing.
    QCOMPARE(setup.Lines.All(),
             QStringList({input, "1 Tracking file written!", "3 No data to smooth!", input,
                          "1 Start exporting Video", input, "4 Frame: 0/5 exported!",
                          "1 Export aborted!"}));
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
}

void WorkerAbortTest::ReadingIsNotStopped()
{
    WorkerSetup setup;
    setup.GivePaths(setup.Object);
    setup.Object.TrackingLoaded = true;  // so that the matching file is all that is read before
    QCOMPARE(setup.Object.WriteTracking(), 0);
    setup.Object.OnRead = [&] { setup.HoldUntilReleased(); };
    setup.Thread->StartJob(JobReadAll);
    QVERIFY(setup.WaitUntilHeld());
    QElapsedTimer timer;
    timer.start();
    ProgramHost.Abort();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(setup.Thread->isRunning());
    QCOMPARE(setup.Finished.States, QVector<int>());
    setup.Release();
    QTRY_COMPARE(setup.Finished.States, QVector<int>{9});
}

void WorkerAbortTest::ComesBackSoon()
{
    // One frame's work, nearly none here, and at most 10 ms of waiting. The best of ten, as a busy
    // machine may delay any of them.
    WorkerSetup setup;
    setup.Object.OnTrack = [&](int call, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        if (call == 1)
        {
            setup.HoldUntilAbort();
        }
    };
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 10; ++i)
    {
        setup.Object.GrayPairs.clear();  // counts the calls
        setup.Thread->StartJob(JobAnalyse);
        QVERIFY(setup.WaitUntilHeld());
        QElapsedTimer timer;
        timer.start();
        setup.Thread->AbortJob();
        best = std::min(best, timer.elapsed());
    }
    QVERIFY2(best < 100, qPrintable(QString::number(best)));
}

void WorkerAbortTest::ComesBackAtOnceWithoutAJob()
{
    // A hundred naps of 10 ms would take a second.
    WorkerSetup setup;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 100; ++i)
    {
        setup.Object.RequestAbort();
    }
    QVERIFY2(timer.elapsed() < 900, qPrintable(QString::number(timer.elapsed())));
}

void WorkerAbortTest::JobAfterAnAbort()
{
    WorkerSetup setup;
    bool holds = true;
    setup.Object.OnTrack = [&](int, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        if (holds)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(setup.WaitUntilHeld());
    ProgramHost.Abort();
    holds = false;
    QTRY_COMPARE(setup.Finished.States, QVector<int>{0});
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QVERIFY(setup.Object.TrackingLoaded);
}

void WorkerAbortTest::NoneAsksARunningJobToStop()
{
    WorkerSetup setup;
    setup.Object.JobStatus = JobRunning;
    setup.Thread->StartJob(JobNone);
    const bool isAsked =
        QTest::qWaitFor([&] { return setup.Object.JobStatus == JobAbortRequested; }, 20000);
    QTest::qWait(50);  // time for several looks at the answer
    const QVector<int> before = setup.Finished.States;
    setup.Object.JobStatus = JobEnded;
    QVERIFY(isAsked);
    QCOMPARE(before, QVector<int>());  // it waits for the answer
    QTRY_COMPARE(setup.Finished.States, QVector<int>{0});
    QCOMPARE(setup.Object.Calls, QStringList());
}

void WorkerAbortTest::EndAsksInAJobStateOnly_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("isAsked");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("the free number") << 1 << false;
    QTest::newRow("analyse, the first job") << 2 << true;
    QTest::newRow("export") << 4 << true;
    QTest::newRow("read all, the last job") << 7 << true;
    QTest::newRow("tracking ready, the first result") << 8 << false;
    QTest::newRow("path ready") << 9 << false;
}

void WorkerAbortTest::EndAsksInAJobStateOnly()
{
    QFETCH(int, state);
    QFETCH(bool, isAsked);
    WorkerSetup setup;
    AnsweringJob job(setup.Object);
    {
        OpCVThread thread(&setup.Proj);
        thread.StartJob(state);  // without a stabilizer, so that the state alone changes
        thread.SetStabilizer(&setup.Object);
    }
    QCOMPARE(job.WasAsked(), isAsked);
    QCOMPARE(setup.Object.JobStatus, int{isAsked ? JobEnded : JobRunning});
}

QTEST_MAIN(WorkerAbortTest)
#include "workerabort_test.moc"
