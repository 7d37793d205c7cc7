// SPDX-License-Identifier: MIT
#include "graphs/graphtabsettings.h"

#include "batch/exportsettings.h"
#include "batch/jobstate.h"
#include "dialogs/dialogguard.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QTabWidget>
#include <QTest>

namespace
{
const TestHome Home;

/** Fields of a graph tab. */
constexpr const char* NumberFields[] = {"spinBoxAvgFrames", "spinBoxAvgOrder",
                                        "doubleSpinBoxStartVal", "doubleSpinBoxEndVal"};
constexpr const char* BoxFields[] = {"checkBoxLock", "checkBoxStartVal", "checkBoxEndVal"};
}  // namespace

void GraphTabSettingsTest::init()
{
    for (const char* made : {"Molvane", "Trip"})
    {
        QDir(InHome(made)).removeRecursively();
    }
    Guard = std::make_unique<MessageGuard>();
    Window = std::make_unique<TestWindow>();
    Save();  // a project that was made a moment ago reaches the paths with the first commit
}

void GraphTabSettingsTest::cleanup()
{
    Window.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

AxisFilterSettings& GraphTabSettingsTest::RecordOfTab(int tab)
{
    return *PathOfTab(tab).Settings;
}

QString GraphTabSettingsTest::InHome(const char* name)
{
    return QDir::home().filePath(QString::fromLatin1(name));
}

Project GraphTabSettingsTest::ReadProject(const QString& path)
{
    Project project;
    QString file = path;
    static_cast<void>(project.Load(file, false));
    return project;
}

/** Starts a window on a file of @p project. */
void GraphTabSettingsTest::OpenWindowOn(const Project& project)
{
    const QString file = InHome("told.mvprj");
    project.Save(file);
    Window.reset();
    Window = std::make_unique<TestWindow>(file);
}

/** The window after a calculation; without frames the lists are not taken over. */
void GraphTabSettingsTest::ShowAPath() const
{
    const QVector<double> motion{1, -2, 3, -1, 2, -3, 1, 2, -1, 1, -2, 0};
    QCOMPARE(motion.size(), Frames);
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation, &PathRotationDegrees})
    {
        path->Generate(motion, 160.0, 25.0);
    }
    (*Window)->ProcessUpdate(JobPathCalculated);
    QVERIFY(!Tab(HorizontalTab).Curves().isEmpty());
}

/** By the menu: commits, and writes the project file without a question. */
void GraphTabSettingsTest::Save() const
{
    Window->Find<QAction>("actionsave_project")->trigger();
}

void GraphTabSettingsTest::AllTabsShowTheProject_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::AllTabsShowTheProject()
{
    QFETCH(int, tab);
    Project project = DefaultProject();
    project.ExportSettings.CropFactor = 1.25;
    project.GlobalIgnoreSections = {{4, 6, 0.0}};
    AxisFilterSettings* const records[] = {&project.FlowH, &project.FlowV, &project.FlowAngle};
    for (int i : GraphTabs)
    {
        AxisFilterSettings& record = *records[i - HorizontalTab];
        record.AvgPathImages = 20 + i;
        record.AvgPathOrder = 1 + i;
        record.StartValue = 30 + i;
        record.EndValue = -i;
        record.Lock = record.UseStartValue = record.UseEndValue = i == tab;
        record.EnableIgnoreSections = record.EnableManualPath = i != tab;
        record.IgnoreSections = {{i, 10 + i, 0.5}};
        record.ManualPath.resize(1);
        record.ManualPath.front().Points = {{i, 2.5}};
    }
    OpenWindowOn(project);  // on the settings tab: no graph tab has been entered yet
    QCOMPARE(Tab(tab).Number("spinBoxAvgFrames"), 20.0 + tab);
    QCOMPARE(Tab(tab).Number("spinBoxAvgOrder"), 1.0 + tab);
    QCOMPARE(Tab(tab).Number("doubleSpinBoxStartVal"), 30.0 + tab);
    QCOMPARE(Tab(tab).Number("doubleSpinBoxEndVal"), -double(tab));
    QCOMPARE(Tab(tab).Number("doubleSpinBoxCrop"), 125.0);
    for (const char* box : BoxFields)
    {
        QVERIFY2(Tab(tab).IsChecked(box), box);
        QVERIFY2(!Tab(tab % 3 + 1).IsChecked(box), box);
    }
    QVERIFY(!Tab(tab).IsChecked("checkBoxEnIgnSections"));
    QVERIFY(!Tab(tab).IsChecked("checkBoxEnManualCorrect"));
    QVERIFY(Tab(tab).IsChecked("checkBoxEnIgnSectionsGlobal"));
    QCOMPARE(Tab(tab).Rows(GlobalTree), QStringList("4,6,0"));
    QCOMPARE(Tab(tab).Rows(LocalTree), QStringList(QString("%1,%2,0.5").arg(tab).arg(10 + tab)));
    QCOMPARE(Tab(tab).Rows("treeWidgetManualPathList").mid(1),
             QStringList(QString("%1,2.5").arg(tab)));
}

void GraphTabSettingsTest::LeavingStores_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::LeavingStores()
{
    QFETCH(int, tab);
    Window->ClickTab(tab);
    const auto window = PathOfTab(tab).Base.WindowLength;
    const int numbers[] = {21, 2, -7, 90};
    for (int i = 0; i < 4; ++i)
    {
        Tab(tab).Type(NumberFields[i], numbers[i]);
    }
    for (const char* box : BoxFields)
    {
        Tab(tab).SetBox(box, true);
    }
    Tab(tab).Type("doubleSpinBoxCrop", 150);
    const AxisFilterSettings& record = RecordOfTab(tab);
    QVERIFY(record.AvgPathImages != 21 && !record.Lock);  // not while the tab is open
    Window->ClickTab(tab % 3 + 1);
    QCOMPARE(record.AvgPathImages, 21);
    QCOMPARE(record.AvgPathOrder, 2);
    QCOMPARE(record.StartValue, -7.0);
    QCOMPARE(record.EndValue, 90.0);
    QVERIFY(record.Lock && record.UseStartValue && record.UseEndValue);
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.5);
    QCOMPARE(PathOfTab(tab).Base.WindowLength, window);             // the paths wait for a commit
    QCOMPARE(Tab(tab % 3 + 1).Number("doubleSpinBoxCrop"), 150.0);  // loaded on entering
    for (int other : GraphTabs)
    {
        QCOMPARE(RecordOfTab(other).Lock, other == tab);
    }
}

void GraphTabSettingsTest::EnteringLoads_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::EnteringLoads()
{
    QFETCH(int, tab);
    Window->ClickTab(PlayerTab);
    RecordOfTab(tab).AvgPathImages = 77;
    PathHorizontal.Export->CropFactor = 2.0;
    Tab(tab).Slip("spinBoxAvgOrder", 5);
    QVERIFY(Tab(tab).Number("spinBoxAvgFrames") != 77.0);
    emit Window->Find<QTabWidget>("tabWidgetMain")->tabBarClicked(tab % 3 + 1);
    QVERIFY(Tab(tab).Number("spinBoxAvgFrames") != 77.0);  // another tab was entered
    Window->ClickTab(tab);
    QCOMPARE(Tab(tab).Number("spinBoxAvgFrames"), 77.0);
    QCOMPARE(Tab(tab).Number("spinBoxAvgOrder"), 3.0);
}

void GraphTabSettingsTest::ClickOnTheCurrentTab_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::ClickOnTheCurrentTab()
{
    QFETCH(int, tab);
    ShowAPath();
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 21);
    Tab(tab).AddIgnore(LocalTree, 3, -7);
    Tab(tab).ChooseMouse(3);
    Window->ClickTab(tab);
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 21);
    QCOMPARE(Tab(tab).Number("spinBoxAvgFrames"), 21.0);  // stored first
    QCOMPARE(RecordOfTab(tab).IgnoreSections.size(), std::size_t{1});
    QCOMPARE(RecordOfTab(tab).IgnoreSections.front().End, Frames);
    QCOMPARE(Tab(tab).Rows(LocalTree), QStringList("3,12,0"));
    QCOMPARE(Tab(tab).Find<QComboBox>("comboBoxGraphMouse")->currentIndex(), 0);  // loaded
}

void GraphTabSettingsTest::PlayerKeepsTheTabNoted_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::PlayerKeepsTheTabNoted()
{
    QFETCH(int, tab);
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 21);
    Window->ClickTab(PlayerTab);
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 21);
    RecordOfTab(tab).AvgPathImages = 5;
    Window->ClickTab(PlayerTab);
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 21);  // stored again
    RecordOfTab(tab).AvgPathImages = 5;
    Window->ClickTab(SettingsTab);
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 21);  // and again
    RecordOfTab(tab).AvgPathImages = 5;
    Window->ClickTab(tab);
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 5);  // the settings were left
    QCOMPARE(Tab(tab).Number("spinBoxAvgFrames"), 5.0);
}

void GraphTabSettingsTest::FromSettingsOverPlayer()
{
    Window->ClickTab(PlayerTab);
    Window->SetNumber("doubleSpinBoxZoom", 130.0);
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.1);
    Window->ClickTab(HorizontalTab);
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.3);                 // the form was stored again,
    QCOMPARE(Tab(HorizontalTab).Number("doubleSpinBoxCrop"), 130.0);  // before the tab was loaded
    Window->SetNumber("doubleSpinBoxZoom", 140.0);
    Window->ClickTab(VerticalTab);
    QCOMPARE(PathHorizontal.Export->CropFactor, 1.3);
}

void GraphTabSettingsTest::CalculationCommitsItsTab_data()
{
    AddGraphTabRows();
}

void GraphTabSettingsTest::CalculationCommitsItsTab()
{
    QFETCH(int, tab);
    ShowAPath();
    Window->ClickTab(tab);
    Tab(tab).Type("spinBoxAvgFrames", 21);
    Tab(tab).AddIgnore(LocalTree, 2, 4);
    Window->SetNumber("spinBoxExpOffsetH", 5);
    for (int other : GraphTabs)
    {
        if (other != tab)
        {
            Tab(other).Slip("spinBoxAvgFrames", 99);
        }
    }
    Tab(tab).Click("pushButtonCalc");
    QCOMPARE(RecordOfTab(tab).AvgPathImages, 21);
    QCOMPARE(RecordOfTab(tab).IgnoreSections.size(), std::size_t{1});
    QCOMPARE(PathOfTab(tab).Base.WindowLength, std::uint64_t{43});  // bound: twice 21 and one
    QCOMPARE(PathHorizontal.Export->ExpOffH, 5);
    QCOMPARE(PathHorizontal.Offset, 5);
    for (int other : GraphTabs)
    {
        if (other != tab)
        {
            QCOMPARE(RecordOfTab(other).AvgPathImages, other == RotationTab ? 5 : 12);
            QVERIFY(RecordOfTab(other).IgnoreSections.empty());
        }
    }
}

void GraphTabSettingsTest::OtherTabsKeepWhatWasStored()
{
    for (int tab : GraphTabs)
    {
        Window->ClickTab(tab);
        Tab(tab).Type("spinBoxAvgFrames", 20 + tab);
    }
    Tab(RotationTab).Click("pushButtonCalc");
    for (int tab : GraphTabs)
    {
        QCOMPARE(RecordOfTab(tab).AvgPathImages, 20 + tab);
        QCOMPARE(PathOfTab(tab).Base.WindowLength, std::uint64_t(41 + 2 * tab));
    }
    QCOMPARE(PathRotation.Base.WindowLength, std::uint64_t{47});
}

void GraphTabSettingsTest::SaveCommitsAllTabs_data()
{
    QTest::addColumn<int>("from");
    QTest::newRow("from the settings") << int(SettingsTab);
    QTest::newRow("from the player") << int(PlayerTab);
}

void GraphTabSettingsTest::SaveCommitsAllTabs()
{
    QFETCH(int, from);
    Window->ClickTab(from);
    for (int tab : GraphTabs)
    {
        Tab(tab).Slip("spinBoxAvgFrames", 20 + tab);
    }
    Window->SetNumber("spinBoxExpOffsetV", -6);
    Save();
    const Project saved = ReadProject(StartProject());
    QCOMPARE(saved.FlowH.AvgPathImages, 21);
    QCOMPARE(saved.FlowV.AvgPathImages, 22);
    QCOMPARE(saved.FlowAngle.AvgPathImages, 23);
    QCOMPARE(saved.ExportSettings.ExpOffV, -6);
    for (int tab : GraphTabs)
    {
        QCOMPARE(PathOfTab(tab).Base.WindowLength, std::uint64_t(41 + 2 * tab));
    }
}

QTEST_MAIN(GraphTabSettingsTest)
