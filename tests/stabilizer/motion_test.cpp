// SPDX-License-Identifier: MIT
#include "stabilizer/posrotstabilizer.h"

#include "stabilizer/movedtexture.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <QtTest>

#include <cmath>
#include <vector>

namespace
{
/** The frame turned about its top left corner, in the sense of the motion's angle, and zoomed. */
cv::Mat Turned(const cv::Mat& texture, double angle, double zoom)
{
    const double a = std::cos(angle) * zoom;
    const double b = std::sin(angle) * zoom;
    // The texture's origin lies TextureMargin to the left of and above the frame's.
    const cv::Mat matrix = (cv::Mat_<double>(2, 3) << a, -b, -TextureMargin * a + TextureMargin * b,
                            b, a, -TextureMargin * b - TextureMargin * a);
    cv::Mat frame;
    cv::warpAffine(texture, frame, matrix,
                   cv::Size(texture.cols - 2 * TextureMargin, texture.rows - 2 * TextureMargin));
    return frame;
}

struct Step
{
    std::vector<cv::Point2f> Points;
    std::vector<cv::Point2f> NextPoints;
    double X = 0.0;
    double Y = 0.0;
    double Angle = 0.0;
    double Degrees = 0.0;
};

/** Tracks one pair of frames with a new stabilizer. */
Step Track(const cv::Mat& previous, const cv::Mat& next, const std::vector<cv::Point2f>& points)
{
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    Step step;
    step.Points = points;
    stabilizer.TrackFrame(previous, next, step.Points, step.NextPoints);
    step.X = stabilizer.MotionX.at(0);
    step.Y = stabilizer.MotionY.at(0);
    step.Angle = stabilizer.MotionAngle.at(0);
    step.Degrees = stabilizer.MotionDegrees.at(0);
    return step;
}

bool IsNear(double actual, double expected, double tolerance)
{
    const bool isNear = std::abs(actual - expected) <= tolerance;
    if (!isNear)
    {
        qWarning("%g instead of %g", actual, expected);
    }
    return isNear;
}

/** No motion, but for what a flow between equal images makes of rounding. */
bool IsStill(const Step& step)
{
    return IsNear(step.X, 0.0, 0.01) && IsNear(step.Y, 0.0, 0.01) && IsNear(step.Angle, 0.0, 1e-4);
}

/// The optical flow finds a point of a smooth texture to some hundredths of a pixel. A rotation of
/// 0.0005 radians that it adds moves the corner, where x and y are measured, by 0.1 pixels.
constexpr double ShiftTolerance = 0.3;
constexpr double AngleTolerance = 0.001;
}  // namespace

/** Motion between frames that were made from one texture by a known motion. */
class MotionTest : public QObject
{
    Q_OBJECT

private slots:
    void Shift_data();
    void Shift();
    void RotationAboutTheCorner();
    void ZoomIsDropped();
    void ShearIsNotEstimated();
    void EqualFrames();
    void FourPointsSkipTheFlow();
    void FivePointsRunThroughTheFlow();
    void FewPointsStay_data();
    void FewPointsStay();
    void CrossedLimits_data();
    void CrossedLimits();
    void LostPointsAreErasedInOrder();
    void AllPointsLostRepeatsTheMotion();
    void EntriesFollowOneAnother();
};

void MotionTest::Shift_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::newRow("right and up") << 5 << -3;
    QTest::newRow("left and down") << -12 << 7;
    QTest::newRow("still") << 0 << 0;
}

void MotionTest::Shift()
{
    QFETCH(int, x);
    QFETCH(int, y);
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    const Step step = Track(previous, Frame(texture, x, y), Grid(previous, 8, 6));
    QVERIFY(IsNear(step.X, x, ShiftTolerance));
    QVERIFY(IsNear(step.Y, y, ShiftTolerance));
    QVERIFY(IsNear(step.Angle, 0.0, AngleTolerance));
    QVERIFY(step.Degrees == 180.0 * step.Angle / 3.141592653589793);
    QCOMPARE(step.Points.size(), step.NextPoints.size());
    QVERIFY(step.Points.size() >= 40);
}

void MotionTest::RotationAboutTheCorner()
{
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    for (const double angle : {0.05, -0.03})
    {
        const Step step = Track(previous, Turned(texture, angle, 1.0), Grid(previous, 8, 6));
        QVERIFY(IsNear(step.Angle, angle, AngleTolerance));
        QVERIFY(IsNear(step.X, 0.0, ShiftTolerance));
        QVERIFY(IsNear(step.Y, 0.0, ShiftTolerance));
        QVERIFY(step.Degrees == 180.0 * step.Angle / 3.141592653589793);
    }
}

void MotionTest::ZoomIsDropped()
{
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    const Step step = Track(previous, Turned(texture, 0.03, 1.04), Grid(previous, 8, 6));
    QVERIFY(IsNear(step.Angle, 0.03, AngleTolerance));
    QVERIFY(IsNear(step.X, 0.0, ShiftTolerance));
    QVERIFY(IsNear(step.Y, 0.0, ShiftTolerance));
}

void MotionTest::ShearIsNotEstimated()
{
    // Lower rows stand farther right. The nearest shift, rotation and uniform scale turn a little
    // to the left and have no number of their own for the shear.
    const double shear = 0.04;
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    const cv::Mat matrix = (cv::Mat_<double>(2, 3) << 1.0, shear, -TextureMargin * (1.0 + shear),
                            0.0, 1.0, -TextureMargin);
    cv::Mat next;
    cv::warpAffine(texture, next, matrix, previous.size());
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(1);
    std::vector<cv::Point2f> points = Grid(previous, 8, 6);
    std::vector<cv::Point2f> nextPoints;
    stabilizer.TrackFrame(previous, next, points, nextPoints);
    const cv::Matx23d estimate = stabilizer.Transform;
    QVERIFY(IsNear(estimate(1, 1), estimate(0, 0), 1e-9));
    QVERIFY(IsNear(estimate(0, 1), -estimate(1, 0), 1e-9));
    QVERIFY(stabilizer.MotionAngle.at(0) < -0.005);
}

void MotionTest::EqualFrames()
{
    const cv::Mat frame = Frame(Texture(320, 240), 0, 0);
    const std::vector<cv::Point2f> points = Grid(frame, 5, 2);
    const Step step = Track(frame, frame, points);
    QVERIFY(IsStill(step));
    QVERIFY(step.Points == points);
    QCOMPARE(step.NextPoints.size(), points.size());
}

void MotionTest::FourPointsSkipTheFlow()
{
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    const std::vector<cv::Point2f> points = Grid(previous, 2, 2);
    const Step step = Track(previous, Frame(texture, 9, -6), points);
    QVERIFY(step.Points == points);
    QVERIFY(step.NextPoints == points);
    QVERIFY(IsStill(step));
}

void MotionTest::FivePointsRunThroughTheFlow()
{
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    std::vector<cv::Point2f> points = Grid(previous, 2, 2);
    points.emplace_back(170.0F, 130.0F);
    const Step step = Track(previous, Frame(texture, 9, -6), points);
    QVERIFY(step.Points == points);
    QCOMPARE(step.NextPoints.size(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        QVERIFY(IsNear(step.NextPoints.at(i).x - points.at(i).x, 9.0, ShiftTolerance));
        QVERIFY(IsNear(step.NextPoints.at(i).y - points.at(i).y, -6.0, ShiftTolerance));
    }
    // Five points hold the angle less firmly than a grid.
    QVERIFY(IsNear(step.X, 9.0, 3.0 * ShiftTolerance));
    QVERIFY(IsNear(step.Y, -6.0, 3.0 * ShiftTolerance));
}

void MotionTest::FewPointsStay_data()
{
    QTest::addColumn<int>("count");
    for (int count = 0; count <= 4; ++count)
    {
        QTest::addRow("%d points", count) << count;
    }
}

void MotionTest::FewPointsStay()
{
    // Whether the estimate succeeds or not: there is no motion before that could be repeated.
    QFETCH(int, count);
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    std::vector<cv::Point2f> points = Grid(previous, 2, 2);
    points.resize(static_cast<std::size_t>(count));
    const Step step = Track(previous, Frame(texture, 9, -6), points);
    QVERIFY(step.Points == points);
    QVERIFY(step.NextPoints == points);
    QVERIFY(IsStill(step));
}

void MotionTest::CrossedLimits_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("0.31 of the height in x, wide frame") << 400 << 200 << 62 << 0 << false;
    QTest::newRow("the same pixels in y, wide frame") << 400 << 200 << 0 << 62 << true;
    QTest::newRow("0.28 of the height in x, wide frame") << 400 << 200 << 56 << 0 << true;
    QTest::newRow("0.31 of the width in y, high frame") << 200 << 400 << 0 << -62 << false;
    QTest::newRow("the same pixels in x, high frame") << 200 << 400 << -62 << 0 << true;
}

void MotionTest::CrossedLimits()
{
    QFETCH(int, columns);
    QFETCH(int, rows);
    QFETCH(int, x);
    QFETCH(int, y);
    QFETCH(bool, accepted);
    const cv::Mat texture = Texture(columns, rows);
    const cv::Mat previous = Frame(texture, 0, 0);
    const Step step = Track(previous, Frame(texture, x, y), Grid(previous, 8, 6));
    QVERIFY(IsNear(step.X, accepted ? x : 0.0, accepted ? ShiftTolerance : 0.0));
    QVERIFY(IsNear(step.Y, accepted ? y : 0.0, accepted ? ShiftTolerance : 0.0));
    if (!accepted)
    {
        // The points were followed all the same: it is the motion that is refused.
        QVERIFY(step.Points.size() >= 40);
        QVERIFY(IsNear(step.NextPoints.at(20).x - step.Points.at(20).x, x, ShiftTolerance));
        QVERIFY(IsNear(step.NextPoints.at(20).y - step.Points.at(20).y, y, ShiftTolerance));
        QVERIFY(step.Angle == 0.0 && step.Degrees == 0.0);
    }
}

void MotionTest::LostPointsAreErasedInOrder()
{
    // The left half has no texture, and points outside the frame cannot be followed either.
    const cv::Mat texture = Texture(320, 240);
    cv::Mat previous = Frame(texture, 0, 0);
    cv::Mat next = Frame(texture, 4, 2);
    previous.colRange(0, 150).setTo(0);
    next.colRange(0, 150).setTo(0);
    const std::vector<cv::Point2f> points = {{40, 60},   {220, 60},  {60, 100},  {-500, 10},
                                             {230, 100}, {240, 140}, {90, 90},   {50, 200},
                                             {250, 180}, {270, 80},  {280, 150}, {1000, 1000}};
    const std::vector<cv::Point2f> found = {{220, 60},  {230, 100}, {240, 140},
                                            {250, 180}, {270, 80},  {280, 150}};
    const Step step = Track(previous, next, points);
    QVERIFY(step.Points == found);
    QCOMPARE(step.NextPoints.size(), found.size());
    for (std::size_t i = 0; i < found.size(); ++i)
    {
        QVERIFY(IsNear(step.NextPoints.at(i).x - found.at(i).x, 4.0, ShiftTolerance));
        QVERIFY(IsNear(step.NextPoints.at(i).y - found.at(i).y, 2.0, ShiftTolerance));
    }
}

void MotionTest::AllPointsLostRepeatsTheMotion()
{
    const cv::Mat texture = Texture(320, 240);
    const cv::Mat previous = Frame(texture, 0, 0);
    const cv::Mat black = cv::Mat::zeros(previous.size(), CV_8UC1);
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(2);
    std::vector<cv::Point2f> points = Grid(previous, 8, 6);
    std::vector<cv::Point2f> nextPoints;
    stabilizer.TrackFrame(previous, Frame(texture, 5, 3), points, nextPoints);
    points = Grid(previous, 8, 6);
    stabilizer.TrackFrame(black, black, points, nextPoints);
    QVERIFY(points.empty());
    QVERIFY(nextPoints.empty());
    QVERIFY(IsNear(stabilizer.MotionX.at(0), 5.0, ShiftTolerance));
    QVERIFY(stabilizer.MotionX.at(1) == stabilizer.MotionX.at(0));
    QVERIFY(stabilizer.MotionY.at(1) == stabilizer.MotionY.at(0));
    QVERIFY(stabilizer.MotionAngle.at(1) == stabilizer.MotionAngle.at(0));
    QVERIFY(stabilizer.MotionDegrees.at(1) == stabilizer.MotionDegrees.at(0));
}

void MotionTest::EntriesFollowOneAnother()
{
    const cv::Mat texture = Texture(320, 240);
    PosRotStabilizer stabilizer;
    stabilizer.PrepareFrames(4);
    std::vector<cv::Point2f> nextPoints = {{1, 1}, {2, 2}, {3, 3}};  // left from another call
    for (int pair = 0; pair < 3; ++pair)
    {
        const cv::Mat previous = Frame(texture, pair * pair, 0);
        const cv::Mat next = Frame(texture, (pair + 1) * (pair + 1), 0);
        std::vector<cv::Point2f> points = Grid(previous, 8, 6);
        stabilizer.TrackFrame(previous, next, points, nextPoints);
        QCOMPARE(stabilizer.MotionCount, static_cast<std::uint64_t>(pair + 1));
        QCOMPARE(nextPoints.size(), points.size());
    }
    QVERIFY(IsNear(stabilizer.MotionX.at(0), 1.0, ShiftTolerance));
    QVERIFY(IsNear(stabilizer.MotionX.at(1), 3.0, ShiftTolerance));
    QVERIFY(IsNear(stabilizer.MotionX.at(2), 5.0, ShiftTolerance));
    QVERIFY(stabilizer.MotionX.at(3) == 0.0);
    QCOMPARE(stabilizer.MotionDegrees.size(), 4);
}

QTEST_APPLESS_MAIN(MotionTest)
#include "motion_test.moc"
