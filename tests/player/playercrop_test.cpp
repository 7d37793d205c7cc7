// SPDX-License-Identifier: MIT
#include "player/converterprobe.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QtTest>

#include <memory>

namespace
{
const TestHome Home;

const QRgb Black = qRgb(0, 0, 0);
const QRgb CropGreen = qRgb(120, 255, 120);

/** Whether a pixel lies on the frame of a rectangle; all four ends belong to it. */
bool IsOnFrame(int x, int y, int left, int top, int right, int bottom)
{
    const bool isInside = x >= left && x <= right && y >= top && y <= bottom;
    return isInside && (x == left || x == right || y == top || y == bottom);
}
}  // namespace

/** The crop of the stabilized picture in the preview: cut out, drawn in, moved and refused. */
class PlayerCropTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void Crop_data();
    void Crop();
    void OffsetsAreScaledAndTruncated_data();
    void OffsetsAreScaledAndTruncated();
    void RefusedCropShowsTheFullPicture_data();
    void RefusedCropShowsTheFullPicture();
    void CropOfNothing();
    void CropSettingsOfTheExportPlayNoPart();
    void CropIsTakenAfterTheWarp();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerCropTest::Crop_data()
{
    QTest::addColumn<QSize>("picture");  // half the frame's size
    QTest::addColumn<double>("factor");
    QTest::addColumn<QRect>("crop");
    // 960 / 1.1 is 872.7 and 540 / 1.1 is 490.9.
    QTest::newRow("1.1 of a full frame") << QSize(960, 540) << 1.1 << QRect(44, 25, 872, 490);
    // 36.4 and 27.3, made even 26.
    QTest::newRow("1.1, odd height made even") << QSize(40, 30) << 1.1 << QRect(2, 2, 36, 26);
    QTest::newRow("2.0") << QSize(40, 30) << 2.0 << QRect(10, 8, 20, 14);
    // 20.8 and 14.2 with 5 and 3 left over.
    QTest::newRow("1.2, rows of odd length") << QSize(25, 17) << 1.2 << QRect(2, 1, 20, 14);
}

void PlayerCropTest::Crop()
{
    QFETCH(QSize, picture);
    QFETCH(double, factor);
    QFETCH(QRect, crop);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = factor;
    probe.Wake(*Guard);
    const cv::Mat frame = SquareFrame(picture.width(), picture.height());
    const int left = crop.left();
    const int top = crop.top();
    // The crop is cut out at the start.
    probe.Convert(frame, 1);
    QCOMPARE(Difference(probe.Source, picture), QString());
    QCOMPARE(Difference(probe.Stabilized, crop.size(),
                        [&](int x, int y) { return ColourAt(x + left, y + top); }),
             QString());
    // Drawn in, its right and bottom lines run just behind it.
    const Painting marked = [&](int x, int y)
    {
        const int right = left + crop.width();
        const int bottom = top + crop.height();
        return IsOnFrame(x, y, left, top, right, bottom) ? CropGreen : ColourAt(x, y);
    };
    probe.Converter.SetCrop(false);
    QCOMPARE(probe.Take(), QStringList());
    probe.Convert(frame, 2);
    QCOMPARE(Difference(probe.Source, picture), QString());
    QCOMPARE(Difference(probe.Stabilized, picture, marked), QString());
    probe.Converter.SetCrop(true);
    probe.Convert(frame, 3);
    QCOMPARE(Difference(probe.Stabilized, crop.size(),
                        [&](int x, int y) { return ColourAt(x + left, y + top); }),
             QString());
}

void PlayerCropTest::OffsetsAreScaledAndTruncated_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<int>("offsetV");
    QTest::addColumn<QPoint>("place");
    // 80 by 60 pixels at factor 2.0: in the middle the crop starts at (20, 15).
    QTest::newRow("none") << 0.5 << 0 << 0 << QPoint(20, 15);
    QTest::newRow("right and down") << 0.5 << 20 << 12 << QPoint(30, 21);
    QTest::newRow("left and up") << 0.5 << -20 << -12 << QPoint(10, 9);
    QTest::newRow("10.5 is cut to 10") << 0.5 << 21 << 21 << QPoint(30, 25);
    QTest::newRow("-10.5 is cut to -10") << 0.5 << -21 << -21 << QPoint(10, 5);
    QTest::newRow("1.75 is cut to 1") << 0.25 << 7 << 7 << QPoint(21, 16);
    QTest::newRow("-1.75 is cut to -1") << 0.25 << -7 << -7 << QPoint(19, 14);
    QTest::newRow("across and not down") << 0.25 << 40 << 0 << QPoint(30, 15);
}

void PlayerCropTest::OffsetsAreScaledAndTruncated()
{
    QFETCH(double, zoom);
    QFETCH(int, offsetH);
    QFETCH(int, offsetV);
    QFETCH(QPoint, place);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = 2.0;
    probe.Proj.ExportSettings.ExpOffH = offsetH;
    probe.Proj.ExportSettings.ExpOffV = offsetV;
    probe.Converter.SetZoom(zoom);
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(80, 60, static_cast<int>(1.0 / zoom)), 1);
    QCOMPARE(Difference(probe.Stabilized, {40, 30},
                        [&](int x, int y) { return ColourAt(x + place.x(), y + place.y()); }),
             QString());
    QCOMPARE(probe.Proj.ExportSettings.ExpOffH, offsetH);  // the project keeps source pixels
    QCOMPARE(probe.Proj.ExportSettings.ExpOffV, offsetV);
}

void PlayerCropTest::RefusedCropShowsTheFullPicture_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<int>("offsetV");
    QTest::addColumn<QString>("line");
    // 40 by 30 pixels. At factor 1.1 the crop is 36 by 26 at (2, 2), up to (38, 28).
    QTest::newRow("factor 1.0 reaches the ends")
        << 1.0 << 0 << 0 << "3 Offset vertical=0 exceeds limits with higher value 30";
    QTest::newRow("a crop beyond all memory")  // 31457280 rows
        << 1.0 / 1048576 << 0 << 0
        << "3 Offset vertical=0 exceeds limits with higher value 15728655";
    QTest::newRow("left") << 1.1 << -6 << 0
                          << "3 Offset horizontal=-3 exceeds limits with lower value -1";
    QTest::newRow("right, at the very end")
        << 1.1 << 4 << 0 << "3 Offset horizontal=2 exceeds limits with higher value 40";
    QTest::newRow("up") << 1.1 << 0 << -7
                        << "3 Offset vertical=-3 exceeds limits with lower value -1";
    QTest::newRow("down") << 1.1 << 0 << 9
                          << "3 Offset vertical=4 exceeds limits with higher value 32";
    QTest::newRow("of several the last")
        << 1.1 << 100 << -100 << "3 Offset vertical=-50 exceeds limits with lower value -48";
}

void PlayerCropTest::RefusedCropShowsTheFullPicture()
{
    QFETCH(double, factor);
    QFETCH(int, offsetH);
    QFETCH(int, offsetV);
    QFETCH(QString, line);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = factor;
    probe.Proj.ExportSettings.ExpOffH = offsetH;
    probe.Proj.ExportSettings.ExpOffV = offsetV;
    probe.Wake(*Guard);
    const cv::Mat frame = SquareFrame(40, 30);
    for (int index = 1; index < 4; ++index)
    {
        probe.Converter.SetCrop(index != 2);
        QCOMPARE(probe.Convert(frame, index),
                 QStringList({line, "source 40x30", "stabilized 40x30"}));
        QCOMPARE(Difference(probe.Stabilized, {40, 30}), QString());
    }
}

void PlayerCropTest::CropOfNothing()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 1),
             QStringList({"source 40x30", "stabilized 36x26"}));
    probe.Proj.ExportSettings.CropFactor = 100.0;
    probe.Converter.NewStabilizationData();
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2),
             QStringList({"source 40x30", "stabilized 0x0"}));
}

void PlayerCropTest::CropSettingsOfTheExportPlayNoPart()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.EnableCrop = true;
    probe.Proj.ExportSettings.EnRescale = true;
    probe.Proj.ExportSettings.ExpAngle = 30.0;
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(40, 30), 1);
    QCOMPARE(
        Difference(probe.Stabilized, {36, 26}, [](int x, int y) { return ColourAt(x + 2, y + 2); }),
        QString());
}

void PlayerCropTest::CropIsTakenAfterTheWarp()
{
    // The crop starts at (2, 2): a shift of 5 pixels leaves 3 black columns in it.
    ConverterProbe probe;
    LayStillPath(5);
    PathHorizontal.Result.Correction[1] = 10.0;
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(40, 30), 1);
    QCOMPARE(Difference(probe.Stabilized, {36, 26},
                        [](int x, int y) { return x < 3 ? Black : ColourAt(x - 3, y + 2); }),
             QString());
}

QTEST_MAIN(PlayerCropTest)
#include "playercrop_test.moc"
