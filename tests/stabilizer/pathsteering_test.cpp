// SPDX-License-Identifier: MIT
#include "stabilizer/axisfixture.h"
#include "stabilizer/bitcompare.h"
#include "stabilizer/pathcases.h"
#include "support/doublelists.h"

#include <QtTest>

#include <algorithm>
#include <initializer_list>
#include <random>
#include <vector>

namespace
{
QVector<double> Scaled(const QVector<double>& values, double factor)
{
    QVector<double> scaled;
    for (const double value : values)
    {
        scaled.append(value * factor);
    }
    return scaled;
}

QVector<double> Shaken(unsigned seed, int frames)
{
    std::mt19937 generator(seed);
    return ToQVector(RandomMotion(generator, frames, 1920.0));
}

ManualPathSection Section(std::initializer_list<ManualPathPoint> points)
{
    return {points, -1};
}

/** A row for each type of filter up to @p last. */
void AddFilterTypes(int last)
{
    QTest::addColumn<int>("type");
    for (int type = 1; type <= last; ++type)
    {
        QTest::addRow("type %d", type) << type;
    }
}
}  // namespace

/**
 * Ignore sections and manual path inside the calculation, what one object keeps between two
 * calculations, and what holds exactly for any motion.
 */
class PathSteeringTest : public QObject
{
    Q_OBJECT

private slots:
    void IgnoredFramesStandStill();
    void IgnoreListsHaveTheirSwitches();
    void FortySectionsClearFourFrames();
    void OverlapEqualsUnion();
    void ManualPathIsALine();
    void ManualPathIsSwitchedOff();
    void ManualValuesAreAbsolute();
    void WholeManualPathFillsBothPads_data();
    void WholeManualPathFillsBothPads();
    void StartValueWinsOverTheManualPath();
    void AnotherLengthResizesAll();
    void DisabledStageKeepsItsLists();
    void WithoutAnyFilterTheResultIsTheModifiedPath();
    void NoFrames();
    void NegatedMotion_data();
    void NegatedMotion();
    void DoubledMotion_data();
    void DoubledMotion();
};

void PathSteeringTest::IgnoredFramesStandStill()
{
    AxisFixture axis(3, 12);
    axis.Settings.EnableIgnoreSections = true;
    axis.Settings.IgnoreSections = {{100, 200, 0.0}};
    axis.Run(QVector<double>(300, 1.0));
    QCOMPARE(axis.Path.UsedShakiness.at(99), 1.0);
    QCOMPARE(axis.Path.UsedShakiness.mid(100, 100), QVector<double>(100, 0.0));
    QCOMPARE(axis.Path.UsedShakiness.at(200), 1.0);
    QCOMPARE(axis.Path.ShakinessPath.at(99), 100.0);
    QCOMPARE(axis.Path.ShakinessPath.at(199), 100.0);
    QCOMPARE(axis.Path.ShakinessPath.at(200), 101.0);
    QCOMPARE(axis.Path.ModifiedPath.at(299), 200.0);
    // Inside the section the window sees level positions alone: the frames stay where they are.
    QCOMPARE(axis.Path.Result.Correction.at(150), 0.0);
}

void PathSteeringTest::IgnoreListsHaveTheirSwitches()
{
    AxisFixture axis(1, 3);
    axis.Settings.IgnoreSections = {{0, 2, 0.0}};
    axis.Project.GlobalIgnoreSections = {{4, 6, 0.0}};
    const QVector<double> motion(8, 1.0);
    axis.Run(motion);
    QCOMPARE(Difference(axis.Path.UsedShakiness, motion), QString());
    axis.Settings.EnableIgnoreSections = true;
    axis.Run(motion);
    QCOMPARE(Difference(axis.Path.UsedShakiness, {0, 0, 1, 1, 1, 1, 1, 1}), QString());
    axis.Project.EnGlobalIgnoreList = true;
    axis.Run(motion);
    QCOMPARE(Difference(axis.Path.UsedShakiness, {0, 0, 1, 1, 0, 0, 1, 1}), QString());
    axis.Settings.EnableIgnoreSections = false;
    axis.Run(motion);
    QCOMPARE(Difference(axis.Path.UsedShakiness, {1, 1, 1, 1, 0, 0, 1, 1}), QString());
}

void PathSteeringTest::FortySectionsClearFourFrames()
{
    AxisFixture axis(3, 12);
    axis.Settings.EnableIgnoreSections = true;
    axis.Settings.IgnoreSections.assign(40, {20, 20, 0.0});
    axis.Settings.IgnoreSections.back() = {0, 0, 0.0};
    QVector<double> expected(30, 1.0);
    std::fill(expected.begin(), expected.begin() + 4, 0.0);
    axis.Run(QVector<double>(30, 1.0));
    QCOMPARE(Difference(axis.Path.UsedShakiness, expected), QString());
}

void PathSteeringTest::OverlapEqualsUnion()
{
    const QVector<double> motion = Shaken(1, 200);
    AxisFixture both(5, 3);
    both.Project.EnGlobalIgnoreList = true;
    both.Project.GlobalIgnoreSections = {{30, 60, 0.0}};
    both.Settings.EnableIgnoreSections = true;
    both.Settings.IgnoreSections = {{50, 90, 0.0}};
    AxisFixture one(5, 3);
    one.Settings.EnableIgnoreSections = true;
    one.Settings.IgnoreSections = {{30, 90, 0.0}};
    QCOMPARE(Difference(both.Run(motion).Correction, one.Run(motion).Correction), QString());
    QCOMPARE(both.Path.UsedShakiness.at(75), 0.0);
}

void PathSteeringTest::ManualPathIsALine()
{
    AxisFixture axis(3, 3);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {Section({{10, 5.0}, {20, 15.0}})};
    axis.Run(QVector<double>(30, 2.0));
    QCOMPARE(axis.Path.ModifiedPath.at(9), 20.0);
    QCOMPARE(axis.Path.ModifiedPath.at(10), 5.0);
    QCOMPARE(axis.Path.ModifiedPath.at(15), 10.0);
    QCOMPARE(axis.Path.ModifiedPath.at(20), 15.0);
    QCOMPARE(axis.Path.ModifiedPath.at(21), 44.0);
    QCOMPARE(axis.Path.ShakinessPath.at(15), 32.0);
    QCOMPARE(axis.Path.UsedShakiness.at(15), 2.0);
}

void PathSteeringTest::ManualPathIsSwitchedOff()
{
    AxisFixture axis(3, 3);
    axis.Settings.ManualPath = {Section({{10, 5.0}, {20, 15.0}})};
    axis.Run(Shaken(2, 60));
    QCOMPARE(Difference(axis.Path.ModifiedPath, axis.Path.ShakinessPath), QString());
}

void PathSteeringTest::ManualValuesAreAbsolute()
{
    // The ignored frames take 10 from all later positions, but not from the point at frame 20.
    AxisFixture axis(3, 3);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {Section({{20, 5.0}})};
    axis.Settings.EnableIgnoreSections = true;
    axis.Settings.IgnoreSections = {{0, 5, 0.0}};
    axis.Run(QVector<double>(30, 2.0));
    QCOMPARE(axis.Path.ModifiedPath.at(19), 30.0);
    QCOMPARE(axis.Path.ModifiedPath.at(20), 5.0);
    QCOMPARE(axis.Path.ModifiedPath.at(21), 34.0);
}

void PathSteeringTest::WholeManualPathFillsBothPads_data()
{
    AddFilterTypes(3);
}

void PathSteeringTest::WholeManualPathFillsBothPads()
{
    QFETCH(int, type);
    AxisFixture axis(type, 4);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {Section({{0, 5.0}, {64, 5.0}})};
    const QVector<double> level(65, 5.0);
    QCOMPARE(Difference(axis.Run(Shaken(3, 65)).Path, level), QString());
    QCOMPARE(Difference(axis.Path.ModifiedPath, level), QString());
}

void PathSteeringTest::StartValueWinsOverTheManualPath()
{
    AxisFixture axis(1, 3);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {Section({{0, 5.0}, {64, 5.0}})};
    axis.Settings.UseStartValue = true;
    axis.Settings.StartValue = 500.0;
    const QVector<double> head = axis.Run(Shaken(3, 65)).Path;
    QCOMPARE(head.at(0), 1520.0 / 7.0);  // 3 of the pad, 4 frames
    QCOMPARE(head.at(64), 5.0);
    axis.Settings.UseStartValue = false;
    axis.Settings.UseEndValue = true;
    axis.Settings.EndValue = -500.0;
    const QVector<double> tail = axis.Run(Shaken(3, 65)).Path;
    QCOMPARE(tail.at(0), 5.0);
    QCOMPARE(tail.at(64), -1480.0 / 7.0);
}

void PathSteeringTest::AnotherLengthResizesAll()
{
    AxisFixture axis(5, 3);
    for (const int frames : {40, 25, 60, 0, 7})
    {
        axis.Run(Shaken(4, frames));
        const CameraPath& path = axis.Path;
        for (const QVector<double>* list : {&path.DetectedShakiness, &path.ShakinessPath,
                                            &path.UsedShakiness, &path.ModifiedPath})
        {
            QCOMPARE(list->size(), frames);
        }
        for (const PathFilterStage* stage : {&path.Base, &path.SuperSmooth, &path.Result})
        {
            QCOMPARE(stage->Path.size(), frames);
            QCOMPARE(stage->Correction.size(), frames);
            QCOMPARE(stage->Margin.size(), frames);
            QCOMPARE(stage->Weight.size(), frames);
        }
        QCOMPARE(path.HasValidData(), frames >= 5);
        AxisFixture fresh(5, 3);
        QCOMPARE(Difference(path.Result.Path, fresh.Run(Shaken(4, frames)).Path), QString());
    }
}

void PathSteeringTest::DisabledStageKeepsItsLists()
{
    AxisFixture axis(5, 3);
    axis.Run(Shaken(5, 20));
    const QVector<double> superSmooth = axis.Path.SuperSmooth.Path;
    axis.Settings.AvgPathOrder = 3;
    axis.Run(Shaken(6, 30));
    QCOMPARE(Difference(axis.Path.SuperSmooth.Path, superSmooth), QString());
    QCOMPARE(axis.Path.SuperSmooth.Weight.size(), 20);
    QCOMPARE(axis.Path.Base.Path.size(), 30);
    QVERIFY(axis.Path.HasValidData());
    QVERIFY(axis.Path.ThirdStage.Path.isEmpty());
}

void PathSteeringTest::WithoutAnyFilterTheResultIsTheModifiedPath()
{
    AxisFixture axis(0, 3);
    axis.Settings.EnableManualPath = true;
    axis.Settings.ManualPath = {Section({{3, 99.0}})};
    const PathFilterStage& result = axis.Run(QVector<double>(6, 2.0));
    QCOMPARE(Difference(result.Path, {2.0, 4.0, 6.0, 99.0, 10.0, 12.0}), QString());
    QCOMPARE(Difference(result.Correction, {2.0, 2.0, 2.0, 93.0, 2.0, 2.0}), QString());
    QVERIFY(axis.Path.Base.Path.isEmpty());
    QVERIFY(axis.Path.HasValidData());
}

void PathSteeringTest::NoFrames()
{
    for (int type = 0; type <= 5; ++type)
    {
        AxisFixture axis(type, 3);
        axis.Settings.UseStartValue = true;
        axis.Settings.UseEndValue = true;
        axis.Settings.EnableManualPath = true;
        axis.Settings.ManualPath = {Section({{0, 99.0}, {4, 5.0}}), Section({{-1, 2.0}})};
        axis.Settings.EnableIgnoreSections = true;
        axis.Settings.IgnoreSections = {{0, 40, 0.0}};
        QVERIFY(axis.Run({}).Path.isEmpty());
        QVERIFY(axis.Path.Result.Margin.isEmpty());
        QVERIFY(!axis.Path.HasValidData());
    }
}

void PathSteeringTest::NegatedMotion_data()
{
    AddFilterTypes(5);
}

void PathSteeringTest::NegatedMotion()
{
    QFETCH(int, type);
    for (unsigned seed = 0; seed < 10; ++seed)
    {
        const QVector<double> motion = Shaken(seed, 1500);
        AxisFixture plain(type, 3);
        plain.Run(motion);
        AxisFixture negated(type, 3);
        negated.Run(Scaled(motion, -1.0));
        QCOMPARE(Difference(negated.Path.Result.Path, Scaled(plain.Path.Result.Path, -1.0)),
                 QString());
        QCOMPARE(
            Difference(negated.Path.Result.Correction, Scaled(plain.Path.Result.Correction, -1.0)),
            QString());
        QCOMPARE(Difference(negated.Path.Result.Margin, plain.Path.Result.Margin), QString());
        QCOMPARE(negated.Path.SuperSmooth.Weight, plain.Path.SuperSmooth.Weight);
    }
}

void PathSteeringTest::DoubledMotion_data()
{
    AddFilterTypes(3);  // the others compare with the margin, which is not doubled
}

void PathSteeringTest::DoubledMotion()
{
    QFETCH(int, type);
    const QVector<double> motion = Shaken(8, 1500);
    AxisFixture plain(type, 12);
    plain.Run(motion);
    AxisFixture doubled(type, 12);
    doubled.Run(Scaled(motion, 2.0));
    QCOMPARE(Difference(doubled.Path.Result.Path, Scaled(plain.Path.Result.Path, 2.0)), QString());
    QCOMPARE(Difference(doubled.Path.Result.Correction, Scaled(plain.Path.Result.Correction, 2.0)),
             QString());
    QVERIFY(plain.Path.Result.Correction.at(700) != 0.0);
}

QTEST_APPLESS_MAIN(PathSteeringTest)
#include "pathsteering_test.moc"
