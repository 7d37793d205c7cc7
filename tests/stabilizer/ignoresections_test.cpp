// SPDX-License-Identifier: MIT
#include "stabilizer/int32ends.h"
#include "stabilizer/pathcorrections.h"
#include "support/doublelists.h"

#include <QtTest>

#include <cstdint>
#include <vector>

namespace
{
/** @p frames frames of motion 1.0, 2.0, 3.0 and so on between pads of @p delay zeros. */
QVector<double> PaddedMotion(int frames, int delay)
{
    QVector<double> motion(frames + 2 * delay, 0.0);
    for (int f = 0; f < frames; ++f)
    {
        motion[f + delay] = f + 1.0;
    }
    return motion;
}

/** The same with entries @p first to @p end, exclusive, at zero; indices of the padded list. */
QVector<double> Zeroed(QVector<double> motion, int first, int end)
{
    for (int i = first; i < end; ++i)
    {
        motion[i] = 0.0;
    }
    return motion;
}
}  // namespace

/** Ignore sections on the padded motion. Delay 4 and 10 frames, in indices 4 to 13, unless told. */
class IgnoreSectionsTest : public QObject
{
    Q_OBJECT

private slots:
    void Range_data();
    void Range();
    void NoSections();
    void WholeListWithoutPadding();
    void OverlapEqualsUnion();
    void OffsetPlaysNoPart();
    void FortySectionsClearFourFrames();
    void MoreSectionsThanEntries();
};

void IgnoreSectionsTest::Range_data()
{
    QTest::addColumn<std::int32_t>("start");
    QTest::addColumn<std::int32_t>("end");
    QTest::addColumn<int>("firstZero");  // index of the padded list
    QTest::addColumn<int>("endOfZeros");
    QTest::newRow("end is the first frame that counts again") << 2 << 5 << 6 << 9;
    QTest::newRow("one frame") << 7 << 8 << 11 << 12;
    QTest::newRow("end equal to start does nothing") << 5 << 5 << 0 << 0;
    QTest::newRow("end before start does nothing") << 8 << 3 << 0 << 0;
    QTest::newRow("raw end -1 lies before a later start") << 2 << -1 << 0 << 0;
    QTest::newRow("up to the last frame") << 6 << 10 << 10 << 14;
    QTest::newRow("end behind the video") << 6 << 12 << 10 << 14;
    QTest::newRow("end behind the padding stops at the array") << 6 << 1000 << 10 << 14;
    QTest::newRow("end at the highest number") << 6 << Highest << 10 << 14;
    QTest::newRow("start behind the array") << 100 << 200 << 0 << 0;
    QTest::newRow("start at the highest number") << Highest << Highest << 0 << 0;
    QTest::newRow("start in the head padding") << -3 << 2 << 4 << 6;
    QTest::newRow("start at index 0") << -4 << 2 << 4 << 6;
    // Numbers are compared without sign: index -1 is the largest number of all.
    QTest::newRow("start before the array is beyond every end") << -5 << 2 << 0 << 0;
    QTest::newRow("lowest start is beyond every end") << Lowest << 2 << 0 << 0;
    QTest::newRow("end before the array ignores all from start on") << 6 << -5 << 10 << 14;
    QTest::newRow("lowest end ignores all from start on") << 6 << Lowest << 10 << 14;
    QTest::newRow("both before the array") << -9 << -5 << 0 << 0;
    QTest::newRow("lowest to highest") << Lowest << Highest << 0 << 0;
    QTest::newRow("start 0 touches no frame beyond the section") << 0 << 3 << 4 << 7;
    QTest::newRow("start 0 with end 0 touches no frame") << 0 << 0 << 0 << 0;
}

void IgnoreSectionsTest::Range()
{
    QFETCH(std::int32_t, start);
    QFETCH(std::int32_t, end);
    QFETCH(int, firstZero);
    QFETCH(int, endOfZeros);
    QVector<double> motion = PaddedMotion(10, 4);
    ApplyIgnoreSections(motion, 4, {{start, end, 0.0}});
    QCOMPARE(Difference(motion, Zeroed(PaddedMotion(10, 4), firstZero, endOfZeros)), QString());
}

void IgnoreSectionsTest::NoSections()
{
    QVector<double> motion = PaddedMotion(10, 4);
    ApplyIgnoreSections(motion, 4, {});
    QCOMPARE(Difference(motion, PaddedMotion(10, 4)), QString());

    QVector<double> nothing;
    ApplyIgnoreSections(nothing, 0, {{0, 5, 0.0}, {3, Highest, 0.0}});
    QVERIFY(nothing.isEmpty());
}

void IgnoreSectionsTest::WholeListWithoutPadding()
{
    // Without padding the section that starts at frame 0 clears entry 0, whatever its end.
    QVector<double> motion = PaddedMotion(5, 0);
    ApplyIgnoreSections(motion, 0, {{0, 0, 0.0}});
    QCOMPARE(Difference(motion, {0.0, 2.0, 3.0, 4.0, 5.0}), QString());
}

void IgnoreSectionsTest::OverlapEqualsUnion()
{
    QVector<double> twice = PaddedMotion(10, 4);
    ApplyIgnoreSections(twice, 4, {{2, 6, 0.0}});
    ApplyIgnoreSections(twice, 4, {{4, 8, 0.0}});
    QVector<double> together = PaddedMotion(10, 4);
    ApplyIgnoreSections(together, 4, {{2, 6, 0.0}, {4, 8, 0.0}});
    const QVector<double> expected = Zeroed(PaddedMotion(10, 4), 6, 12);
    QCOMPARE(Difference(twice, expected), QString());
    QCOMPARE(Difference(together, expected), QString());
}

void IgnoreSectionsTest::OffsetPlaysNoPart()
{
    QVector<double> motion = PaddedMotion(10, 4);
    ApplyIgnoreSections(motion, 4, {{2, 5, 1e6}});
    QCOMPARE(Difference(motion, Zeroed(PaddedMotion(10, 4), 6, 9)), QString());
}

void IgnoreSectionsTest::FortySectionsClearFourFrames()
{
    // 40 entries from index 0: 36 of padding and 4 frames. All sections but one do nothing else.
    std::vector<IgnoreSection> sections(40, IgnoreSection{30, 30, 0.0});
    QVector<double> motion = PaddedMotion(50, 36);
    ApplyIgnoreSections(motion, 36, sections);
    QCOMPARE(Difference(motion, PaddedMotion(50, 36)), QString());

    sections.at(17) = {0, 1, 0.0};
    ApplyIgnoreSections(motion, 36, sections);
    QCOMPARE(Difference(motion, Zeroed(PaddedMotion(50, 36), 0, 40)), QString());

    // A section that starts at 0 without covering a frame counts as well.
    sections.at(17) = {0, -1, 0.0};
    motion = PaddedMotion(50, 36);
    ApplyIgnoreSections(motion, 36, sections);
    QCOMPARE(Difference(motion, Zeroed(PaddedMotion(50, 36), 0, 40)), QString());
}

void IgnoreSectionsTest::MoreSectionsThanEntries()
{
    const std::vector<IgnoreSection> sections(100, IgnoreSection{0, 0, 0.0});
    QVector<double> motion = PaddedMotion(3, 4);
    ApplyIgnoreSections(motion, 4, sections);
    QCOMPARE(Difference(motion, QVector<double>(11, 0.0)), QString());
}

QTEST_APPLESS_MAIN(IgnoreSectionsTest)
#include "ignoresections_test.moc"
