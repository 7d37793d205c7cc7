// SPDX-License-Identifier: MIT
#include "stabilizer/bitcompare.h"
#include "stabilizer/pathfilter.h"
#include "stabilizer/pathmodel.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace
{
/** Margins in runs, as "g10 b5": 10 frames with a good margin, then 5 with a bad one. */
QVector<double> Margins(const QString& runs)
{
    QVector<double> margins;
    for (const QString& run : runs.split(QLatin1Char(' ')))
    {
        const double margin = run.startsWith(QLatin1Char('g')) ? 1.0 : 0.0;
        margins += QVector<double>(run.mid(1).toInt(), margin);
    }
    return margins;
}

/** Weights in runs, as "2*8 1 0*3": 8 times 2, once 1, 3 times 0. */
QVector<std::int32_t> Weights(const QString& runs)
{
    QVector<std::int32_t> weights;
    for (const QString& run : runs.split(QLatin1Char(' ')))
    {
        const QStringList parts = run.split(QLatin1Char('*'));
        weights +=
            QVector<std::int32_t>(parts.value(1, QStringLiteral("1")).toInt(), parts.at(0).toInt());
    }
    return weights;
}

QString Shown(const QVector<std::int32_t>& weights)
{
    QStringList texts;
    for (const std::int32_t weight : weights)
    {
        texts.append(QString::number(weight));
    }
    return texts.join(QLatin1Char(' '));
}

PathFilterStage StageWith(const QVector<double>& margin)
{
    PathFilterStage stage;
    stage.Enabled = true;
    stage.Margin = margin;
    stage.Weight.fill(-77, margin.size());
    return stage;
}

/** Runs of good and bad margins with lengths around the limits of a ramp of @p blendFrames. */
std::vector<double> RandomMargins(std::mt19937& generator, std::int32_t blendFrames)
{
    std::vector<double> margins;
    const auto longest = static_cast<std::uint32_t>(5 * blendFrames + 2);
    bool good = generator() % 2 == 0;
    for (auto run = generator() % 12 + 1; run > 0; --run)
    {
        const auto length = generator() % longest + 1;
        margins.insert(margins.end(), length, good ? 1.0 : -1.0);
        good = !good;
    }
    return margins;
}
}  // namespace

/** Where the strong filter is used. R is the length of a ramp; good stretches count from 3 R + 1
 * on. */
class PathWeightsTest : public QObject
{
    Q_OBJECT

private slots:
    void Cases_data();
    void Cases();
    void GoodIsAbove0();
    void DisabledStageIsLeftAlone();
    void NoFrames();
    void AgreesWithTheModel_data();
    void AgreesWithTheModel();
    void HugeNumbers();
    void BlendTakesTheSharesOfBoth();
    void BlendWithoutTheStrongFilter();
    void BlendWithoutARampIsNotANumber();

private:
    void CasesOfFewChanges();
    void CasesOfKeptSections();
    void CasesOfTheLastStep();
    void CasesOfTheStart();
};

void PathWeightsTest::Cases_data()
{
    QTest::addColumn<QString>("margins");
    QTest::addColumn<int>("ignoreStart");
    QTest::addColumn<int>("blendFrames");
    QTest::addColumn<QString>("expected");
    CasesOfFewChanges();
    CasesOfKeptSections();
    CasesOfTheLastStep();
    CasesOfTheStart();
}

void PathWeightsTest::CasesOfFewChanges()
{
    const auto row = [](const char* name, const char* margins, int r, const char* expected)
    {
        QTest::newRow(name) << QString::fromLatin1(margins) << -1 << r
                            << QString::fromLatin1(expected);
    };
    row("all good", "g7", 2, "2*7");
    row("all bad", "b7", 2, "0*7");
    row("one good frame", "g1", 2, "2");
    row("two pairs keep no change: good first", "g3 b30", 2, "2*33");
    row("two pairs keep no change: bad first", "b3 g30", 2, "0*33");
    row("three pairs, good at both ends: the last never comes back", "g10 b5 g20", 2,
        "2*8 2 1 0*25");
    row("three pairs, good between: nothing measured yet", "b10 g20 b5", 2, "0*35");
    row("the first ramp runs from R down to 1", "g10 b5 g20", 4, "4*6 4 3 2 1 0*25");
    row("the first section is as long as the ramp", "g4 b5 g20", 4, "4 3 2 1 0*25");
    row("the first section is shorter than the ramp", "g3 b5 g20", 4, "3 2 1 0*25");
    row("the first section is one frame", "g1 b5 g20", 4, "1 0*25");
}

void PathWeightsTest::CasesOfKeptSections()
{
    const auto row = [](const char* name, const char* margins, int r, const char* expected)
    {
        QTest::newRow(name) << QString::fromLatin1(margins) << -1 << r
                            << QString::fromLatin1(expected);
    };
    row("a long section", "b10 g20 b10 g10", 2, "0*10 1 2*17 1 0 0*20");
    row("a later ramp goes 1, 2, 3 up and 3, 2, 1, 0 down", "b15 g20 b10 g10", 4,
        "0*15 1 2 3 4*13 3 2 1 0 0*20");
    row("R 1", "b10 g20 b10 g10", 1, "0*10 1*19 0 0*20");
    row("exactly 3 R is not taken up", "b10 g6 b10 g10", 2, "0*36");
    row("3 R and one frame is taken up", "b10 g7 b10 g10", 2, "0*10 1 2*4 1 0 0*20");
    row("exactly 3 R after the start is not taken up", "b6 g20 b10 g10", 2, "0*46");
    row("3 R and one frame after the start is taken up", "b7 g20 b10 g10", 2,
        "0*7 1 2*17 1 0 0*20");
    row("the wait counts from the start of the last section", "b10 g10 b3 g10 b10 g5", 2,
        "0*10 1 2*7 1 0 0*3 1 2*7 1 0 0*15");
    row("too soon after a good start", "g2 b3 g20 b5 g5", 2, "2 1 0*33");
    row("after a good start and a pause", "g2 b5 g20 b5 g5", 2, "2 1 0*5 1 2*17 1 0 0*10");
    row("a brief good section between bad ones vanishes", "b10 g3 b10 g20 b10 g5", 2,
        "0*23 1 2*17 1 0 0*15");
    row("a brief bad section does not lengthen a good one", "b10 g6 b1 g6 b10 g5", 2, "0*38");
}

void PathWeightsTest::CasesOfTheLastStep()
{
    const auto row = [](const char* name, const char* margins, int r, const char* expected)
    {
        QTest::newRow(name) << QString::fromLatin1(margins) << -1 << r
                            << QString::fromLatin1(expected);
    };
    // The last good section is measured by the one before it, and runs to the end of the video: the
    // bad frames behind it are the pair that is never kept.
    row("a short last section after a long one is taken up", "b10 g10 b10 g1 b5", 2,
        "0*10 1 2*7 1 0 0*10 1 2*3 1 0");
    row("a long last section after a short one is not", "b10 g3 b10 g20 b5", 2, "0*48");
    row("a last section after one of exactly 3 R is not", "b10 g6 b10 g20 b5", 2, "0*51");
    row("a last section one frame after the one before", "b10 g4 b1 g7 b5", 1,
        "0*10 1*3 0 0 1*11 0");
    row("a last section with nothing measured before it", "g10 b10 g10 b3", 2, "2*9 1 0*23");
    row("the ramp up does not get to R", "b20 g20 b20 g3 b3", 4,
        "0*20 1 2 3 4*13 3 2 1 0 0*20 1 2 1 0*3");
    row("a last section as long as the ramp", "b20 g20 b20 g1 b3", 4,
        "0*20 1 2 3 4*13 3 2 1 0 0*24");
    row("a last section shorter than the ramp", "b20 g20 b20 g1 b1", 4,
        "0*20 1 2 3 4*13 3 2 1 0 0*22");
}

void PathWeightsTest::CasesOfTheStart()
{
    const auto row = [](const char* name, const char* margins, int ignore, const char* expected)
    {
        QTest::newRow(name) << QString::fromLatin1(margins) << ignore << 2
                            << QString::fromLatin1(expected);
    };
    row("a violation at frame 4 is disregarded with 5, for the whole video", "g4 b4 g20 b10 g10", 5,
        "2*48");
    row("a violation at frame 5 is disregarded with 5", "g5 b4 g20 b10 g10", 5, "2*49");
    row("a violation at frame 6 is not disregarded with 5", "g6 b4 g20 b10 g10", 5,
        "2*5 1 0*4 1 2*17 1 0 0*20");
    row("a violation at frame 4 counts with 3", "g4 b4 g20 b10 g10", 3,
        "2*3 1 0*4 1 2*17 1 0 0*20");
    row("a bad frame 0 stays bad", "b3 g1 b6 g20 b10 g10", 5, "0*10 1 2*17 1 0 0*20");
    row("a bad frame 0 alone stays bad", "b9", 5, "0*9");
    row("two pairs go by frame 0 alone", "g4 b9", 5, "2*13");
    row("two pairs, bad first", "b4 g9", 5, "0*13");
    row("three pairs, the bad one forced", "g4 b4 g9", 5, "2*17");
    row("all changes but the last are forced", "g4 b4 g9 b4", 500, "2*21");
    row("a violation at frame 1 is disregarded with 1", "g1 b9 g20 b10 g10", 1, "2*50");
    row("a violation at frame 1 counts with 0", "g1 b9 g20 b10 g10", 0, "1 0*9 1 2*17 1 0 0*20");
    row("the lowest number disregards nothing", "g1 b9 g20 b10 g10",
        std::numeric_limits<int>::min(), "1 0*9 1 2*17 1 0 0*20");
}

void PathWeightsTest::Cases()
{
    QFETCH(QString, margins);
    QFETCH(int, ignoreStart);
    QFETCH(int, blendFrames);
    QFETCH(QString, expected);
    PathFilterStage stage = StageWith(Margins(margins));
    CalculateWeights(stage, ignoreStart, blendFrames);
    QCOMPARE(Shown(stage.Weight), Shown(Weights(expected)));
    QCOMPARE(Difference(stage.Margin, Margins(margins)), QString());
}

void PathWeightsTest::GoodIsAbove0()
{
    PathFilterStage stage = StageWith({0.0});
    CalculateWeights(stage, -1, 3);
    QCOMPARE(stage.Weight.at(0), 0);
    stage = StageWith({1e-300});
    CalculateWeights(stage, -1, 3);
    QCOMPARE(stage.Weight.at(0), 3);
    stage = StageWith({std::nan("")});
    CalculateWeights(stage, -1, 3);
    QCOMPARE(stage.Weight.at(0), 0);
}

void PathWeightsTest::DisabledStageIsLeftAlone()
{
    PathFilterStage stage = StageWith(Margins(QStringLiteral("g3")));
    stage.Enabled = false;
    CalculateWeights(stage, 5, 2);
    QCOMPARE(stage.Weight, QVector<std::int32_t>(3, -77));
}

void PathWeightsTest::NoFrames()
{
    PathFilterStage stage = StageWith({});
    CalculateWeights(stage, 5, 2);
    QVERIFY(stage.Weight.isEmpty());
}

void PathWeightsTest::AgreesWithTheModel_data()
{
    QTest::addColumn<int>("blendFrames");
    for (const int blendFrames : {1, 2, 3, 7, 24, 54})
    {
        QTest::addRow("ramps of %d", blendFrames) << blendFrames;
    }
}

void PathWeightsTest::AgreesWithTheModel()
{
    QFETCH(int, blendFrames);
    int mixed = 0;
    for (unsigned seed = 0; seed < 2000; ++seed)
    {
        std::mt19937 generator(seed);
        const int ignoreStart = static_cast<int>(generator() % 9) - 1;
        const std::vector<double> margins = RandomMargins(generator, blendFrames);
        PathFilterStage stage = StageWith(ToQVector(margins));
        CalculateWeights(stage, ignoreStart, blendFrames);
        const QString difference =
            WeightDifference(stage.Weight, ModelWeights(margins, ignoreStart, blendFrames));
        QVERIFY2(difference.isEmpty(),
                 qPrintable(QStringLiteral("seed %1: ").arg(seed) + difference));
        const bool startsBad = stage.Weight.first() == 0;
        mixed += startsBad && stage.Weight.contains(1) ? 1 : 0;
    }
    QVERIFY2(mixed > 300, "too few of the random videos switch to the strong filter");
}

void PathWeightsTest::HugeNumbers()
{
    // 3 R does not fit into 32 bits: no section is that long.
    PathFilterStage stage = StageWith(Margins(QStringLiteral("b10 g20 b10 g10")));
    CalculateWeights(stage, std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max());
    QCOMPARE(stage.Weight, QVector<std::int32_t>(50, 0));

    stage = StageWith(Margins(QStringLiteral("g5 b4 g9")));
    CalculateWeights(stage, -1, std::numeric_limits<int>::max());
    QCOMPARE(Shown(stage.Weight), Shown(Weights(QStringLiteral("5 4 3 2 1 0*13"))));
}

void PathWeightsTest::BlendTakesTheSharesOfBoth()
{
    PathFilterStage base;
    base.Enabled = true;
    base.Path = {20.0, 20.0, 20.0, 0.1};
    base.Weight = {9, 9, 9, 9};
    PathFilterStage super;
    super.Enabled = true;
    super.Path = {100.0, 100.0, 100.0, 0.7};
    super.Weight = {0, 1, 4, 3};
    PathFilterStage result;
    result.Path = {0.0, 0.0, 0.0, 0.0};
    BlendPaths(base, super, 4, result);
    QCOMPARE(Difference(result.Path, {20.0, 40.0, 100.0, (3 * 0.7 + 1 * 0.1) * 0.25}), QString());
    QCOMPARE(base.Weight, QVector<std::int32_t>({4, 3, 0, 1}));
    QCOMPARE(super.Weight, QVector<std::int32_t>({0, 1, 4, 3}));

    // Multiplied by the inverse, not divided: 1.0 / 49 * 49 is not 1.0.
    super.Weight = {0, 0, 49, 49};
    BlendPaths(base, super, 49, result);
    const double inverse = 1.0 / 49;
    QVERIFY(49.0 * inverse != 1.0);
    QCOMPARE(Difference(result.Path, {(49 * 20.0) * inverse, (49 * 20.0) * inverse,
                                      (49 * 100.0) * inverse, (49 * 0.7 + 0 * 0.1) * inverse}),
             QString());
}

void PathWeightsTest::BlendWithoutTheStrongFilter()
{
    PathFilterStage base;
    base.Enabled = true;
    base.Path = {20.0, 30.0, 0.1};
    base.Weight = {9, 8, 7};
    PathFilterStage super;  // disabled, with lists of an older, longer calculation
    super.Path = {100.0, 100.0, 100.0, 100.0};
    super.Weight = {4, 4, 4, 4};
    PathFilterStage result;
    result.Path = {0.0, 0.0, 0.0};
    BlendPaths(base, super, 49, result);
    QCOMPARE(Difference(result.Path, {20.0, 30.0, 0.1}), QString());
    QCOMPARE(base.Weight, QVector<std::int32_t>({9, 8, 7}));
}

void PathWeightsTest::BlendWithoutARampIsNotANumber()
{
    // Only a strength of 0 has no ramp: its inverse is infinite and all shares are 0.
    PathFilterStage base;
    base.Enabled = true;
    base.Path = {20.0, -30.0};
    base.Weight = {0, 0};
    PathFilterStage super = base;
    PathFilterStage result;
    result.Path = {0.0, 0.0};
    BlendPaths(base, super, 0, result);
    QVERIFY(std::isnan(result.Path.at(0)) && std::isnan(result.Path.at(1)));
}

QTEST_APPLESS_MAIN(PathWeightsTest)
#include "pathweights_test.moc"
