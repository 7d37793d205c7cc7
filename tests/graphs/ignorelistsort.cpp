// SPDX-License-Identifier: MIT
#include "graphs/ignorelisttest.h"
#include "graphs/treehands.h"

#include <QTest>

using namespace TreeHands;

void IgnoreListTest::SortListReadsARow_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("row");
    AddReadableRows();
}

void IgnoreListTest::SortListReadsARow()
{
    QFETCH(QStringList, texts);
    QFETCH(QString, section);
    QFETCH(QString, row);
    Bare->AddRow(texts);
    Bare->List->SortList();
    QCOMPARE(Texts(Bare->List->Sections), QStringList{section});
    QCOMPARE(Rows(Bare->Tree), QStringList{row});
    QVERIFY(Bare->Tree.topLevelItem(0)->flags().testFlag(Qt::ItemIsEditable));
}

void IgnoreListTest::SortListDropsARow_data()
{
    QTest::addColumn<QStringList>("texts");
    AddDroppedRows();
}

void IgnoreListTest::SortListDropsARow()
{
    QFETCH(QStringList, texts);
    Bare->AddRow({"1", "2", "0"});
    Bare->AddRow(texts);
    Bare->AddRow({"5", "6", "0"});
    Bare->List->SortList();
    QCOMPARE(Texts(Bare->List->Sections), (QStringList{"1,2,0", "5,6,0"}));
    QCOMPARE(Rows(Bare->Tree), (QStringList{"     1|     2|   0", "     5|     6|   0"}));
}

void IgnoreListTest::SortListKeepsTheOrder()
{
    for (const char* start : {"90", "5", "40", "5"})
    {
        Bare->AddRow({start, "100", "0"});
    }
    Bare->List->SortList();
    const QStringList expected = {"90,100,0", "5,100,0", "40,100,0", "5,100,0"};
    QCOMPARE(Texts(Bare->List->Sections), expected);
    const QStringList rows = Rows(Bare->Tree);
    Bare->List->SortList();  // a second time changes nothing
    QCOMPARE(Texts(Bare->List->Sections), expected);
    QCOMPARE(Rows(Bare->Tree), rows);
}

void IgnoreListTest::SortListCutsTheSections()
{
    Bare->List->Sections = {{1, 2, 0.0}, {3, 4, 0.0}, {5, 6, 0.0}};
    Bare->AddRow({"7", "8", "0.5"});
    Bare->AddRow({"9", "8", "0.5"});
    Bare->List->SortList();
    QCOMPARE(Texts(Bare->List->Sections), QStringList{"7,8,0.5"});
}

void IgnoreListTest::NoFramesNoChange_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("no frames") << 0;
    QTest::newRow("fewer than none") << -1;
}

void IgnoreListTest::NoFramesNoChange()
{
    QFETCH(int, frames);
    Bare->List->FrameCount = frames;
    Bare->List->Sections = {{1, 2, 0.0}};
    Bare->AddRow({"500", "100", "x"});
    const QTreeWidgetItem* row = Bare->Tree.topLevelItem(0);
    Bare->List->SortList();
    QCOMPARE(Rows(Bare->Tree), QStringList{"500|100|x"});
    QCOMPARE(Bare->Tree.topLevelItem(0), row);
    QCOMPARE(Texts(Bare->List->Sections), QStringList{"1,2,0"});
    Bare->List->FrameCount = 1;
    Bare->List->SortList();  // one frame is enough
    QVERIFY(Bare->List->Sections.empty());
}
