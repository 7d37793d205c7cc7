// SPDX-License-Identifier: MIT
#include "app/windowtest.h"
#include "batch/exportsettings.h"
#include "project/project.h"
#include "stabilizer/axisfiltersettings.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QComboBox>
#include <QDir>
#include <QTest>

#include <algorithm>
#include <memory>

namespace
{
const TestHome Home;
}  // namespace

/**
 * The way of the settings between form, project and camera paths. The project is the window's own;
 * the paths point at its records, so that is where a test looks and writes.
 */
class SettingsTest : public WindowTest
{
    Q_OBJECT

private slots:
    void StartValuesOfTheStartProject();
    void VerticalFollowsHorizontalWhenToldSo();
    void LockOfAProjectFileHoldsItsAxisStill();
    void PathsAreBoundFromTheStart();
    void CommitTakesTheFields();
    void PercentBecomesAFactor_data();
    void PercentBecomesAFactor();
    void OffsetsOfThePaths();
    void AngleOffsetIsTruncated_data();
    void AngleOffsetIsTruncated();
    void CommitMakesRadians();
    void RadiansFollowHorizontalWhenToldSo();
    void RotationLeavesOutLocalCorrections();
    void CommitDerivesTheFilters();
    void ProjectValuesAreClamped_data();
    void ProjectValuesAreClamped();
    void WarpTypeIsFixed();

private:
    [[nodiscard]] static Project DefaultProject();
    void OpenWindowOn(const Project& project);
    [[nodiscard]] static ExportSettings& Exported() { return *PathHorizontal.Export; }
};

/** What a project file without any key gives. */
Project SettingsTest::DefaultProject()
{
    Project project;
    QString noFile;
    project.Load(noFile, false);
    return project;
}

/** Starts a window on a file of @p project. */
void SettingsTest::OpenWindowOn(const Project& project)
{
    const QString file = QDir::homePath() + QStringLiteral("/told.mvprj");
    project.Save(file);
    Window.reset();
    Window = std::make_unique<TestWindow>(file);
}

void SettingsTest::StartValuesOfTheStartProject()
{
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("Source.mp4"));
    const QString place = QDir::homePath() + QStringLiteral("/Molvane/Start/");
    QCOMPARE(Window->Text("lineEditExportVideo"), place + QStringLiteral("Export.mp4"));
    QCOMPARE(Window->Text("lineEditTrackingPathFile"), place + QStringLiteral("Tracking.dat"));
    QCOMPARE(Window->Text("lineEditStabilizeFile"), place + QStringLiteral("Stabilize.dat"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 800.0);
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), 110.0);
    QVERIFY(Window->IsChecked("checkBoxEnableZoom"));
    QVERIFY(!Window->IsChecked("checkBoxRescale"));
    Window->Commit();  // only a commit brings a created project to the filters
    for (const CameraPath* path :
         {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        const bool isRotation = path == &PathRotation || path == &PathRotationDegrees;
        QCOMPARE(path->Settings->AvgPathImages, isRotation ? 5 : 12);
        QCOMPARE(path->Settings->AvgPathOrder, 3);
    }
    QVERIFY(PathVertical.Settings != PathHorizontal.Settings);
    QVERIFY(PathRotationDegrees.Settings != PathHorizontal.Settings);
}

void SettingsTest::VerticalFollowsHorizontalWhenToldSo()
{
    Project project = DefaultProject();
    project.UseFlowVSettings = false;
    project.UseFlowRotSettings = false;
    project.FlowV.AvgPathOrder = 1;
    project.FlowAngle.AvgPathOrder = 1;
    OpenWindowOn(project);
    QCOMPARE(PathVertical.Settings, PathHorizontal.Settings);
    QCOMPARE(PathRotationDegrees.Settings, PathHorizontal.Settings);
    QCOMPARE(PathVertical.Base.Order, std::uint64_t{3});  // not the 1 of its own record
    QCOMPARE(PathRotation.Settings->AvgPathOrder, 3);
}

void SettingsTest::LockOfAProjectFileHoldsItsAxisStill()
{
    Project project = DefaultProject();
    project.FlowH.Lock = true;
    OpenWindowOn(project);
    QVector<double> motion(100, 0.0);
    motion[50] = 8.0;
    PathHorizontal.Generate(motion, 1920.0, 25.0);
    PathVertical.Generate(motion, 1080.0, 25.0);
    const auto isFlat = [](const QVector<double>& path)
    { return std::all_of(path.begin(), path.end(), [&](double y) { return y == path.first(); }); };
    QVERIFY(isFlat(PathHorizontal.Result.Path));
    QVERIFY(!isFlat(PathVertical.Result.Path));
}

void SettingsTest::PathsAreBoundFromTheStart()
{
    QVERIFY(PathHorizontal.Export != nullptr);
    for (const CameraPath* path : {&PathVertical, &PathRotation, &PathRotationDegrees})
    {
        QCOMPARE(path->Export, PathHorizontal.Export);
        QCOMPARE(path->GlobalIgnoreSections, PathHorizontal.GlobalIgnoreSections);
        QCOMPARE(path->LocalIgnoreSections, &path->Settings->IgnoreSections);
    }
    // The rotation of the frames has a copy of its own.
    for (const CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotationDegrees})
    {
        QVERIFY(path->Settings != nullptr);
        QVERIFY(PathRotation.Settings != path->Settings);
    }
}

void SettingsTest::CommitTakesTheFields()
{
    Window->SetChecked("checkBoxEnableZoom", false);
    Window->SetChecked("checkBoxRescale", true);
    Window->SetNumber("spinBoxRescaleXAxis", 1280);
    Window->SetNumber("spinBoxRescaleYAxis", 720);
    Window->SetNumber("spinBoxExpOffsetH", -31);
    Window->SetNumber("spinBoxExpOffsetV", 42);
    Window->SetNumber("doubleSpinBoxExpRot", -12.5);
    Window->Commit();
    QVERIFY(!Exported().EnableCrop);
    QVERIFY(Exported().EnRescale);
    QCOMPARE(Exported().ExpResH, 1280);
    QCOMPARE(Exported().ExpResV, 720);
    QCOMPARE(Exported().ExpOffH, -31);
    QCOMPARE(Exported().ExpOffV, 42);
    QCOMPARE(Exported().ExpAngle, -12.5);
    Window->SetChecked("checkBoxEnableZoom", true);
    Window->SetChecked("checkBoxRescale", false);
    Window->Commit();
    QVERIFY(Exported().EnableCrop);
    QVERIFY(!Exported().EnRescale);
}

void SettingsTest::PercentBecomesAFactor_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<double>("factor");
    QTest::newRow("the least") << 1.0 << 0.01;
    QTest::newRow("no zoom") << 100.0 << 1.0;
    QTest::newRow("the usual") << 110.0 << 1.1;
    QTest::newRow("one that a product misses") << 100.5 << 1.005;
    QTest::newRow("a fraction") << 112.5 << 1.125;
    QTest::newRow("the most") << 10000.0 << 100.0;
}

void SettingsTest::PercentBecomesAFactor()
{
    QFETCH(double, percent);
    QFETCH(double, factor);
    Window->SetNumber("doubleSpinBoxZoom", percent);
    Window->Commit();
    QVERIFY(Exported().CropFactor == factor);  // a division gives the nearest number
    Window->ClickTab(SettingsTab);             // and back
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), percent);
}

void SettingsTest::OffsetsOfThePaths()
{
    Window->SetNumber("spinBoxExpOffsetH", 11);
    Window->SetNumber("spinBoxExpOffsetV", -22);
    Window->SetNumber("doubleSpinBoxExpRot", 33.0);
    Window->Commit();
    QCOMPARE(PathHorizontal.Offset, 11);
    QCOMPARE(PathVertical.Offset, -22);
    QCOMPARE(PathRotation.Offset, 0);
    QCOMPARE(PathRotationDegrees.Offset, 33);
}

void SettingsTest::AngleOffsetIsTruncated_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<int>("offset");
    QTest::newRow("-1.9 is -1") << -1.9 << -1;
    QTest::newRow("1.9 is 1") << 1.9 << 1;
    QTest::newRow("-0.9 is 0") << -0.9 << 0;
    QTest::newRow("0.9 is 0") << 0.9 << 0;
    QTest::newRow("2.0 is 2") << 2.0 << 2;
    QTest::newRow("-180.0 is -180") << -180.0 << -180;
    QTest::newRow("180.0 is 180") << 180.0 << 180;
}

void SettingsTest::AngleOffsetIsTruncated()
{
    QFETCH(double, angle);
    QFETCH(int, offset);
    Window->SetNumber("doubleSpinBoxExpRot", angle);
    Window->Commit();
    QCOMPARE(Exported().ExpAngle, angle);
    QCOMPARE(PathRotationDegrees.Offset, offset);
}

void SettingsTest::CommitMakesRadians()
{
    Project project = DefaultProject();
    project.UseFlowRotSettings = true;
    AxisFilterSettings& degrees = project.FlowAngle;
    degrees.Lock = true;
    degrees.UseModified = true;
    degrees.UseStartValue = true;
    degrees.UseEndValue = true;
    degrees.AvgPathImages = 7;
    degrees.AvgPathOrder = 4;
    degrees.IgnoreStartFramesMargin = 9;
    degrees.StartValue = 90.0;
    degrees.EndValue = 1.0;
    degrees.ManualPath.resize(1);
    degrees.ManualPath.front().Points = {{3, 45.0}};
    OpenWindowOn(project);
    *PathRotation.Settings = AxisFilterSettings();
    Window->Commit();
    const AxisFilterSettings& radians = *PathRotation.Settings;
    QVERIFY(radians.Lock && radians.UseModified && radians.UseStartValue && radians.UseEndValue);
    QCOMPARE(radians.AvgPathImages, 7);
    QCOMPARE(radians.AvgPathOrder, 4);
    QCOMPARE(radians.IgnoreStartFramesMargin, 9);
    QVERIFY(radians.StartValue == 1.5707963267948966);
    QVERIFY(radians.EndValue == 0.017453292519943295);
    QCOMPARE(radians.ManualPath.size(), std::size_t(1));
    QVERIFY(radians.ManualPath.front().Points.front().Value == 45.0);  // stays a number in degrees
    QVERIFY(PathRotationDegrees.Settings->StartValue == 90.0);
}

void SettingsTest::RadiansFollowHorizontalWhenToldSo()
{
    Project project = DefaultProject();
    project.UseFlowRotSettings = false;
    project.FlowH.StartValue = 90.0;
    project.FlowH.EndValue = 1.0;
    project.FlowAngle.StartValue = 30.0;
    project.FlowAngle.EndValue = 2.0;
    OpenWindowOn(project);
    *PathRotation.Settings = AxisFilterSettings();
    Window->Commit();
    QCOMPARE(PathRotationDegrees.Settings, PathHorizontal.Settings);
    QVERIFY(PathRotationDegrees.Settings->StartValue == 90.0);
    QVERIFY(PathRotation.Settings->StartValue == 1.5707963267948966);
    QVERIFY(PathRotation.Settings->EndValue == 0.017453292519943295);
}

void SettingsTest::RotationLeavesOutLocalCorrections()
{
    Project project = DefaultProject();
    project.UseFlowRotSettings = true;
    project.FlowAngle.EnableIgnoreSections = true;
    project.FlowAngle.EnableManualPath = true;
    project.FlowAngle.IgnoreSections.resize(2);
    OpenWindowOn(project);
    Window->Commit();
    QVERIFY(PathRotationDegrees.Settings->EnableIgnoreSections);
    QVERIFY(PathRotationDegrees.Settings->EnableManualPath);
    QCOMPARE(PathRotationDegrees.Settings->IgnoreSections.size(), std::size_t(2));
    QVERIFY(!PathRotation.Settings->EnableIgnoreSections);
    QVERIFY(!PathRotation.Settings->EnableManualPath);
    QVERIFY(PathRotation.Settings->IgnoreSections.empty());
}

void SettingsTest::CommitDerivesTheFilters()
{
    Project project = DefaultProject();
    project.UseFlowVSettings = true;
    project.UseFlowRotSettings = true;
    project.FlowH.AvgPathImages = 4;
    project.FlowV.AvgPathImages = 5;
    project.FlowAngle.AvgPathImages = 6;
    OpenWindowOn(project);
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Base.WindowLength = 1;  // until the commit
    }
    Window->Commit();
    // An averaging window is twice the strength and the frame itself.
    QCOMPARE(PathHorizontal.Base.WindowLength, std::uint64_t(9));
    QCOMPARE(PathVertical.Base.WindowLength, std::uint64_t(11));
    QCOMPARE(PathRotation.Base.WindowLength, std::uint64_t(13));
    QCOMPARE(PathRotationDegrees.Base.WindowLength, std::uint64_t(13));
}

void SettingsTest::ProjectValuesAreClamped_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("shown");
    QTest::newRow("3000 fits") << 3000 << 3000.0;
    QTest::newRow("20000 fits") << 20000 << 20000.0;
    QTest::newRow("30000 is too large") << 30000 << 20000.0;
    QTest::newRow("50 fits") << 50 << 50.0;
    QTest::newRow("49 is too small") << 49 << 50.0;
    QTest::newRow("-1 is too small") << -1 << 50.0;
}

void SettingsTest::ProjectValuesAreClamped()
{
    QFETCH(int, width);
    QFETCH(double, shown);
    Window->ClickTab(HorizontalTab);
    Exported().ExpResH = width;
    Window->ClickTab(SettingsTab);
    QCOMPARE(Window->Number("spinBoxRescaleXAxis"), shown);
    QCOMPARE(Exported().ExpResH, width);
    Window->Commit();
    QCOMPARE(double(Exported().ExpResH), shown);
}

void SettingsTest::WarpTypeIsFixed()
{
    auto* warpType = Window->Find<QComboBox>("comboBoxWarpType");
    QCOMPARE(warpType->currentText(), QStringLiteral("Position & Rotate"));
    QVERIFY(!warpType->isEnabled());
}

QTEST_MAIN(SettingsTest)
#include "settings_test.moc"
