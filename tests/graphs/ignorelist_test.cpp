// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "graphs/ignorelisttest.h"
#include "graphs/treehands.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QMenu>
#include <QMetaMethod>
#include <QTest>

using namespace TreeHands;

namespace
{
const TestHome Home;

const QString Line = QStringLiteral("------------");

/** A row that tells when it is deleted. */
struct MortalItem : QTreeWidgetItem
{
    explicit MortalItem(int& deaths) : QTreeWidgetItem({"1", "2", "0"}), Deaths(deaths) {}
    ~MortalItem() override { ++Deaths; }
    int& Deaths;
};
}  // namespace

void IgnoreListTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Bare = std::make_unique<BareList>();
    Bare->List->FrameCount = IgnoreRowFrames;
}

void IgnoreListTest::cleanup()
{
    Bare.reset();
    QCOMPARE(EndDialogGuard(Guard), QStringList());
}

void IgnoreListTest::SlotOrder()
{
    const QMetaObject& meta = IgnoreList::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected = {"SortList()", "Add()", "Remove()", "Clear()", "DoNothing()"};
    QCOMPARE(names, expected);
}

void IgnoreListTest::StartsEmpty()
{
    QTreeWidget tree;
    const IgnoreList list(nullptr, &tree);
    QCOMPARE(tree.contextMenuPolicy(), Qt::CustomContextMenu);
    QCOMPARE(list.FrameCount, 0);
    QVERIFY(list.Sections.empty());
    QCOMPARE(tree.topLevelItemCount(), 0);
}

void IgnoreListTest::AddSectionWritesARow_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QString>("row");
    QTest::newRow("frames have six places, the offset four")
        << 5 << 120 << 0.0 << "     5|   120|   0";
    QTest::newRow("signs count as a place") << -3 << -1 << -2.0 << "    -3|    -1|  -2";
    QTest::newRow("decimals fill the offset") << 0 << 1 << 2.5 << "     0|     1| 2.5";
    QTest::newRow("longer numbers are not cut")
        << 1234567 << 2000000 << 0.125 << "1234567|2000000|0.125";
    QTest::newRow("a large offset turns to powers of ten")
        << 1 << 2 << 2e7 << "     1|     2|2e+07";
}

void IgnoreListTest::AddSectionWritesARow()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(double, offset);
    QFETCH(QString, row);
    Bare->AddRow({"a", "b", "c"});
    Bare->List->AddSection({start, end, offset});
    QCOMPARE(Rows(Bare->Tree), (QStringList{"a|b|c", row}));
    QVERIFY(Bare->Tree.topLevelItem(1)->flags().testFlag(Qt::ItemIsEditable));
    QVERIFY(Bare->List->Sections.empty());
}

void IgnoreListTest::RebuildShowsTheSectionsInOrder()
{
    Bare->AddRow({"7", "8", "9"});
    Bare->List->Sections = {{90, 99, 0.0}, {3, 5, 1.0}, {3, 5, 1.0}};
    Bare->List->Rebuild();
    const QStringList expected = {"    90|    99|   0", "     3|     5|   1", "     3|     5|   1"};
    QCOMPARE(Rows(Bare->Tree), expected);
    QCOMPARE(Texts(Bare->List->Sections), (QStringList{"90,99,0", "3,5,1", "3,5,1"}));
    for (int i = 0; i < 3; ++i)
    {
        QVERIFY(Bare->Tree.topLevelItem(i)->flags().testFlag(Qt::ItemIsEditable));
    }
}

void IgnoreListTest::MenuEntries_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("on a row it can be removed")
        << 0 << QStringList{AddEntry, Line, RemoveEntry, ClearEntry};
    QTest::newRow("beside the rows nothing can be removed")
        << Beside << QStringList{AddEntry, Line, ClearEntry};
}

void IgnoreListTest::MenuEntries()
{
    QFETCH(int, row);
    QFETCH(QStringList, expected);
    Bare->AddRow({"1", "2", "0"});
    Bare->Show();
    QStringList texts;
    const QWidget* parent = nullptr;
    const auto menu = AnswerModal::Menu(QString(),
                                        [&](const QMenu& shown)
                                        {
                                            texts = Entries(shown);
                                            parent = shown.parentWidget();
                                        });
    RightClick(Bare->Tree, row);
    QVERIFY(menu.WasAnswered());
    QCOMPARE(texts, expected);
    QCOMPARE(parent, &Bare->Frame);
}

void IgnoreListTest::MenuOpensAtThePointer()
{
    Bare->AddRow({"1", "2", "0"});
    Bare->Show();
    QPoint corner;
    const auto menu = AnswerModal::Menu(
        QString(), [&corner](const QMenu& shown) { corner = shown.geometry().topLeft(); });
    RightClick(Bare->Tree, 0);
    QVERIFY(menu.WasAnswered());
    QCOMPARE(corner, Bare->Tree.viewport()->mapToGlobal(Place(Bare->Tree, 0)));
}

void IgnoreListTest::AddFromTheMenu_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("on the first row, yet added at the end") << 0;
    QTest::newRow("beside the rows") << Beside;
}

void IgnoreListTest::AddFromTheMenu()
{
    QFETCH(int, row);
    Bare->List->Sections = {{7, 9, 0.0}, {2, 3, 0.0}};
    Bare->List->Rebuild();
    Bare->Show();
    Choose(Bare->Tree, row, AddEntry);
    const QStringList expected = {"     7|     9|   0", "     2|     3|   0", "     0|    -1|   0"};
    QCOMPARE(Rows(Bare->Tree), expected);
    QVERIFY(Bare->Tree.topLevelItem(2)->flags().testFlag(Qt::ItemIsEditable));
    QCOMPARE(Bare->List->Sections.size(), 2U);
    Bare->List->SortList();
    QCOMPARE(Texts(Bare->List->Sections).last(), QStringLiteral("0,200,0"));
}

void IgnoreListTest::RemoveFromTheMenu_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("the first") << 0 << QStringList{"b|2|0", "c|3|0"};
    QTest::newRow("the middle one") << 1 << QStringList{"a|1|0", "c|3|0"};
    QTest::newRow("the last") << 2 << QStringList{"a|1|0", "b|2|0"};
}

void IgnoreListTest::RemoveFromTheMenu()
{
    QFETCH(int, row);
    QFETCH(QStringList, left);
    for (const auto& texts : {QStringList{"a", "1", "0"}, {"b", "2", "0"}, {"c", "3", "0"}})
    {
        Bare->AddRow(texts);
    }
    Bare->List->Sections = {{1, 2, 3.0}};
    Bare->Show();
    Choose(Bare->Tree, row, RemoveEntry);
    QCOMPARE(Rows(Bare->Tree), left);
    QCOMPARE(Texts(Bare->List->Sections), QStringList{"1,2,3"});
}

void IgnoreListTest::WithoutEffect_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("the line does nothing") << Line;
    QTest::newRow("the menu is closed") << QString();
}

void IgnoreListTest::WithoutEffect()
{
    QFETCH(QString, entry);
    Bare->List->Sections = {{5, 1, 0.0}};
    Bare->List->Rebuild();
    Bare->Show();
    Choose(Bare->Tree, 0, entry);
    QCOMPARE(Rows(Bare->Tree), QStringList{"     5|     1|   0"});
    QCOMPARE(Texts(Bare->List->Sections), QStringList{"5,1,0"});
}

void IgnoreListTest::ClearLeavesTheSectionsInForce_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("on a row") << 1;
    QTest::newRow("beside the rows") << Beside;
}

void IgnoreListTest::ClearLeavesTheSectionsInForce()
{
    QFETCH(int, row);
    Bare->List->Sections = {{1, 2, 0.0}, {3, 4, 0.0}};
    Bare->List->Rebuild();
    Bare->Show();
    Choose(Bare->Tree, row, ClearEntry);
    QCOMPARE(Bare->Tree.topLevelItemCount(), 0);
    QCOMPARE(Texts(Bare->List->Sections), (QStringList{"1,2,0", "3,4,0"}));
    Bare->List->SortList();
    QVERIFY(Bare->List->Sections.empty());
}

void IgnoreListTest::RemoveAgainRemovesNothing()
{
    for (const char* start : {"1", "2", "3"})
    {
        Bare->AddRow({start, "9", "0"});
    }
    Bare->Show();
    Choose(Bare->Tree, 1, RemoveEntry);
    Bare->List->Remove();  // the row under the last click is gone
    QCOMPARE(Rows(Bare->Tree), (QStringList{"1|9|0", "3|9|0"}));
    Choose(Bare->Tree, 0, QString());
    Choose(Bare->Tree, Beside, QString());
    Bare->List->Remove();  // no row was under the last click
    QCOMPARE(Rows(Bare->Tree), (QStringList{"1|9|0", "3|9|0"}));
}

/** As when a project is loaded while the menu is open. */
void IgnoreListTest::RowThatWentUnderTheMenuIsNotFollowed()
{
    int deaths = 0;
    std::unique_ptr<QTreeWidgetItem> taken;
    Bare->Tree.addTopLevelItem(new MortalItem(deaths));
    Bare->AddRow({"3", "9", "0"});
    Bare->Show();
    const auto menu = AnswerModal::Menu(
        RemoveEntry, [&](const QMenu&) { taken.reset(Bare->Tree.takeTopLevelItem(0)); });
    RightClick(Bare->Tree, 0);
    QVERIFY(menu.WasAnswered());
    QCOMPARE(deaths, 0);
    QCOMPARE(Rows(Bare->Tree), QStringList{"3|9|0"});
}

void IgnoreListTest::CellsAreTypedInto()
{
    Bare->List->AddSection({0, -1, 0.0});
    Bare->List->AddSection({1, 2, 0.0});
    Bare->Show();
    TypeInto(Bare->Tree, 0, 0, QStringLiteral("12"));
    TypeInto(Bare->Tree, 0, 1, QStringLiteral("34"));
    TypeInto(Bare->Tree, 0, 2, QStringLiteral("-0.75"));
    TypeInto(Bare->Tree, 1, 1, QString());
    QVERIFY(Bare->List->Sections.empty());
    Bare->List->SortList();
    QCOMPARE(Texts(Bare->List->Sections), QStringList{"12,34,-0.75"});
    QCOMPARE(Rows(Bare->Tree), QStringList{"    12|    34|-0.75"});
    TypeInto(Bare->Tree, 0, 0, QStringLiteral("13"));  // a row that was built anew
}

QTEST_MAIN(IgnoreListTest)
