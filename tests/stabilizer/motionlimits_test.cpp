// SPDX-License-Identifier: MIT
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/core.hpp>

#include <QtTest>

#include <cmath>
#include <limits>
#include <vector>

namespace
{
/** A wide frame: shifts are bounded by 60 pixels in x and by 120 in y. */
const cv::Mat Wide(200, 400, CV_8UC1, cv::Scalar(0));

cv::Mat Matrix(double x, double y, double sine, double cosine)
{
    return (cv::Mat_<double>(2, 3) << cosine, -sine, x, sine, cosine, y);
}

/** Without points no estimate succeeds, so that the last matrix is judged and stored again. */
void TrackWithoutPoints(PosRotStabilizer& stabilizer, const cv::Mat& frame = Wide)
{
    std::vector<cv::Point2f> points;
    std::vector<cv::Point2f> nextPoints = {{1.0F, 2.0F}};
    stabilizer.TrackFrame(frame, frame, points, nextPoints);
    QVERIFY(points.empty());
    QVERIFY(nextPoints.empty());
}

/** The smallest tangent above @p start whose angle is exactly @p angle. */
double TangentOf(double angle)
{
    double tangent = std::tan(angle) * (1.0 - 1e-14);
    for (int i = 0; i < 1000 && std::atan2(tangent, 1.0) < angle; ++i)
    {
        tangent = std::nextafter(tangent, 1.0);
    }
    return tangent;
}
}  // namespace

/** What becomes of an estimate: limits, repetition, and the entry that is stored. */
class MotionLimitsTest : public QObject
{
    Q_OBJECT

private slots:
    void Limits_data();
    void Limits();
    void RotationOfExactlyTheLimit();
    void StoresTheAngle();
    void LimitsComeFromThePreviousFrame();
    void FirstPairWithoutAnEstimate();
    void RepeatsTheLastEstimate();
    void OnePointRepeatsTheLastEstimate();
    void RefusedEstimateIsKept();
    void WarpDoesNotTouchTheLastEstimate();
    void PrepareFramesKeepsOldEntries();
};

void MotionLimitsTest::Limits_data()
{
    const double below60 = std::nextafter(60.0, 0.0);
    const double below120 = std::nextafter(120.0, 0.0);
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("plain") << 5.0 << -7.0 << 0.01 << true;
    QTest::newRow("0.31 of the height in x, wide frame") << 62.0 << 0.0 << 0.0 << false;
    QTest::newRow("the same pixels in y, wide frame") << 0.0 << 62.0 << 0.0 << true;
    QTest::newRow("just below 0.3 of the height in x") << below60 << 0.0 << 0.0 << true;
    QTest::newRow("exactly 0.3 of the height in x") << 60.0 << 0.0 << 0.0 << false;
    QTest::newRow("just below, to the left") << -below60 << 0.0 << 0.0 << true;
    QTest::newRow("exactly, to the left") << -60.0 << 0.0 << 0.0 << false;
    QTest::newRow("just below 0.3 of the width in y") << 0.0 << below120 << 0.0 << true;
    QTest::newRow("exactly 0.3 of the width in y") << 0.0 << 120.0 << 0.0 << false;
    QTest::newRow("just below, up") << 0.0 << -below120 << 0.0 << true;
    QTest::newRow("exactly, up") << 0.0 << -120.0 << 0.0 << false;
    QTest::newRow("rotation just inside") << 5.0 << 6.0 << 0.1499 << true;
    QTest::newRow("rotation just inside, the other way") << 5.0 << 6.0 << -0.1499 << true;
    QTest::newRow("x is zeroed with the rotation") << 5.0 << 6.0 << 0.2 << false;
    QTest::newRow("x is zeroed with the rotation, the other way") << 5.0 << 6.0 << -0.2 << false;
    QTest::newRow("x and rotation are zeroed with y") << 5.0 << 130.0 << 0.01 << false;
    QTest::newRow("upside down") << 5.0 << 6.0 << 3.1 << false;
    QTest::newRow("x not a number") << nan << 6.0 << 0.01 << false;
    QTest::newRow("y not a number") << 5.0 << nan << 0.01 << false;
    QTest::newRow("rotation not a number") << 5.0 << 6.0 << nan << false;
    QTest::newRow("x infinite") << infinity << 6.0 << 0.01 << false;
    QTest::newRow("y infinite") << 5.0 << -infinity << 0.01 << false;
}

void MotionLimitsTest::Limits()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, angle);
    QFETCH(bool, accepted);
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    stabilizer.LastTransform = Matrix(x, y, std::sin(angle), std::cos(angle));
    TrackWithoutPoints(stabilizer);
    const double stored = std::atan2(std::sin(angle), std::cos(angle));
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{1});
    QVERIFY(stabilizer.MotionX.at(0) == (accepted ? x : 0.0));
    QVERIFY(stabilizer.MotionY.at(0) == (accepted ? y : 0.0));
    QVERIFY(stabilizer.MotionAngle.at(0) == (accepted ? stored : 0.0));
    QVERIFY(stabilizer.MotionDegrees.at(0) ==
            (accepted ? 180.0 * stored / 3.141592653589793 : 0.0));
}

void MotionLimitsTest::RotationOfExactlyTheLimit()
{
    const double tangent = TangentOf(0.15);
    QVERIFY(std::atan2(tangent, 1.0) == 0.15);
    double below = tangent;
    while (std::atan2(below, 1.0) == 0.15)
    {
        below = std::nextafter(below, 0.0);
    }
    for (const double sign : {1.0, -1.0})
    {
        PosRotStabilizer stabilizer;
        stabilizer.PrepareFrames(2);
        stabilizer.LastTransform = Matrix(5.0, 6.0, sign * tangent, 1.0);
        TrackWithoutPoints(stabilizer);
        QVERIFY(stabilizer.MotionAngle.at(0) == 0.0);
        QVERIFY(stabilizer.MotionX.at(0) == 0.0);
        stabilizer.LastTransform = Matrix(5.0, 6.0, sign * below, 1.0);
        TrackWithoutPoints(stabilizer);
        QVERIFY(stabilizer.MotionAngle.at(1) == sign * std::nextafter(0.15, 0.0));
        QVERIFY(stabilizer.MotionX.at(1) == 5.0);
    }
}

void MotionLimitsTest::StoresTheAngle()
{
    // A zoom by 3 with a rotation: column 0 alone tells the angle, and the scale is dropped.
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    stabilizer.LastTransform = (cv::Mat_<double>(2, 3) << 3.0, 77.0, 1.5, 0.3, 88.0, -2.5);
    TrackWithoutPoints(stabilizer);
    QVERIFY(stabilizer.MotionX.at(0) == 1.5);
    QVERIFY(stabilizer.MotionY.at(0) == -2.5);
    QVERIFY(stabilizer.MotionAngle.at(0) == std::atan2(0.3, 3.0));
    QVERIFY(stabilizer.MotionDegrees.at(0) == 180.0 * std::atan2(0.3, 3.0) / 3.141592653589793);
}

void MotionLimitsTest::LimitsComeFromThePreviousFrame()
{
    const cv::Mat tall(400, 200, CV_8UC1, cv::Scalar(0));
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(2);
    std::vector<cv::Point2f> points;
    std::vector<cv::Point2f> nextPoints;
    stabilizer.LastTransform = Matrix(100.0, 0.0, 0.0, 1.0);
    stabilizer.TrackFrame(tall, Wide, points, nextPoints);
    stabilizer.TrackFrame(Wide, tall, points, nextPoints);
    QCOMPARE(stabilizer.MotionX.at(0), 100.0);
    QCOMPARE(stabilizer.MotionX.at(1), 0.0);
}

void MotionLimitsTest::FirstPairWithoutAnEstimate()
{
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(2);
    stabilizer.MotionX[0] = stabilizer.MotionY[0] = 9.0;
    stabilizer.MotionAngle[0] = stabilizer.MotionDegrees[0] = 9.0;
    stabilizer.MotionX[1] = 9.0;
    TrackWithoutPoints(stabilizer);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{1});
    QCOMPARE(stabilizer.MotionX.at(0), 0.0);
    QCOMPARE(stabilizer.MotionY.at(0), 0.0);
    QCOMPARE(stabilizer.MotionAngle.at(0), 0.0);
    QCOMPARE(stabilizer.MotionDegrees.at(0), 0.0);
    QCOMPARE(stabilizer.MotionX.at(1), 9.0);
    QVERIFY(stabilizer.LastTransform.empty());
}

void MotionLimitsTest::RepeatsTheLastEstimate()
{
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(3);
    stabilizer.LastTransform = Matrix(5.0, 6.0, 0.0, 1.0);
    for (int pair = 0; pair < 3; ++pair)
    {
        TrackWithoutPoints(stabilizer);
        QCOMPARE(stabilizer.MotionX.at(pair), 5.0);
        QCOMPARE(stabilizer.MotionY.at(pair), 6.0);
    }
    // It outlives the video.
    stabilizer.PrepareFrames(1);
    TrackWithoutPoints(stabilizer);
    QCOMPARE(stabilizer.MotionX.at(0), 5.0);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{1});
}

void MotionLimitsTest::OnePointRepeatsTheLastEstimate()
{
    // One point tells no rotation, so there is no estimate either.
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    stabilizer.LastTransform = Matrix(5.0, 6.0, 0.0, 1.0);
    const std::vector<cv::Point2f> one{{30.0F, 40.0F}};
    std::vector<cv::Point2f> points = one;
    std::vector<cv::Point2f> nextPoints;
    stabilizer.TrackFrame(Wide, Wide, points, nextPoints);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{1});
    QCOMPARE(stabilizer.MotionX.at(0), 5.0);
    QCOMPARE(stabilizer.MotionY.at(0), 6.0);
    QVERIFY(points == one);
    QVERIFY(nextPoints == one);
}

void MotionLimitsTest::RefusedEstimateIsKept()
{
    // 100 pixels in x are too many for the wide frame and not for a higher one.
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(2);
    stabilizer.LastTransform = Matrix(100.0, 6.0, 0.0, 1.0);
    TrackWithoutPoints(stabilizer);
    QCOMPARE(stabilizer.MotionY.at(0), 0.0);
    TrackWithoutPoints(stabilizer, cv::Mat(400, 400, CV_8UC1, cv::Scalar(0)));
    QCOMPARE(stabilizer.MotionX.at(1), 100.0);
    QCOMPARE(stabilizer.MotionY.at(1), 6.0);
}

void MotionLimitsTest::WarpDoesNotTouchTheLastEstimate()
{
    PathHorizontal.Result.Correction = {30.0};
    PathVertical.Result.Correction = {40.0};
    PathRotation.Result.Correction = {0.05};
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(2);
    stabilizer.LastTransform = Matrix(5.0, 6.0, 0.0, 1.0);
    TrackWithoutPoints(stabilizer);
    const cv::Mat picture(20, 20, CV_8UC3, cv::Scalar::all(50));
    cv::Mat target;
    stabilizer.WarpFrame(picture, target, 0);
    stabilizer.WarpFrameScaled(picture, target, 0, 0.5);
    TrackWithoutPoints(stabilizer);
    QCOMPARE(stabilizer.MotionX.at(1), 5.0);
    QCOMPARE(stabilizer.MotionY.at(1), 6.0);
    QCOMPARE(stabilizer.MotionAngle.at(1), 0.0);
    PathHorizontal.Result.Correction.clear();
    PathVertical.Result.Correction.clear();
    PathRotation.Result.Correction.clear();
}

void MotionLimitsTest::PrepareFramesKeepsOldEntries()
{
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(3);
    QCOMPARE(stabilizer.MotionX, QVector<double>(3, 0.0));
    QCOMPARE(stabilizer.MotionDegrees, QVector<double>(3, 0.0));
    stabilizer.LastTransform = Matrix(5.0, 6.0, 0.1, 1.0);
    TrackWithoutPoints(stabilizer);
    TrackWithoutPoints(stabilizer);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{2});
    stabilizer.PathGenerated = true;

    stabilizer.PrepareFrames(5);
    QCOMPARE(stabilizer.MotionCount, std::uint64_t{0});
    QVERIFY(!stabilizer.PathGenerated);
    QCOMPARE(stabilizer.MotionX, QVector<double>({5.0, 5.0, 0.0, 0.0, 0.0}));
    QCOMPARE(stabilizer.MotionY, QVector<double>({6.0, 6.0, 0.0, 0.0, 0.0}));
    QVERIFY(stabilizer.MotionAngle.at(1) != 0.0 && stabilizer.MotionAngle.at(2) == 0.0);
    QVERIFY(stabilizer.MotionDegrees.at(1) != 0.0 && stabilizer.MotionDegrees.at(2) == 0.0);

    stabilizer.PrepareFrames(1);
    QCOMPARE(stabilizer.MotionX, QVector<double>({5.0}));
    QCOMPARE(stabilizer.MotionY.size(), 1);
    QCOMPARE(stabilizer.MotionAngle.size(), 1);
    QCOMPARE(stabilizer.MotionDegrees.size(), 1);
    QVERIFY(!stabilizer.LastTransform.empty());
}

QTEST_APPLESS_MAIN(MotionLimitsTest)
#include "motionlimits_test.moc"
