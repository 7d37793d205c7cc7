// SPDX-License-Identifier: MIT
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/core.hpp>

#include <QtTest>

#include <cmath>
#include <initializer_list>

namespace
{
constexpr double QuarterTurn = 1.5707963267948966;

/** A gray picture in three channels, row by row. */
cv::Mat Picture(int columns, std::initializer_list<int> values)
{
    cv::Mat picture(static_cast<int>(values.size()) / columns, columns, CV_8UC3);
    int i = 0;
    for (const int value : values)
    {
        picture.at<cv::Vec3b>(i / columns, i % columns) = cv::Vec3b::all(static_cast<uchar>(value));
        ++i;
    }
    return picture;
}

/** A picture of noise, other in each channel, without black. */
cv::Mat Noise(int columns, int rows)
{
    cv::Mat picture(rows, columns, CV_8UC3);
    cv::RNG generator(7);
    generator.fill(picture, cv::RNG::UNIFORM, cv::Scalar::all(1), cv::Scalar::all(256));
    return picture;
}

bool Equal(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0.0;
}

/** The correction of one frame; frames 0 and 2 have others. */
void SetCorrection(double dx, double dy, double angle)
{
    PathHorizontal.Result.Correction = {-7.0, dx, 13.0};
    PathVertical.Result.Correction = {5.0, dy, -11.0};
    PathRotation.Result.Correction = {0.3, angle, -0.4};
}

cv::Mat Warped(const cv::Mat& source)
{
    PosRotStabilizer stabilizer;
    cv::Mat target;
    stabilizer.WarpFrame(source, target, 1);
    return target;
}

cv::Mat WarpedScaled(const cv::Mat& source, double scale)
{
    PosRotStabilizer stabilizer;
    cv::Mat target;
    stabilizer.WarpFrameScaled(source, target, 1, scale);
    return target;
}
}  // namespace

/** Frames moved and turned by corrections that are set by hand. */
class WarpTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void NoCorrectionChangesNothing();
    void ShiftRightLeavesBlackOnTheLeft();
    void WholeShifts_data();
    void WholeShifts();
    void FractionsInterpolate();
    void RotationKeepsTheTopLeftPixel();
    void QuarterAndHalfTurn();
    void EachFrameHasItsCorrection();
    void MatrixOfTheExport();
    void TargetTakesSizeAndType();
    void ScaleOneIsTheSameWarp();
    void ScaleShrinksTheShiftAlone();
    void PreviewLeavesTheExportMatrixAlone();
};

void WarpTest::cleanup()
{
    PathHorizontal.Result.Correction.clear();
    PathVertical.Result.Correction.clear();
    PathRotation.Result.Correction.clear();
}

void WarpTest::NoCorrectionChangesNothing()
{
    SetCorrection(0.0, 0.0, 0.0);
    QVERIFY(Equal(Warped(Noise(64, 48)), Noise(64, 48)));
    QVERIFY(Equal(WarpedScaled(Noise(64, 48), 0.5), Noise(64, 48)));
}

void WarpTest::ShiftRightLeavesBlackOnTheLeft()
{
    SetCorrection(10.0, 0.0, 0.0);
    const cv::Mat source = Noise(64, 48);
    const cv::Mat target = Warped(source);
    QCOMPARE(cv::norm(target.colRange(0, 10), cv::NORM_INF), 0.0);
    QVERIFY(Equal(target.colRange(10, 64), source.colRange(0, 54)));
    QVERIFY(Equal(source, Noise(64, 48)));
}

void WarpTest::WholeShifts_data()
{
    QTest::addColumn<double>("dx");
    QTest::addColumn<double>("dy");
    QTest::newRow("left") << -9.0 << 0.0;
    QTest::newRow("down") << 0.0 << 6.0;
    QTest::newRow("up") << 0.0 << -7.0;
    QTest::newRow("right and down") << 12.0 << 3.0;
    QTest::newRow("left and up") << -1.0 << -20.0;
    QTest::newRow("out of the picture") << 64.0 << 0.0;
}

void WarpTest::WholeShifts()
{
    QFETCH(double, dx);
    QFETCH(double, dy);
    SetCorrection(dx, dy, 0.0);
    const cv::Mat source = Noise(64, 48);
    cv::Mat expected = cv::Mat::zeros(48, 64, CV_8UC3);
    for (int y = 0; y < 48; ++y)
    {
        for (int x = 0; x < 64; ++x)
        {
            const int fromX = x - static_cast<int>(dx);
            const int fromY = y - static_cast<int>(dy);
            if (fromX >= 0 && fromX < 64 && fromY >= 0 && fromY < 48)
            {
                expected.at<cv::Vec3b>(y, x) = source.at<cv::Vec3b>(fromY, fromX);
            }
        }
    }
    QVERIFY(Equal(Warped(source), expected));
}

void WarpTest::FractionsInterpolate()
{
    // Half a pixel mixes two neighbours evenly, the first one with the black outside.
    const cv::Mat row = Picture(4, {10, 20, 30, 50});
    SetCorrection(0.5, 0.0, 0.0);
    QVERIFY(Equal(Warped(row), Picture(4, {5, 15, 25, 40})));
    SetCorrection(-0.5, 0.0, 0.0);
    QVERIFY(Equal(Warped(row), Picture(4, {15, 25, 40, 25})));
    SetCorrection(0.25, 0.0, 0.0);
    QVERIFY(Equal(Warped(Picture(4, {40, 80, 120, 200})), Picture(4, {30, 70, 110, 180})));
    SetCorrection(0.0, 0.5, 0.0);
    QVERIFY(Equal(Warped(Picture(1, {10, 20, 30, 50})), Picture(1, {5, 15, 25, 40})));
}

void WarpTest::RotationKeepsTheTopLeftPixel()
{
    SetCorrection(0.0, 0.0, 0.1);
    const cv::Mat source = Noise(64, 48);
    const cv::Mat target = Warped(source);
    QVERIFY(target.at<cv::Vec3b>(0, 0) == source.at<cv::Vec3b>(0, 0));
    // 0.1 radians turn the right end of the top row 6.3 pixels down: black stands where it was.
    QVERIFY(target.at<cv::Vec3b>(0, 63) == cv::Vec3b::all(0));
    QVERIFY(target.at<cv::Vec3b>(8, 60) != cv::Vec3b::all(0));
}

void WarpTest::QuarterAndHalfTurn()
{
    const cv::Mat source = Picture(3, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    SetCorrection(2.0, 0.0, QuarterTurn);
    QVERIFY(Equal(Warped(source), Picture(3, {7, 4, 1, 8, 5, 2, 9, 6, 3})));
    SetCorrection(0.0, 2.0, -QuarterTurn);
    QVERIFY(Equal(Warped(source), Picture(3, {3, 6, 9, 2, 5, 8, 1, 4, 7})));
    SetCorrection(2.0, 2.0, 2.0 * QuarterTurn);
    QVERIFY(Equal(Warped(source), Picture(3, {9, 8, 7, 6, 5, 4, 3, 2, 1})));
    // About the corner, not about the centre: without a shift the picture has gone to the left.
    SetCorrection(0.0, 0.0, QuarterTurn);
    QVERIFY(Equal(Warped(source), Picture(3, {1, 0, 0, 2, 0, 0, 3, 0, 0})));
}

void WarpTest::EachFrameHasItsCorrection()
{
    SetCorrection(0.0, 0.0, 0.0);
    PathHorizontal.Result.Correction[2] = 2.0;
    PathVertical.Result.Correction[2] = 1.0;
    PathRotation.Result.Correction[2] = 0.0;
    PosRotStabilizer stabilizer;
    const cv::Mat source = Picture(3, {1, 2, 3, 4, 5, 6});
    cv::Mat target;
    stabilizer.WarpFrame(source, target, 1);
    QVERIFY(Equal(target, source));
    stabilizer.WarpFrame(source, target, 2);
    QVERIFY(Equal(target, Picture(3, {0, 0, 0, 0, 0, 1})));
    stabilizer.WarpFrameScaled(source, target, 2, 1.0);
    QVERIFY(Equal(target, Picture(3, {0, 0, 0, 0, 0, 1})));
}

void WarpTest::MatrixOfTheExport()
{
    SetCorrection(3.5, -4.25, 0.2);
    PosRotStabilizer stabilizer;
    cv::Mat target;
    stabilizer.WarpFrame(Noise(16, 16), target, 1);
    QCOMPARE(stabilizer.Transform.rows, 2);
    QCOMPARE(stabilizer.Transform.cols, 3);
    QCOMPARE(stabilizer.Transform.type(), CV_64F);
    const cv::Matx23d matrix = stabilizer.Transform;
    QVERIFY(matrix(0, 0) == std::cos(0.2));
    QVERIFY(matrix(0, 1) == -std::sin(0.2));
    QVERIFY(matrix(0, 2) == 3.5);
    QVERIFY(matrix(1, 0) == std::sin(0.2));
    QVERIFY(matrix(1, 1) == std::cos(0.2));
    QVERIFY(matrix(1, 2) == -4.25);
}

void WarpTest::TargetTakesSizeAndType()
{
    SetCorrection(2.0, 0.0, 0.0);
    PosRotStabilizer stabilizer;
    const cv::Mat source = Picture(4, {9, 8, 7, 6});
    cv::Mat target(30, 20, CV_32F, cv::Scalar::all(99.0));
    stabilizer.WarpFrame(source, target, 1);
    QVERIFY(Equal(target, Picture(4, {0, 0, 9, 8})));
    target.setTo(cv::Scalar::all(200));
    stabilizer.WarpFrameScaled(source, target, 1, 0.5);
    QVERIFY(Equal(target, Picture(4, {0, 9, 8, 7})));
}

void WarpTest::ScaleOneIsTheSameWarp()
{
    SetCorrection(3.3, -2.7, 0.07);
    QVERIFY(Equal(WarpedScaled(Noise(64, 48), 1.0), Warped(Noise(64, 48))));
}

void WarpTest::ScaleShrinksTheShiftAlone()
{
    SetCorrection(6.6, -5.4, 0.07);
    const cv::Mat half = WarpedScaled(Noise(64, 48), 0.5);
    SetCorrection(3.3, -2.7, 0.07);
    QVERIFY(Equal(half, Warped(Noise(64, 48))));
    SetCorrection(6.6, -5.4, 0.07);
    const cv::Mat turned = WarpedScaled(Noise(64, 48), 0.0);
    SetCorrection(0.0, 0.0, 0.07);
    QVERIFY(Equal(turned, Warped(Noise(64, 48))));
}

void WarpTest::PreviewLeavesTheExportMatrixAlone()
{
    SetCorrection(3.5, -4.25, 0.2);
    PosRotStabilizer stabilizer;
    cv::Mat target;
    const cv::Mat before = (cv::Mat_<double>(2, 3) << 1, 2, 3, 4, 5, 6);
    before.copyTo(stabilizer.Transform);
    stabilizer.WarpFrameScaled(Noise(16, 16), target, 1, 0.5);
    QVERIFY(Equal(stabilizer.Transform, before));
}

QTEST_APPLESS_MAIN(WarpTest)
#include "warp_test.moc"
