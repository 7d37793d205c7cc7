// SPDX-License-Identifier: MIT
#include "graphs/manualpathtest.h"
#include "support/testhome.h"

#include <QLineEdit>
#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

Q_DECLARE_METATYPE(ManualPathSection)

/** The manual path in its tree: how it shows, and how the user types over it. */
class ManualTreeTest : public ManualPathTest
{
    Q_OBJECT

private slots:
    void ShowsPoints_data();
    void ShowsPoints();
    void SectionsByFirstFrame_data();
    void SectionsByFirstFrame();
    void LoadReplaces();
    void TypeByDoubleClick();
    void TypeByKeys();
    void EscapeLeavesTheText();
    void SectionsCannotBeTypedOver();
};

void ManualTreeTest::ShowsPoints_data()
{
    QTest::addColumn<ManualPathSection>("section");
    QTest::addColumn<QStringList>("rows");
    const auto row =
        [](const char* claim, const std::list<ManualPathPoint>& points, const QStringList& rows)
    { QTest::newRow(claim) << ManualPathSection{points} << rows; };
    row("both columns are six characters wide", {{3, 1.5}, {97, -2.0}},
        {"[3:97]|Section", ">     3|   1.5", ">    97|    -2"});
    row("values have six digits", {{0, 123.456789}, {1, 1234567.0}},
        {"[0:1]|Section", ">     0|123.457", ">     1|1.23457e+06"});
    row("zero and small values", {{0, 0.0}, {1, 0.00001}},
        {"[0:1]|Section", ">     0|     0", ">     1| 1e-05"});
    row("a point alone is both ends", {{7, 1.0}}, {"[7:7]|Section", ">     7|     1"});
    row("the title is held to the video", {{-5, 1.0}, {1000000, 2.0}},
        {"[0:99]|Section", ">    -5|     1", ">1000000|     2"});
    row("the frame behind the last counts as the last", {{100, 1.0}},
        {"[99:99]|Section", ">   100|     1"});
    row("points of a file in any order give the same title", {{60, 1.0}, {20, 2.0}, {40, 3.0}},
        {"[20:60]|Section", ">    60|     1", ">    20|     2", ">    40|     3"});
}

void ManualTreeTest::ShowsPoints()
{
    QFETCH(ManualPathSection, section);
    QFETCH(QStringList, rows);
    Manual->Load({section});
    QCOMPARE(Manual->Rows(), rows);
}

void ManualTreeTest::SectionsByFirstFrame_data()
{
    QTest::addColumn<QVector<int>>("firstFrames");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("the lowest first frame comes first")
        << QVector<int>{50, 10, 30}
        << QStringList{"[10:10]|Section", ">    10|     1",  "[30:30]|Section",
                       ">    30|     2",  "[50:50]|Section", ">    50|     0"};
    QTest::newRow("of equal first frames the first section comes first")
        << QVector<int>{50, 10, 10}
        << QStringList{"[10:10]|Section", ">    10|     1",  "[10:10]|Section",
                       ">    10|     2",  "[50:50]|Section", ">    50|     0"};
    QTest::newRow("negative frames come behind all others")
        << QVector<int>{-5, 99, 0}
        << QStringList{"[0:0]|Section",  ">     0|     2", "[99:99]|Section",
                       ">    99|     1", "[0:0]|Section",  ">    -5|     0"};
    QTest::newRow("a section from frame -1 is not shown")
        << QVector<int>{-1, 10} << QStringList{"[10:10]|Section", ">    10|     1"};
}

void ManualTreeTest::SectionsByFirstFrame()
{
    QFETCH(QVector<int>, firstFrames);
    QFETCH(QStringList, rows);
    std::vector<ManualPathSection> sections;
    sections.reserve(static_cast<std::size_t>(firstFrames.size()));
    for (int i = 0; i < firstFrames.size(); ++i)
    {
        sections.push_back({{{firstFrames.at(i), static_cast<double>(i)}}});
    }
    Manual->Load(sections);
    QCOMPARE(Manual->Rows(), rows);
}

void ManualTreeTest::LoadReplaces()
{
    Manual->Load({{{{3, 1.0}}}, {{{9, 2.0}}}});
    Manual->Load({{{{5, 4.0}}}});
    const QStringList expected = {"[5:5]|Section", ">     5|     4"};
    QCOMPARE(Manual->Rows(), expected);
    Manual->Load({});
    QCOMPARE(Manual->Rows(), QStringList());
}

void ManualTreeTest::TypeByDoubleClick()
{
    Manual->Load({{{{3, 1.0}, {9, 2.0}}}});
    Manual->Type(Manual->Item(0, 1), FrameColumn, QStringLiteral("42"));
    Manual->Type(Manual->Item(0, 1), ValueColumn, QStringLiteral("-7.5"));
    const QStringList typed = {"[3:9]|Section", ">     3|     1", ">42|-7.5"};
    QCOMPARE(Manual->Rows(), typed);
    Manual->Window.SaveSettings();
    const QStringList sorted = {"[3:42]|Section", ">     3|     1", ">    42|  -7.5"};
    QCOMPARE(Manual->Rows(), sorted);
    QCOMPARE(Manual->Saved(), QStringList({"3=1 42=-7.5"}));
}

void ManualTreeTest::TypeByKeys()
{
    Manual->Load({{{{3, 1.0}, {9, 2.0}}}});
    QTreeWidget& tree = Manual->Tree();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier,
                      Manual->Place(Manual->Item(0, 0), ValueColumn));
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_F2);
    auto* edit = tree.viewport()->findChild<QLineEdit*>();
    QVERIFY(edit != nullptr);
    QCOMPARE(edit->text(), QStringLiteral("     2"));
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("8"));
    QTest::keyClick(edit, Qt::Key_Enter);
    QTRY_COMPARE(Manual->Item(0, 1)->text(ValueColumn), QStringLiteral("8"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"3=1 9=8"}));
}

void ManualTreeTest::EscapeLeavesTheText()
{
    Manual->Load({{{{3, 1.0}}}});
    const QStringList before = Manual->Rows();
    QLineEdit* edit = Manual->OpenEditor(Manual->Item(0, 0), ValueColumn);
    QVERIFY(edit != nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("8"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QTRY_VERIFY(Manual->Tree().viewport()->findChild<QLineEdit*>() == nullptr);
    QCOMPARE(Manual->Rows(), before);
}

void ManualTreeTest::SectionsCannotBeTypedOver()
{
    Manual->Load({{{{3, 1.0}}}});
    for (const int column : {FrameColumn, ValueColumn})
    {
        QVERIFY(Manual->OpenEditor(Manual->Item(0), column) == nullptr);
    }
    QTest::keyClick(&Manual->Tree(), Qt::Key_F2);
    QVERIFY(Manual->Tree().viewport()->findChild<QLineEdit*>() == nullptr);
}

QTEST_MAIN(ManualTreeTest)
#include "manualtree_test.moc"
