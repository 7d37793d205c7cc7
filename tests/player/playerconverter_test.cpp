// SPDX-License-Identifier: MIT
#include "player/converterprobe.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QMetaProperty>
#include <QtTest>

#include <memory>

namespace
{
const TestHome Home;

constexpr double QuarterTurn = 1.5707963267948966;
const QRgb Black = qRgb(0, 0, 0);
const QRgb CropGreen = qRgb(120, 255, 120);

/** Whether a pixel lies on the frame of a rectangle; all four ends belong to it. */
bool IsOnFrame(int x, int y, int left, int top, int right, int bottom)
{
    const bool isInside = x >= left && x <= right && y >= top && y <= bottom;
    return isInside && (x == left || x == right || y == top || y == bottom);
}
}  // namespace

/** The two pictures of the preview: their sizes, their pixels, and the crop. */
class PlayerConverterTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(Guard->TakeUnexpected(), QStringList()); }

    void SignalsAndSlotsInOrder();
    void PropertyProcessAll();
    void Sizes_data();
    void Sizes();
    void SourceIsTheMeanOfThePixels();
    void Crop_data();
    void Crop();
    void OffsetsAreScaledAndTruncated_data();
    void OffsetsAreScaledAndTruncated();
    void RefusedCropShowsTheFullPicture_data();
    void RefusedCropShowsTheFullPicture();
    void CropOfNothing();
    void ZoomedToNothing();
    void CropSettingsOfTheExportPlayNoPart();
    void ShiftIsScaled_data();
    void ShiftIsScaled();
    void RotationIsNotScaled();
    void EachFrameHasItsCorrection();
    void CropIsTakenAfterTheWarp();

private:
    std::unique_ptr<MessageGuard> Guard;
};

void PlayerConverterTest::SignalsAndSlotsInOrder()
{
    const QStringList expected{
        "SrcImageReady(QImage)", "ExpImageReady(QImage)", "processFrame(cv::Mat,int)",
        "SetZoom(double)",       "SetCrop(bool)",         "NewStabilizationData()"};
    const QMetaObject& meta = PlayerConverter::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        const bool isSignal = i - meta.methodOffset() < 2;
        QCOMPARE(meta.method(i).methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
        found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(found, expected);
}

void PlayerConverterTest::PropertyProcessAll()
{
    const QMetaObject& meta = PlayerConverter::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
    const QMetaProperty property = meta.property(meta.propertyOffset());
    QCOMPARE(property.name(), "processAll");
    QCOMPARE(property.type(), QVariant::Bool);
    QVERIFY(property.isReadable());
    QVERIFY(property.isWritable());
    ConverterProbe probe;
    QCOMPARE(probe.Converter.property("processAll"), QVariant(true));
    QVERIFY(probe.Converter.setProperty("processAll", false));
    QCOMPARE(probe.Converter.property("processAll"), QVariant(false));
}

void PlayerConverterTest::Sizes_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<QSize>("picture");
    QTest::newRow("half is the zoom at the start") << QSize(1920, 1080) << 0.0 << QSize(960, 540);
    QTest::newRow("half") << QSize(1920, 1080) << 0.5 << QSize(960, 540);
    QTest::newRow("halves are cut") << QSize(101, 51) << 0.5 << QSize(50, 25);
    QTest::newRow("the larger part too") << QSize(99, 47) << 0.25 << QSize(24, 11);
    QTest::newRow("full size") << QSize(101, 51) << 1.0 << QSize(101, 51);
    QTest::newRow("enlarged") << QSize(51, 41) << 2.5 << QSize(127, 102);
}

void PlayerConverterTest::Sizes()
{
    QFETCH(QSize, frame);
    QFETCH(double, zoom);
    QFETCH(QSize, picture);
    ConverterProbe probe;
    LayStillPath(5);
    probe.Proj.ExportSettings.CropFactor = 1.5;
    probe.Converter.SetCrop(false);
    if (zoom > 0.0)
    {
        probe.Converter.SetZoom(zoom);
    }
    probe.Wake(*Guard);
    const cv::Mat plain(frame.height(), frame.width(), CV_8UC3, cv::Scalar(10, 20, 30));
    const QString size = QStringLiteral("%1x%2").arg(picture.width()).arg(picture.height());
    QCOMPARE(probe.Convert(plain, 1), QStringList({"source " + size, "stabilized " + size}));
    QCOMPARE(Difference(probe.Source, picture, [](int, int) { return qRgb(30, 20, 10); }),
             QString());
    QCOMPARE(probe.Stabilized.format(), QImage::Format_RGB888);
}

void PlayerConverterTest::SourceIsTheMeanOfThePixels()
{
    // One bright pixel in the corner of 4 by 4: a sixteenth of it is left.
    cv::Mat frame = cv::Mat::zeros(4 * 6, 4 * 9, CV_8UC3);
    for (int y = 0; y < frame.rows; y += 4)
    {
        for (int x = 0; x < frame.cols; x += 4)
        {
            frame.at<cv::Vec3b>(y, x) = cv::Vec3b(160, 80, 240);  // blue, green, red
        }
    }
    ConverterProbe probe;
    probe.Converter.SetZoom(0.25);
    probe.Wake(*Guard);
    QCOMPARE(probe.Convert(frame, 1), QStringList{"source 9x6"});
    QCOMPARE(Difference(probe.Source, {9, 6}, [](int, int) { return qRgb(15, 5, 10); }), QString());
}

void PlayerConverterTest::Crop_data()
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

void PlayerConverterTest::Crop()
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

void PlayerConverterTest::OffsetsAreScaledAndTruncated_data()
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

void PlayerConverterTest::OffsetsAreScaledAndTruncated()
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

void PlayerConverterTest::RefusedCropShowsTheFullPicture_data()
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

void PlayerConverterTest::RefusedCropShowsTheFullPicture()
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

void PlayerConverterTest::CropOfNothing()
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

void PlayerConverterTest::ZoomedToNothing()
{
    ConverterProbe probe;
    LayStillPath(5);
    probe.Wake(*Guard);
    probe.Converter.SetZoom(0.01);  // 0.8 by 0.6 pixels
    probe.Convert(SquareFrame(40, 30), 1);
    QVERIFY(probe.SourceBits.isEmpty());
    QVERIFY(probe.StabilizedBits.isEmpty());
    probe.Converter.SetZoom(0.5);
    QCOMPARE(probe.Convert(SquareFrame(40, 30), 2),
             QStringList({"source 40x30", "stabilized 36x26"}));
}

void PlayerConverterTest::CropSettingsOfTheExportPlayNoPart()
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

void PlayerConverterTest::ShiftIsScaled_data()
{
    QTest::addColumn<int>("scale");
    QTest::addColumn<double>("dx");
    QTest::addColumn<double>("dy");
    QTest::addColumn<QPoint>("shift");
    QTest::newRow("right at half size") << 2 << 20.0 << 0.0 << QPoint(10, 0);
    QTest::newRow("down at half size") << 2 << 0.0 << 6.0 << QPoint(0, 3);
    QTest::newRow("left and up at half size") << 2 << -8.0 << -10.0 << QPoint(-4, -5);
    QTest::newRow("right and up at a quarter") << 4 << 20.0 << -8.0 << QPoint(5, -2);
    QTest::newRow("full size") << 1 << 7.0 << 3.0 << QPoint(7, 3);
}

void PlayerConverterTest::ShiftIsScaled()
{
    QFETCH(int, scale);
    QFETCH(double, dx);
    QFETCH(double, dy);
    QFETCH(QPoint, shift);
    ConverterProbe probe;
    LayStillPath(5);
    PathHorizontal.Result.Correction[3] = dx;
    PathVertical.Result.Correction[3] = dy;
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Converter.SetZoom(1.0 / scale);
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(40, 30, scale), 3);
    QCOMPARE(Difference(probe.Source, {40, 30}), QString());  // the source stays where it is
    const Painting moved = [&](int x, int y)
    {
        const QPoint from = QPoint(x, y) - shift;
        return QRect(0, 0, 40, 30).contains(from) ? ColourAt(from.x(), from.y()) : Black;
    };
    QCOMPARE(Difference(probe.Stabilized, {40, 30}, moved), QString());
}

void PlayerConverterTest::RotationIsNotScaled()
{
    // A quarter turn about the top left corner, moved back in by 9 pixels of the picture.
    ConverterProbe probe;
    LayStillPath(5);
    PathRotation.Result.Correction[2] = QuarterTurn;
    PathHorizontal.Result.Correction[2] = 18.0;
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    probe.Convert(SquareFrame(10, 10), 2);
    QCOMPARE(
        Difference(probe.Stabilized, {10, 10}, [](int x, int y) { return ColourAt(y, 9 - x); }),
        QString());
}

void PlayerConverterTest::EachFrameHasItsCorrection()
{
    ConverterProbe probe;
    LayStillPath(5);
    PathHorizontal.Result.Correction = {0.0, 2.0, 4.0, 6.0, 8.0};
    probe.Proj.ExportSettings.CropFactor = 1.0;
    probe.Wake(*Guard);
    for (const int index : {4, 0, 3, 1})
    {
        probe.Convert(SquareFrame(40, 30), index);
        QCOMPARE(
            Difference(probe.Stabilized, {40, 30},
                       [&](int x, int y) { return x < index ? Black : ColourAt(x - index, y); }),
            QString());
    }
}

void PlayerConverterTest::CropIsTakenAfterTheWarp()
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

QTEST_MAIN(PlayerConverterTest)
#include "playerconverter_test.moc"
