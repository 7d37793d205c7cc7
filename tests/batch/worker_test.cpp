// SPDX-License-Identifier: MIT
#include "batch/filefields.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "batch/workersetup.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QFile>
#include <QMetaMethod>
#include <QSemaphore>
#include <QtTest>

#include <memory>

/** The worker thread: what runs for which state, and what follows. */
class WorkerTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void StartValues();
    void SignalsAndSlotsInOrder();
    void StatesWithoutAJob_data();
    void StatesWithoutAJob();
    void Analyse_data();
    void Analyse();
    void Export_data();
    void Export();
    void Read_data();
    void Read();
    void RunWithoutStabilizer();
    void StartWithoutStabilizer();
    void AbortWithoutStabilizerDoesNothing();
    void WorksOnItsOwnThread();
    void TakesThePathsAtTheStart();
    void TwoJobsInARow();
    void JobsStartedFromTheSlot();
    void DestroyedAfterAJob();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void WorkerTest::StartValues()
{
    Project project;
    const OpCVThread thread(&project);
    QCOMPARE(thread.GetState(), 0);
    QVERIFY(!thread.isRunning());
    QVERIFY(thread.parent() == nullptr);
}

void WorkerTest::SignalsAndSlotsInOrder()
{
    const QMetaObject& meta = OpCVThread::staticMetaObject;
    const int first = meta.methodOffset();
    QCOMPARE(meta.methodCount() - first, 3);
    QCOMPARE(meta.method(first).methodSignature(), QByteArray("SignalLogEntry()"));
    QCOMPARE(meta.method(first).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.method(first + 1).methodSignature(), QByteArray("SignalFinished(int)"));
    QCOMPARE(meta.method(first + 1).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.method(first + 1).parameterNames(), QList<QByteArray>{"t"});
    QCOMPARE(meta.method(first + 2).methodSignature(), QByteArray("AddLogEntry()"));
    QCOMPARE(meta.method(first + 2).methodType(), QMetaMethod::Slot);
    QCOMPARE(meta.method(first + 2).access(), QMetaMethod::Private);
}

void WorkerTest::StatesWithoutAJob_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("none stays none") << 0;
    QTest::newRow("the free number stays") << 1;
    QTest::newRow("tracking ready stays") << 8;
    QTest::newRow("path ready stays") << 9;
    QTest::newRow("path calculated stays") << 10;
    QTest::newRow("an unknown number stays") << 11;
}

void WorkerTest::StatesWithoutAJob()
{
    QFETCH(int, state);
    WorkerSetup setup;
    QCOMPARE(setup.RunJob(state), state);
    QCOMPARE(setup.Thread->GetState(), state);
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QCOMPARE(setup.Lines.All(), QStringList());
}

void WorkerTest::Analyse_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("writeResult");
    QTest::addColumn<int>("next");
    QTest::newRow("complete") << "source.avi" << 0 << 9;
    QTest::newRow("no source") << "missing.avi" << 0 << 0;
    QTest::newRow("result 1") << "source.avi" << 1 << 0;
    QTest::newRow("result 2") << "source.avi" << 2 << 0;
    QTest::newRow("result -1") << "source.avi" << -1 << 0;
}

void WorkerTest::Analyse()
{
    QFETCH(QString, source);
    QFETCH(int, writeResult);
    QFETCH(int, next);
    WorkerSetup setup;
    setup.Proj.SourceFile = setup.Folder.filePath(source);
    setup.Proj.SyncFileNames();
    setup.Proj.TrackingParameters.MaxTrackingPoints = 77;
    setup.Object.WriteResult = writeResult;
    QCOMPARE(setup.RunJob(JobAnalyse), next);
    QCOMPARE(setup.Thread->GetState(), next);
    QCOMPARE(setup.Object.TrackingParameters.MaxTrackingPoints, 77);  // the project's
    QCOMPARE(setup.Object.TrackingLoaded, next == 9);
}

void WorkerTest::Export_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("lastLine");
    QTest::newRow("complete") << "good"
                              << "1 Exporting Video finished!";
    QTest::newRow("no data") << "data"
                             << "";
    QTest::newRow("no source") << "source"
                               << "3 Open /nowhere/source.avi failed!";
    QTest::newRow("offsets beyond the limits")
        << "crop"
        << "3 Offset vertical=0 exceeds limits with higher value 64";
    QTest::newRow("unwritable output") << "output"
                                       << "3 Exporting failed!";
}

void WorkerTest::Export()
{
    QFETCH(QString, what);
    QFETCH(QString, lastLine);
    WorkerSetup setup;
    setup.Object.PretendDataLoaded();
    SetZeroCorrections(5);
    setup.Object.TrackingLoaded = what != "data";
    setup.Proj.SourceFile = what == "source" ? "/nowhere/source.avi" : setup.Proj.SourceFile;
    setup.Proj.ExportFile = what == "output" ? "/nowhere/export.mp4" : setup.Proj.ExportFile;
    setup.Proj.ExportSettings.EnableCrop = what == "crop";  // at a factor of 1.0: refused
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(setup.Thread->GetState(), 9);
    QCOMPARE(setup.Lines.All().isEmpty() ? QString("") : setup.Lines.All().constLast(), lastLine);
    QCOMPARE(QFile::exists(setup.Path("export.mp4")), what == "good");
}

void WorkerTest::Read_data()
{
    QTest::addColumn<int>("job");
    QTest::addColumn<QByteArray>("trackingFile");
    QTest::addColumn<int>("motionResult");
    QTest::addColumn<int>("next");
    QTest::addColumn<bool>("readsMotion");
    const QByteArray good = Int(2) + Int(0) + Int(0);
    const QByteArray damaged = Int(2) + Int(0);
    QTest::newRow("tracking") << int{JobReadTracking} << good << 0 << 8 << false;
    QTest::newRow("tracking, damaged") << int{JobReadTracking} << damaged << 0 << 0 << false;
    QTest::newRow("tracking, bad count") << int{JobReadTracking} << Int(1) << 0 << 0 << false;
    QTest::newRow("all") << int{JobReadAll} << good << 0 << 9 << true;
    QTest::newRow("all, damaged tracking") << int{JobReadAll} << damaged << 0 << 0 << false;
    QTest::newRow("all, no motion file") << int{JobReadAll} << good << 1 << 8 << true;
    QTest::newRow("all, motion out of date") << int{JobReadAll} << good << 2 << 8 << true;
    QTest::newRow("all, motion damaged") << int{JobReadAll} << good << -1 << 8 << true;
}

void WorkerTest::Read()
{
    QFETCH(int, job);
    QFETCH(QByteArray, trackingFile);
    QFETCH(int, motionResult);
    QFETCH(int, next);
    QFETCH(bool, readsMotion);
    WorkerSetup setup;
    WriteBytes(setup.Path("Tracking.dat.cfg"), PathField(setup.Path("source.avi").toLatin1()) +
                                                   Zeros(12) + Hex("c8000000 00000000 ffffffff"));
    WriteBytes(setup.Path("Tracking.dat"), trackingFile);
    setup.Object.ReadResult = motionResult;
    QCOMPARE(setup.RunJob(job), next);
    QCOMPARE(setup.Thread->GetState(), next);
    QCOMPARE(setup.Object.Calls, readsMotion ? QStringList{"ReadStabilizeFile"} : QStringList());
    QCOMPARE(setup.Object.TrackingLoaded, next != 0);
}

void WorkerTest::RunWithoutStabilizer()
{
    WorkerSetup setup;
    setup.Thread->SetStabilizer(nullptr);
    setup.Thread->StartJob(JobAnalyse);
    QCOMPARE(setup.Thread->GetState(), int{JobAnalyse});
    setup.Thread->start();  // as when the stabilizer goes between a start and its run
    QTRY_COMPARE(setup.Finished.States, QVector<int>{0});
    QCOMPARE(setup.Thread->GetState(), 0);
}

void WorkerTest::StartWithoutStabilizer()
{
    WorkerSetup setup;
    setup.Thread->SetStabilizer(nullptr);
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(!setup.Thread->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(setup.Finished.States, QVector<int>());
    QCOMPARE(setup.Thread->GetState(), int{JobAnalyse});
    QCOMPARE(setup.Lines.All(), QStringList());
}

void WorkerTest::AbortWithoutStabilizerDoesNothing()
{
    WorkerSetup setup;
    setup.Thread->SetStabilizer(nullptr);
    setup.Thread->StartJob(JobAnalyse);
    setup.Thread->AbortJob();
    QCOMPARE(setup.Thread->GetState(), int{JobAnalyse});
    QCOMPARE(setup.Finished.States, QVector<int>());
}

void WorkerTest::WorksOnItsOwnThread()
{
    WorkerSetup setup;
    QThread* worker = nullptr;
    QThread::Priority priority = QThread::IdlePriority;
    setup.Object.OnPrepare = [&]
    {
        worker = QThread::currentThread();
        priority = worker->priority();
    };
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QVERIFY(worker == setup.Thread);
    QCOMPARE(priority, QThread::InheritPriority);
    QVERIFY(setup.Thread->thread() == QThread::currentThread());  // the object lives here
    QVERIFY(setup.Thread->isFinished());
}

void WorkerTest::TakesThePathsAtTheStart()
{
    WorkerSetup setup;
    setup.Object.OnPrepare = [&] { setup.HoldUntilReleased(); };
    setup.Thread->StartJob(JobAnalyse);
    QVERIFY(setup.WaitUntilHeld());
    setup.Proj.TrackingFile = setup.Path("Other.dat");
    setup.Proj.SyncFileNames();
    setup.Release();
    QTRY_COMPARE(setup.Finished.States, QVector<int>{9});
    QVERIFY(QFile::exists(setup.Path("Tracking.dat")));
    QVERIFY(!QFile::exists(setup.Path("Other.dat")));
    setup.Object.OnPrepare = [] {};
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QVERIFY(QFile::exists(setup.Path("Other.dat")));
}

void WorkerTest::TwoJobsInARow()
{
    WorkerSetup setup;
    setup.Object.OnGenerate = [] { SetZeroCorrections(5); };
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(TestVideo::ReadAllFrames(setup.Path("export.mp4")).size(), std::size_t{5});
    QCOMPARE(setup.Lines.All().constLast(), QString("1 Exporting Video finished!"));
}

void WorkerTest::JobsStartedFromTheSlot()
{
    // The signal comes from inside run, and here the thread takes its time to leave: the next job
    // is started meanwhile and must not be lost.
    WorkerSetup setup;
    setup.Object.PretendDataLoaded();
    SetZeroCorrections(5);
    const QVector<int> jobs{JobTrackingReady, JobExport, JobPathReady,
                            JobExport,        JobNone,   JobTrackingReady};
    QVector<int> states;
    QSemaphore arrived;
    QObject window;
    connect(setup.Thread, &OpCVThread::SignalFinished, &window,
            [&](int state)
            {
                states.append(state);
                arrived.release();
                if (states.size() < jobs.size())
                {
                    setup.Thread->StartJob(jobs.at(states.size()));
                }
            });
    connect(
        setup.Thread, &OpCVThread::SignalFinished, &window,
        [&](int)
        {
            arrived.tryAcquire(1, 20000);
            QThread::msleep(20);  // makes a lost job all but sure; a good one does not depend on it
        },
        Qt::DirectConnection);
    setup.Thread->StartJob(jobs.constFirst());
    QTRY_COMPARE_WITH_TIMEOUT(states, QVector<int>({8, 9, 9, 9, 0, 8}), 20000);
    QVERIFY(setup.Thread->wait(20000));
}

void WorkerTest::DestroyedAfterAJob()
{
    WorkerSetup setup;
    {
        OpCVThread thread(&setup.Proj);
        thread.SetStabilizer(&setup.Object);
        thread.StartJob(JobAnalyse);
        QVERIFY(thread.wait(20000));
    }
    QVERIFY(setup.Object.TrackingLoaded);
    {
        // A job state without a job: the end asks the stabilizer, which has none to stop.
        OpCVThread thread(&setup.Proj);
        thread.StartJob(JobAnalyse);
        thread.SetStabilizer(&setup.Object);
    }
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
}

QTEST_MAIN(WorkerTest)
#include "worker_test.moc"
