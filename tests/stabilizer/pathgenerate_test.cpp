// SPDX-License-Identifier: MIT
#include "stabilizer/axisfixture.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cmath>
#include <cstdint>

namespace
{
const QVector<double> Uneven = {4.0, -2.0, 3.0, 0.5, -6.0, 7.0, 1.0, 2.0, -8.0, 5.0, 2.5, -1.0};

QVector<double> Repeated(const QVector<double>& motion, int times)
{
    QVector<double> all;
    for (int i = 0; i < times; ++i)
    {
        all += motion;
    }
    return all;
}
}  // namespace

/** The calculation as a whole, by numbers that can be worked out by hand. */
class PathGenerateTest : public QObject
{
    Q_OBJECT

private slots:
    void Delay_data();
    void Delay();
    void StoresItsInput();
    void NoMotion_data();
    void NoMotion();
    void WeakFilterIsTheMean();
    void LockHoldsTheCameraStill_data();
    void LockHoldsTheCameraStill();
    void ShortVideoGetsTheStrongMean();
    void FirstFrameIsPulledToThePad();
    void CorrectionReachesThePath();
    void StartAndEndValuesFillThePads();
    void StrongFilterOfType4IsCentred();
    void StrongFilterOfType5Lags();
    void FullWeightIsTheStrongFilter_data();
    void FullWeightIsTheStrongFilter();
    void WithoutCropTheBaseWins_data();
    void WithoutCropTheBaseWins();
    void MarginsOfRotation();
    void NoFrameSize();
    void UseModifiedHasNoEffect();
};

void PathGenerateTest::Delay_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<std::uint64_t>("delay");
    QTest::newRow("type 1 with N 12 delays by 12") << 1 << std::uint64_t{12};
    QTest::newRow("type 2 with N 12 delays by 24") << 2 << std::uint64_t{24};
    QTest::newRow("type 3 with N 12 delays by 36") << 3 << std::uint64_t{36};
    QTest::newRow("type 4 with N 12 delays by 36") << 4 << std::uint64_t{36};
    QTest::newRow("type 5 with N 12 delays by 36") << 5 << std::uint64_t{36};
}

void PathGenerateTest::Delay()
{
    QFETCH(int, type);
    QFETCH(std::uint64_t, delay);
    AxisFixture axis(type, 12);
    axis.Run(Uneven);
    QCOMPARE(axis.Path.Base.Delay, delay);
    QCOMPARE(axis.Path.SuperSmooth.Delay, delay);
    QCOMPARE(axis.Path.ThirdStage.Delay, delay);
}

void PathGenerateTest::StoresItsInput()
{
    AxisFixture axis(3, 3);
    QVERIFY(!axis.Path.Result.Enabled);
    axis.Settings.EnableIgnoreSections = true;
    axis.Settings.IgnoreSections = {{2, 5, 0.0}};
    axis.Run(Uneven);
    QCOMPARE(Difference(axis.Path.DetectedShakiness, Uneven), QString());
    QCOMPARE(axis.Path.FrameSize, 1920.0);
    QCOMPARE(axis.Path.FramesPerSecond, 25.0);
    QVERIFY(axis.Path.Result.Enabled);
    QVERIFY(axis.Path.HasValidData());
}

void PathGenerateTest::NoMotion_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("weight");  // of the strong filter; the border of 87 is always good
    QTest::newRow("type 1") << 1 << -1;
    QTest::newRow("type 2") << 2 << -1;
    QTest::newRow("type 3") << 3 << -1;
    QTest::newRow("type 4") << 4 << 40;
    QTest::newRow("type 5") << 5 << 90;
}

void PathGenerateTest::NoMotion()
{
    QFETCH(int, type);
    QFETCH(int, weight);
    AxisFixture axis(type, 5);
    axis.Offset = 10;
    const QVector<double> zeros(200, 0.0);
    const PathFilterStage& result = axis.Run(zeros);
    QCOMPARE(Difference(result.Path, zeros), QString());
    QCOMPARE(Difference(result.Correction, zeros), QString());
    QCOMPARE(Difference(result.Margin, QVector<double>(200, 77.0)), QString());
    QCOMPARE(Difference(axis.Path.Base.Path, zeros), QString());
    QCOMPARE(Difference(axis.Path.Base.Correction, zeros), QString());
    QCOMPARE(Difference(axis.Path.Base.Margin, QVector<double>(200, 87.0)), QString());
    if (weight >= 0)
    {
        QCOMPARE(Difference(axis.Path.SuperSmooth.Path, zeros), QString());
        QCOMPARE(Difference(axis.Path.SuperSmooth.Margin, QVector<double>(200, 87.0)), QString());
        QCOMPARE(axis.Path.SuperSmooth.Weight, QVector<std::int32_t>(200, weight));
        QCOMPARE(axis.Path.Base.Weight, QVector<std::int32_t>(200, 0));
    }
}

void PathGenerateTest::WeakFilterIsTheMean()
{
    // N 2 has a window of 5. The padded position is 6 times 0, then 1 2 3 4, then 6 times 4.
    AxisFixture axis(3, 2);
    const QVector<double> flat(4, 34.0 / 16.0);
    QCOMPARE(Difference(axis.Run(QVector<double>(4, 1.0)).Path, flat), QString());
    axis.Settings.Lock = true;
    QCOMPARE(Difference(axis.Run(QVector<double>(4, 1.0)).Path, flat), QString());
}

void PathGenerateTest::LockHoldsTheCameraStill_data()
{
    QTest::addColumn<int>("type");
    for (int type = 1; type <= 5; ++type)
    {
        QTest::addRow("type %d", type) << type;
    }
}

void PathGenerateTest::LockHoldsTheCameraStill()
{
    QFETCH(int, type);
    AxisFixture axis(type, 3);
    const QVector<double> motion = Repeated(Uneven, 20);
    QVector<double> free = axis.Run(motion).Path;
    const QVector<double> shakiness = axis.Path.ShakinessPath;
    QVERIFY(free.first() != free.last());
    axis.Settings.Lock = true;
    const PathFilterStage& result = axis.Run(motion);
    const QVector<double> flat(motion.size(), result.Path.first());
    // The blend multiplies by R and then by 1 / R, which may cost a bit: the path is some 80.
    QCOMPARE(Difference(result.Path, flat, 1e-13), QString());
    QVERIFY(result.Path.first() > 60.0 && result.Path.first() < 100.0);
    QCOMPARE(Difference(axis.Path.ShakinessPath, shakiness), QString());
}

void PathGenerateTest::ShortVideoGetsTheStrongMean()
{
    // With N 12 the strong window of 85 reaches over the 72 frames of padding and 13 frames.
    AxisFixture axis(5, 12);
    axis.Run(QVector<double>(13, 1.0));
    const QVector<double> atLimit = axis.Path.SuperSmooth.Path;
    QCOMPARE(Difference(atLimit, QVector<double>(13, atLimit.first())), QString());
    QVERIFY(axis.Path.Base.Path.first() != axis.Path.Base.Path.last());
    axis.Run(QVector<double>(14, 1.0));
    QVERIFY(axis.Path.SuperSmooth.Path.first() != axis.Path.SuperSmooth.Path.last());
}

void PathGenerateTest::FirstFrameIsPulledToThePad()
{
    // The window of 7 about frame 0 holds 3 zeros and the positions 7, 14, 21, 28.
    AxisFixture axis(1, 3);
    axis.Run(QVector<double>(20, 7.0));
    QCOMPARE(axis.Path.Base.Path.at(0), 10.0);
    QCOMPARE(axis.Path.Base.Path.at(1), 15.0);  // 2 zeros and 7 to 35
    QCOMPARE(axis.Path.Base.Path.at(10), 77.0);
    // The window about the last frame holds the positions 119 to 140, and 140 three times more.
    QCOMPARE(axis.Path.Base.Path.at(19), 134.0);
    QCOMPARE(axis.Path.ShakinessPath.at(0), 7.0);
}

void PathGenerateTest::CorrectionReachesThePath()
{
    // Frame f stands at the sum of the motion before it, 7 f.
    AxisFixture axis(1, 3);
    axis.Offset = 20;
    const PathFilterStage& result = axis.Run(QVector<double>(20, 7.0));
    QCOMPARE(result.Correction.at(0), 10.0);
    QCOMPARE(result.Correction.at(1), 8.0);
    QCOMPARE(result.Correction.at(10), 7.0);
    QCOMPARE(result.Correction.at(19), 1.0);
    QCOMPARE(result.Margin.at(0), 97.0);  // 20 + (87 - 10)
    QCOMPARE(axis.Path.Base.Margin.at(0), 77.0);
    QCOMPARE(axis.Path.CorrectionAt(10), 7.0);
}

void PathGenerateTest::StartAndEndValuesFillThePads()
{
    AxisFixture axis(1, 3);
    const QVector<double> motion(20, 7.0);
    axis.Run(motion);
    const QVector<double> shakiness = axis.Path.ShakinessPath;
    axis.Settings.UseStartValue = true;
    axis.Settings.UseEndValue = true;
    axis.Settings.StartValue = 21.0;
    axis.Settings.EndValue = -140.0;
    const PathFilterStage& result = axis.Run(motion);
    QCOMPARE(result.Path.at(0), 19.0);   // (3 * 21 + 70) / 7
    QCOMPARE(result.Path.at(2), 24.0);   // (21 + 7 + 14 + 21 + 28 + 35 + 42) / 7
    QCOMPARE(result.Path.at(3), 28.0);   // the window has left the pad
    QCOMPARE(result.Path.at(19), 14.0);  // (518 - 3 * 140) / 7
    QCOMPARE(result.Path.at(16), 119.0);
    QCOMPARE(Difference(axis.Path.ShakinessPath, shakiness), QString());
    QCOMPARE(Difference(axis.Path.ModifiedPath, shakiness), QString());
}

void PathGenerateTest::StrongFilterOfType4IsCentred()
{
    // Two windows of 3 N + 1 delay by 3 N, as the three of the base do: on an even climb of 1 per
    // frame frame 300 gets its own position.
    AxisFixture axis(4, 4);
    axis.Run(QVector<double>(600, 1.0));
    QCOMPARE(axis.Path.Base.Path.at(300), 301.0);
    // The fractions of the ends have passed through the running sums and leave their rounding.
    QVERIFY(std::abs(axis.Path.SuperSmooth.Path.at(300) - 301.0) < 1e-9);
}

void PathGenerateTest::StrongFilterOfType5Lags()
{
    // Three windows of 7 N + 1 delay by 10.5 N, of which the base's 3 N are taken back.
    AxisFixture axis(5, 4);
    axis.Run(QVector<double>(600, 1.0));
    QCOMPARE(axis.Path.Base.Path.at(300), 301.0);
    // The fractions of the ends have passed through the running sums and leave their rounding.
    QVERIFY(std::abs(axis.Path.SuperSmooth.Path.at(300) - 271.0) < 1e-9);
}

void PathGenerateTest::FullWeightIsTheStrongFilter_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("type 4") << 4;
    QTest::newRow("type 5") << 5;
}

void PathGenerateTest::FullWeightIsTheStrongFilter()
{
    QFETCH(int, type);
    AxisFixture axis(type, 5);
    const PathFilterStage& result = axis.Run(Repeated(Uneven, 10));
    QCOMPARE(axis.Path.SuperSmooth.Weight, QVector<std::int32_t>(120, axis.Path.BlendFrames));
    // R and 1 / R round three times, half a unit in the last place each; the path is below 128.
    QCOMPARE(Difference(result.Path, axis.Path.SuperSmooth.Path, 3e-14), QString());
    QVERIFY(!Difference(result.Path, axis.Path.Base.Path, 0.1).isEmpty());
}

void PathGenerateTest::WithoutCropTheBaseWins_data()
{
    FullWeightIsTheStrongFilter_data();
}

void PathGenerateTest::WithoutCropTheBaseWins()
{
    QFETCH(int, type);
    const QVector<double> motion = Repeated(Uneven, 10);
    AxisFixture plain(3, 5);
    plain.Project.ExportSettings.CropFactor = 1.0;
    AxisFixture axis(type, 5);
    axis.Project.ExportSettings.CropFactor = 1.0;
    const PathFilterStage& expected = plain.Run(motion);
    const PathFilterStage& result = axis.Run(motion);
    QCOMPARE(axis.Path.SuperSmooth.Weight, QVector<std::int32_t>(120, 0));
    QCOMPARE(axis.Path.Base.Weight, QVector<std::int32_t>(120, axis.Path.BlendFrames));
    QCOMPARE(Difference(axis.Path.Base.Path, plain.Path.Base.Path), QString());
    // R and 1 / R round three times, half a unit in the last place each, and the sums of the
    // correction once more; the path is below 128.
    const double rounding = 6e-14;
    QCOMPARE(Difference(result.Path, expected.Path, rounding), QString());
    QCOMPARE(Difference(result.Correction, expected.Correction, rounding), QString());
}

void PathGenerateTest::MarginsOfRotation()
{
    // Half a radian has no whole number of border, 90 degrees have a border of 4.
    const QVector<double> still(300, 0.0);
    AxisFixture radians(5, 3);
    radians.Size = 0.5;
    radians.Run(still);
    QCOMPARE(Difference(radians.Path.SuperSmooth.Margin, still), QString());
    QCOMPARE(radians.Path.SuperSmooth.Weight, QVector<std::int32_t>(300, 0));
    AxisFixture degrees(5, 3);
    degrees.Size = 90.0;
    degrees.Run(still);
    QCOMPARE(Difference(degrees.Path.SuperSmooth.Margin, QVector<double>(300, 4.0)), QString());
    QCOMPARE(degrees.Path.SuperSmooth.Weight, QVector<std::int32_t>(300, 54));
}

void PathGenerateTest::NoFrameSize()
{
    AxisFixture axis(5, 3);
    axis.Size = 0.0;
    axis.Offset = 9;
    const QVector<double> motion = Repeated(Uneven, 10);
    const PathFilterStage& result = axis.Run(motion);
    const QVector<double> zeros(120, 0.0);
    QCOMPARE(Difference(result.Margin, zeros), QString());
    QCOMPARE(Difference(axis.Path.Base.Margin, zeros), QString());
    QCOMPARE(Difference(axis.Path.SuperSmooth.Margin, zeros), QString());
    QCOMPARE(axis.Path.SuperSmooth.Weight, QVector<std::int32_t>(120, 0));
}

void PathGenerateTest::UseModifiedHasNoEffect()
{
    AxisFixture axis(5, 3);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {{{{3, 50.0}, {8, 20.0}}, -1}};
    const QVector<double> path = axis.Run(Repeated(Uneven, 10)).Path;
    axis.Settings.UseModified = true;
    QCOMPARE(Difference(axis.Run(Repeated(Uneven, 10)).Path, path), QString());
}

QTEST_APPLESS_MAIN(PathGenerateTest)
#include "pathgenerate_test.moc"
