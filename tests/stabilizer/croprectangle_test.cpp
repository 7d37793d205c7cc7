// SPDX-License-Identifier: MIT
#include "stabilizer/croprectangle.h"
#include "batch/exportsettings.h"
#include "batch/stabilizerhost.h"
#include "project/project.h"
#include "stabilizer/int32ends.h"
#include "support/freshhost.h"
#include "support/loglines.h"

#include <QtTest>

#include <cmath>
#include <cstdint>
#include <limits>

namespace
{
ExportSettings Settings(double cropFactor, std::int32_t offsetH, std::int32_t offsetV)
{
    ExportSettings settings;
    settings.CropFactor = cropFactor;
    settings.ExpOffH = offsetH;
    settings.ExpOffV = offsetV;
    return settings;
}

/** A host whose thread carries messages to the log, and the record of them. */
struct LoggingHost
{
    LoggingHost() { ProgramHost.CreateStabilizer(1, &Proj); }

    Project Proj;
    FreshHost Host;
    LogLines Lines;
};
}  // namespace

class CropRectangleTest : public QObject
{
    Q_OBJECT

private slots:
    void StartsAtZero();
    void Numbers_data();
    void Numbers();
    void Limits_data();
    void Limits();
    void BothEndsOutsideTellTheHigherValue();
    void SizeIsTruncatedThenMadeEven_data();
    void SizeIsTruncatedThenMadeEven();
    void HalfOfANegativeRestIsTruncated();
    void CropSwitchesPlayNoPart();
    void FailureTakesValidBack();
    void ResetForgetsTheSize();
    void ExtremeSettings_data();
    void ExtremeSettings();
    void SenselessFactors_data();
    void SenselessFactors();
};

void CropRectangleTest::StartsAtZero()
{
    const CropRectangle rectangle;
    QCOMPARE(rectangle.CropHeight, 0);
    QCOMPARE(rectangle.Top, 0);
    QCOMPARE(rectangle.Bottom, 0);
    QCOMPARE(rectangle.CropWidth, 0);
    QCOMPARE(rectangle.Left, 0);
    QCOMPARE(rectangle.Right, 0);
    QVERIFY(!rectangle.Valid);
}

void CropRectangleTest::Numbers_data()
{
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<int>("offsetV");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("cropWidth");
    QTest::addColumn<int>("cropHeight");
    // 1920 / 1.1 is 1745.45, truncated and made even 1744. 1080 / 1.1 is 981.8, so 980.
    QTest::newRow("1.1") << 1.1 << 0 << 0 << 88 << 50 << 1744 << 980;
    QTest::newRow("1.1 moved right and up") << 1.1 << 40 << -30 << 128 << 20 << 1744 << 980;
    QTest::newRow("1.1 moved left and down") << 1.1 << -88 << 49 << 0 << 99 << 1744 << 980;
    QTest::newRow("2.0") << 2.0 << 0 << 0 << 480 << 270 << 960 << 540;
}

void CropRectangleTest::Numbers()
{
    QFETCH(double, cropFactor);
    QFETCH(int, offsetH);
    QFETCH(int, offsetV);
    QFETCH(int, left);
    QFETCH(int, top);
    QFETCH(int, cropWidth);
    QFETCH(int, cropHeight);
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(cropFactor, offsetH, offsetV), 1080, 1920), 0);
    QVERIFY(rectangle.Valid);
    QCOMPARE(rectangle.CropWidth, cropWidth);
    QCOMPARE(rectangle.CropHeight, cropHeight);
    QCOMPARE(rectangle.Left, left);
    QCOMPARE(rectangle.Top, top);
    QCOMPARE(rectangle.Right, left + cropWidth);
    QCOMPARE(rectangle.Bottom, top + cropHeight);
}

void CropRectangleTest::Limits_data()
{
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<int>("offsetH");
    QTest::addColumn<int>("offsetV");
    QTest::addColumn<QString>("line");  // behind "Offset "; empty when the crop fits
    const auto row =
        [](const char* name, double cropFactor, int offsetH, int offsetV, const char* line)
    { QTest::newRow(name) << cropFactor << offsetH << offsetV << QString(line); };
    // The crop of 1.1 is 1744 by 980 and stands at 88, 50 without an offset.
    row("left edge at column 0", 1.1, -88, 0, "");
    row("left edge at column -1", 1.1, -89, 0, "horizontal=-89 exceeds limits with lower value -1");
    row("left edge at column -12", 1.1, -100, 0,
        "horizontal=-100 exceeds limits with lower value -12");
    row("right end at column 1919", 1.1, 87, 0, "");
    row("right end at the image's edge", 1.1, 88, 0,
        "horizontal=88 exceeds limits with higher value 1920");
    row("top edge at row 0", 1.1, 0, -50, "");
    row("top edge at row -1", 1.1, 0, -51, "vertical=-51 exceeds limits with lower value -1");
    row("bottom end at row 1079", 1.1, 0, 49, "");
    row("bottom end at the image's edge", 1.1, 0, 50,
        "vertical=50 exceeds limits with higher value 1080");
    // Of several the last is told.
    row("left and top", 1.1, -100, -60, "vertical=-60 exceeds limits with lower value -10");
    row("right and top", 1.1, 200, -60, "vertical=-60 exceeds limits with lower value -10");
    row("left and bottom", 1.1, -100, 60, "vertical=60 exceeds limits with higher value 1090");
    row("right and bottom", 1.1, 200, 200, "vertical=200 exceeds limits with higher value 1230");
    row("factor 1 covers the image, which is refused", 1.0, 0, 0,
        "vertical=0 exceeds limits with higher value 1080");
    row("factor 1 moved left leaves at the left", 1.0, -1, -1,
        "vertical=-1 exceeds limits with lower value -1");
    row("factor below 1", 0.9, 0, 0, "vertical=0 exceeds limits with higher value 1140");
}

void CropRectangleTest::Limits()
{
    QFETCH(double, cropFactor);
    QFETCH(int, offsetH);
    QFETCH(int, offsetV);
    QFETCH(QString, line);
    const bool valid = line.isEmpty();
    LoggingHost host;
    CropRectangle rectangle;
    rectangle.Valid = !valid;
    QCOMPARE(rectangle.Calculate(Settings(cropFactor, offsetH, offsetV), 1080, 1920),
             valid ? 0 : 1);
    QCOMPARE(rectangle.Valid, valid);
    QCOMPARE(host.Lines.All(), valid ? QStringList() : QStringList{"3 Offset " + line});
}

void CropRectangleTest::BothEndsOutsideTellTheHigherValue()
{
    // 1920 / 0.9 is 2133.3, so 2132 of which 106 leave at the left; a side of 1 pixel crops to 0.
    LoggingHost host;
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(0.9, -7, 0), 1, 1920), 1);
    QCOMPARE(host.Lines.Take(),
             QStringList{"3 Offset horizontal=-7 exceeds limits with higher value 2019"});
    QCOMPARE(rectangle.Calculate(Settings(0.9, 0, -7), 1920, 1), 1);
    QCOMPARE(host.Lines.Take(),
             QStringList{"3 Offset vertical=-7 exceeds limits with higher value 2019"});
}

void CropRectangleTest::SizeIsTruncatedThenMadeEven_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<int>("cropSize");
    QTest::addColumn<int>("start");
    QTest::newRow("even stays") << 100 << 1.25 << 80 << 10;
    QTest::newRow("odd loses one") << 101 << 1.25 << 80 << 10;             // 80.8; 21 / 2 truncates
    QTest::newRow("truncated to an odd number") << 100 << 1.2 << 82 << 9;  // 83.3
    QTest::newRow("odd image at factor 1 fits") << 101 << 1.0 << 100 << 0;
    QTest::newRow("a crop of nothing") << 100 << 60.0 << 0 << 50;  // 1.67
}

void CropRectangleTest::SizeIsTruncatedThenMadeEven()
{
    QFETCH(int, size);
    QFETCH(double, cropFactor);
    QFETCH(int, cropSize);
    QFETCH(int, start);
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(cropFactor, 0, 0), size, size), 0);
    QCOMPARE(rectangle.CropWidth, cropSize);
    QCOMPARE(rectangle.CropHeight, cropSize);
    QCOMPARE(rectangle.Left, start);
    QCOMPARE(rectangle.Top, start);
}

void CropRectangleTest::HalfOfANegativeRestIsTruncated()
{
    // 101 / 0.99 is 102.02. Half of -1 is 0, so it is the right end that leaves the image.
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(0.99, 0, 0), 101, 101), 1);
    QCOMPARE(rectangle.Left, 0);
    QCOMPARE(rectangle.Right, 102);
    QCOMPARE(rectangle.Top, 0);
    QCOMPARE(rectangle.Bottom, 102);
}

void CropRectangleTest::CropSwitchesPlayNoPart()
{
    ExportSettings settings = Settings(1.1, 0, 0);
    settings.EnableCrop = true;
    settings.EnRescale = true;
    settings.ExpAngle = 45.0;
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(settings, 1080, 1920), 0);
    QCOMPARE(rectangle.CropWidth, 1744);
    QCOMPARE(rectangle.Left, 88);
}

void CropRectangleTest::FailureTakesValidBack()
{
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(1.1, 0, 0), 1080, 1920), 0);
    QCOMPARE(rectangle.Calculate(Settings(1.1, -100, 0), 1080, 1920), 1);
    QVERIFY(!rectangle.Valid);
    // The numbers of the refused rectangle stand for the message.
    QCOMPARE(rectangle.Left, -12);
    QCOMPARE(rectangle.Right, 1732);
    QCOMPARE(rectangle.Calculate(Settings(1.1, 0, 0), 1080, 1920), 0);
    QVERIFY(rectangle.Valid);
}

void CropRectangleTest::ResetForgetsTheSize()
{
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(1.1, 0, 0), 1080, 1920), 0);
    rectangle.Reset();
    QVERIFY(!rectangle.Valid);
    QCOMPARE(rectangle.CropWidth, 0);
    QCOMPARE(rectangle.CropHeight, 0);
    QCOMPARE(rectangle.Left, 88);
    QCOMPARE(rectangle.Bottom, 1030);
}

void CropRectangleTest::ExtremeSettings_data()
{
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<std::int32_t>("offset");
    QTest::addColumn<bool>("valid");
    QTest::newRow("factor 0") << 0.0 << 0 << false;
    QTest::newRow("tiny factor") << 1e-300 << 0 << false;
    QTest::newRow("huge factor") << 1e300 << 0 << true;
    QTest::newRow("infinite factor") << std::numeric_limits<double>::infinity() << 0 << true;
    QTest::newRow("highest offset") << 1.1 << Highest << false;
    QTest::newRow("lowest offset") << 1.1 << Lowest << false;
    QTest::newRow("factor 0 and highest offset") << 0.0 << Highest << false;
    QTest::newRow("factor 0 and lowest offset") << 0.0 << Lowest << false;
}

void CropRectangleTest::ExtremeSettings()
{
    QFETCH(double, cropFactor);
    QFETCH(std::int32_t, offset);
    QFETCH(bool, valid);
    CropRectangle rectangle;
    QCOMPARE(rectangle.Calculate(Settings(cropFactor, offset, offset), 1080, 1920), valid ? 0 : 1);
    QCOMPARE(rectangle.Valid, valid);
}

void CropRectangleTest::SenselessFactors_data()
{
    QTest::addColumn<double>("cropFactor");
    QTest::addColumn<std::int32_t>("offset");
    for (const std::int32_t offset : {0, Lowest, Highest})
    {
        for (const double cropFactor : {-0.0, -1e-300, -1.1, -1e300, std::nan("")})
        {
            QTest::addRow("factor %g with offset %d", cropFactor, offset) << cropFactor << offset;
        }
    }
}

void CropRectangleTest::SenselessFactors()
{
    // What such a rectangle is does not matter; that code, flag and limits agree does.
    QFETCH(double, cropFactor);
    QFETCH(std::int32_t, offset);
    CropRectangle rectangle;
    const int code = rectangle.Calculate(Settings(cropFactor, offset, offset), 1080, 1920);
    QCOMPARE(rectangle.Valid, code == 0);
    const bool inside = rectangle.Left >= 0 && rectangle.Right < 1920 && rectangle.Top >= 0 &&
                        rectangle.Bottom < 1080;
    QCOMPARE(rectangle.Valid, inside);
}

QTEST_MAIN(CropRectangleTest)
#include "croprectangle_test.moc"
