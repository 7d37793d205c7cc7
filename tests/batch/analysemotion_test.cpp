// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/doublelists.h"
#include "support/files.h"
#include "support/messageguard.h"
#include "support/testvideo.h"

#include <QtTest>

#include <algorithm>
#include <memory>

namespace
{
constexpr TestVideo::Format Street{320, 180, 12, 25.0};

// How far the measured motion may be off: twice what was seen over a dozen streets. Some 40 corners
// share the estimate, each found to a few hundredths of a pixel. The shift is told at the top left
// corner, where an error of the angle counts with the distance to the middle, 184 pixels.
constexpr double AngleTolerance = 0.0002;  // radians
constexpr double ShiftTolerance = 0.05;    // pixels

/** Motion lists of the truth. */
struct Truth
{
    explicit Truth(const std::vector<FrameMotion>& motions)
    {
        for (const FrameMotion& motion : motions)
        {
            X.append(motion.X);
            Y.append(motion.Y);
            Angle.append(motion.Angle);
        }
    }
    QVector<double> X;
    QVector<double> Y;
    QVector<double> Angle;
};

void Compare(const PosRotStabilizer& measured, const Truth& truth)
{
    QCOMPARE(Difference(measured.MotionAngle, truth.Angle, AngleTolerance), QString());
    QCOMPARE(Difference(measured.MotionX, truth.X, ShiftTolerance), QString());
    QCOMPARE(Difference(measured.MotionY, truth.Y, ShiftTolerance), QString());
}
}  // namespace

/** The analyse job with the real model of the motion, on filmed streets whose motion is known. */
class AnalyseMotionTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void HandHeldClip_data();
    void HandHeldClip();
    void ConstantPan();
    void StillClip();
    void BlackClip();
    void OddSize();
    void ShortClipStandsStill();
    void MostTrackingPoints_data();
    void MostTrackingPoints();
    void ForgetsTheCalculatedPath();
    void FilesReadBack();
    void OneFrameCannotBeReadBack();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void AnalyseMotionTest::HandHeldClip_data()
{
    QTest::addColumn<int>("seed");
    QTest::newRow("one street") << 1;
    QTest::newRow("another street") << 2;
    QTest::newRow("a third street") << 3;
}

void AnalyseMotionTest::HandHeldClip()
{
    QFETCH(int, seed);
    BatchSetup setup;
    const Truth truth(TestVideo::WriteStreetClip(setup.Path("source.avi"), Street,
                                                 static_cast<std::uint64_t>(seed)));
    QCOMPARE(truth.X.size(), 12);
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{12});
    Compare(stabilizer, truth);
    // The clip does move: a motion of zero would not pass.
    QVERIFY(std::any_of(truth.X.cbegin(), truth.X.cend(),
                        [](double x) { return std::abs(x) > 5 * ShiftTolerance; }));
    for (int i = 0; i < 12; ++i)
    {
        QCOMPARE(stabilizer.MotionDegrees.at(i),
                 180.0 * stabilizer.MotionAngle.at(i) / 3.141592653589793);
    }
    QCOMPARE(setup.Lines.All(),
             QStringList({"1 Input: Frames= 12 h=320 v=180 fps=25", "1 Tracking file written!",
                          "1 Stabilizing file written!"}));
}

void AnalyseMotionTest::ConstantPan()
{
    BatchSetup setup;
    const Truth truth(TestVideo::WriteStreetClip(setup.Path("source.avi"), Street,
                                                 ConstantMotion(6, {3.0, -1.5, 0.01})));
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    Compare(stabilizer, truth);
    QVERIFY(std::abs(stabilizer.MotionX.at(0) - 3.0) < ShiftTolerance);
    QVERIFY(std::abs(stabilizer.MotionX.at(4) - 3.0) < ShiftTolerance);
    QVERIFY(std::abs(stabilizer.MotionX.at(5)) < ShiftTolerance);  // between equal images
}

void AnalyseMotionTest::StillClip()
{
    BatchSetup setup;
    QCOMPARE(
        TestVideo::WriteStreetClip(setup.Path("source.avi"), Street, ConstantMotion(4, {})).size(),
        std::size_t{4});
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    Compare(stabilizer, Truth(std::vector<FrameMotion>(4)));
}

void AnalyseMotionTest::BlackClip()
{
    BatchSetup setup;
    QVERIFY(TestVideo::WriteBlackClip(setup.Path("source.avi"), {160, 120, 5, 25.0}));
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    const QVector<double> still(5, 0.0);
    QCOMPARE(Difference(stabilizer.MotionX, still), QString());
    QCOMPARE(Difference(stabilizer.MotionY, still), QString());
    QCOMPARE(Difference(stabilizer.MotionAngle, still), QString());
    QCOMPARE(Difference(stabilizer.MotionDegrees, still), QString());
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{5});
    QVERIFY(stabilizer.TrackingPoints == std::vector<std::vector<cv::Point2f>>(5));
}

void AnalyseMotionTest::OddSize()
{
    BatchSetup setup;
    const Truth truth(TestVideo::WriteStreetClip(setup.Path("source.avi"), {321, 181, 4, 25.0}, 1));
    QCOMPARE(truth.X.size(), 4);
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QCOMPARE(stabilizer.FrameWidth, 321);
    QCOMPARE(stabilizer.FrameHeight, 181);
    Compare(stabilizer, truth);
}

void AnalyseMotionTest::ShortClipStandsStill()
{
    BatchSetup setup;
    TestVideo::Format format = Street;
    format.Frames = 4;
    Truth truth(TestVideo::WriteShortStreetClip(setup.Path("source.avi"), format, 7));
    QCOMPARE(truth.X.size(), 4);
    for (QVector<double>* axis : {&truth.X, &truth.Y, &truth.Angle})
    {
        axis->append({0.0, 0.0, 0.0});
    }
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{7});
    Compare(stabilizer, truth);
}

void AnalyseMotionTest::MostTrackingPoints_data()
{
    QTest::addColumn<int>("most");
    QTest::newRow("20") << 20;
    QTest::newRow("30") << 30;
}

void AnalyseMotionTest::MostTrackingPoints()
{
    QFETCH(int, most);
    BatchSetup setup;
    QVERIFY(!TestVideo::WriteStreetClip(setup.Path("source.avi"), Street).empty());
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    setup.Proj.TrackingParameters.MaxTrackingPoints = most;
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QCOMPARE(stabilizer.TrackingPoints.size(), std::size_t{12});
    QVERIFY(stabilizer.TrackingPoints[0].empty());
    std::size_t largest = 0;
    for (const std::vector<cv::Point2f>& points : stabilizer.TrackingPoints)
    {
        largest = std::max(largest, points.size());
    }
    QVERIFY2(largest <= static_cast<std::size_t>(most), qPrintable(QString::number(largest)));
    QVERIFY2(largest > static_cast<std::size_t>(most) - 10, qPrintable(QString::number(largest)));
}

void AnalyseMotionTest::ForgetsTheCalculatedPath()
{
    BatchSetup setup;
    QVERIFY(TestVideo::WriteBlackClip(setup.Path("source.avi"), {160, 120, 3, 25.0}));
    PosRotStabilizer stabilizer;
    setup.GivePaths(stabilizer);
    stabilizer.PathGenerated = true;
    QCOMPARE(stabilizer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QVERIFY(!stabilizer.PathGenerated);
}

void AnalyseMotionTest::FilesReadBack()
{
    BatchSetup setup;
    QVERIFY(!TestVideo::WriteStreetClip(setup.Path("source.avi"), Street).empty());
    PosRotStabilizer writer;
    setup.GivePaths(writer);
    QCOMPARE(writer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    PosRotStabilizer reader;
    setup.GivePaths(reader);
    QCOMPARE(reader.ReadTracking(setup.Proj.TrackingParameters), 0);
    QCOMPARE(reader.ReadStabilizeFile(), 0);
    QVERIFY(reader.TrackingPoints == writer.TrackingPoints);
    QCOMPARE(Difference(reader.MotionX, writer.MotionX), QString());
    QCOMPARE(Difference(reader.MotionY, writer.MotionY), QString());
    QCOMPARE(Difference(reader.MotionAngle, writer.MotionAngle), QString());
    QCOMPARE(reader.MotionCount, writer.MotionCount);
    QCOMPARE(reader.FrameWidth, 320);
    QCOMPARE(reader.FrameHeight, 180);
    QCOMPARE(reader.FrameRate, 25);
}

void AnalyseMotionTest::OneFrameCannotBeReadBack()
{
    BatchSetup setup;
    // A picture full of corners, so that a detection would leave points.
    const std::vector<FrameMotion> still(1);
    QCOMPARE(TestVideo::WriteStreetClip(setup.Path("source.avi"), Street, still).size(),
             still.size());
    PosRotStabilizer writer;
    setup.GivePaths(writer);
    QCOMPARE(writer.AnalyseJob(setup.Proj.TrackingParameters), 0);
    QCOMPARE(writer.MotionCount, std::uint64_t{0});
    QCOMPARE(writer.TrackingPoints, std::vector<std::vector<cv::Point2f>>(1));
    // One frame without points, one sample of no motion: a count and what follows it.
    const QByteArray one("\x01\0\0\0", 4);
    QCOMPARE(ReadBytes(setup.Path("Tracking.dat")), one + QByteArray(4, '\0'));
    QCOMPARE(ReadBytes(setup.Path("Stabilize.dat")), one + QByteArray(24, '\0'));
    setup.Lines.Take();
    PosRotStabilizer reader;
    setup.GivePaths(reader);
    QCOMPARE(reader.ReadTracking(setup.Proj.TrackingParameters), -1);
    QCOMPARE(setup.Lines.All(), QStringList({"3 Tracking file error!"}));
}

QTEST_MAIN(AnalyseMotionTest)
#include "analysemotion_test.moc"
