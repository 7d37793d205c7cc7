// SPDX-License-Identifier: MIT
#include "project/project.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/int32ends.h"
#include "stabilizer/pathsettings.h"

#include <QtTest>

#include <cmath>
#include <cstddef>
#include <cstdint>

/** What the settings of an axis make of its filter stages. */
class PathConfigureTest : public QObject
{
    Q_OBJECT

private slots:
    void ConfigureTable_data();
    void ConfigureTable();
    void UnknownTypesKeepTheStages_data();
    void UnknownTypesKeepTheStages();
    void ConfigureBindsTheRecords();
    void SenselessStrengths_data();
    void SenselessStrengths();
    void RadianSettings();
    void ManualPathOfTheRotationShowsInItsGraphAlone();
};

void PathConfigureTest::ConfigureTable_data()
{
    QTest::addColumn<int>("typeBefore");  // with strength 3; 0 for a new object
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("strength");
    QTest::addColumn<std::uint64_t>("baseWindow");
    QTest::addColumn<std::uint64_t>("baseOrder");
    QTest::addColumn<std::uint64_t>("superWindow");
    QTest::addColumn<std::uint64_t>("superOrder");
    QTest::addColumn<bool>("superEnabled");
    QTest::addColumn<int>("blendFrames");
    const auto row = [](const char* name, int before, int type, int strength,
                        std::uint64_t baseWindow, unsigned baseOrder, std::uint64_t superWindow,
                        unsigned superOrder, bool enabled, int blendFrames)
    {
        QTest::newRow(name) << before << type << strength << baseWindow << std::uint64_t{baseOrder}
                            << superWindow << std::uint64_t{superOrder} << enabled << blendFrames;
    };
    row("type 1", 0, 1, 12, 25, 1, 13, 3, false, 216);
    row("type 2", 0, 2, 12, 25, 2, 13, 3, false, 216);
    row("type 3", 0, 3, 12, 25, 3, 13, 3, false, 216);
    row("type 4", 0, 4, 12, 25, 3, 37, 2, true, 96);
    row("type 5", 0, 5, 12, 25, 3, 85, 3, true, 216);
    row("type 1 after 4 keeps the strong filter's order", 4, 1, 50, 101, 1, 51, 2, false, 900);
    row("type 2 after 4 keeps the strong filter's order", 4, 2, 50, 101, 2, 51, 2, false, 900);
    row("type 3 after 4 keeps the strong filter's order", 4, 3, 50, 101, 3, 51, 2, false, 900);
    row("type 3 after 5", 5, 3, 50, 101, 3, 51, 3, false, 900);
    row("type 5 after 4", 4, 5, 50, 101, 3, 351, 3, true, 900);
    row("type 4 after 1", 1, 4, 50, 101, 3, 151, 2, true, 400);
    row("type 5 at the strongest", 0, 5, 500, 1001, 3, 3501, 3, true, 9000);
    row("type 5 from a file", 0, 5, 100000000, 200000001, 3, 700000001, 3, true, 1800000000);
}

void PathConfigureTest::ConfigureTable()
{
    QFETCH(int, typeBefore);
    QFETCH(int, type);
    QFETCH(int, strength);
    QFETCH(bool, superEnabled);
    Project project;
    CameraPath path(true);
    if (typeBefore != 0)
    {
        project.FlowH = Settings(typeBefore, 3);
        path.Configure(&project, &project.FlowH, 0);
    }
    project.FlowH = Settings(type, strength);
    path.Configure(&project, &project.FlowH, 0);
    QTEST(path.Base.WindowLength, "baseWindow");
    QTEST(path.Base.Order, "baseOrder");
    QVERIFY(path.Base.Enabled);
    QTEST(path.SuperSmooth.WindowLength, "superWindow");
    QTEST(path.SuperSmooth.Order, "superOrder");
    QCOMPARE(path.SuperSmooth.Enabled, superEnabled);
    QTEST(path.BlendFrames, "blendFrames");
    for (const PathFilterStage* stage : {&path.ThirdStage, &path.Result})
    {
        QCOMPARE(stage->WindowLength, std::uint64_t{20});
        QCOMPARE(stage->Order, std::uint64_t{3});
        QVERIFY(!stage->Enabled);
    }
}

void PathConfigureTest::UnknownTypesKeepTheStages_data()
{
    QTest::addColumn<std::int32_t>("type");
    for (const std::int32_t type : {0, 6, -1, 100, Lowest, Highest})
    {
        QTest::addRow("type %d", type) << type;
    }
}

void PathConfigureTest::UnknownTypesKeepTheStages()
{
    QFETCH(std::int32_t, type);
    Project project;
    CameraPath path(true);
    project.FlowH = Settings(type, 7);
    path.Configure(&project, &project.FlowH, 0);
    QVERIFY(!path.Base.Enabled);
    QVERIFY(!path.SuperSmooth.Enabled);
    QCOMPARE(path.Base.WindowLength, std::uint64_t{20});
    QCOMPARE(path.BlendFrames, 126);

    project.FlowH = Settings(4, 12);
    path.Configure(&project, &project.FlowH, 0);
    project.FlowV = Settings(type, 10);
    path.Configure(&project, &project.FlowV, 5);
    QCOMPARE(path.Base.WindowLength, std::uint64_t{25});
    QCOMPARE(path.Base.Order, std::uint64_t{3});
    QVERIFY(path.Base.Enabled);
    QCOMPARE(path.SuperSmooth.WindowLength, std::uint64_t{37});
    QCOMPARE(path.SuperSmooth.Order, std::uint64_t{2});
    QVERIFY(path.SuperSmooth.Enabled);
    QCOMPARE(path.BlendFrames, 180);
    QCOMPARE(path.Settings, &project.FlowV);
    QCOMPARE(path.Offset, 5);
}

void PathConfigureTest::ConfigureBindsTheRecords()
{
    Project project;
    project.EnGlobalIgnoreList = true;
    CameraPath path(false);
    path.Configure(&project, &project.FlowAngle, -3);
    QCOMPARE(path.Settings, &project.FlowAngle);
    QCOMPARE(path.Export, &project.ExportSettings);
    QVERIFY(path.UseGlobalIgnore);
    QCOMPARE(path.GlobalIgnoreSections, &project.GlobalIgnoreSections);
    QCOMPARE(path.LocalIgnoreSections, &project.FlowAngle.IgnoreSections);
    QCOMPARE(path.Offset, -3);
    QVERIFY(!path.IsPixelAxis);

    project.EnGlobalIgnoreList = false;
    path.Configure(&project, &project.FlowH, 4);
    QVERIFY(!path.UseGlobalIgnore);
    QCOMPARE(path.Settings, &project.FlowH);
    QCOMPARE(path.LocalIgnoreSections, &project.FlowH.IgnoreSections);
    QCOMPARE(path.Offset, 4);
}

void PathConfigureTest::SenselessStrengths_data()
{
    QTest::addColumn<std::int32_t>("strength");
    for (const std::int32_t strength : {0, -1, -2, -3, -500, -100000000, Lowest})
    {
        QTest::addRow("N %d", strength) << strength;
    }
}

void PathConfigureTest::SenselessStrengths()
{
    // Only a hand-written project file holds them. The lists must still have one entry per frame,
    // and the single filters know no ramp that could be divided by.
    QFETCH(std::int32_t, strength);
    for (int type = 1; type <= 5; ++type)
    {
        Project project;
        CameraPath path(true);
        project.FlowH = Settings(type, strength);
        path.Configure(&project, &project.FlowH, 0);
        path.Generate({1.0, 2.0, -1.0, 4.0, 5.0, -6.0, 7.0}, 1920.0, 25.0);
        QVERIFY(path.HasValidData());
        QCOMPARE(path.Result.Path.size(), 7);
        QCOMPARE(path.Result.Correction.size(), 7);
        QCOMPARE(path.Result.Margin.size(), 7);
        QCOMPARE(path.ShakinessPath.last(), 12.0);
        for (const double value : type <= 3 ? path.Result.Path : QVector<double>())
        {
            QVERIFY(std::isfinite(value));
        }
    }
}

void PathConfigureTest::ManualPathOfTheRotationShowsInItsGraphAlone()
{
    Project project;
    project.FlowAngle = Settings(3, 6);
    project.FlowAngle.EnableManualPath = true;
    project.FlowAngle.ManualPath = {{{{10, 5.0}, {20, 15.0}}, -1}};
    CopyAsRadians(project.FlowAngle, project.RadianSettings);
    CameraPath degrees(false);
    CameraPath radians(false);
    degrees.Configure(&project, &project.FlowAngle, 0);
    radians.Configure(&project, &project.RadianSettings, 0);
    const QVector<double> still(60, 0.0);
    degrees.Generate(still, 90.0, 25.0);
    radians.Generate(still, 0.5, 25.0);
    QCOMPARE(degrees.ModifiedPath.at(15), 10.0);  // half way from 5 to 15
    QVERIFY(degrees.Result.Path.at(15) > 1.0);
    QCOMPARE(radians.ModifiedPath, still);
    QCOMPARE(radians.Result.Path, still);
}

void PathConfigureTest::RadianSettings()
{
    AxisFilterSettings degrees = Settings(4, 33);
    degrees.Lock = true;
    degrees.UseModified = true;
    degrees.UseStartValue = true;
    degrees.UseEndValue = true;
    degrees.EnableIgnoreSections = true;
    degrees.EnableManualPath = true;
    degrees.IgnoreStartFramesMargin = 8;
    degrees.StartValue = 90.0;
    degrees.EndValue = -180.0;
    degrees.IgnoreSections = {{1, 2, 0.0}};
    degrees.ManualPath = {{{{4, 1.5}}, -1}};
    AxisFilterSettings radians;
    CopyAsRadians(degrees, radians);
    QVERIFY(radians.Lock && radians.UseModified && radians.UseStartValue && radians.UseEndValue);
    QCOMPARE(radians.AvgPathImages, 33);
    QCOMPARE(radians.AvgPathOrder, 4);
    QCOMPARE(radians.IgnoreStartFramesMargin, 8);
    QVERIFY(radians.StartValue == 1.5707963267948966);
    QVERIFY(radians.EndValue == -3.141592653589793);
    QCOMPARE(radians.ManualPath.size(), std::size_t{1});
    QCOMPARE(radians.ManualPath.at(0).Points.front().Value, 1.5);
    QVERIFY(!radians.EnableIgnoreSections);
    QVERIFY(!radians.EnableManualPath);
    QVERIFY(radians.IgnoreSections.empty());

    // What is not copied stays, what is copied is replaced.
    radians.EnableIgnoreSections = true;
    radians.EnableManualPath = true;
    radians.IgnoreSections = {{5, 6, 0.0}, {7, 8, 0.0}};
    CopyAsRadians(Settings(1, 2), radians);
    QVERIFY(radians.EnableIgnoreSections && radians.EnableManualPath);
    QCOMPARE(radians.IgnoreSections.size(), std::size_t{2});
    QVERIFY(!radians.Lock && !radians.UseModified);
    QVERIFY(!radians.UseStartValue && !radians.UseEndValue);
    QCOMPARE(radians.StartValue, 0.0);
    QVERIFY(radians.ManualPath.empty());
}

QTEST_APPLESS_MAIN(PathConfigureTest)
#include "pathconfigure_test.moc"
