// SPDX-License-Identifier: MIT
#include "app/windowtest.h"
#include "batch/exportsettings.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

/**
 * When a click on a tab takes the form into the project, and when it fills the form from it. The
 * paths point at the record of the window's own project, so that is where a test looks and writes.
 */
class SettingsTabsTest : public WindowTest
{
    Q_OBJECT

private slots:
    void LeavingTheTabStores();
    void ReturningLoads();
    void ReturningShowsTheSameTexts();
    void ClickOnTheCurrentTabStoresAndLoads();
    void OtherTabsDoNotStoreTheForm();
    void OnlyTheLeftButtonChangesTheTab();
    void ClickSignalWithoutAMouseCounts();
    void PlayerTabKeepsTheTabNoted();
    void EnteringAnotherTabDoesNotLoad();
    void CommitOnEveryTab_data();
    void CommitOnEveryTab();
    void OnlyAClickCounts();

private:
    [[nodiscard]] static ExportSettings& Exported() { return *PathHorizontal.Export; }
};

void SettingsTabsTest::LeavingTheTabStores()
{
    Window->SetNumber("spinBoxExpOffsetH", 5);
    QCOMPARE(Exported().ExpOffH, 0);
    Window->ClickTab(HorizontalTab);
    QCOMPARE(Exported().ExpOffH, 5);
    QCOMPARE(PathHorizontal.Offset, 0);  // the paths wait for a commit
}

void SettingsTabsTest::ReturningLoads()
{
    Window->ClickTab(HorizontalTab);
    Exported() = {true, true, 1.25, -7.5, 640, 480, 12, -13};
    Window->ClickTab(SettingsTab);
    QVERIFY(Window->IsChecked("checkBoxEnableZoom"));
    QVERIFY(Window->IsChecked("checkBoxRescale"));
    QCOMPARE(Window->Number("doubleSpinBoxZoom"), 110.0);  // of the graph tab, stored when left
    QCOMPARE(Window->Number("doubleSpinBoxExpRot"), -7.5);
    QCOMPARE(Window->Number("spinBoxRescaleXAxis"), 640.0);
    QCOMPARE(Window->Number("spinBoxRescaleYAxis"), 480.0);
    QCOMPARE(Window->Number("spinBoxExpOffsetH"), 12.0);
    QCOMPARE(Window->Number("spinBoxExpOffsetV"), -13.0);
}

void SettingsTabsTest::ReturningShowsTheSameTexts()
{
    Window->SetPaths(QStringLiteral("/a b/ümlaut/クリップ.mov"), QStringLiteral("/some where"));
    Window->SetNumber("spinBoxMaxTrackingPoints", 123);
    Window->ClickTab(HorizontalTab);
    Window->SetPaths(QString(), QString());
    Window->SetNumber("spinBoxMaxTrackingPoints", 20);
    Window->ClickTab(SettingsTab);
    QCOMPARE(Window->Text("lineEditSourceVideo"), QStringLiteral("/a b/ümlaut/クリップ.mov"));
    QCOMPARE(Window->Text("lineEditTrackingPathFile"), QStringLiteral("/some where/Tracking.dat"));
    QCOMPARE(Window->Text("lineEditStabilizeFile"), QStringLiteral("/some where/Stabilize.dat"));
    QCOMPARE(Window->Text("lineEditExportVideo"), QStringLiteral("/some where/Export.mp4"));
    QCOMPARE(Window->Number("spinBoxMaxTrackingPoints"), 123.0);
}

void SettingsTabsTest::ClickOnTheCurrentTabStoresAndLoads()
{
    auto* warpType = Window->Find<QComboBox>("comboBoxWarpType");
    warpType->setEnabled(true);
    warpType->setCurrentIndex(3);
    Window->SetNumber("spinBoxExpOffsetV", 8);
    Window->ClickTab(SettingsTab);
    QCOMPARE(Exported().ExpOffV, 8);
    QCOMPARE(Window->Number("spinBoxExpOffsetV"), 8.0);  // stored first, so loading changes nothing
    QCOMPARE(warpType->currentIndex(), 1);
    QVERIFY(!warpType->isEnabled());
}

void SettingsTabsTest::OnlyTheLeftButtonChangesTheTab()
{
    auto* bar = Window->Find<QTabWidget>("tabWidgetMain")->tabBar();
    QTest::mouseClick(bar, Qt::RightButton, Qt::NoModifier, bar->tabRect(HorizontalTab).center());
    QCOMPARE(bar->currentIndex(), SettingsTab);
    Window->SetNumber("spinBoxExpOffsetH", 5);
    Window->ClickTab(HorizontalTab);  // the settings are still the tab that is left
    QCOMPARE(Exported().ExpOffH, 5);
}

void SettingsTabsTest::ClickSignalWithoutAMouseCounts()
{
    auto* tabs = Window->Find<QTabWidget>("tabWidgetMain");
    Window->SetNumber("spinBoxExpOffsetV", 6);
    emit tabs->tabBarClicked(HorizontalTab);
    QCOMPARE(Exported().ExpOffV, 6);
}

void SettingsTabsTest::OtherTabsDoNotStoreTheForm()
{
    Window->ClickTab(HorizontalTab);
    Window->SetNumber("spinBoxExpOffsetH", 5);
    Window->ClickTab(VerticalTab);
    QCOMPARE(Exported().ExpOffH, 0);
    Window->ClickTab(SettingsTab);
    QCOMPARE(Window->Number("spinBoxExpOffsetH"), 0.0);
}

void SettingsTabsTest::PlayerTabKeepsTheTabNoted()
{
    Window->SetNumber("spinBoxExpOffsetH", 5);
    Window->ClickTab(PlayerTab);
    QCOMPARE(Exported().ExpOffH, 5);
    Window->SetNumber("spinBoxExpOffsetH", 6);
    Window->ClickTab(HorizontalTab);
    QCOMPARE(Exported().ExpOffH, 6);  // the form was stored once more
    Window->SetNumber("spinBoxExpOffsetH", 7);
    Window->ClickTab(VerticalTab);
    QCOMPARE(Exported().ExpOffH, 6);  // and now no more
}

void SettingsTabsTest::EnteringAnotherTabDoesNotLoad()
{
    for (int tab : {HorizontalTab, PlayerTab, VerticalTab, RotationTab})
    {
        Window->ClickTab(tab);
        Exported().ExpOffH = 77;
        QCOMPARE(Window->Number("spinBoxExpOffsetH"), 0.0);
        Exported().ExpOffH = 0;
    }
}

void SettingsTabsTest::CommitOnEveryTab_data()
{
    QTest::addColumn<int>("tab");
    for (int tab = SettingsTab; tab <= PlayerTab; ++tab)
    {
        QTest::addRow("tab %d", tab) << tab;
    }
}

void SettingsTabsTest::CommitOnEveryTab()
{
    QFETCH(int, tab);
    Window->ClickTab(tab);
    Window->SetNumber("spinBoxExpOffsetH", 5);
    (*Window)->on_pushButtonCalculateTrack_clicked();  // what the graph tabs' button does
    QCOMPARE(Exported().ExpOffH, 5);
    QCOMPARE(PathHorizontal.Offset, 5);
}

void SettingsTabsTest::OnlyAClickCounts()
{
    Window->SetNumber("spinBoxExpOffsetH", 5);
    Window->Find<QTabWidget>("tabWidgetMain")->setCurrentIndex(HorizontalTab);
    QCOMPARE(Exported().ExpOffH, 0);
}

QTEST_MAIN(SettingsTabsTest)
#include "settingstabs_test.moc"
