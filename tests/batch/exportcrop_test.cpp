// SPDX-License-Identifier: MIT
#include "batch/exportsetup.h"
#include "support/messageguard.h"

#include <opencv2/videoio.hpp>

#include <QFile>
#include <QtTest>

#include <memory>

namespace
{
/** Sizes in pixels, as "80x60". */
QString SizeOf(const QString& video)
{
    cv::VideoCapture capture(video.toStdString());
    return QStringLiteral("%1x%2")
        .arg(static_cast<int>(capture.get(cv::CAP_PROP_FRAME_WIDTH)))
        .arg(static_cast<int>(capture.get(cv::CAP_PROP_FRAME_HEIGHT)));
}

/** A setup whose export crops by @p factor and moves the crop. */
void Crop(ExportSetup& setup, double factor, int offsetH = 0, int offsetV = 0)
{
    setup.Settings.EnableCrop = true;
    setup.Settings.CropFactor = factor;
    setup.Settings.ExpOffH = offsetH;
    setup.Settings.ExpOffV = offsetV;
}
}  // namespace

/** The size of the exported video and the limits of the crop. */
class ExportCropTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void Sizes_data();
    void Sizes();
    void Limits_data();
    void Limits();
    void FullHdLimits_data();
    void FullHdLimits();
    void OffsetsWithoutCropDoNotMatter();
    void NothingIsLeft_data();
    void NothingIsLeft();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void ExportCropTest::Sizes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("rescaleWidth");
    QTest::addColumn<int>("rescaleHeight");
    QTest::addColumn<QString>("expected");
    QTest::newRow("neither") << 160 << 120 << 0.0 << 0 << 0 << "160x120";
    // 320 / 1.1 = 290.9, 240 / 1.1 = 218.2
    QTest::newRow("crop, even") << 320 << 240 << 1.1 << 0 << 0 << "290x218";
    // 160 / 1.5 = 106.7, 120 / 1.6 = 75 would be odd
    QTest::newRow("crop to an odd height") << 160 << 120 << 1.6 << 0 << 0 << "100x74";
    // 160 / 1.2 = 133.3 and 100 / 1.2 = 83.3, both odd
    QTest::newRow("crop to odd numbers") << 160 << 100 << 1.2 << 0 << 0 << "132x82";
    // 161 / 1.5 = 107.3, 121 / 1.5 = 80.7
    QTest::newRow("crop of an odd size") << 161 << 121 << 1.5 << 0 << 0 << "106x80";
    QTest::newRow("rescale") << 160 << 120 << 0.0 << 64 << 200 << "64x200";
    QTest::newRow("rescale of an odd size") << 161 << 121 << 0.0 << 320 << 240 << "320x240";
    QTest::newRow("crop and rescale") << 160 << 120 << 1.5 << 240 << 96 << "240x96";
    // The frames keep their odd size; the codec has no odd sizes and drops the last row and column.
    QTest::newRow("odd size") << 161 << 121 << 0.0 << 0 << 0 << "160x120";
}

void ExportCropTest::Sizes()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(double, factor);
    QFETCH(int, rescaleWidth);
    QFETCH(int, rescaleHeight);
    QFETCH(QString, expected);
    ExportSetup setup({width, height, 4, 25.0});
    if (factor > 0.0)
    {
        Crop(setup, factor);
    }
    setup.Settings.EnRescale = rescaleWidth > 0;
    setup.Settings.ExpResH = rescaleWidth;
    setup.Settings.ExpResV = rescaleHeight;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(SizeOf(setup.Path("export.mp4")), expected);
    QCOMPARE(setup.ShownNumbers(), QVector<int>({0, 1, 1, 1}));
}

void ExportCropTest::Limits_data()
{
    const QString none;
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<int>("offsetV");
    QTest::addColumn<QString>("line");
    // 320 by 240 at 1.1: left 15, right 305, top 11, bottom 229. Right and bottom may not reach the
    // edge, which is one pixel stricter than need be.
    QTest::newRow("middle") << 1.1 << 0 << 0 << none;
    QTest::newRow("as far right as it goes") << 1.1 << 14 << 0 << none;
    QTest::newRow("touches the right edge")
        << 1.1 << 15 << 0 << "3 Offset horizontal=15 exceeds limits with higher value 320";
    QTest::newRow("as far left as it goes") << 1.1 << -15 << 0 << none;
    QTest::newRow("beyond the left edge")
        << 1.1 << -16 << 0 << "3 Offset horizontal=-16 exceeds limits with lower value -1";
    QTest::newRow("as far down as it goes") << 1.1 << 0 << 10 << none;
    QTest::newRow("touches the lower edge")
        << 1.1 << 0 << 11 << "3 Offset vertical=11 exceeds limits with higher value 240";
    QTest::newRow("as far up as it goes") << 1.1 << 0 << -11 << none;
    QTest::newRow("beyond the upper edge")
        << 1.1 << 0 << -12 << "3 Offset vertical=-12 exceeds limits with lower value -1";
    QTest::newRow("of two limits only the vertical one is told")
        << 1.1 << 50 << -60 << "3 Offset vertical=-60 exceeds limits with lower value -49";
    QTest::newRow("no zoom at all is refused")
        << 1.0 << 0 << 0 << "3 Offset vertical=0 exceeds limits with higher value 240";
    QTest::newRow("no zoom, moved up: horizontal")
        << 1.0 << 0 << -1 << "3 Offset vertical=-1 exceeds limits with lower value -1";
    // left -160, right 480, top -120, bottom 360: all four, the last is told.
    QTest::newRow("a crop larger than the picture")
        << 0.5 << 0 << 0 << "3 Offset vertical=0 exceeds limits with higher value 360";
}

void ExportCropTest::Limits()
{
    QFETCH(double, factor);
    QFETCH(int, offsetH);
    QFETCH(int, offsetV);
    QFETCH(QString, line);
    ExportSetup setup({320, 240, 3, 25.0});
    Crop(setup, factor, offsetH, offsetV);
    const bool passes = line.isEmpty();
    QCOMPARE(setup.Run(), passes ? 0 : -1);
    if (passes)
    {
        QCOMPARE(setup.Lines.OfLevel(3), QStringList());
        QCOMPARE(SizeOf(setup.Path("export.mp4")), QString("290x218"));
        return;
    }
    QCOMPARE(setup.Lines.All(), QStringList({"1 Input: Frames= 3 h=320 v=240 fps=25", line}));
    QCOMPARE(setup.Object.Calls, QStringList());
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(!QFile::exists(setup.Path("export.mp4")));
}

void ExportCropTest::FullHdLimits_data()
{
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<QString>("line");
    QTest::newRow("87 passes") << 87 << QString();
    QTest::newRow("88 is refused")
        << 88 << "3 Offset horizontal=88 exceeds limits with higher value 1920";
    // (1920 - 1744) / 2 - 100
    QTest::newRow("-100 is refused")
        << -100 << "3 Offset horizontal=-100 exceeds limits with lower value -12";
}

void ExportCropTest::FullHdLimits()
{
    QFETCH(int, offsetH);
    QFETCH(QString, line);
    ExportSetup setup({1920, 1080, 1, 25.0});
    Crop(setup, 1.1, offsetH);
    QCOMPARE(setup.Run(), line.isEmpty() ? 0 : -1);
    QCOMPARE(setup.Lines.OfLevel(3), line.isEmpty() ? QStringList() : QStringList{line});
    if (line.isEmpty())
    {
        QCOMPARE(SizeOf(setup.Path("export.mp4")), QString("1744x980"));
    }
}

void ExportCropTest::OffsetsWithoutCropDoNotMatter()
{
    ExportSetup setup;
    Crop(setup, 0.5, 10000, -10000);
    setup.Settings.EnableCrop = false;
    QCOMPARE(setup.Run(), 0);
    QCOMPARE(SizeOf(setup.Path("export.mp4")), QString("64x64"));
}

void ExportCropTest::NothingIsLeft_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<bool>("rescale");
    // 64 / 40 = 1.6, and one pixel is an odd number.
    QTest::newRow("one pixel becomes none") << 40.0 << false;
    QTest::newRow("less than a pixel") << 1000.0 << false;
    QTest::newRow("none to rescale") << 1000.0 << true;
}

void ExportCropTest::NothingIsLeft()
{
    QFETCH(double, factor);
    QFETCH(bool, rescale);
    ExportSetup setup;
    Crop(setup, factor);
    setup.Settings.EnRescale = rescale;
    QCOMPARE(setup.Run(), -1);
    QCOMPARE(setup.Lines.OfLevel(3), QStringList({"3 Exporting failed!"}));
    QCOMPARE(setup.Object.JobStatus, int{JobEnded});
    QVERIFY(TestVideo::ReadAllFrames(setup.Path("export.mp4")).empty());
}

QTEST_MAIN(ExportCropTest)
#include "exportcrop_test.moc"
