// SPDX-License-Identifier: MIT
#include "batch/stabilizerhost.h"
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
/** Lets the host read a tracking file with three points in frame 1, so that it has data to lose. */
void LoadTracking(BatchSetup& setup)
{
    WriteBytes(setup.Path("Tracking.dat.cfg"), PathField(setup.Path("source.avi").toLatin1()) +
                                                   Zeros(12) + Hex("c8000000 00000000 ffffffff"));
    WriteBytes(setup.Path("Tracking.dat"), Int(2) + Int(0) + Int(3) + Zeros(24));
    ProgramHost.GetThread()->StartJob(JobReadTracking);
    ProgramHost.GetThread()->wait();
    QCoreApplication::processEvents();
    setup.Lines.Take();
}
}  // namespace

/** The owner of stabilizer and thread. */
class StabilizerHostTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void BeforeAnyStabilizer();
    void CreateTellsWhetherTheThreadIsNew();
    void SelectGivesTheThreadOnce();
    void SelectingTheSameTypeKeepsTheData();
    void SelectingAnotherTypeDropsTheData();
    void OtherTypesHaveNoStabilizer();
    void GeneratePathWithoutMotion();
    void SaveDataWritesWhereItIsTold();
    void StateOfTheThread();
    void EndLetsAJobStop();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void StabilizerHostTest::BeforeAnyStabilizer()
{
    Project project;
    FreshHost host;
    LogLines lines;
    QVERIFY(ProgramHost.GetThread() == nullptr);
    QCOMPARE(ProgramHost.GetState(), 0);
    QCOMPARE(ProgramHost.GeneratePath(), 100);
    QCOMPARE(ProgramHost.SaveData(project.FileNames), 100);
    ProgramHost.SetFileNames(project.FileNames);
    ProgramHost.Log(3, "dropped without a trace");
    QCoreApplication::processEvents();
    QCOMPARE(lines.All(), QStringList());
    // It does not come later either.
    QVERIFY(ProgramHost.CreateStabilizer(1, &project));
    lines.Attach(ProgramHost.GetThread());
    ProgramHost.Log(3, "heard");
    QCOMPARE(lines.All(), QStringList({"3 heard"}));
}

void StabilizerHostTest::CreateTellsWhetherTheThreadIsNew()
{
    Project project;
    FreshHost host;
    QVERIFY(ProgramHost.CreateStabilizer(2, &project));
    const OpCVThread* thread = ProgramHost.GetThread();
    QVERIFY(thread != nullptr);
    QVERIFY(!ProgramHost.CreateStabilizer(1, &project));
    QVERIFY(ProgramHost.GetThread() == thread);
}

void StabilizerHostTest::SelectGivesTheThreadOnce()
{
    Project project;
    FreshHost host;
    const OpCVThread* thread = ProgramHost.SelectStabilizer(1, &project);
    QVERIFY(thread != nullptr);
    QVERIFY(thread == ProgramHost.GetThread());
    QVERIFY(ProgramHost.SelectStabilizer(1, &project) == nullptr);
    QVERIFY(ProgramHost.SelectStabilizer(7, &project) == nullptr);
    QVERIFY(ProgramHost.SelectStabilizer(1, &project) == nullptr);
    QVERIFY(ProgramHost.GetThread() == thread);
}

void StabilizerHostTest::SelectingTheSameTypeKeepsTheData()
{
    BatchSetup setup;
    LoadTracking(setup);
    QVERIFY(ProgramHost.SelectStabilizer(1, &setup.Proj) == nullptr);
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Tracking file written!"}));
}

void StabilizerHostTest::SelectingAnotherTypeDropsTheData()
{
    BatchSetup setup;
    LoadTracking(setup);
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 0);
    QVERIFY(ProgramHost.SelectStabilizer(2, &setup.Proj) == nullptr);
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 100);
    QVERIFY(ProgramHost.SelectStabilizer(1, &setup.Proj) == nullptr);
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 2);  // a new one without points
}

void StabilizerHostTest::OtherTypesHaveNoStabilizer()
{
    Project project;
    FreshHost host;
    LogLines lines;
    lines.Attach(ProgramHost.SelectStabilizer(2, &project));
    for (const int type : {2, 0, -1})
    {
        static_cast<void>(ProgramHost.SelectStabilizer(type, &project));
        QCOMPARE(ProgramHost.GeneratePath(), 100);
        QCOMPARE(ProgramHost.SaveData(project.FileNames), 100);
        ProgramHost.SetFileNames(project.FileNames);
        bool hasFinished = false;
        QObject window;
        connect(ProgramHost.GetThread(), &OpCVThread::SignalFinished, &window,
                [&] { hasFinished = true; });
        ProgramHost.GetThread()->StartJob(JobAnalyse);
        QVERIFY(!ProgramHost.GetThread()->isRunning());
        QCoreApplication::processEvents();
        QVERIFY(!hasFinished);
        ProgramHost.Abort();  // returns
    }
    QCOMPARE(lines.All(), QStringList());
}

void StabilizerHostTest::GeneratePathWithoutMotion()
{
    BatchSetup setup;
    QCOMPARE(ProgramHost.GeneratePath(), 2);
    QCOMPARE(setup.Lines.All(), QStringList({"3 No data to smooth!"}));
}

void StabilizerHostTest::SaveDataWritesWhereItIsTold()
{
    BatchSetup setup;
    LoadTracking(setup);
    setup.Proj.TrackingFile = setup.Path("Other.dat");
    setup.Proj.SyncFileNames();
    QCOMPARE(ProgramHost.SaveData(setup.Proj.FileNames), 0);
    QCOMPARE(ReadBytes(setup.Path("Other.dat")), Int(2) + Int(0) + Int(3) + Zeros(24));
    QVERIFY(QFile::exists(setup.Path("Other.dat.cfg")));
}

void StabilizerHostTest::StateOfTheThread()
{
    BatchSetup setup;
    QCOMPARE(ProgramHost.GetState(), 0);
    LoadTracking(setup);
    QCOMPARE(ProgramHost.GetState(), int{JobTrackingReady});
}

void StabilizerHostTest::EndLetsAJobStop()
{
    // Qt ends the program when a thread object goes while its thread runs.
    bool hasStarted = false;
    {
        BatchSetup setup;
        QVERIFY(
            !TestVideo::WriteStreetClip(setup.Path("source.avi"), {320, 180, 60, 25.0}).empty());
        ProgramHost.GetThread()->StartJob(JobGenerateAll);
        QTRY_VERIFY_WITH_TIMEOUT(!setup.Lines.OfLevel(4).isEmpty(), 20000);
        hasStarted = setup.Lines.OfLevel(4).constFirst().startsWith("4 Frame: 20/60 ");
    }
    QVERIFY(hasStarted);
    QVERIFY(ProgramHost.GetThread() == nullptr);
    QCOMPARE(ProgramHost.GetState(), 0);
}

QTEST_MAIN(StabilizerHostTest)
#include "stabilizerhost_test.moc"
