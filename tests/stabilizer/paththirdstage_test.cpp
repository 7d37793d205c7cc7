// SPDX-License-Identifier: MIT
#include "stabilizer/axisfixture.h"
#include "stabilizer/bitcompare.h"
#include "stabilizer/filterstage.h"
#include "stabilizer/pathcases.h"
#include "stabilizer/pathfilter.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace
{
constexpr int Frames = 120;
constexpr int Pad = 9;               ///< three times the strength of 3
constexpr int Offset = 40;           ///< pixels
constexpr double CropBorder = 87;    ///< pixels that a crop by 1.1 leaves of 1920 on each side
constexpr int BlendRamp = 54;        ///< frames, 18 times the strength
constexpr int IgnoredAtStart = 5;    ///< frames
constexpr std::uint64_t Window = 9;  ///< frames, of the third stage
constexpr std::uint64_t Order = 2;   ///< of the third stage

std::vector<double> ToVector(const QVector<double>& values)
{
    return {values.begin(), values.end()};
}
}  // namespace

/**
 * The third stage inside the calculation. No filter type enables it, so the tests do; the settings
 * are those of type 5 with a strength of 3.
 */
class PathThirdStageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ItsListsAreComplete();
    void ItSmoothsThePaddedStrongPath();
    void ItsCorrectionLeadsToItsPath();
    void ItsMarginLeavesOutTheOffset();
    void ItsWeightsFollowItsMargins();
    void TheResultTakesNothingOfIt();

private:
    AxisFixture Axis{5, 3};
    const PathFilterStage& Stage = Axis.Path.ThirdStage;
    QVector<double> Motion;
    QVector<double> Position;  ///< running sum of Motion between its pads
};

void PathThirdStageTest::initTestCase()
{
    std::mt19937 generator(3);
    Motion = ToQVector(RandomMotion(generator, Frames, 1920.0));
    Position.fill(0.0, Pad);
    for (const double step : qAsConst(Motion))
    {
        Position.append(Position.constLast() + step);
    }
    Position += QVector<double>(Pad, Position.constLast());

    Axis.Path.Configure(&Axis.Project, &Axis.Settings, Offset);
    Axis.Path.ThirdStage.Enabled = true;
    Axis.Path.ThirdStage.WindowLength = Window;
    Axis.Path.ThirdStage.Order = Order;
    Axis.Path.Generate(Motion, 1920.0, 25.0);
}

void PathThirdStageTest::ItsListsAreComplete()
{
    QCOMPARE(Stage.Path.size(), Frames);
    QCOMPARE(Stage.Correction.size(), Frames);
    QCOMPARE(Stage.Margin.size(), Frames);
    QCOMPARE(Stage.Weight.size(), Frames);
    QCOMPARE(Stage.Delay, std::uint64_t(Pad));
    QVERIFY(Axis.Path.HasValidData());
}

void PathThirdStageTest::ItSmoothsThePaddedStrongPath()
{
    PathFilterStage base = EnabledStage(7, 3, Pad);  // each has the delay of the first
    PathFilterStage strong = EnabledStage(22, 3, Pad);
    PathFilterStage third = EnabledStage(Window, Order, Pad);
    FilterPath(base, Position, Axis.Settings);
    FilterPath(strong, base.Path, Axis.Settings);
    FilterPath(third, strong.Path, Axis.Settings);
    QCOMPARE(third.Path.size(), Frames + 2 * Pad);
    QCOMPARE(BitDifference(Stage.Path, ToVector(third.Path.mid(Pad, Frames))), QString());
}

void PathThirdStageTest::ItsCorrectionLeadsToItsPath()
{
    std::vector<double> expected;
    expected.reserve(Frames);
    for (int frame = 0; frame < Frames; ++frame)
    {
        expected.push_back(Stage.Path.value(frame) - Position.at(Pad + frame) + Motion.at(frame));
    }
    QCOMPARE(BitDifference(Stage.Correction, expected), QString());
}

/** Unlike the margin of the outcome, which counts it against the side that the frame moves to. */
void PathThirdStageTest::ItsMarginLeavesOutTheOffset()
{
    QCOMPARE(Stage.Correction.size(), Frames);
    std::vector<double> expected;
    for (const double value : Stage.Correction)
    {
        expected.push_back(std::ceil(CropBorder - std::fabs(value)));
    }
    QCOMPARE(BitDifference(Stage.Margin, expected), QString());

    const PathFilterStage& result = Axis.Path.Result;
    expected.clear();
    for (const double value : result.Correction)
    {
        expected.push_back(
            std::ceil(value > 0.0 ? Offset + (CropBorder - value) : CropBorder + value - Offset));
    }
    QCOMPARE(BitDifference(result.Margin, expected), QString());

    const auto [least, most] =
        std::minmax_element(Stage.Correction.begin(), Stage.Correction.end());
    QVERIFY(*least < 0.0 && *most > 0.0);  // both sides have been seen
}

void PathThirdStageTest::ItsWeightsFollowItsMargins()
{
    QCOMPARE(WeightDifference(Stage.Weight,
                              ModelWeights(ToVector(Stage.Margin), IgnoredAtStart, BlendRamp)),
             QString());
    QVERIFY(Stage.Weight.value(0) > 0);  // not the 0 of a new entry
}

void PathThirdStageTest::TheResultTakesNothingOfIt()
{
    AxisFixture plain(5, 3);
    plain.Offset = Offset;
    plain.Run(Motion);
    QVERIFY(plain.Path.ThirdStage.Path.isEmpty());
    QCOMPARE(BitDifference(Axis.Path.Result.Path, ToVector(plain.Path.Result.Path)), QString());
    QVERIFY(Axis.Path.Result.Path != Stage.Path);
}

QTEST_APPLESS_MAIN(PathThirdStageTest)
#include "paththirdstage_test.moc"
