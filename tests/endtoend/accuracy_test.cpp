// SPDX-License-Identifier: MIT
#include "samplevideo/samplevideo.h"
#include "stabilizer/posrotstabilizer.h"

#include <opencv2/imgproc.hpp>

#include <QTest>

#include <cmath>

namespace
{
/** Root mean square of measured less true motion. */
struct Errors
{
    double X = 0.0;  ///< pixels
    double Y = 0.0;  ///< pixels
    double Degrees = 0.0;
};

/** Films a hand-held sample and measures it as an analysis does, without the way through a file. */
Errors MeasureErrors(const SampleVideo& sample, int points)
{
    PosRotStabilizer stabilizer;
    std::vector<cv::Point2f> features;
    std::vector<cv::Point2f> nextFeatures;
    cv::Mat frame;
    cv::Mat gray;
    cv::Mat nextGray;
    const int pairs = static_cast<int>(sample.Motions.size()) - 1;
    stabilizer.PrepareFrames(pairs);
    RenderFrame(sample, 0, frame);
    cv::cvtColor(frame, gray, cv::COLOR_BGR2GRAY);
    Errors sums;
    for (int i = 0; i < pairs; ++i)
    {
        RenderFrame(sample, i + 1, frame);
        cv::cvtColor(frame, nextGray, cv::COLOR_BGR2GRAY);
        cv::goodFeaturesToTrack(gray, features, points, 0.01, 30.0, cv::noArray(), 3, false, 0.04);
        stabilizer.TrackFrame(gray, nextGray, features, nextFeatures);
        cv::swap(gray, nextGray);
        const FrameMotion& truth = sample.Motions[static_cast<std::size_t>(i)];
        const double degrees = (stabilizer.MotionAngle[i] - truth.Angle) * 180.0 / CV_PI;
        sums.X += std::pow(stabilizer.MotionX[i] - truth.X, 2);
        sums.Y += std::pow(stabilizer.MotionY[i] - truth.Y, 2);
        sums.Degrees += degrees * degrees;
    }
    return {std::sqrt(sums.X / pairs), std::sqrt(sums.Y / pairs), std::sqrt(sums.Degrees / pairs)};
}
}  // namespace

/** How true the measured motion is, on clips whose motion is known. */
class AccuracyTest : public QObject
{
    Q_OBJECT

private slots:
    void MeasuredMotionIsTrue_data();
    void MeasuredMotionIsTrue();
};

void AccuracyTest::MeasuredMotionIsTrue_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("points");
    QTest::addColumn<double>("pixels");
    QTest::addColumn<double>("degrees");
    QTest::newRow("1080p with 800 points") << 1920 << 1080 << 800 << 0.05 << 0.003;
    QTest::newRow("640x360 with 800 points") << 640 << 360 << 800 << 0.08 << 0.008;
    QTest::newRow("640x360 with 200 points") << 640 << 360 << 200 << 0.08 << 0.008;
}

void AccuracyTest::MeasuredMotionIsTrue()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, points);
    QFETCH(double, pixels);
    QFETCH(double, degrees);
    SampleSettings settings;
    settings.Width = width;
    settings.Height = height;
    settings.Frames = 31;
    const Errors errors = MeasureErrors(MakeSampleVideo(settings), points);
    qInfo("RMS errors: x %.4f, y %.4f pixels, %.5f degrees", errors.X, errors.Y, errors.Degrees);
    QVERIFY2(errors.X <= pixels, qPrintable(QString::number(errors.X)));
    QVERIFY2(errors.Y <= pixels, qPrintable(QString::number(errors.Y)));
    QVERIFY2(errors.Degrees <= degrees, qPrintable(QString::number(errors.Degrees)));
}

QTEST_GUILESS_MAIN(AccuracyTest)

#include "accuracy_test.moc"
