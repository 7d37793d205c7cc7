// SPDX-License-Identifier: MIT
#include "graphs/manualpathtest.h"
#include "graphs/treehands.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QComboBox>
#include <QMenu>
#include <QTest>

namespace
{
const TestHome Home;

/** The rows with one more row, whose place counts from the top. */
QStringList Inserted(QStringList rows, int place, const QString& row)
{
    rows.insert(place, row);
    return rows;
}
}  // namespace

/** The menu of the manual path: its entries and what they do. */
class ManualMenuTest : public TwoSectionsTest
{
    Q_OBJECT

private slots:
    void Entries_data();
    void Entries();
    void OpensAtThePointer();
    void WithoutEffect_data();
    void WithoutEffect();
    void AddPoint_data();
    void AddPoint();
    void FlatOut_data();
    void FlatOut();
    void FlatOutEndsTheSection();
    void FlatOutWithoutFrames();
    void StartSection();
    void FlatIn();
    void FlatInWithoutFrames();
    void AddedPointsCanBeTypedOver();
    void RemovePointLeavesTheTitle();
    void RemoveLastPointLeavesTheSection();
    void RemoveSection();
    void ClearAll_data();
    void ClearAll();
    void MenuChoosesTheSection_data();
    void MenuChoosesTheSection();
    void MenuBesideKeepsTheSection();

private:
    [[nodiscard]] int MouseIndex() const;
};

int ManualMenuTest::MouseIndex() const
{
    return Manual->Window.findChild<QComboBox*>(QStringLiteral("comboBoxGraphMouse"))
        ->currentIndex();
}

void ManualMenuTest::Entries_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("on a section") << "section"
                                  << QStringList{"Add Point",         "Flat Out",
                                                 "Start Section",     "Start Flat In Section",
                                                 "------------",      "Remove Section",
                                                 "Clear all Sections"};
    QTest::newRow("on a point") << "point"
                                << QStringList{"Add Point",         "Flat Out",
                                               "Start Section",     "Start Flat In Section",
                                               "------------",      "Remove Point",
                                               "Clear all Sections"};
    QTest::newRow("beside") << "beside"
                            << QStringList{"Start Section", "Start Flat In Section", "------------",
                                           "Clear all Sections"};
}

void ManualMenuTest::Entries()
{
    QFETCH(QString, target);
    QFETCH(QStringList, entries);
    QStringList shown;
    const auto menu =
        AnswerModal::Menu(QString(), [&shown](const QMenu& m) { shown = TreeHands::Entries(m); });
    Manual->RightClick(Target(target));
    QVERIFY(menu.WasAnswered());
    QCOMPARE(shown, entries);
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
}

void ManualMenuTest::OpensAtThePointer()
{
    // Near the corner of the screen, where the menu has room.
    Manual->Window.move(-Manual->Tree().viewport()->mapToGlobal(QPoint()) + QPoint(20, 20));
    const QPoint place = Manual->Tree().viewport()->mapToGlobal(Manual->Place(Manual->Item(0, 1)));
    QPoint corner;
    const auto menu = AnswerModal::Menu(
        QString(), [&corner](const QMenu& shown) { corner = shown.geometry().topLeft(); });
    Manual->RightClick(Manual->Item(0, 1));
    QVERIFY(menu.WasAnswered());
    QCOMPARE(corner, place);
}

void ManualMenuTest::WithoutEffect_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("entry");
    for (const char* target : {"section", "point", "beside"})
    {
        QTest::addRow("the line, %s", target) << target << "------------";
        QTest::addRow("closed without a choice, %s", target) << target << "";
    }
}

void ManualMenuTest::WithoutEffect()
{
    QFETCH(QString, target);
    QFETCH(QString, entry);
    Manual->Choose(Target(target), entry);
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
    QCOMPARE(MouseIndex(), 0);
}

void ManualMenuTest::AddPoint_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("on the section") << "section";
    QTest::newRow("on a point of it") << "point";
}

/** The window's plot has no play position, so the point is one of frame 0 for the user to edit. */
void ManualMenuTest::AddPoint()
{
    QFETCH(QString, target);
    Manual->Choose(Target(target), QStringLiteral("Add Point"));
    QCOMPARE(Manual->Rows(), Inserted(TwoSectionsRows, 3, ">0|X"));
    QCOMPARE(MouseIndex(), 0);
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"0=2 10=1 20=2", "60=3"}));
}

void ManualMenuTest::FlatOut_data()
{
    AddPoint_data();
}

void ManualMenuTest::FlatOut()
{
    QFETCH(QString, target);
    Manual->Choose(Target(target), QStringLiteral("Flat Out"));
    QCOMPARE(Manual->Rows(), Inserted(TwoSectionsRows, 3, ">99|X"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"10=1 20=2 99=200", "60=3"}));
}

void ManualMenuTest::FlatOutEndsTheSection()
{
    Manual->Choose(Manual->Item(0), QStringLiteral("Flat Out"));
    const QStringList rows = Manual->Rows();
    Manual->Window.AddPoint();
    Manual->Window.FlatOut();
    QCOMPARE(Manual->Rows(), rows);
}

void ManualMenuTest::FlatOutWithoutFrames()
{
    Manual = std::make_unique<ManualPathWindow>(0);
    Manual->Load(TwoSections());
    Manual->Choose(Manual->Item(1), QStringLiteral("Flat Out"));
    QCOMPARE(Manual->Rows().last(), QStringLiteral(">-1|X"));
}

void ManualMenuTest::StartSection()
{
    Manual->Choose(Manual->Item(0), QStringLiteral("Start Section"));
    QCOMPARE(Manual->Rows(), QStringList(TwoSectionsRows) << "-|Section");
    QCOMPARE(MouseIndex(), 1);
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows(), QStringList(TwoSectionsRows) << "-|Section"
                                                          << ">0|X");
}

void ManualMenuTest::FlatIn()
{
    Manual->Choose(Manual->Item(0), QStringLiteral("Start Flat In Section"));
    const QStringList rows = QStringList(TwoSectionsRows) << "[0:0]|Section"
                                                          << ">0|X"
                                                          << ">0|X";
    QCOMPARE(Manual->Rows(), rows);
    QCOMPARE(MouseIndex(), 0);
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows(), QStringList(rows) << ">0|X");
}

void ManualMenuTest::FlatInWithoutFrames()
{
    Manual = std::make_unique<ManualPathWindow>(0);
    Manual->Choose(nullptr, QStringLiteral("Start Flat In Section"));
    QCOMPARE(Manual->Rows(), QStringList({"[-1:-1]|Section", ">0|X", ">0|X"}));
}

void ManualMenuTest::AddedPointsCanBeTypedOver()
{
    Manual->Choose(nullptr, QStringLiteral("Start Flat In Section"));
    Manual->Choose(Manual->Item(2), QStringLiteral("Add Point"));
    Manual->Tree().expandAll();
    Manual->Type(Manual->Item(2, 1), FrameColumn, QStringLiteral("30"));
    Manual->Type(Manual->Item(2, 2), FrameColumn, QStringLiteral("40"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"10=1 20=2", "60=3", "0=2 30=62 40=82"}));
    QCOMPARE(Manual->Rows().first(), QStringLiteral("[0:40]|Section"));
}

void ManualMenuTest::RemovePointLeavesTheTitle()
{
    Manual->Choose(Manual->Item(0, 1), QStringLiteral("Remove Point"));
    QCOMPARE(Manual->Rows(), Without(TwoSectionsRows, 2, 1));  // still [10:20]
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Rows().first(), QStringLiteral("[10:10]|Section"));
    QCOMPARE(Manual->Saved(), QStringList({"10=1", "60=3"}));
}

void ManualMenuTest::RemoveLastPointLeavesTheSection()
{
    Manual->Choose(Manual->Item(1, 0), QStringLiteral("Remove Point"));
    QCOMPARE(Manual->Rows(), Without(TwoSectionsRows, 4, 1));
}

void ManualMenuTest::RemoveSection()
{
    Manual->Choose(Manual->Item(0), QStringLiteral("Remove Section"));
    QCOMPARE(Manual->Rows(), Without(TwoSectionsRows, 0, 3));
    Manual->Choose(Manual->Item(0), QStringLiteral("Remove Section"));
    QCOMPARE(Manual->Rows(), QStringList());
}

void ManualMenuTest::ClearAll_data()
{
    QTest::addColumn<QString>("target");
    for (const char* target : {"section", "point", "beside"})
    {
        QTest::newRow(target) << target;
    }
}

void ManualMenuTest::ClearAll()
{
    QFETCH(QString, target);
    Manual->Choose(Target(target), QStringLiteral("Clear all Sections"));
    QCOMPARE(Manual->Rows(), QStringList());
    QCOMPARE(Manual->Saved(), QStringList({"10=1 20=2", "60=3"}));  // until the next save
}

void ManualMenuTest::MenuChoosesTheSection_data()
{
    AddPoint_data();
}

/** Also the menu that is closed again says where the next point goes. */
void ManualMenuTest::MenuChoosesTheSection()
{
    QFETCH(QString, target);
    Manual->Choose(Manual->Item(1), QString());
    Manual->Choose(Target(target), QString());
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows(), Inserted(TwoSectionsRows, 3, ">0|X"));
}

void ManualMenuTest::MenuBesideKeepsTheSection()
{
    Manual->Choose(Manual->Item(0), QString());
    Manual->Choose(nullptr, QString());
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows(), Inserted(TwoSectionsRows, 3, ">0|X"));
}

QTEST_MAIN(ManualMenuTest)
#include "manualmenu_test.moc"
