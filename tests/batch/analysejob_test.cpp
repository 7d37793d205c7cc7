// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/filefields.h"
#include "batch/pairjobs.h"
#include "batch/scriptedstabilizer.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <opencv2/imgproc.hpp>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
constexpr TestVideo::Format Small{64, 64, 5, 25.0};
const char InputOfSmall[] = "1 Input: Frames= 5 h=64 v=64 fps=25";
const char TrackingWritten[] = "1 Tracking file written!";

TestVideo::Format SmallOf(int frames)
{
    TestVideo::Format format = Small;
    format.Frames = frames;
    return format;
}

/** A numbered clip and a stabilizer that notes what the job asks of it. */
struct AnalyseSetup : BatchSetup
{
    explicit AnalyseSetup(const TestVideo::Format& format = Small)
    {
        if (!TestVideo::WriteNumberedClip(Path("source.avi"), format))
        {
            qFatal("No clip for the test");
        }
        GivePaths(Object);
    }
    int Run() { return Object.AnalyseJob(Proj.TrackingParameters); }

    ScriptedStabilizer Object;
};
}  // namespace

/** The analyse job: what it reads, tracks, tells and writes, whatever the model of the motion. */
class AnalyseJobTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void PairsOfFrames_data();
    void PairsOfFrames();
    void SourceShorterThanItSays();
    void FeaturesOfTheEarlierFrame();
    void SettlesTheFacts();
    void RateIsTruncated_data();
    void RateIsTruncated();
    void ProgressLines_data();
    void ProgressLines();
    void OldPointsOfFrameZeroStay();
    void Aborts_data();
    void Aborts();
    void AbortLeavesTheFilesAlone();
    void OldRequestIsForgotten();
    void SourceCannotBeOpened();
    void TrackingFileCannotBeWritten_data();
    void TrackingFileCannotBeWritten();
    void StabilizationFileFails_data();
    void StabilizationFileFails();
    void NeverWritesOverTheSource();
    void FirstFrameUnreadable();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void AnalyseJobTest::PairsOfFrames_data()
{
    AddPairRows();
}

void AnalyseJobTest::PairsOfFrames()
{
    QFETCH(int, frames);
    QFETCH(Pairs, pairs);
    QFETCH(std::vector<int>, lists);
    AnalyseSetup setup(SmallOf(frames));
    bool hadTrackingFile = false;
    setup.Object.OnWrite = [&] { hadTrackingFile = QFile::exists(setup.Path("Tracking.dat")); };
    QCOMPARE(setup.Run(), 0);
    QStringList calls{QStringLiteral("PrepareFrames %1").arg(frames)};
    for (std::size_t i = 0; i < pairs.size(); ++i)
    {
        calls.append("TrackFrame");
    }
    calls.append("WriteStabilizeFile");
    QCOMPARE(setup.Object.Calls, calls);
    QVERIFY(setup.Object.GrayPairs == GrayPairs(pairs));
    QVERIFY(setup.Object.PointLists == lists);
    QVERIFY(hadTrackingFile);
    // A plain colour has no corners: a count and that many counts of zero.
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")), Int(frames) + Zeros(4 * frames));
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QCOMPARE(setup.Lines.All(),
             QStringList({QStringLiteral("1 Input: Frames= %1 h=64 v=64 fps=25").arg(frames),
                          TrackingWritten}));
}

void AnalyseJobTest::SourceShorterThanItSays()
{
    AnalyseSetup setup;
    QVERIFY(TestVideo::WriteShortClip(setup.Path("source.avi"), SmallOf(3), 6));
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.All().constFirst(), QString("1 Input: Frames= 6 h=64 v=64 fps=25"));
    QVERIFY(setup.Object.GrayPairs == GrayPairs({{0, 1}, {1, 2}, {2, 2}, {2, 2}, {2, 2}, {2, 2}}));
    QCOMPARE(setup.Object.TrackingPoints.size(), std::size_t{6});
    QVERIFY(setup.Object.TrackingLoaded && setup.Object.StabilizeLoaded);
}

void AnalyseJobTest::FeaturesOfTheEarlierFrame()
{
    AnalyseSetup setup;
    QVERIFY(!TestVideo::WriteStreetClip(setup.Path("source.avi"), {320, 180, 4, 25.0}).empty());
    setup.Proj.TrackingParameters.MaxTrackingPoints = 25;
    std::vector<std::vector<cv::Point2f>> given;
    std::vector<std::vector<cv::Point2f>> expected;
    setup.Object.OnTrack = [&](int call, const cv::Mat& gray, std::vector<cv::Point2f>& points)
    {
        if (call == 4)
        {
            return;  // the step of two equal images takes the last points again
        }
        given.push_back(points);
        cv::goodFeaturesToTrack(gray, expected.emplace_back(), 25, 0.01, 30.0, cv::noArray(), 3,
                                false, 0.04);
        points.resize(2);  // as if the others were lost
    };
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(expected.size(), std::size_t{3});
    QCOMPARE(expected[0].size(), std::size_t{25});
    QVERIFY(given == expected);
    QVERIFY(setup.Object.TrackingPoints[0].empty());
    // What the motion step left over is what stays and what is written.
    QCOMPARE(setup.Object.TrackingPoints[3].size(), std::size_t{2});
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")).size(), 4 + 4 + 3 * (4 + 2 * 8));
}

void AnalyseJobTest::SettlesTheFacts()
{
    AnalyseSetup setup({96, 64, 2, 25.0});
    setup.Proj.TrackingParameters.MaxTrackingPoints = 77;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.FrameWidth, 96);
    QCOMPARE(setup.Object.FrameHeight, 64);
    QCOMPARE(setup.Object.FrameRate, 25);
    QCOMPARE(setup.Object.TrackingParameters.MaxTrackingPoints, 77);
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat.cfg")).mid(256).toHex(),
             Hex("60000000 40000000 19000000 4d000000 00000000 ffffffff").toHex());
}

void AnalyseJobTest::RateIsTruncated_data()
{
    QTest::addColumn<double>("fps");
    QTest::addColumn<int>("expected");
    QTest::newRow("29.97") << 29.97 << 29;
    QTest::newRow("23.976") << 23.976 << 23;
    QTest::newRow("59.94") << 59.94 << 59;
    QTest::newRow("30") << 30.0 << 30;
}

void AnalyseJobTest::RateIsTruncated()
{
    QFETCH(double, fps);
    QFETCH(int, expected);
    AnalyseSetup setup({64, 64, 2, fps});
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.FrameRate, expected);
}

void AnalyseJobTest::ProgressLines_data()
{
    AddProgressRows();
}

void AnalyseJobTest::ProgressLines()
{
    QFETCH(int, frames);
    QFETCH(QStringList, lines);
    AnalyseSetup setup(SmallOf(frames));
    setup.Object.OnTrack = [](int, const cv::Mat&, std::vector<cv::Point2f>& points)
    { points.resize(3); };
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Lines.OfLevel(4), lines);
}

void AnalyseJobTest::OldPointsOfFrameZeroStay()
{
    AnalyseSetup setup(SmallOf(3));
    const std::vector<cv::Point2f> old{{1.0F, 2.0F}};
    setup.Object.TrackingPoints.resize(7, old);
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(setup.Object.TrackingPoints.size(), std::size_t{3});
    QVERIFY(setup.Object.TrackingPoints[0] == old);
    QVERIFY(setup.Object.TrackingPoints[1].empty() && setup.Object.TrackingPoints[2].empty());
}

void AnalyseJobTest::Aborts_data()
{
    AddAbortRows();
}

void AnalyseJobTest::Aborts()
{
    QFETCH(int, requestAt);
    QFETCH(bool, isAborted);
    for (const bool hadData : {false, true})
    {
        AnalyseSetup setup;
        ScriptedStabilizer& object = setup.Object;
        object.TrackingLoaded = hadData;
        object.StabilizeLoaded = hadData;
        RequestStopAt(object, requestAt);
        QCOMPARE(setup.Run(), isAborted ? 10 : 0);
        QCOMPARE(setup.Lines.All(),
                 QStringList({InputOfSmall, isAborted ? "1 Analyse aborted!" : TrackingWritten}));
        QCOMPARE(object.GrayPairs.size(), static_cast<std::size_t>(isAborted ? requestAt : 5));
        QCOMPARE(object.Calls.contains("WriteStabilizeFile"), !isAborted);
        QCOMPARE(object.JobStatus, int{JobEnded});
        // Neither set nor cleared by an abort.
        QCOMPARE(object.TrackingLoaded, hadData || !isAborted);
        QCOMPARE(object.StabilizeLoaded, hadData || !isAborted);
        QCOMPARE(QFile::exists(setup.Path("Tracking.dat")), !isAborted);
        QCOMPARE(QFile::exists(setup.Path("Tracking.dat.cfg")), !isAborted);
    }
}

void AnalyseJobTest::AbortLeavesTheFilesAlone()
{
    AnalyseSetup setup;
    for (const char* name : {"Tracking.dat", "Tracking.dat.cfg"})
    {
        WriteBytes(setup.Path(name), "of an earlier run");
    }
    setup.Object.OnTrack = [&](int, const cv::Mat&, std::vector<cv::Point2f>&)
    { setup.Object.JobStatus = JobAbortRequested; };
    QCOMPARE(setup.Run(), 10);
    for (const char* name : {"Tracking.dat", "Tracking.dat.cfg"})
    {
        QCOMPARE(ReadBytes(setup.Path(name)), QByteArray("of an earlier run"));
    }
}

void AnalyseJobTest::OldRequestIsForgotten()
{
    AnalyseSetup setup;
    setup.Object.JobStatus = JobAbortRequested;
    QCOMPARE(setup.Run(), 0);
}

void AnalyseJobTest::SourceCannotBeOpened()
{
    AnalyseSetup setup;
    SetField(setup.Object.FileNames.SourceFile, "/nowhere/source.avi");
    setup.Object.TrackingPoints.resize(2);
    setup.Proj.TrackingParameters.MaxTrackingPoints = 77;
    QCOMPARE(setup.Run(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Open /nowhere/source.avi failed!"}));
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QCOMPARE(setup.Object.TrackingPoints.size(), std::size_t{2});
    QCOMPARE(setup.Object.TrackingParameters.MaxTrackingPoints, 77);
    QVERIFY(!setup.Object.TrackingLoaded && !setup.Object.StabilizeLoaded);
}

void AnalyseJobTest::TrackingFileCannotBeWritten_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::newRow("no such folder") << "nowhere/Tracking.dat"
                                    << "3 Could not write matching file (.cfg)!";
    QTest::newRow("path is a folder") << "folder"
                                      << "3 Could not write Tracking file!";
}

void AnalyseJobTest::TrackingFileCannotBeWritten()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    AnalyseSetup setup;
    QVERIFY(QDir(setup.Folder.path()).mkdir("folder"));
    setup.Proj.TrackingFile = setup.Folder.filePath(file);
    setup.GivePaths(setup.Object);
    QCOMPARE(setup.Run(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({InputOfSmall, line}));
    QVERIFY(!setup.Object.Calls.contains("WriteStabilizeFile"));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!setup.Object.TrackingLoaded && !setup.Object.StabilizeLoaded);
}

void AnalyseJobTest::StabilizationFileFails_data()
{
    AddFailedWriteRows();
}

void AnalyseJobTest::StabilizationFileFails()
{
    QFETCH(int, result);
    AnalyseSetup setup;
    setup.Object.WriteResult = result;
    QCOMPARE(setup.Run(), result);
    QCOMPARE(setup.Lines.All(), QStringList({InputOfSmall, TrackingWritten}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!setup.Object.TrackingLoaded && !setup.Object.StabilizeLoaded);
}

void AnalyseJobTest::NeverWritesOverTheSource()
{
    AnalyseSetup setup;
    const QByteArray source = ReadBytes(setup.Path("source.avi"));
    setup.Proj.TrackingFile = setup.Path("source.avi");
    setup.GivePaths(setup.Object);
    QCOMPARE(setup.Run(), 1);
    QCOMPARE(setup.Lines.All(), QStringList({InputOfSmall, "3 Could not write Tracking file!"}));
    QCOMPARE(ReadBytes(setup.Path("source.avi")), source);
}

void AnalyseJobTest::FirstFrameUnreadable()
{
    AnalyseSetup setup;
    WriteClipOfABrokenFrame(setup.Path("source.avi"));
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(setup.Run()), cv::Exception);
}

QTEST_MAIN(AnalyseJobTest)
#include "analysejob_test.moc"
