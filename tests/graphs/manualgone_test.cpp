// SPDX-License-Identifier: MIT
#include "graphs/manualpathtest.h"
#include "support/testhome.h"
#include "userhands/answermodal.h"

#include <QMenu>
#include <QTest>

#include <functional>

namespace
{
const TestHome Home;

/** Something done to the window while its menu item or section may have gone. */
using Deed = std::function<void(ManualPathWindow&)>;
}  // namespace

Q_DECLARE_METATYPE(Deed)

/** Items of the manual path that have gone since the menu or a slot has noted them. */
class ManualGoneTest : public TwoSectionsTest
{
    Q_OBJECT

private slots:
    void NoSection();
    void SlotsForgetWhatTheyRemoved();
    void RemoveSectionOfAPointDoesNothing();
    void GoneSectionGetsNoPoint_data();
    void GoneSectionGetsNoPoint();
    void RebuiltTreeKeepsItsPoints_data();
    void RebuiltTreeKeepsItsPoints();
    void TreeRebuiltUnderTheMenu_data();
    void TreeRebuiltUnderTheMenu();
};

void ManualGoneTest::NoSection()
{
    Manual->Window.AddPoint();
    Manual->Window.FlatOut();
    Manual->Window.RemovePoint();
    Manual->Window.RemoveSection();
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
    Manual->Choose(Manual->Item(0), QString());
    Manual->Window.EndFlow();
    Manual->Window.AddPoint();
    Manual->Window.FlatOut();
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
}

void ManualGoneTest::SlotsForgetWhatTheyRemoved()
{
    Manual->Choose(Manual->Item(0, 0), QStringLiteral("Remove Point"));
    Manual->Window.RemovePoint();
    QCOMPARE(Manual->Rows(), Without(TwoSectionsRows, 1, 1));
    Manual->Choose(Manual->Item(1), QStringLiteral("Remove Section"));
    Manual->Window.RemoveSection();
    Manual->Window.RemovePoint();
    QCOMPARE(Manual->Rows(), QStringList({"[10:20]|Section", ">    20|     2"}));
}

void ManualGoneTest::RemoveSectionOfAPointDoesNothing()
{
    Manual->Choose(Manual->Item(0, 1), QString());
    Manual->Window.RemoveSection();
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
    Manual->Window.RemovePoint();
    QCOMPARE(Manual->Rows(), Without(TwoSectionsRows, 2, 1));
}

void ManualGoneTest::GoneSectionGetsNoPoint_data()
{
    QTest::addColumn<Deed>("remove");
    QTest::addColumn<QStringList>("rows");
    const QStringList second = TwoSectionsRows.mid(3);
    QTest::newRow("Clear all Sections")
        << Deed([](ManualPathWindow& m) { m.Choose(nullptr, "Clear all Sections"); })
        << QStringList();
    QTest::newRow("Remove Section")
        << Deed([](ManualPathWindow& m) { m.Choose(m.Item(0), "Remove Section"); }) << second;
    QTest::newRow("a path without sections is loaded")
        << Deed([](ManualPathWindow& m) { m.Load({}); }) << QStringList();
    QTest::newRow("the sort drops all points") << Deed(
                                                      [](ManualPathWindow& m)
                                                      {
                                                          m.Choose(m.Item(1), "Remove Section");
                                                          m.Type(m.Item(0, 0), FrameColumn, "abc");
                                                          m.Type(m.Item(0, 1), FrameColumn, "abc");
                                                          m.Choose(m.Item(0), QString());
                                                          m.Window.SaveSettings();
                                                      })
                                               << QStringList();
}

void ManualGoneTest::GoneSectionGetsNoPoint()
{
    QFETCH(Deed, remove);
    QFETCH(QStringList, rows);
    Manual->Choose(Manual->Item(0), QString());
    remove(*Manual);
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows(), rows);
    Manual->Window.FlatOut();
    QCOMPARE(Manual->Rows(), rows);
    Manual->Window.RemovePoint();
    Manual->Window.RemoveSection();
    QCOMPARE(Manual->Rows(), rows);
}

void ManualGoneTest::RebuiltTreeKeepsItsPoints_data()
{
    QTest::addColumn<Deed>("rebuild");
    QTest::newRow("sorted") << Deed([](ManualPathWindow& m) { m.Window.SortManList(); });
    QTest::newRow("saved") << Deed([](ManualPathWindow& m) { m.Window.SaveSettings(); });
    QTest::newRow("loaded") << Deed([](ManualPathWindow& m) { m.Window.LoadSettings(); });
}

/** The item that a stale pointer means has gone, though a new one may stand at its address. */
void ManualGoneTest::RebuiltTreeKeepsItsPoints()
{
    QFETCH(Deed, rebuild);
    for (QTreeWidgetItem* target : {Manual->Item(0, 1), Manual->Item(0)})
    {
        Manual->Choose(target, QString());
    }
    rebuild(*Manual);
    Manual->Window.RemovePoint();
    Manual->Window.RemoveSection();
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
    Manual->Window.AddPoint();
    Manual->Window.FlatOut();
    QStringList rows = Manual->Rows();
    rows.removeAll(QStringLiteral(">0|X"));
    rows.removeAll(QStringLiteral(">99|X"));
    QCOMPARE(rows, TwoSectionsRows);
}

void ManualGoneTest::TreeRebuiltUnderTheMenu_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("entry");
    QTest::newRow("Remove Point") << "point"
                                  << "Remove Point";
    QTest::newRow("Remove Section") << "section"
                                    << "Remove Section";
}

/** A project may be loaded while the menu is open; its items are others than the one clicked. */
void ManualGoneTest::TreeRebuiltUnderTheMenu()
{
    QFETCH(QString, target);
    QFETCH(QString, entry);
    const auto menu =
        AnswerModal::Menu(entry, [this](const QMenu&) { Manual->Window.LoadSettings(); });
    Manual->RightClick(Target(target));
    QVERIFY(menu.WasAnswered());
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
}

QTEST_MAIN(ManualGoneTest)
#include "manualgone_test.moc"
