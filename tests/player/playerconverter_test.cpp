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
}  // namespace

/** The two pictures of the preview: their sizes, and where their pixels come from. */
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
    void ZoomedToNothing();
    void ShiftIsScaled_data();
    void ShiftIsScaled();
    void RotationIsNotScaled();
    void EachFrameHasItsCorrection();

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

QTEST_MAIN(PlayerConverterTest)
#include "playerconverter_test.moc"
