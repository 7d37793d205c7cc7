// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "batch/workersetup.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
const char Input[] = "1 Input: Frames= 8 h=320 v=180 fps=25";
const char TrackingWritten[] = "1 Tracking file written!";
const char StabilizingWritten[] = "1 Stabilizing file written!";
const char TrackingRead[] = "1 Tracking file read successfully!";
const char StabilizingRead[] = "1 Stabilizing file read successfully!";

/** A street of 8 frames, and the host's own stabilizer. */
struct StreetSetup : BatchSetup
{
    StreetSetup() : Finished(ProgramHost.GetThread())
    {
        if (TestVideo::WriteStreetClip(Path("source.avi"), {320, 180, 8, 25.0}).empty())
        {
            qFatal("No clip for the test");
        }
    }

    /** Analyses with another stabilizer, so that the files are there and the host has no data. */
    void WriteDataFiles()
    {
        PosRotStabilizer other;
        GivePaths(other);
        if (other.AnalyseJob(Proj.TrackingParameters) != 0)
        {
            qFatal("No data files for the test");
        }
        Lines.Take();
    }

    /** Runs a whole job. @return what it ended in; -1000 when the signal did not come once */
    int RunJob(int state)
    {
        Finished.States.clear();
        ProgramHost.GetThread()->StartJob(state);
        const bool hasEnded = ProgramHost.GetThread()->wait(60000);
        QCoreApplication::processEvents();
        return hasEnded && Finished.States.size() == 1 ? Finished.States.constFirst() : -1000;
    }

    FinishedStates Finished;
};
}  // namespace

/** Whole jobs on the worker, with the real stabilizer and files. */
class WorkerJobsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void AnalyseCalculateExport();
    void ExportGeneratesThePath();
    void GenerateAll();
    void GenerateAllWithoutSource();
    void GenerateAllWithoutOutput();
    void ReadAllAndExport();
    void ReadTrackingAlone();
    void ReadAllTwice();
    void ReadAllWithoutMotionFile();
    void ReadAllWithoutFiles();
    void SourceRenamedAfterAnalysis();
    void PointsChangedAfterAnalysis();
    void MotionFileOfOneSample();
    void SourceBeyondLatin1();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void WorkerJobsTest::AnalyseCalculateExport()
{
    StreetSetup setup;
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    QCOMPARE(setup.Lines.Take(), QStringList({Input, TrackingWritten, StabilizingWritten}));
    QCOMPARE(ProgramHost.GeneratePath(), 0);
    QCOMPARE(setup.Lines.Take(), QStringList({"1 Generate Smoothing Path"}));
    QCOMPARE(PathHorizontal.Result.Correction.size(), 8);
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(setup.Lines.Take(),
             QStringList({Input, "1 Start exporting Video", Input, "4 Frame: 0/8 exported!",
                          "1 Exporting Video finished!"}));
    QCOMPARE(TestVideo::ReadAllFrames(setup.Path("export.mp4")).size(), std::size_t{8});
}

void WorkerJobsTest::ExportGeneratesThePath()
{
    StreetSetup setup;
    QCOMPARE(setup.RunJob(JobAnalyse), 9);
    setup.Lines.Take();
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(setup.Lines.Take().mid(0, 3),
             QStringList({"1 Generate Smoothing Path", Input, "1 Start exporting Video"}));
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(setup.Lines.Take().constFirst(), QString(Input));  // it stands
}

void WorkerJobsTest::GenerateAll()
{
    StreetSetup setup;
    QCOMPARE(setup.RunJob(JobGenerateAll), 9);
    QCOMPARE(setup.Lines.All(),
             QStringList({Input, TrackingWritten, StabilizingWritten, "1 Generate Smoothing Path",
                          Input, "1 Start exporting Video", Input, "4 Frame: 0/8 exported!",
                          "1 Exporting Video finished!"}));
    QCOMPARE(TestVideo::ReadAllFrames(setup.Path("export.mp4")).size(), std::size_t{8});
}

void WorkerJobsTest::GenerateAllWithoutSource()
{
    StreetSetup setup;
    setup.Proj.SourceFile = "/nowhere/a.avi";
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobGenerateAll), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/a.avi failed!"}));
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void WorkerJobsTest::GenerateAllWithoutOutput()
{
    StreetSetup setup;
    setup.Proj.ExportFile = "/nowhere/export.mp4";
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobGenerateAll), 9);
    QCOMPARE(setup.Lines.All().constLast(), QString("3 Exporting failed!"));
    QVERIFY(QFile::exists(setup.Path("Stabilize.dat")));
}

void WorkerJobsTest::ReadAllAndExport()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    QCOMPARE(setup.RunJob(JobReadAll), 9);
    QCOMPARE(setup.Lines.Take(), QStringList({TrackingRead, StabilizingRead}));
    QCOMPARE(setup.RunJob(JobExport), 9);
    QCOMPARE(setup.Lines.All().constLast(), QString("1 Exporting Video finished!"));
    QCOMPARE(TestVideo::ReadAllFrames(setup.Path("export.mp4")).size(), std::size_t{8});
}

void WorkerJobsTest::ReadTrackingAlone()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    QCOMPARE(setup.RunJob(JobReadTracking), 8);
    QCOMPARE(setup.Lines.Take(), QStringList({TrackingRead}));
    QCOMPARE(setup.RunJob(JobExport), 9);  // without motion: nothing is done or told
    QCOMPARE(setup.Lines.All(), QStringList());
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void WorkerJobsTest::ReadAllTwice()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    QCOMPARE(setup.RunJob(JobReadAll), 9);
    setup.Lines.Take();
    QVERIFY(QFile::remove(setup.Path("Tracking.dat")));
    QCOMPARE(setup.RunJob(JobReadAll), 9);  // the points in memory stand
    QCOMPARE(setup.Lines.All(), QStringList({StabilizingRead}));
}

void WorkerJobsTest::ReadAllWithoutMotionFile()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    QVERIFY(QFile::remove(setup.Path("Stabilize.dat")));
    QCOMPARE(setup.RunJob(JobReadAll), 8);
    QCOMPARE(setup.Lines.All(), QStringList({TrackingRead, "3 Stabilizing file access error!"}));
}

void WorkerJobsTest::ReadAllWithoutFiles()
{
    StreetSetup setup;
    QCOMPARE(setup.RunJob(JobReadAll), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Could not open matching file (.cfg)!",
                                             "3 Tracking file loading failed!"}));
}

void WorkerJobsTest::SourceRenamedAfterAnalysis()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    QVERIFY(QFile::rename(setup.Path("source.avi"), setup.Path("renamed.avi")));
    setup.Proj.SourceFile = setup.Path("renamed.avi");
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobReadAll), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Out of date!", "3 Tracking file out of date!"}));
}

void WorkerJobsTest::PointsChangedAfterAnalysis()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    setup.Proj.TrackingParameters.MaxTrackingPoints = 201;
    QCOMPARE(setup.RunJob(JobReadAll), 0);
    QCOMPARE(setup.Lines.All(),
             QStringList({"3 Data file out of date!", "3 Tracking file out of date!"}));
}

void WorkerJobsTest::MotionFileOfOneSample()
{
    StreetSetup setup;
    setup.WriteDataFiles();
    WriteBytes(setup.Path("Stabilize.dat"), Int(1) + Zeros(24));
    QCOMPARE(setup.RunJob(JobReadAll), 9);
    QCOMPARE(setup.Lines.Take(), QStringList({TrackingRead, StabilizingRead}));
    QCOMPARE(setup.RunJob(JobExport), 9);  // there is no correction for any frame
    QCOMPARE(setup.Lines.All().constLast(), QString("3 Exporting failed!"));
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void WorkerJobsTest::SourceBeyondLatin1()
{
    StreetSetup setup;
    setup.Proj.SourceFile = QStringLiteral("/nowhere/") + QChar(0x3B1) + QStringLiteral(".avi");
    setup.Proj.SyncFileNames();
    QCOMPARE(setup.RunJob(JobAnalyse), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/ failed!"}));
}

QTEST_MAIN(WorkerJobsTest)
#include "workerjobs_test.moc"
