// SPDX-License-Identifier: MIT
#include "batch/batchsetup.h"
#include "batch/exportsetup.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"
#include "support/messageguard.h"

#include <opencv2/imgproc.hpp>

#include <QtTest>

#include <cmath>
#include <memory>

namespace
{
constexpr int Width = 320;
constexpr int Height = 180;
constexpr int Frames = 5;

// Mean difference of a pixel from the picture before the codec, in levels. Pictures that differ in
// what this test is about are at least twice as far from each other.
constexpr double CodecTolerance = 6.0;

/** A street, a real stabilizer and corrections that the test chooses. */
struct PictureSetup : BatchSetup
{
    PictureSetup()
    {
        if (TestVideo::WriteStreetClip(Path("source.avi"), {Width, Height, Frames, 25.0}).empty())
        {
            qFatal("No clip for the test");
        }
        Sources = TestVideo::ReadAllFrames(Path("source.avi"));
        GivePaths(Object);
        Object.TrackingLoaded = true;
        Object.StabilizeLoaded = true;
        Object.PathGenerated = true;
        SetZeroCorrections(Frames);
    }

    /** Exports and reads back. */
    std::vector<cv::Mat> Run()
    {
        return Object.ExportJob(Settings) == 0 ? TestVideo::ReadAllFrames(Path("export.mp4"))
                                               : std::vector<cv::Mat>();
    }

    std::vector<cv::Mat> Sources;
    PosRotStabilizer Object;
    ::ExportSettings Settings;
};

/** @p source turned by @p angle, radians, about its top left corner and moved; black comes in. */
cv::Mat Moved(const cv::Mat& source, double angle, double x, double y)
{
    const cv::Mat matrix = (cv::Mat_<double>(2, 3) << std::cos(angle), -std::sin(angle), x,
                            std::sin(angle), std::cos(angle), y);
    cv::Mat moved;
    cv::warpAffine(source, moved, matrix, source.size(), cv::INTER_LINEAR, cv::BORDER_CONSTANT,
                   cv::Scalar(0));
    return moved;
}

cv::Mat Scaled(const cv::Mat& source, int width, int height)
{
    cv::Mat scaled;
    cv::resize(source, scaled, cv::Size(width, height), 0, 0, cv::INTER_LINEAR);
    return scaled;
}

/** Mean difference of two pictures in levels; 255 for pictures of different size. */
double MeanDifference(const cv::Mat& first, const cv::Mat& second)
{
    return first.size() == second.size()
               ? cv::norm(first, second, cv::NORM_L1) / (3.0 * static_cast<double>(first.total()))
               : 255.0;
}

double Radians(double degrees)
{
    return degrees * 3.141592653589793 / 180.0;
}
}  // namespace

/** The exported picture against one that is made by hand from the same source frame. */
class ExportPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void EachFrameFollowsItsCorrection();
    void CropAndOffsets();
    void CropThenScale();
    void ScaleKeepsTheWholeField();
    void Rotation_data();
    void Rotation();
    void RotationComesAfterTheWarp();
    void GeneratedPathMovesFrames();

private:
    std::unique_ptr<MessageGuard> Guard;
};

#define VERIFY_CLOSE(actual, expected)                          \
    QVERIFY2(MeanDifference(actual, expected) < CodecTolerance, \
             qPrintable(QString::number(MeanDifference(actual, expected))))
#define VERIFY_FAR(actual, expected)                                \
    QVERIFY2(MeanDifference(actual, expected) > 2 * CodecTolerance, \
             qPrintable(QString::number(MeanDifference(actual, expected))))

void ExportPictureTest::EachFrameFollowsItsCorrection()
{
    PictureSetup setup;
    PathHorizontal.Result.Correction = {0.0, 12.0, -20.0, 30.0, 0.0};
    PathVertical.Result.Correction = {0.0, -9.0, 15.0, 0.0, 24.0};
    PathRotation.Result.Correction = {0.0, 0.02, -0.05, 0.0, 0.1};
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    const int shown[] = {0, 1, 2, 2, 2};  // the last two frames are not read
    for (int i = 0; i < Frames; ++i)
    {
        const cv::Mat& source = setup.Sources[static_cast<std::size_t>(shown[i])];
        const cv::Mat& actual = frames[static_cast<std::size_t>(i)];
        VERIFY_CLOSE(actual, Moved(source, PathRotation.Result.Correction.at(i),
                                   PathHorizontal.Result.Correction.at(i),
                                   PathVertical.Result.Correction.at(i)));
        if (i > 0)
        {
            VERIFY_FAR(actual, source);
        }
    }
}

void ExportPictureTest::CropAndOffsets()
{
    PictureSetup setup;
    setup.Settings.EnableCrop = true;
    setup.Settings.CropFactor = 1.6;  // 200 by 112, left 60, top 34
    setup.Settings.ExpOffH = 25;
    setup.Settings.ExpOffV = -14;
    PathHorizontal.Result.Correction[0] = 7.0;
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    VERIFY_CLOSE(frames[0], Moved(setup.Sources[0], 0.0, 7.0, 0.0)(cv::Rect(85, 20, 200, 112)));
    VERIFY_CLOSE(frames[1], setup.Sources[1](cv::Rect(85, 20, 200, 112)));
    VERIFY_FAR(frames[1], setup.Sources[1](cv::Rect(60, 34, 200, 112)));
}

void ExportPictureTest::CropThenScale()
{
    PictureSetup setup;
    setup.Settings.EnableCrop = true;
    setup.Settings.CropFactor = 1.6;
    setup.Settings.EnRescale = true;
    setup.Settings.ExpResH = 160;
    setup.Settings.ExpResV = 160;
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    VERIFY_CLOSE(frames[0], Scaled(setup.Sources[0](cv::Rect(60, 34, 200, 112)), 160, 160));
    VERIFY_FAR(frames[0], Scaled(setup.Sources[0], 160, 160));
}

void ExportPictureTest::ScaleKeepsTheWholeField()
{
    PictureSetup setup;
    setup.Settings.EnRescale = true;
    setup.Settings.ExpResH = 100;
    setup.Settings.ExpResV = 200;
    setup.Settings.CropFactor = 1.6;
    setup.Settings.ExpOffH = 25;
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    VERIFY_CLOSE(frames[0], Scaled(setup.Sources[0], 100, 200));
}

void ExportPictureTest::Rotation_data()
{
    QTest::addColumn<bool>("crop");
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("turned");
    QTest::newRow("10 degrees") << true << 10.0 << 10.0;
    QTest::newRow("-10 degrees") << true << -10.0 << -10.0;
    QTest::newRow("2.5 degrees") << true << 2.5 << 2.5;
    QTest::newRow("358 degrees") << true << 358.0 << -2.0;
    QTest::newRow("-358 degrees") << true << -358.0 << 2.0;
    QTest::newRow("10 degrees without crop") << false << 10.0 << 0.0;
    QTest::newRow("no more than 0.001 degrees") << true << 0.0005 << 0.0;
    QTest::newRow("a full turn") << true << 360.0 << 0.0;
    QTest::newRow("more than a full turn") << true << 370.0 << 0.0;
    QTest::newRow("more than a full turn back") << true << -370.0 << 0.0;
}

void ExportPictureTest::Rotation()
{
    QFETCH(bool, crop);
    QFETCH(double, angle);
    QFETCH(double, turned);
    PictureSetup setup;
    setup.Settings.EnableCrop = crop;
    setup.Settings.CropFactor = 1.6;
    setup.Settings.ExpAngle = angle;
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    const cv::Rect area = crop ? cv::Rect(60, 34, 200, 112) : cv::Rect(0, 0, Width, Height);
    // A positive angle turns against the clock; with y down that is a negative angle here.
    const cv::Mat expected = Moved(setup.Sources[0], Radians(-turned), 0.0, 0.0)(area);
    VERIFY_CLOSE(frames[0], expected);
    if (turned != 0.0)
    {
        VERIFY_FAR(frames[0], setup.Sources[0](area));
    }
}

void ExportPictureTest::RotationComesAfterTheWarp()
{
    PictureSetup setup;
    setup.Settings.EnableCrop = true;
    setup.Settings.CropFactor = 1.6;
    setup.Settings.ExpAngle = -15.0;
    PathHorizontal.Result.Correction[0] = 60.0;
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    const cv::Rect area(60, 34, 200, 112);
    const cv::Mat shifted = Moved(setup.Sources[0], 0.0, 60.0, 0.0);
    VERIFY_CLOSE(frames[0], Moved(shifted, Radians(15.0), 0.0, 0.0)(area));
    // The other order turns the shift too.
    const cv::Mat rotated = Moved(setup.Sources[0], Radians(15.0), 0.0, 0.0);
    VERIFY_FAR(frames[0], Moved(rotated, 0.0, 60.0, 0.0)(area));
}

void ExportPictureTest::GeneratedPathMovesFrames()
{
    // A picture that jumps by 40 pixels at frame 2, on an axis that is locked to the mean.
    PictureSetup setup;
    setup.Proj.FlowH.Lock = true;
    setup.Object.PathGenerated = false;
    setup.Object.FrameWidth = Width;
    setup.Object.FrameHeight = Height;
    setup.Object.FrameRate = 25;
    setup.Object.PrepareFrames(Frames);
    setup.Object.MotionX = {0.0, 40.0, 0.0, 0.0, 0.0};
    const std::vector<cv::Mat> frames = setup.Run();
    QCOMPARE(frames.size(), std::size_t{5});
    QVERIFY(setup.Object.PathGenerated);
    QVERIFY(setup.Lines.Has("1 Generate Smoothing Path"));
    // One average over 7 frames pads by 3 frames: the sums 0 0 0, 0 40 40 40 40, 40 40 40 have the
    // mean 280 / 11. Frames 0 and 1 stand at 0, the others at 40.
    const double mean = 280.0 / 11.0;
    VERIFY_CLOSE(frames[0], Moved(setup.Sources[0], 0.0, mean, 0.0));
    VERIFY_CLOSE(frames[1], Moved(setup.Sources[1], 0.0, mean, 0.0));
    VERIFY_CLOSE(frames[2], Moved(setup.Sources[2], 0.0, mean - 40.0, 0.0));
    VERIFY_FAR(frames[2], setup.Sources[2]);
}

QTEST_MAIN(ExportPictureTest)
#include "exportpicture_test.moc"
