// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/bitcompare.h"
#include "stabilizer/filterstage.h"
#include "stabilizer/pathmodel.h"
#include "support/doublelists.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace
{
QVector<double> Filtered(PathFilterStage stage, const QVector<double>& input,
                         const AxisFilterSettings& settings = {})
{
    FilterPath(stage, input, settings);
    return stage.Path;
}

/** Numbers from -limit to limit. */
std::vector<double> RandomNumbers(unsigned seed, std::size_t count, double limit)
{
    std::mt19937 generator(seed);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < count; ++i)
    {
        numbers.push_back((static_cast<double>(generator()) / 2147483647.5 - 1.0) * limit);
    }
    return numbers;
}

/** The sum of the last @p w values, those before the start being 0.0, taken @p k times over. */
std::vector<double> DirectCascade(std::vector<double> values, std::size_t w, std::size_t k)
{
    for (std::size_t row = 0; row < k; ++row)
    {
        std::vector<double> sums;
        for (std::size_t i = 0; i < values.size(); ++i)
        {
            double sum = 0.0;
            for (std::size_t back = 0; back < w && back <= i; ++back)
            {
                sum += values[i - back];
            }
            sums.push_back(sum);
        }
        values = sums;
    }
    return values;
}

/** A step from 6 to 12, half way. */
QVector<double> StepInput()
{
    return {6, 6, 6, 6, 6, 6, 12, 12, 12, 12, 12, 12};
}
}  // namespace

class PathFilterTest : public QObject
{
    Q_OBJECT

private slots:
    void AgreesWithDirectSums_data();
    void AgreesWithDirectSums();
    void AgreesBitForBitWithTheModel_data();
    void AgreesBitForBitWithTheModel();
    void Mean_data();
    void Mean();
    void LockGivesTheMean();
    void MeanSumsInOrder();
    void SubtractsTheOldValueFirst();
    void LevelEnds();
    void LinesToStartAndEndValue();
    void NoPadding();
    void NoAverages();
    void FourAverages();
    void LargeTables();
    void DisabledStageIsLeftAlone();
    void EmptyInput();
};

void PathFilterTest::AgreesWithDirectSums_data()
{
    QTest::addColumn<int>("windowLength");
    QTest::addColumn<int>("order");
    QTest::addColumn<int>("delay");
    QTest::addColumn<int>("length");
    QTest::newRow("one average") << 7 << 1 << 3 << 40;
    QTest::newRow("two averages") << 25 << 2 << 24 << 300;
    QTest::newRow("three averages") << 25 << 3 << 36 << 300;
    QTest::newRow("even window") << 22 << 3 << 9 << 300;
    QTest::newRow("window one shorter than the input") << 99 << 3 << 30 << 100;
    QTest::newRow("shortest window") << 6 << 1 << 2 << 7;
    QTest::newRow("strong") << 351 << 3 << 150 << 1500;
    QTest::newRow("delay of half the input") << 7 << 3 << 20 << 40;
    QTest::newRow("delay beyond half the input") << 7 << 3 << 30 << 40;
}

void PathFilterTest::AgreesWithDirectSums()
{
    QFETCH(int, windowLength);
    QFETCH(int, order);
    QFETCH(int, delay);
    QFETCH(int, length);
    const auto w = static_cast<std::size_t>(windowLength);
    const auto k = static_cast<std::size_t>(order);
    const auto d = static_cast<std::size_t>(delay);
    const double power = std::pow(windowLength, order);
    std::vector<double> input = RandomNumbers(1, static_cast<std::size_t>(length), 1000.0);
    // Each of up to 1500 additions to a running sum of at most 351 * 1000 errs by up to half a unit
    // in the last place, 3e-11: 1.3e-10 after the division by 351, and as much in each further row.
    const double runningSumTolerance = 4e-10;
    for (const double tolerance : {runningSumTolerance, 0.0})
    {
        const std::vector<double> sums = DirectCascade(input, w, k);
        QVector<double> expected;
        for (std::size_t j = 0; j < input.size(); ++j)
        {
            expected.append((j + d < sums.size() ? sums[j + d] : sums.back()) / power);
        }
        std::fill(expected.begin(), expected.begin() + delay, expected.at(delay));
        const QVector<double> actual = Filtered(EnabledStage(w, k, d), ToQVector(input));
        QCOMPARE(Difference(actual, expected, tolerance), QString());
        // All sums of whole numbers are exact: they stay below 2^53.
        std::transform(input.begin(), input.end(), input.begin(),
                       [](double v) { return std::round(v); });
    }
}

void PathFilterTest::AgreesBitForBitWithTheModel_data()
{
    QTest::addColumn<unsigned>("windowLength");
    QTest::addColumn<unsigned>("order");
    QTest::addColumn<unsigned>("delay");
    QTest::addColumn<unsigned>("length");
    for (const unsigned strength : {1U, 2U, 3U, 5U, 12U, 50U, 500U})
    {
        for (const unsigned frames : {1U, 2U, 6U, 37U, 100U, 1000U, 4000U})
        {
            for (const unsigned order : {1U, 2U, 3U})
            {
                const unsigned delay = order * strength;
                QTest::addRow("type %u, N %u, %u frames", order, strength, frames)
                    << 2 * strength + 1 << order << delay << frames + 2 * delay;
            }
            QTest::addRow("strong filter of type 4, N %u, %u frames", strength, frames)
                << 3 * strength + 1 << 2U << 3 * strength << frames + 6 * strength;
            QTest::addRow("strong filter of type 5, N %u, %u frames", strength, frames)
                << 7 * strength + 1 << 3U << 3 * strength << frames + 6 * strength;
        }
    }
}

void PathFilterTest::AgreesBitForBitWithTheModel()
{
    QFETCH(unsigned, windowLength);
    QFETCH(unsigned, order);
    QFETCH(unsigned, delay);
    QFETCH(unsigned, length);
    for (unsigned variant = 0; variant < 8; ++variant)
    {
        AxisFilterSettings settings;
        settings.UseStartValue = (variant & 1U) != 0;
        settings.UseEndValue = (variant & 2U) != 0;
        settings.Lock = variant == 7;
        settings.StartValue = 12.345;
        settings.EndValue = -20000.1;
        ModelSettings model;
        model.UseStart = settings.UseStartValue;
        model.UseEnd = settings.UseEndValue;
        model.Lock = settings.Lock;
        model.Start = settings.StartValue;
        model.End = settings.EndValue;
        const std::vector<double> input = RandomNumbers(variant + length, length, 321.0);
        const std::vector<double> expected = ModelFilter(windowLength, order, delay, model, input);
        const PathFilterStage stage = EnabledStage(windowLength, order, delay);
        QCOMPARE(BitDifference(Filtered(stage, ToQVector(input), settings), expected), QString());
    }
}

void PathFilterTest::Mean_data()
{
    QTest::addColumn<unsigned>("windowLength");
    QTest::addColumn<unsigned>("delay");
    QTest::addColumn<bool>("isMean");
    QTest::newRow("window 0") << 0U << 2U << true;
    QTest::newRow("window 1") << 1U << 2U << true;
    QTest::newRow("window 5") << 5U << 2U << true;
    QTest::newRow("window 6") << 6U << 2U << false;
    QTest::newRow("window one shorter than the input") << 9U << 2U << false;
    QTest::newRow("window as long as the input") << 10U << 2U << true;
    QTest::newRow("window longer than the input") << 11U << 2U << true;
    QTest::newRow("delay one shorter than the input") << 6U << 9U << false;
    QTest::newRow("delay as long as the input") << 6U << 10U << true;
    QTest::newRow("longest window") << 4294967295U << 2U << true;
}

void PathFilterTest::Mean()
{
    QFETCH(unsigned, windowLength);
    QFETCH(unsigned, delay);
    QFETCH(bool, isMean);
    const QVector<double> input = {1.0, 2.0, 4.0, 8.0, 16.0, 32.0, 64.0, 128.0, 256.0, 512.0};
    AxisFilterSettings settings;  // the mean knows no start and end values
    settings.UseStartValue = true;
    settings.UseEndValue = true;
    const QVector<double> path = Filtered(EnabledStage(windowLength, 1, delay), input, settings);
    QCOMPARE(Difference(path, QVector<double>(10, 102.3)).isEmpty(), isMean);
    QCOMPARE(path.size(), 10);
}

void PathFilterTest::LockGivesTheMean()
{
    AxisFilterSettings settings;
    settings.Lock = true;
    const QVector<double> input = {1.0, 2.0, 4.0, 8.0, 16.0, 32.0, 64.0, 1.0};
    const PathFilterStage stage = EnabledStage(6, 2, 3);
    QCOMPARE(Difference(Filtered(stage, input, settings), QVector<double>(8, 16.0)), QString());
}

void PathFilterTest::MeanSumsInOrder()
{
    // 1e17 swallows the 1 that comes while it is in the sum.
    const QVector<double> input = {1e17, 1.0, -1e17, 6.0};
    QCOMPARE(Difference(Filtered(EnabledStage(4, 1, 1), input), QVector<double>(4, 1.5)),
             QString());
}

void PathFilterTest::SubtractsTheOldValueFirst()
{
    // 1e17 swallows the ones that come while it is in the window. As it leaves, the sum is 0 before
    // the 6 comes: a fresh sum would see the ones, adding first would swallow the 6.
    QVector<double> input(20, 0.0);
    input[0] = 1e17;
    input[3] = 1.0;
    input[4] = 1.0;
    input[5] = 1.0;
    input[6] = 6.0;
    const QVector<double> path = Filtered(EnabledStage(6, 1, 0), input);
    QCOMPARE(path.at(5), 1e17 / 6.0);
    QCOMPARE(path.at(6), 1.0);
    QCOMPARE(path.at(8), 1.0);
    QCOMPARE(path.at(11), 0.5);   // the ones leave a sum that never got them
    QCOMPARE(path.at(12), -0.5);  // the 6 leaves
}

void PathFilterTest::LevelEnds()
{
    // The moving average of these grows from 1 to 12 by 1 per entry; entry j takes that of j + 4.
    const QVector<double> path = Filtered(EnabledStage(6, 1, 4), StepInput());
    QCOMPARE(Difference(path, {9, 9, 9, 9, 9, 10, 11, 12, 12, 12, 12, 12}), QString());
}

void PathFilterTest::LinesToStartAndEndValue()
{
    AxisFilterSettings settings;
    settings.StartValue = 1.0;
    settings.EndValue = 4.0;
    const PathFilterStage stage = EnabledStage(6, 1, 4);
    settings.UseStartValue = true;
    const QVector<double> head = {1, 3, 5, 7, 9, 10, 11, 12, 12, 12, 12, 12};
    QCOMPARE(Difference(Filtered(stage, StepInput(), settings), head), QString());
    settings.UseEndValue = true;
    const QVector<double> both = {1, 3, 5, 7, 9, 10, 11, 12, 10, 8, 6, 4};
    QCOMPARE(Difference(Filtered(stage, StepInput(), settings), both), QString());
    settings.UseStartValue = false;
    const QVector<double> tail = {9, 9, 9, 9, 9, 10, 11, 12, 10, 8, 6, 4};
    QCOMPARE(Difference(Filtered(stage, StepInput(), settings), tail), QString());
}

void PathFilterTest::NoPadding()
{
    AxisFilterSettings settings;
    const QVector<double> expected = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    QCOMPARE(Difference(Filtered(EnabledStage(6, 1, 0), StepInput(), settings), expected),
             QString());
    settings.UseStartValue = true;
    settings.UseEndValue = true;
    settings.StartValue = 50.0;
    settings.EndValue = 50.0;
    QCOMPARE(Difference(Filtered(EnabledStage(6, 1, 0), StepInput(), settings), expected),
             QString());
}

void PathFilterTest::NoAverages()
{
    const QVector<double> path = Filtered(EnabledStage(6, 0, 2), {1, 2, 3, 4, 5, 6, 7, 8});
    QCOMPARE(Difference(path, {5, 5, 5, 6, 7, 8, 8, 8}), QString());
}

void PathFilterTest::FourAverages()
{
    // Four running sums of ones are 1, 5, 15 and so on, the numbers of the fifth diagonal of
    // Pascal's triangle, until the window of 6 is full; from 4 * 5 on the average is complete.
    const QVector<double> path = Filtered(EnabledStage(6, 4, 0), QVector<double>(30, 2.0));
    QCOMPARE(path.at(0), 2.0 / 1296.0);
    QCOMPARE(path.at(1), 10.0 / 1296.0);
    QCOMPARE(path.at(2), 30.0 / 1296.0);
    QVERIFY(path.at(19) < 2.0);
    QCOMPARE(path.mid(20), QVector<double>(10, 2.0));
}

void PathFilterTest::LargeTables()
{
    // 3 rows of 400001 numbers are 9.6 MB, more than a thread's stack holds.
    const std::vector<double> input = RandomNumbers(5, 400100, 10.0);
    const std::vector<double> expected = ModelFilter(400001, 3, 40, {}, input);
    const QVector<double> actual = Filtered(EnabledStage(400001, 3, 40), ToQVector(input));
    QCOMPARE(BitDifference(actual, expected), QString());
}

void PathFilterTest::DisabledStageIsLeftAlone()
{
    PathFilterStage stage = EnabledStage(6, 1, 2);
    stage.Enabled = false;
    stage.Path = {1.0, 2.0};
    FilterPath(stage, StepInput(), {});
    QCOMPARE(Difference(stage.Path, {1.0, 2.0}), QString());
}

void PathFilterTest::EmptyInput()
{
    AxisFilterSettings settings;
    for (const bool lock : {false, true})
    {
        settings.Lock = lock;
        PathFilterStage stage = EnabledStage(6, 1, 0);
        stage.Path = {1.0, 2.0};
        FilterPath(stage, {}, settings);
        QVERIFY(stage.Path.isEmpty());
    }
}

QTEST_APPLESS_MAIN(PathFilterTest)
#include "pathfilter_test.moc"
