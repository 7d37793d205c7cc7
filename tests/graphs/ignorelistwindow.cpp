// SPDX-License-Identifier: MIT
#include "graphs/ignorelisttest.h"
#include "graphs/treehands.h"

#include <QTest>

using namespace TreeHands;

void IgnoreListTest::WindowTakesTypedRows()
{
    ListWindow shown(IgnoreRowFrames);
    Choose(shown.Global(), Beside, AddEntry);
    TypeInto(shown.Global(), 2, 0, QStringLiteral("70"));
    TypeInto(shown.Global(), 2, 1, QStringLiteral("-7"));
    TypeInto(shown.Local(), 0, 2, QStringLiteral("4"));
    Choose(shown.Local(), Beside, AddEntry);
    TypeInto(shown.Local(), 1, 0, QStringLiteral("500"));
    TypeInto(shown.Local(), 1, 1, QStringLiteral("100"));
    shown.Window.SaveSettings();
    const QStringList global = {"10,20,1.5", "30,40,0", "70,200,0"};
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections), global);
    QCOMPARE(Texts(shown.Setup.Proj.FlowH.IgnoreSections), QStringList{"50,60,4"});
    QCOMPARE(Rows(shown.Local()), QStringList{"    50|    60|   4"});
}

void IgnoreListTest::WindowKeepsTheHiddenOffset()
{
    ListWindow shown(IgnoreRowFrames);
    QCOMPARE(shown.Global().columnCount(), 2);
    QCOMPARE(Rows(shown.Global()), (QStringList{"    10|    20| 1.5", "    30|    40|   0"}));
    TypeInto(shown.Global(), 0, 0, QStringLiteral("11"));
    shown.Window.SaveSettings();
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections).first(), QStringLiteral("11,20,1.5"));
    QCOMPARE(shown.Global().columnCount(), 2);
}

void IgnoreListTest::UnreadableHiddenOffsetDropsTheRow()
{
    ListWindow shown(IgnoreRowFrames);
    shown.Global().topLevelItem(0)->setText(2, QStringLiteral("far"));
    shown.Window.SaveSettings();
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections), QStringList{"30,40,0"});
    QCOMPARE(Rows(shown.Global()), QStringList{"    30|    40|   0"});
}

void IgnoreListTest::MenusOfTheWindowActOnTheirOwnTree()
{
    ListWindow shown(IgnoreRowFrames);
    Choose(shown.Global(), 0, RemoveEntry);
    QCOMPARE(Rows(shown.Global()), QStringList{"    30|    40|   0"});
    QCOMPARE(shown.Local().topLevelItemCount(), 1);
    Choose(shown.Local(), 0, ClearEntry);
    QCOMPARE(shown.Global().topLevelItemCount(), 1);
    QCOMPARE(shown.Local().topLevelItemCount(), 0);
    shown.Window.SaveSettings();
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections), QStringList{"30,40,0"});
    QVERIFY(shown.Setup.Proj.FlowH.IgnoreSections.empty());
}

void IgnoreListTest::ClearedWithoutFramesStaysInForce()
{
    ListWindow shown(0);
    Choose(shown.Global(), Beside, ClearEntry);
    Choose(shown.Local(), 0, ClearEntry);
    shown.Window.SaveSettings();
    QCOMPARE(shown.Global().topLevelItemCount(), 0);
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections), (QStringList{"10,20,1.5", "30,40,0"}));
    QCOMPARE(Texts(shown.Setup.Proj.FlowH.IgnoreSections), QStringList{"50,60,2.5"});
}

/** Each graph tab has a global tree of its own; all store into one list. */
void IgnoreListTest::LastSavedWindowWins()
{
    ListWindow first(IgnoreRowFrames);
    GraphWindow second(&first.Setup.Proj, &first.Setup.Path, "", &first.Setup.Proj.FlowV);
    second.LoadSettings();
    second.show();
    auto& secondTree = *second.findChild<QTreeWidget*>(QStringLiteral("treeWidgetGlobalIgnore"));
    Choose(first.Global(), 0, RemoveEntry);
    Choose(secondTree, 1, RemoveEntry);
    QCOMPARE(Rows(secondTree), QStringList{"    10|    20| 1.5"});
    second.SaveSettings();
    first.Window.SaveSettings();
    QCOMPARE(Texts(first.Setup.Proj.GlobalIgnoreSections), QStringList{"30,40,0"});
    second.SaveSettings();
    QCOMPARE(Texts(first.Setup.Proj.GlobalIgnoreSections), QStringList{"10,20,1.5"});
}
