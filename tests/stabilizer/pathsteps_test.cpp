// SPDX-License-Identifier: MIT
#include "stabilizer/pathfilter.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cstdint>

/** The small steps around the filter. */
class PathStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void Delay_data();
    void Delay();
    void RunningSum();
    void StripRemovesBothPads();
    void CorrectionIsMeasuredFromTheFrame();
};

void PathStepsTest::Delay_data()
{
    QTest::addColumn<std::uint64_t>("windowLength");
    QTest::addColumn<std::uint64_t>("order");
    QTest::addColumn<std::uint64_t>("expected");
    const auto row = [](const char* name, unsigned w, unsigned k, unsigned expected)
    { QTest::newRow(name) << std::uint64_t{w} << std::uint64_t{k} << std::uint64_t{expected}; };
    row("one average of 25 frames delays by 12", 25, 1, 12);
    row("two averages of 25 frames delay by 24", 25, 2, 24);
    row("three averages of 25 frames delay by 36", 25, 3, 36);
    row("N 2, type 3", 5, 3, 6);
    row("N 1, type 3", 3, 3, 3);
    row("N 500, type 1", 1001, 1, 500);
    row("N 500, type 2", 1001, 2, 1000);
    row("N 500, type 3", 1001, 3, 1500);
    row("after construction", 20, 3, 29);  // 54 / 2 + 2
    row("four averages", 25, 4, 44);       // 88 / 2
    row("no averages", 25, 0, 0);
    row("a single frame, once", 1, 1, 0);
    row("a single frame, twice", 1, 2, 0);
    row("a single frame, three times", 1, 3, 0);
    QTest::newRow("two thousand million")
        << std::uint64_t{4294967295} << std::uint64_t{3} << std::uint64_t{6442450941};
}

void PathStepsTest::Delay()
{
    QFETCH(std::uint64_t, windowLength);
    QFETCH(std::uint64_t, order);
    QTEST(CascadeDelay(windowLength, order), "expected");
}

void PathStepsTest::RunningSum()
{
    QVector<double> sums = {9.0, 9.0, 9.0, 9.0, 9.0};
    Integrate({1.0, -2.5, 0.0, 4.0}, sums);
    QCOMPARE(Difference(sums, {1.0, -1.5, -1.5, 2.5}), QString());
    Integrate({}, sums);
    QVERIFY(sums.isEmpty());
}

void PathStepsTest::StripRemovesBothPads()
{
    PathFilterStage stage;
    stage.Delay = 2;
    stage.Path = {1, 2, 3, 4, 5, 6, 7};
    StripPadding(stage);
    QCOMPARE(Difference(stage.Path, {3, 4, 5}), QString());
    stage.Delay = 0;
    StripPadding(stage);
    QCOMPARE(Difference(stage.Path, {3, 4, 5}), QString());
    stage.Path = {1, 2, 3, 4};
    stage.Delay = 2;
    StripPadding(stage);
    QVERIFY(stage.Path.isEmpty());
}

void PathStepsTest::CorrectionIsMeasuredFromTheFrame()
{
    PathFilterStage stage;
    stage.Path = {10.0, 12.0, 1.0, 5.0};
    stage.Weight = {7, 8};
    stage.Margin = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0};
    // In the third entry the 1 is swallowed, as the path is subtracted from first.
    CalculateCorrection(stage, {4.0, 15.0, 1e17, 5.0}, {4.0, 11.0, 1e17, 0.0});
    QCOMPARE(Difference(stage.Correction, {10.0, 8.0, 0.0, 0.0}), QString());
    QCOMPARE(stage.Margin.size(), 4);
    QCOMPARE(stage.Weight, QVector<std::int32_t>({7, 8, 0, 0}));
}

QTEST_APPLESS_MAIN(PathStepsTest)
#include "pathsteps_test.moc"
