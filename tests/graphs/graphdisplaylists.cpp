// SPDX-License-Identifier: MIT
#include "graphs/graphdisplaytest.h"

#include <QTest>

namespace
{
const char* const ListTrees[] = {"treeWidgetGlobalIgnore", "treeWidgetIgnore",
                                 "treeWidgetManualPathList"};
}  // namespace

QStringList GraphDisplayTest::ShownLists() const
{
    QStringList names;
    for (const char* name : {"labelIgnStabListGlobal", "labelIgnStabList", "labelManPathList",
                             ListTrees[0], ListTrees[1], ListTrees[2]})
    {
        if (Tab->Find<QWidget>(name)->isVisible())
        {
            names.append(QString::fromLatin1(name));
        }
    }
    return names;
}

QStringList GraphDisplayTest::EnabledLists() const
{
    QStringList names;
    for (const char* name : ListTrees)
    {
        if (Tab->Tree(name).isEnabled())
        {
            names.append(QString::fromLatin1(name));
        }
    }
    return names;
}

void GraphDisplayTest::ListStates_data()
{
    QTest::addColumn<bool>("global");
    QTest::addColumn<bool>("local");
    QTest::addColumn<bool>("manual");
    for (int i = 0; i < 8; ++i)
    {
        const bool global = (i & 1) != 0;
        const bool local = (i & 2) != 0;
        const bool manual = (i & 4) != 0;
        QTest::addRow("global %s, local %s, manual %s", global ? "on" : "off", local ? "on" : "off",
                      manual ? "on" : "off")
            << global << local << manual;
    }
}

void GraphDisplayTest::ListStates()
{
    QFETCH(bool, global);
    QFETCH(bool, local);
    QFETCH(bool, manual);
    Project& project = Tab->Setup.Proj;
    project.EnGlobalIgnoreList = global;
    project.FlowV.EnableIgnoreSections = local;
    project.FlowV.EnableManualPath = manual;
    project.FlowH.EnableIgnoreSections = !local;  // of the path, which does not count here
    project.FlowH.EnableManualPath = !manual;
    Tab->Show();
    Tab->Window.LoadSettings();
    QCOMPARE(ShownLists().size(), global || local || manual ? 6 : 0);
    QCOMPARE(Tab->Tree("treeWidgetGlobalIgnore").isEnabled(), global);
    QCOMPARE(Tab->Tree("treeWidgetIgnore").isEnabled(), local);
    QCOMPARE(Tab->Tree("treeWidgetManualPathList").isEnabled(), manual);
}

void GraphDisplayTest::ClickOnAListBox_data()
{
    QTest::addColumn<QString>("tree");
    QTest::newRow("checkBoxEnIgnSectionsGlobal") << "treeWidgetGlobalIgnore";
    QTest::newRow("checkBoxEnIgnSections") << "treeWidgetIgnore";
    QTest::newRow("checkBoxEnManualCorrect") << "treeWidgetManualPathList";
}

void GraphDisplayTest::ClickOnAListBox()
{
    QFETCH(QString, tree);
    Project& project = Tab->Setup.Proj;
    project.EnGlobalIgnoreList = false;
    project.FlowV.EnableIgnoreSections = false;
    project.FlowV.EnableManualPath = false;
    Tab->Window.LoadSettings();
    Tab->Show();
    int signalCount = 0;
    const auto isOn = [&project](const char* list)
    {
        return list == ListTrees[0]   ? project.EnGlobalIgnoreList
               : list == ListTrees[1] ? project.FlowV.EnableIgnoreSections
                                      : project.FlowV.EnableManualPath;
    };
    QStringList enabledThen;
    connect(&Tab->Window, &GraphWindow::CalculateCameraPath, this,
            [&]()
            {
                ++signalCount;
                enabledThen = EnabledLists();
            });
    Tab->Click(QTest::currentDataTag());
    QCOMPARE(signalCount, 1);
    QCOMPARE(enabledThen, QStringList{tree});
    QCOMPARE(ShownLists().size(), 6);
    for (const char* list : ListTrees)
    {
        QVERIFY2(isOn(list) == (tree == QLatin1String(list)), list);
    }
    QVERIFY(project.FlowH.EnableIgnoreSections && project.FlowH.EnableManualPath);
    Tab->Click(QTest::currentDataTag());
    QCOMPARE(signalCount, 2);
    QCOMPARE(enabledThen, QStringList());
    QCOMPARE(ShownLists(), QStringList());
    QVERIFY(!isOn(ListTrees[0]) && !isOn(ListTrees[1]) && !isOn(ListTrees[2]));
    disconnect(&Tab->Window, nullptr, this, nullptr);
}
