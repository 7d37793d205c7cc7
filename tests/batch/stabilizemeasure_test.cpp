// SPDX-License-Identifier: MIT
#include "batch/pairjobs.h"
#include "batch/stabilizesetup.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QtTest>

#include <memory>

namespace
{
using Points = std::vector<std::vector<cv::Point2f>>;

const char Input[] = "1 Input: Frames= 5 h=64 v=64 fps=25";
const char Start[] = "1 Start Stabilizing!";
const char Done[] = "1 Stabilizing done!";
const char NoData[] = "3 No Tracking Data (execute Analyse Source Video)!";
const char NoMatchingFile[] = "3 Could not open matching file (.cfg)!";
}  // namespace

/** The stabilize job when it measures the motion anew, over the points in memory. */
class StabilizeMeasureTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void Measures_data();
    void Measures();
    void FollowsTheStoredPoints();
    void SourceShorterThanItSays();
    void SourceOfAnotherLength_data();
    void SourceOfAnotherLength();
    void ProgressLines_data();
    void ProgressLines();
    void FactsComeFromTheMatchingFile();
    void MotionCannotBeWritten_data();
    void MotionCannotBeWritten();
    void Aborts_data();
    void Aborts();
    void SourceIsClosedFirst_data();
    void SourceIsClosedFirst();
    void OldRequestIsForgotten();
    void SourceCannotBeOpened();
    void FirstFrameUnreadable();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void StabilizeMeasureTest::Measures_data()
{
    AddPairRows();
}

void StabilizeMeasureTest::Measures()
{
    QFETCH(int, frames);
    QFETCH(Pairs, pairs);
    QFETCH(std::vector<int>, lists);
    StabilizeSetup setup(frames);
    const QByteArray matching = ReadBytes(setup.Path("Tracking.dat.cfg"));
    const QString input = QStringLiteral("1 Input: Frames= %1 h=64 v=64 fps=25").arg(frames);
    QStringList before;
    bool hadMotion = true;
    setup.Object.OnPrepare = [&] { before = setup.Lines.All(); };
    setup.Object.OnWrite = [&] { hadMotion = setup.Object.StabilizeLoaded; };
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.Calls,
             StabilizeSetup::MeasureCalls(frames, static_cast<int>(pairs.size())));
    QVERIFY(setup.Object.GrayPairs == GrayPairs(pairs));
    QVERIFY(setup.Object.PointLists == lists);
    QCOMPARE(before, QStringList({input, Start}));
    QCOMPARE(setup.Lines.All(), QStringList({input, Start, Done}));
    QVERIFY(!hadMotion && setup.Object.StabilizeLoaded);
    QVERIFY(setup.Object.TrackingLoaded);
    QCOMPARE(setup.Object.JobStatus, int{JobRunning});  // deliberate
    QVERIFY(!QFile::exists(setup.Path("Tracking.dat")));
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")), matching);
}

void StabilizeMeasureTest::FollowsTheStoredPoints()
{
    StabilizeSetup setup;
    // Corners enough to find, were they looked for.
    QVERIFY(!TestVideo::WriteStreetClip(setup.Path("source.avi"), {320, 180, 5, 25.0}).empty());
    Points expected = setup.Object.TrackingPoints;
    Points given;
    setup.Object.OnTrack = [&](int, const cv::Mat&, std::vector<cv::Point2f>& points)
    {
        given.push_back(points);
        points.pop_back();  // as if it were lost
    };
    QCOMPARE(setup.Run(), 0);
    for (std::size_t i = 1; i < 5; ++i)
    {
        QVERIFY(given.at(i - 1) == expected[i]);
        expected[i].pop_back();
    }
    QVERIFY(given.at(4) == expected[4]);  // what the last pair has left
    expected[4].pop_back();
    QVERIFY(setup.Object.TrackingPoints == expected);
}

void StabilizeMeasureTest::SourceShorterThanItSays()
{
    StabilizeSetup setup(6);
    QVERIFY(TestVideo::WriteShortClip(setup.Path("source.avi"), {64, 64, 3, 25.0}, 6));
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All(), QStringList({"1 Input: Frames= 6 h=64 v=64 fps=25", Start, Done}));
    QVERIFY(setup.Object.GrayPairs == GrayPairs({{0, 1}, {1, 2}, {2, 2}, {2, 2}, {2, 2}, {2, 2}}));
    QVERIFY(setup.Object.PointLists == std::vector<int>({1, 2, 3, 4, 5, 5}));
}

void StabilizeMeasureTest::SourceOfAnotherLength_data()
{
    QTest::addColumn<int>("stored");
    QTest::newRow("no entry at all") << 0;
    QTest::newRow("fewer entries than frames") << 2;
    QTest::newRow("one entry too few") << 4;
    QTest::newRow("one entry too many") << 6;
    QTest::newRow("more entries than frames") << 12;
}

void StabilizeMeasureTest::SourceOfAnotherLength()
{
    QFETCH(int, stored);
    StabilizeSetup setup;
    setup.StorePoints(stored);
    Points expected = setup.Object.TrackingPoints;
    expected.resize(static_cast<std::size_t>(qMax(stored, 5)));  // missing ones are empty
    QCOMPARE(setup.Run(), 0);
    QVERIFY(setup.Object.PointLists == std::vector<int>({1, 2, 3, 4, 4}));
    QVERIFY(setup.Object.TrackingPoints == expected);
}

void StabilizeMeasureTest::ProgressLines_data()
{
    AddProgressRows();
}

void StabilizeMeasureTest::ProgressLines()
{
    QFETCH(int, frames);
    QFETCH(QStringList, lines);
    StabilizeSetup setup(frames);
    setup.Object.OnTrack = [](int, const cv::Mat&, std::vector<cv::Point2f>& points)
    { points.resize(3); };  // those that are left count
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.OfLevel(4), lines);
}

void StabilizeMeasureTest::FactsComeFromTheMatchingFile()
{
    StabilizeSetup setup;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.FrameWidth, 7);
    QCOMPARE(setup.Object.FrameHeight, 9);
    QCOMPARE(setup.Object.FrameRate, 11);
}

void StabilizeMeasureTest::MotionCannotBeWritten_data()
{
    AddFailedWriteRows();
}

void StabilizeMeasureTest::MotionCannotBeWritten()
{
    QFETCH(int, result);
    StabilizeSetup setup;
    setup.Object.StabilizeLoaded = true;
    setup.Object.WriteResult = result;
    QCOMPARE(setup.Run(), 2);
    // Deliberate: the points are there, and the line says that they are not.
    QCOMPARE(setup.Lines.All(), QStringList({NoMatchingFile, Input, Start, NoData}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!setup.Object.StabilizeLoaded && setup.Object.TrackingLoaded);
}

void StabilizeMeasureTest::Aborts_data()
{
    AddAbortRows();
}

void StabilizeMeasureTest::Aborts()
{
    QFETCH(int, requestAt);
    QFETCH(bool, isAborted);
    for (const bool hadMotion : {false, true})
    {
        StabilizeSetup setup;
        setup.Object.StabilizeLoaded = hadMotion;
        RequestStopAt(setup.Object, requestAt);
        QCOMPARE(setup.Run(), isAborted ? 10 : 0);
        const QStringList check = hadMotion ? QStringList(NoMatchingFile) : QStringList();
        QCOMPARE(setup.Lines.All(),
                 check + QStringList({Input, Start, isAborted ? "1 Stabilize aborted!" : Done}));
        QCOMPARE(setup.Object.Calls,
                 StabilizeSetup::MeasureCalls(5, isAborted ? requestAt : 5, !isAborted));
        QCOMPARE(setup.Object.StabilizeLoaded, hadMotion || !isAborted);
        if (isAborted)
        {
            QCOMPARE(setup.Object.JobStatus, int{JobEnded});
        }
    }
}

void StabilizeMeasureTest::SourceIsClosedFirst_data()
{
    QTest::addColumn<int>("writeResult");
    QTest::addColumn<int>("requestAt");
    QTest::newRow("before the motion is written") << 0 << -1;
    QTest::newRow("before it cannot be written") << 1 << -1;
    QTest::newRow("before the abort is told") << 0 << 2;
}

void StabilizeMeasureTest::SourceIsClosedFirst()
{
    QFETCH(int, writeResult);
    QFETCH(int, requestAt);
    StabilizeSetup setup;
    setup.Object.WriteResult = writeResult;
    RequestStopAt(setup.Object, requestAt);
    bool isOpenAtWriting = false;
    setup.Object.OnWrite = [&] { isOpenAtWriting = IsOpenHere(setup.Proj.SourceFile); };
    const SourceAtLines source(setup.Proj.SourceFile);
    static_cast<void>(setup.Run());
    QVERIFY(!isOpenAtWriting);
    // The input line, the start line and the one that tells the end.
    QCOMPARE(source.WasOpen, QVector<bool>({true, true, false}));
}

void StabilizeMeasureTest::OldRequestIsForgotten()
{
    StabilizeSetup setup;
    setup.Object.JobStatus = JobAbortRequested;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.Calls, StabilizeSetup::MeasureCalls(5, 5));
}

void StabilizeMeasureTest::SourceCannotBeOpened()
{
    StabilizeSetup setup;
    setup.Object.StabilizeLoaded = true;
    setup.Proj.SourceFile = "/nowhere/source.avi";
    setup.GivePaths(setup.Object);
    WriteBytes(setup.Path("Tracking.dat.cfg"),
               MatchingBytes(setup.Proj.SourceFile, PointsPayload(200)));
    QCOMPARE(setup.Run(), 1);
    QCOMPARE(setup.Lines.All(),
             QStringList({NoMatchingFile, "3 Open /nowhere/source.avi failed!"}));
    QCOMPARE(setup.Object.Calls, QStringList("ReadStabilizeFile"));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(setup.Object.StabilizeLoaded);
}

void StabilizeMeasureTest::FirstFrameUnreadable()
{
    StabilizeSetup setup;
    WriteClipOfABrokenFrame(setup.Path("source.avi"));
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Run()), cv::Exception);
}

QTEST_MAIN(StabilizeMeasureTest)
#include "stabilizemeasure_test.moc"
