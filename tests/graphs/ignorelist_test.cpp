// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "graphs/ignorerows.h"
#include "graphs/treehands.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QMenu>
#include <QMetaMethod>
#include <QTest>
#include <QTreeWidget>

#include <memory>

using namespace TreeHands;

namespace
{
const TestHome Home;

constexpr int Frames = IgnoreRowFrames;
const QString Line = QStringLiteral("------------");
const QString AddEntry = QStringLiteral("Add Ignore section");
const QString RemoveEntry = QStringLiteral("Remove ignore section");
const QString ClearEntry = QStringLiteral("Clear all ignore sections");

/** A row that tells when it is deleted. */
struct MortalItem : QTreeWidgetItem
{
    explicit MortalItem(int& deaths) : QTreeWidgetItem({"1", "2", "0"}), Deaths(deaths) {}
    ~MortalItem() override { ++Deaths; }
    int& Deaths;
};
}  // namespace

/** The ignore sections of one tree: menu, typing and what SortList makes of the rows. */
class IgnoreListTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotOrder();
    void StartsEmpty();
    void AddSectionWritesARow_data();
    void AddSectionWritesARow();
    void RebuildShowsTheSectionsInOrder();
    void MenuEntries_data();
    void MenuEntries();
    void MenuOpensAtThePointer();
    void AddFromTheMenu_data();
    void AddFromTheMenu();
    void RemoveFromTheMenu_data();
    void RemoveFromTheMenu();
    void WithoutEffect_data();
    void WithoutEffect();
    void ClearLeavesTheSectionsInForce_data();
    void ClearLeavesTheSectionsInForce();
    void RemoveAgainRemovesNothing();
    void RowThatWentUnderTheMenuIsNotFollowed();
    void CellsAreTypedInto();
    void SortListReadsARow_data();
    void SortListReadsARow();
    void SortListDropsARow_data();
    void SortListDropsARow();
    void SortListKeepsTheOrder();
    void SortListCutsTheSections();
    void NoFramesNoChange_data();
    void NoFramesNoChange();
    void WindowTakesTypedRows();
    void WindowKeepsTheHiddenOffset();
    void UnreadableHiddenOffsetDropsTheRow();
    void MenusOfTheWindowActOnTheirOwnTree();
    void ClearedWithoutFramesStaysInForce();
    void LastSavedWindowWins();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<BareList> Bare;
};

void IgnoreListTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Bare = std::make_unique<BareList>();
    Bare->List->FrameCount = Frames;
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

void IgnoreListTest::WindowTakesTypedRows()
{
    ListWindow shown(Frames);
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
    ListWindow shown(Frames);
    QCOMPARE(shown.Global().columnCount(), 2);
    QCOMPARE(Rows(shown.Global()), (QStringList{"    10|    20| 1.5", "    30|    40|   0"}));
    TypeInto(shown.Global(), 0, 0, QStringLiteral("11"));
    shown.Window.SaveSettings();
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections).first(), QStringLiteral("11,20,1.5"));
    QCOMPARE(shown.Global().columnCount(), 2);
}

void IgnoreListTest::UnreadableHiddenOffsetDropsTheRow()
{
    ListWindow shown(Frames);
    shown.Global().topLevelItem(0)->setText(2, QStringLiteral("far"));
    shown.Window.SaveSettings();
    QCOMPARE(Texts(shown.Setup.Proj.GlobalIgnoreSections), QStringList{"30,40,0"});
    QCOMPARE(Rows(shown.Global()), QStringList{"    30|    40|   0"});
}

void IgnoreListTest::MenusOfTheWindowActOnTheirOwnTree()
{
    ListWindow shown(Frames);
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
    ListWindow first(Frames);
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

QTEST_MAIN(IgnoreListTest)
#include "ignorelist_test.moc"
