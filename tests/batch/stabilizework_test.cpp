// SPDX-License-Identifier: MIT
#include "batch/filefields.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "batch/stabilizesetup.h"
#include "batch/workersetup.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <opencv2/imgproc.hpp>

#include <QDateTime>
#include <QtTest>

#include <memory>

namespace
{
using Points = std::vector<std::vector<cv::Point2f>>;

const char Input[] = "1 Input: Frames= 8 h=320 v=180 fps=25";
const char Start[] = "1 Start Stabilizing!";
const char Done[] = "1 Stabilizing done!";
const char NoData[] = "3 No Tracking Data (execute Analyse Source Video)!";
const char NoMatchingFile[] = "3 Could not open matching file (.cfg)!";
const char NoMotionFile[] = "3 Stabilizing file access error!";
const char TrackingWritten[] = "1 Tracking file written!";
const char MotionWritten[] = "1 Stabilizing file written!";
constexpr int Frames = 8;

/** The stabilizer that a test scripts, on the worker, with points in memory that are up to date. */
struct ScriptedWork : WorkerSetup
{
    ScriptedWork()
    {
        Object.TrackingLoaded = true;
        Object.ReadResult = 1;
        Object.TrackingPoints.resize(5);
        WriteBytes(Path("Tracking.dat.cfg"), MatchingBytes(Proj.SourceFile, PointsPayload(200)));
    }
};

/** A street of 8 frames, analysed by a stabilizer that has its data in memory, and their files. */
struct StreetSetup : BatchSetup
{
    StreetSetup()
    {
        const TestVideo::Format format{320, 180, Frames, 25.0};
        GivePaths(Object);
        if (TestVideo::WriteStreetClip(Path("source.avi"), format).empty() ||
            Object.AnalyseJob(Proj.TrackingParameters) != 0)
        {
            qFatal("No analysis for the test");
        }
        Lines.Take();
    }

    /** Forgets the motion, as after a restart that has read the points. */
    void ForgetMotion()
    {
        Object.StabilizeLoaded = false;
        Object.PrepareFrames(0);
    }

    [[nodiscard]] int Run() { return Object.StabilizeJob(&Proj.TrackingParameters); }
    [[nodiscard]] QByteArray Bytes(const char* name) const { return ReadBytes(Path(name)); }

    PosRotStabilizer Object;
};

/** What following @p points through the whole video again has to give. */
void MeasureAgain(const QString& path, Points points, PosRotStabilizer& expected)
{
    std::vector<cv::Mat> grays;
    for (const cv::Mat& frame : TestVideo::ReadAllFrames(path))
    {
        cv::cvtColor(frame, grays.emplace_back(), cv::COLOR_BGR2GRAY);
    }
    std::vector<cv::Point2f> scratch;
    expected.PrepareFrames(Frames);
    for (std::size_t i = 1; i < grays.size(); ++i)
    {
        expected.TrackFrame(grays[i - 1], grays[i], points[i], scratch);
    }
    expected.TrackFrame(grays.back(), grays.back(), points.back(), scratch);
    expected.TrackingPoints = std::move(points);
}
}  // namespace

/** The stabilize job on the worker, and with the real model of the motion. */
class StabilizeWorkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void States_data();
    void States();
    void OutOfDateTakesTheProjectsParameters();
    void Abort();
    void AbortDuringTheWriting();
    void WithoutAnalysedData();
    void CurrentFileIsEnough_data();
    void CurrentFileIsEnough();
    void DeletedFileIsMeasuredAnew();
    void UselessFileIsMeasuredAnew_data();
    void UselessFileIsMeasuredAnew();
    void MotionCannotBeWritten();
    void ChangedPointsAreAnalysed();
    void SourceOfAnotherLength_data();
    void SourceOfAnotherLength();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void StabilizeWorkTest::States_data()
{
    QTest::addColumn<bool>("hasPoints");
    QTest::addColumn<int>("maxPoints");
    QTest::addColumn<bool>("hasMatchingFile");
    QTest::addColumn<int>("readResult");
    QTest::addColumn<int>("writeResult");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("status");
    const int running = JobRunning;
    const int ended = JobEnded;
    QTest::newRow("no points") << false << 200 << true << 0 << 0 << 8 << ended;
    QTest::newRow("cannot be checked") << true << 200 << false << 0 << 0 << 8 << running;
    QTest::newRow("read") << true << 200 << true << 0 << 0 << 9 << ended;
    QTest::newRow("measured") << true << 200 << true << 1 << 0 << 9 << running;
    QTest::newRow("not written") << true << 200 << true << 1 << 1 << 8 << ended;
    QTest::newRow("analysed") << true << 44 << true << 1 << 0 << 9 << ended;
    QTest::newRow("not analysed") << true << 44 << true << 1 << 1 << 8 << ended;
}

void StabilizeWorkTest::States()
{
    QFETCH(bool, hasPoints);
    QFETCH(int, maxPoints);
    QFETCH(bool, hasMatchingFile);
    QFETCH(int, readResult);
    QFETCH(int, writeResult);
    QFETCH(int, state);
    QFETCH(int, status);
    ScriptedWork setup;
    setup.Object.TrackingLoaded = hasPoints;
    setup.Object.ReadResult = readResult;
    setup.Object.WriteResult = writeResult;
    setup.Proj.TrackingParameters.MaxTrackingPoints = maxPoints;
    QVERIFY(hasMatchingFile || QFile::remove(setup.Path("Tracking.dat.cfg")));
    QCOMPARE(setup.RunJob(JobStabilize), state);  // with exactly one signal
    QCOMPARE(setup.Thread->GetState(), state);
    QCOMPARE(setup.Object.JobStatus, status);
}

void StabilizeWorkTest::OutOfDateTakesTheProjectsParameters()
{
    ScriptedWork setup;
    setup.Proj.TrackingParameters.MaxTrackingPoints = 44;
    QCOMPARE(setup.RunJob(JobStabilize), 9);
    QCOMPARE(setup.Object.TrackingParameters.MaxTrackingPoints, 44);
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")).mid(268), PointsPayload(44));
}

void StabilizeWorkTest::Abort()
{
    ScriptedWork setup;
    setup.Object.OnTrack = [&](int call, const cv::Mat&, std::vector<cv::Point2f>&)
    {
        if (call == 2)
        {
            setup.HoldUntilAbort();
        }
    };
    setup.Thread->StartJob(JobStabilize);
    QVERIFY(setup.WaitUntilHeld());
    setup.Thread->AbortJob();
    QVERIFY(setup.Thread->wait(20000));
    QCoreApplication::processEvents();
    QCOMPARE(setup.Finished.States, QVector<int>{8});
    QCOMPARE(setup.Lines.All().constLast(), QString("1 Stabilize aborted!"));
    QCOMPARE(setup.Object.Calls, StabilizeSetup::MeasureCalls(5, 2, false));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
}

void StabilizeWorkTest::AbortDuringTheWriting()
{
    ScriptedWork setup;
    setup.Object.OnWrite = [&] { setup.HoldUntilAbort(); };
    setup.Thread->StartJob(JobStabilize);
    QVERIFY(setup.WaitUntilHeld());
    setup.Thread->AbortJob();  // comes back, though the job looks at no request any more
    QVERIFY(setup.Thread->wait(20000));
    QCoreApplication::processEvents();
    QCOMPARE(setup.Finished.States, QVector<int>{9});
    QCOMPARE(setup.Lines.All().constLast(), QString(Done));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
}

void StabilizeWorkTest::WithoutAnalysedData()
{
    BatchSetup setup;
    const FinishedStates finished(ProgramHost.GetThread());
    ProgramHost.GetThread()->StartJob(JobStabilize);
    QVERIFY(ProgramHost.GetThread()->wait(20000));
    QCoreApplication::processEvents();
    QCOMPARE(finished.States, QVector<int>{8});
    QCOMPARE(setup.Lines.All(), QStringList(NoData));
}

void StabilizeWorkTest::CurrentFileIsEnough_data()
{
    QTest::addColumn<bool>("isInMemory");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("motion in memory") << true << QStringList();
    QTest::newRow("motion in the file only")
        << false << QStringList("1 Stabilizing file read successfully!");
}

void StabilizeWorkTest::CurrentFileIsEnough()
{
    QFETCH(bool, isInMemory);
    QFETCH(QStringList, lines);
    StreetSetup setup;
    const QVector<double> motion = setup.Object.MotionX;
    const Points points = setup.Object.TrackingPoints;
    if (!isInMemory)
    {
        setup.ForgetMotion();
    }
    QVERIFY(QFile::remove(setup.Path("source.avi")));
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5, 6));
    const auto names = {"Tracking.dat", "Tracking.dat.cfg", "Stabilize.dat", "Stabilize.dat.cfg"};
    for (const char* name : names)
    {
        QFile file(setup.Path(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    }
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), lines);
    QCOMPARE(setup.Object.MotionX, motion);
    QVERIFY(setup.Object.TrackingPoints == points);
    QVERIFY(setup.Object.StabilizeLoaded);
    for (const char* name : names)
    {
        QCOMPARE(QFileInfo(setup.Path(name)).lastModified(), longAgo);
    }
}

void StabilizeWorkTest::DeletedFileIsMeasuredAnew()
{
    StreetSetup setup;
    PosRotStabilizer expected;
    MeasureAgain(setup.Proj.SourceFile, setup.Object.TrackingPoints, expected);
    const QByteArray tracking = setup.Bytes("Tracking.dat");
    PosRotStabilizer object;  // as after a restart
    setup.GivePaths(object);
    QCOMPARE(object.ReadTracking(setup.Proj.TrackingParameters), 0);
    setup.Lines.Take();
    QVERIFY(QFile::remove(setup.Path("Stabilize.dat")));
    QCOMPARE(object.StabilizeJob(&setup.Proj.TrackingParameters), 0);
    QCOMPARE(setup.Lines.All(), QStringList({NoMotionFile, Input, Start, MotionWritten, Done}));
    QCOMPARE(object.MotionCount, std::uint64_t{Frames});
    QCOMPARE(object.MotionX, expected.MotionX);
    QCOMPARE(object.MotionY, expected.MotionY);
    QCOMPARE(object.MotionAngle, expected.MotionAngle);
    QVERIFY(object.TrackingPoints == expected.TrackingPoints);
    QVERIFY(qAbs(object.MotionX.at(0)) > 0.01);  // the camera shakes
    QCOMPARE(setup.Bytes("Tracking.dat"), tracking);
    // The new file is what another start reads.
    PosRotStabilizer reader;
    setup.GivePaths(reader);
    QCOMPARE(reader.ReadStabilizeFile(), 0);
    QCOMPARE(reader.MotionX, object.MotionX);
    QCOMPARE(reader.MotionY, object.MotionY);
    QCOMPARE(reader.MotionAngle, object.MotionAngle);
}

void StabilizeWorkTest::UselessFileIsMeasuredAnew_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("matching");
    QTest::addColumn<bool>("isInMemory");
    QTest::addColumn<QStringList>("lines");
    const QStringList noMatching = {NoMatchingFile, "3 Stabilizing file loading failed!"};
    const QStringList otherSource = {"3 Out of date!", "3 Stabilizing file out of date!"};
    const QByteArray foreign = MatchingBytes("/nowhere/source.avi", Int(1));
    QTest::newRow("no matching file") << QByteArray() << QByteArray() << false << noMatching;
    QTest::newRow("no matching file, motion in memory")
        << QByteArray() << QByteArray() << true << QStringList(NoMatchingFile) + noMatching;
    QTest::newRow("other source") << QByteArray() << foreign << false << otherSource;
    QTest::newRow("other source, motion in memory")
        << QByteArray() << foreign << true << QStringList("3 Out of date!") + otherSource;
    QTest::newRow("ends early: nothing is told")
        << Int(20) + Zeros(30) << QByteArray("as it is") << false << QStringList();
}

void StabilizeWorkTest::UselessFileIsMeasuredAnew()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, matching);
    QFETCH(bool, isInMemory);
    QFETCH(QStringList, lines);
    StreetSetup setup;
    if (!isInMemory)
    {
        setup.ForgetMotion();
    }
    WriteBytes(setup.Path("Stabilize.dat"), file);
    if (matching != "as it is")
    {
        WriteBytes(setup.Path("Stabilize.dat.cfg"), matching);
    }
    QVERIFY(!matching.isEmpty() || QFile::remove(setup.Path("Stabilize.dat.cfg")));
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), lines + QStringList({Input, Start, MotionWritten, Done}));
    QCOMPARE(setup.Object.MotionX.size(), Frames);
    QCOMPARE(setup.Object.MotionCount, std::uint64_t{Frames});
    QCOMPARE(setup.Bytes("Stabilize.dat").size(), 4 + Frames * 24);
    QCOMPARE(setup.Bytes("Stabilize.dat.cfg").mid(268), Int(1));
}

void StabilizeWorkTest::MotionCannotBeWritten()
{
    StreetSetup setup;
    setup.Proj.StabilizationFile = setup.Path("nowhere/Stabilize.dat");
    setup.GivePaths(setup.Object);
    QCOMPARE(setup.Run(), 2);
    QCOMPARE(setup.Lines.All(),
             QStringList({NoMatchingFile, NoMatchingFile, "3 Stabilizing file loading failed!",
                          Input, Start, "3 Could not write matching file (.cfg)!", NoData}));
    QVERIFY(!setup.Object.StabilizeLoaded && setup.Object.TrackingLoaded);
}

void StabilizeWorkTest::ChangedPointsAreAnalysed()
{
    StreetSetup setup;
    setup.Proj.TrackingParameters.MaxTrackingPoints = 21;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(),
             QStringList({"3 Data file out of date!", "3 Tracking file out of date!", Input,
                          TrackingWritten, MotionWritten}));
    for (const auto& points : setup.Object.TrackingPoints)
    {
        QVERIFY(points.size() <= 21);
    }
    PosRotStabilizer analysed;
    setup.GivePaths(analysed);
    QCOMPARE(analysed.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QVERIFY(setup.Object.TrackingPoints == analysed.TrackingPoints);
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
}

void StabilizeWorkTest::SourceOfAnotherLength_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("shorter") << 3;
    QTest::newRow("longer") << 30;
}

void StabilizeWorkTest::SourceOfAnotherLength()
{
    QFETCH(int, frames);
    StreetSetup setup;
    setup.ForgetMotion();
    QVERIFY(QFile::remove(setup.Path("Stabilize.dat")));
    // Another video at the same path goes unnoticed.
    QVERIFY(
        !TestVideo::WriteStreetClip(setup.Path("source.avi"), {320, 180, frames, 25.0}).empty());
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.MotionX.size(), frames);
    QCOMPARE(setup.Object.MotionCount, static_cast<std::uint64_t>(frames));
    QCOMPARE(setup.Bytes("Stabilize.dat").size(), 4 + frames * 24);
    QCOMPARE(setup.Object.TrackingPoints.size(), static_cast<std::size_t>(qMax(frames, Frames)));
}

QTEST_MAIN(StabilizeWorkTest)
#include "stabilizework_test.moc"
