// SPDX-License-Identifier: MIT
#include "stabilizer/pathcorrections.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <vector>

namespace
{
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr int Delay = 3;
constexpr int Frames = 8;

/** A position of 100 + index: 3 entries of padding, 8 frames in indices 3 to 10, 3 of padding. */
QVector<double> StartPosition()
{
    QVector<double> position;
    for (int i = 0; i < Frames + 2 * Delay; ++i)
    {
        position.append(100.0 + i);
    }
    return position;
}

/** StartPosition with the entries from @p first on replaced. */
QVector<double> Expected(int first, const QVector<double>& values)
{
    QVector<double> position = StartPosition();
    for (int i = 0; i < values.size(); ++i)
    {
        position[first + i] = values.at(i);
    }
    return position;
}

ManualPathSection Section(std::initializer_list<ManualPathPoint> points)
{
    return {points, -1};
}

QVector<double> Applied(const std::vector<ManualPathSection>& sections)
{
    QVector<double> position = StartPosition();
    ApplyManualPath(position, Delay, sections);
    return position;
}
}  // namespace

class ManualPathTest : public QObject
{
    Q_OBJECT

private slots:
    void NoPoints();
    void LineLeavesItsNeighbours();
    void LineIsEvaluatedInOneOrder();
    void LonePoint_data();
    void LonePoint();
    void SameFrameTwice();
    void ChainOfPoints();
    void LaterSectionWins();
    void FirstFrameFillsTheHead();
    void LastFrameFillsTheTail();
    void WholeVideo();
    void PaddingTakesTheFinalValue();
    void NoPadding();
    void FallingOrder_data();
    void FallingOrder();
    void GoesOnWithThePointReadLast();
    void FallingPairSetsTheFlags();
    void LinesAcrossTheEnds();
    void PointBeforeThePaddingIsTheFarEnd();
    void FarFramesAndValues_data();
    void FarFramesAndValues();
};

void ManualPathTest::NoPoints()
{
    QCOMPARE(Difference(Applied({}), StartPosition()), QString());
    QCOMPARE(Difference(Applied({Section({}), Section({})}), StartPosition()), QString());
}

void ManualPathTest::LineLeavesItsNeighbours()
{
    QVector<double> position(30, -7.0);
    ApplyManualPath(position, 0, {Section({{10, 5.0}, {20, 15.0}})});
    QVector<double> expected(30, -7.0);
    for (int f = 10; f <= 20; ++f)
    {
        expected[f] = f - 5.0;
    }
    // 1.0 / 10 is rounded, so the points between may miss their whole number by the last bit.
    const double lastBit = 2e-15;
    QCOMPARE(Difference(position, expected, lastBit), QString());
    QCOMPARE(position.at(20), 15.0);
    QCOMPARE(position.at(9), -7.0);
    QCOMPARE(position.at(21), -7.0);
}

void ManualPathTest::LineIsEvaluatedInOneOrder()
{
    const double va = 0.1;
    const double vb = 123.456;
    const double third = 1.0 / 3;
    const QVector<double> line = {(0.0 * vb + 3.0 * va) * third, (1.0 * vb + 2.0 * va) * third,
                                  (2.0 * vb + 1.0 * va) * third, vb};
    const QVector<double> actual = Applied({Section({{2, va}, {5, vb}})});
    QCOMPARE(Difference(actual, Expected(5, line)), QString());
}

void ManualPathTest::LonePoint_data()
{
    QTest::addColumn<std::int32_t>("frame");
    QTest::addColumn<int>("index");
    QTest::newRow("one frame is set") << 4 << 7;
    QTest::newRow("frame 0 does not fill the padding") << 0 << 3;
    QTest::newRow("the last frame does not fill the padding") << 7 << 10;
    QTest::newRow("in the head padding") << -2 << 1;
    QTest::newRow("in the tail padding") << 10 << 13;
}

void ManualPathTest::LonePoint()
{
    QFETCH(std::int32_t, frame);
    QFETCH(int, index);
    QCOMPARE(Difference(Applied({Section({{frame, -2.5}})}), Expected(index, {-2.5})), QString());
}

void ManualPathTest::SameFrameTwice()
{
    QCOMPARE(Difference(Applied({Section({{4, 1.0}, {4, 2.0}})}), Expected(7, {2.0})), QString());

    // The pair at frame 0 sets the flag: the pair's value is overwritten by the lone last point.
    const QVector<double> actual = Applied({Section({{0, 1.0}, {0, 2.0}})});
    QCOMPARE(Difference(actual, Expected(0, {2.0, 2.0, 2.0, 2.0})), QString());
}

void ManualPathTest::ChainOfPoints()
{
    const QVector<double> actual = Applied({Section({{1, 0.0}, {3, 8.0}, {5, 4.0}})});
    QCOMPARE(Difference(actual, Expected(4, {0.0, 4.0, 8.0, 6.0, 4.0})), QString());
}

void ManualPathTest::LaterSectionWins()
{
    const ManualPathSection low = Section({{1, 1.0}, {5, 1.0}});
    const ManualPathSection high = Section({{3, 9.0}, {7, 9.0}});
    // The second ends at the last frame, so it fills the tail as well, whichever comes last.
    QCOMPARE(Difference(Applied({low, high}), Expected(4, {1, 1, 9, 9, 9, 9, 9, 9, 9, 9})),
             QString());
    QCOMPARE(Difference(Applied({high, low}), Expected(4, {1, 1, 1, 1, 1, 9, 9, 9, 9, 9})),
             QString());
}

void ManualPathTest::FirstFrameFillsTheHead()
{
    const QVector<double> actual = Applied({Section({{0, 6.0}, {2, 2.0}})});
    QCOMPARE(Difference(actual, Expected(0, {6.0, 6.0, 6.0, 6.0, 4.0, 2.0})), QString());
}

void ManualPathTest::LastFrameFillsTheTail()
{
    const QVector<double> actual = Applied({Section({{5, 2.0}, {7, 6.0}})});
    QCOMPARE(Difference(actual, Expected(8, {2.0, 4.0, 6.0, 6.0, 6.0, 6.0})), QString());

    // One frame short of the end fills nothing, neither does one behind it.
    QCOMPARE(Difference(Applied({Section({{4, 2.0}, {6, 6.0}})}), Expected(7, {2.0, 4.0, 6.0})),
             QString());
    QCOMPARE(Difference(Applied({Section({{6, 2.0}, {8, 6.0}})}), Expected(9, {2.0, 4.0, 6.0})),
             QString());
}

void ManualPathTest::WholeVideo()
{
    QCOMPARE(Difference(Applied({Section({{0, 5.0}, {7, 5.0}})}), QVector<double>(14, 5.0), 1e-15),
             QString());
    const QVector<double> halves = Applied({Section({{0, 5.0}, {4, 5.0}, {7, 5.0}})});
    QCOMPARE(halves.first(), 5.0);
    QCOMPARE(halves.last(), 5.0);
}

void ManualPathTest::PaddingTakesTheFinalValue()
{
    // The pads are filled after all sections: from what a later section put into the first and the
    // last frame.
    const ManualPathSection whole = Section({{0, 4.0}, {4, 4.0}, {7, 4.0}});
    const QVector<double> actual = Applied({whole, Section({{0, 1.0}}), Section({{7, 2.0}})});
    QCOMPARE(actual.mid(0, 4), QVector<double>(4, 1.0));
    QCOMPARE(actual.mid(10, 4), QVector<double>(4, 2.0));
    QCOMPARE(actual.at(4), 4.0);
}

void ManualPathTest::NoPadding()
{
    QVector<double> position = {1.0, 2.0, 3.0};
    ApplyManualPath(position, 0, {Section({{0, 8.0}, {2, 4.0}})});
    QCOMPARE(Difference(position, {8.0, 6.0, 4.0}), QString());

    QVector<double> nothing;
    ApplyManualPath(nothing, 0, {Section({{0, 8.0}, {2, 4.0}}), Section({{-1, 3.0}, {0, 2.0}})});
    QVERIFY(nothing.isEmpty());
}

void ManualPathTest::FallingOrder_data()
{
    QTest::addColumn<double>("value");  // of the second point, which stands at the lower frame
    QTest::addColumn<double>("exchanged");
    QTest::newRow("a fraction is lost") << 7.9 << 7.0;
    QTest::newRow("a whole number stays") << 12.0 << 12.0;
    QTest::newRow("minus a half becomes 0") << -0.5 << 0.0;
    QTest::newRow("-1 wraps to 2 to the power of 64, the nearest float")
        << -1.0 << 18446744073709551616.0;
    // 2^64 - 3000 rounds to a multiple of 2048.
    QTest::newRow("-3000.7 wraps") << -3000.7 << 18446744073709549568.0;
    QTest::newRow("beyond the signed range") << 9223372036854775808.0 << 9223372036854775808.0;
    QTest::newRow("between the signed and the unsigned range") << 1e19 << 1e19;
}

void ManualPathTest::FallingOrder()
{
    QFETCH(double, value);
    QFETCH(double, exchanged);
    // The line from frame 3 to frame 5 starts at the exchanged value and goes to 1.5; the last
    // point of the section then puts its own value, unchanged, back to frame 3.
    const double middle = (1.0 * 1.5 + 1.0 * exchanged) * (1.0 / 2);
    const QVector<double> actual = Applied({Section({{5, 1.5}, {3, value}})});
    QCOMPARE(Difference(actual, Expected(6, {value, middle})), QString());
}

void ManualPathTest::GoesOnWithThePointReadLast()
{
    // Pair (5, 10) (3, 7.9) is exchanged: frames 3 and 4 get 7 and 8.5. The next pair goes from
    // (3, 7.9) to (7, 1.9): frames 3 to 6 are drawn anew, then frame 7.
    const QVector<double> actual = Applied({Section({{5, 10.0}, {3, 7.9}, {7, 1.9}})});
    QVector<double> line;
    for (int t = 0; t < 4; ++t)
    {
        line.append((t * 1.9 + (4.0 - t) * 7.9) * 0.25);
    }
    line += QVector<double>(4, 1.9);  // the last frame and the tail
    QCOMPARE(Difference(actual, Expected(6, line)), QString());

    // Two falling pairs in a row: (6, 4) (4, 2.5) gives 2 and 3 at frames 4 and 5, then
    // (4, 2.5) (2, 1.5) gives 1 and 1.75 at frames 2 and 3, then the last point itself. Frame 4
    // keeps the 2, frame 6 its own position.
    const QVector<double> falling = Applied({Section({{6, 4.0}, {4, 2.5}, {2, 1.5}})});
    QCOMPARE(Difference(falling, Expected(5, {1.5, 1.75, 2.0, 3.0})), QString());
}

void ManualPathTest::FallingPairSetsTheFlags()
{
    const QVector<double> head = Applied({Section({{2, 8.0}, {0, 4.0}})});
    QCOMPARE(Difference(head, Expected(0, {4.0, 4.0, 4.0, 4.0, 6.0})), QString());

    // The entry at the last frame is left alone by the pair, so the tail takes what stood there.
    const QVector<double> tail = Applied({Section({{7, 8.0}, {5, 4.0}})});
    QCOMPARE(Difference(tail, Expected(8, {4.0, 6.0, 110.0, 110.0, 110.0, 110.0})), QString());
}

void ManualPathTest::LinesAcrossTheEnds()
{
    const QVector<double> head = Applied({Section({{-3, 0.0}, {5, 16.0}})});
    QCOMPARE(Difference(head, Expected(0, {0, 2, 4, 6, 8, 10, 12, 14, 16})), QString());

    const QVector<double> tail = Applied({Section({{4, 0.0}, {20, 16.0}})});
    QCOMPARE(Difference(tail, Expected(7, {0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0})), QString());
}

void ManualPathTest::PointBeforeThePaddingIsTheFarEnd()
{
    // Index -5 is the largest number but four, so that the pair is out of order: the line leaves
    // frame 4 with the whole part of its value and stays level on its way to the far end.
    const QVector<double> actual = Applied({Section({{-8, 0.0}, {4, 7.9}})});
    QCOMPARE(Difference(actual, Expected(7, {7.9, 7, 7, 7, 7, 7, 7})), QString());
}

void ManualPathTest::FarFramesAndValues_data()
{
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<std::int32_t>("first");
    QTest::addColumn<std::int32_t>("second");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("firstTouched");  // index of the padded list
    QTest::addColumn<int>("endOfTouched");
    QTest::newRow("lowest to highest frame") << Lowest << Highest << 3.0 << 0 << 0;
    QTest::newRow("highest to lowest frame") << Highest << Lowest << 3.0 << 0 << 0;
    QTest::newRow("both at the lowest frame") << Lowest << Lowest << 3.0 << 0 << 0;
    QTest::newRow("both at the highest frame") << Highest << Highest << 3.0 << 0 << 0;
    QTest::newRow("before the array") << -1000 << -500 << 3.0 << 0 << 0;
    QTest::newRow("behind the array") << 500 << 1000 << 3.0 << 0 << 0;
    QTest::newRow("up to the entry before the array") << -1000 << -4 << 3.0 << 0 << 0;
    QTest::newRow("from the far end to the first entry") << -1000 << -3 << 3.0 << 0 << 14;
    QTest::newRow("from the last entry of the array") << 10 << 1000 << 3.0 << 13 << 14;
    QTest::newRow("from the entry behind the array") << 11 << 1000 << 3.0 << 0 << 0;
    QTest::newRow("huge value") << 1 << 4 << 1e300 << 4 << 8;
    QTest::newRow("huge value in falling order") << 4 << 1 << 1e300 << 4 << 7;
    QTest::newRow("huge negative value in falling order") << 4 << 1 << -1e300 << 4 << 7;
    QTest::newRow("not a number in falling order") << 4 << 1 << std::nan("") << 4 << 7;
    QTest::newRow("infinite value in falling order") << 4 << 1 << infinity << 4 << 7;
}

void ManualPathTest::FarFramesAndValues()
{
    QFETCH(std::int32_t, first);
    QFETCH(std::int32_t, second);
    QFETCH(double, value);
    QFETCH(int, firstTouched);
    QFETCH(int, endOfTouched);
    const QVector<double> before = StartPosition();
    const QVector<double> actual = Applied({Section({{first, value}, {second, value}})});
    QCOMPARE(actual.size(), before.size());
    for (int i = 0; i < actual.size(); ++i)
    {
        const bool isTouched = i >= firstTouched && i < endOfTouched;
        QVERIFY2((actual.at(i) != before.at(i)) == isTouched, qPrintable(QString::number(i)));
    }
}

QTEST_APPLESS_MAIN(ManualPathTest)
#include "manualpath_test.moc"
