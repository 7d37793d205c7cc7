// SPDX-License-Identifier: MIT
#include "graphs/manualpathtest.h"
#include "support/testhome.h"

#include <QTest>

namespace
{
const TestHome Home;
}  // namespace

/** The sort that takes the manual path out of its tree, and what reaches the settings. */
class ManualSortTest : public ManualPathTest
{
    Q_OBJECT

private slots:
    void SortMendsAPoint_data();
    void SortMendsAPoint();
    void PathValueOfTheRow_data();
    void PathValueOfTheRow();
    void TinyPathValueCountsAsZero();
    void UpperDuplicateStays_data();
    void UpperDuplicateStays();
    void SortOrdersPoints();
    void SectionsWithoutPointsGo();
    void SortWithoutSections();
    void SavedSectionsKeepTheirOrder();
    void SortAloneLeavesTheSettings();
    void WithoutFramesTheTreeStays();
    void WithoutFramesTheLastPathIsSaved();
    void PathWithoutSettings();
    void SixDigitsAreKept();
};

void ManualSortTest::SortMendsAPoint_data()
{
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("row");
    QTest::newRow("both are kept") << "50"
                                   << "1.5"
                                   << ">    50|   1.5";
    QTest::newRow("frame -5 becomes 0") << "-5"
                                        << "1.5"
                                        << ">     0|   1.5";
    QTest::newRow("frame 1000000 becomes the last") << "1000000"
                                                    << "1.5"
                                                    << ">    99|   1.5";
    QTest::newRow("the frame count becomes the last frame") << "100"
                                                            << "1.5"
                                                            << ">    99|   1.5";
    QTest::newRow("the last frame stays") << "99"
                                          << "1.5"
                                          << ">    99|   1.5";
    QTest::newRow("0.00005 becomes 0") << "50"
                                       << "0.00005"
                                       << ">    50|     0";
    QTest::newRow("-0.00005 becomes 0") << "50"
                                        << "-0.00005"
                                        << ">    50|     0";
    QTest::newRow("0.0001 stays") << "50"
                                  << "0.0001"
                                  << ">    50|0.0001";
    QTest::newRow("-0.0001 stays") << "50"
                                   << "-0.0001"
                                   << ">    50|-0.0001";
    QTest::newRow("a power of ten is a number") << "50"
                                                << "1.5e2"
                                                << ">    50|   150";
    QTest::newRow("a frame abc goes") << "abc"
                                      << "1.5" << QString();
    QTest::newRow("an empty frame goes") << ""
                                         << "1.5" << QString();
    QTest::newRow("a frame with decimals goes") << "50.5"
                                                << "1.5" << QString();
}

void ManualSortTest::SortMendsAPoint()
{
    QFETCH(QString, frame);
    QFETCH(QString, value);
    QFETCH(QString, row);
    Manual->Load({{{{30, 7.0}, {40, 8.0}}}});
    Manual->Type(Manual->Item(0, 1), FrameColumn, frame);
    Manual->Type(Manual->Item(0, 1), ValueColumn, value);
    Manual->Window.SortManList();
    const QStringList rows = Manual->Rows();
    QCOMPARE(rows.contains(">    30|     7"), true);
    QCOMPARE(rows.size(), row.isEmpty() ? 2 : 3);
    QVERIFY2(row.isEmpty() || rows.contains(row), qPrintable(rows.join(QLatin1Char('\n'))));
}

void ManualSortTest::PathValueOfTheRow_data()
{
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("row");
    QTest::newRow("X is the path's value") << "50"
                                           << "X"
                                           << ">    50|   102";
    QTest::newRow("an empty value too") << "50"
                                        << ""
                                        << ">    50|   102";
    QTest::newRow("a comma is no decimal point") << "50"
                                                 << "1,5"
                                                 << ">    50|   102";
    QTest::newRow("X of the first frame") << "0"
                                          << "X"
                                          << ">     0|     2";
    QTest::newRow("X of a negative frame is that of the first") << "-5"
                                                                << "X"
                                                                << ">     0|     2";
    QTest::newRow("X of the last frame") << "99"
                                         << "X"
                                         << ">    99|   200";
    QTest::newRow("X behind the video is that of the last") << "5000"
                                                            << "X"
                                                            << ">    99|   200";
}

/** The path rises by two pixels per frame and has made its first step in frame 0. */
void ManualSortTest::PathValueOfTheRow()
{
    QFETCH(QString, frame);
    QFETCH(QString, value);
    QFETCH(QString, row);
    Manual->Load({{{{40, 8.0}}}});
    Manual->Type(Manual->Item(0, 0), FrameColumn, frame);
    Manual->Type(Manual->Item(0, 0), ValueColumn, value);
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Rows().value(1), row);
    QCOMPARE(Manual->Saved(), QStringList(row.mid(1).remove(' ').replace('|', '=')));
}

void ManualSortTest::TinyPathValueCountsAsZero()
{
    Manual->Axis.Generate(SteadyMotion(Frames, 0.00001));  // frame 3 lies at 0.00004
    Manual->Load({{{{3, 8.0}, {20, 8.0}}}});
    Manual->Type(Manual->Item(0, 0), ValueColumn, QStringLiteral("X"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Axis.Proj.FlowH.ManualPath.front().Points.front().Value, 0.0);
}

void ManualSortTest::UpperDuplicateStays_data()
{
    QTest::addColumn<QStringList>("frames");  // typed, from top to bottom; values 1, 2, 3
    QTest::addColumn<QStringList>("saved");
    QTest::newRow("the upper of two") << QStringList{"5", "5", "9"} << QStringList{"5=1 9=3"};
    QTest::newRow("the uppermost of three") << QStringList{"5", "5", "5"} << QStringList{"5=1"};
    QTest::newRow("apart") << QStringList{"5", "9", "5"} << QStringList{"5=1 9=2"};
    QTest::newRow("made equal at the start")
        << QStringList{"-3", "0", "9"} << QStringList{"0=1 9=3"};
    QTest::newRow("made equal at the end")
        << QStringList{"2", "99", "500"} << QStringList{"2=1 99=2"};
}

void ManualSortTest::UpperDuplicateStays()
{
    QFETCH(QStringList, frames);
    QFETCH(QStringList, saved);
    Manual->Load({{{{10, 1.0}, {20, 2.0}, {30, 3.0}}}});
    for (int i = 0; i < frames.size(); ++i)
    {
        Manual->Type(Manual->Item(0, i), FrameColumn, frames.at(i));
    }
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), saved);
}

void ManualSortTest::SortOrdersPoints()
{
    Manual->Load({{{{10, 1.0}, {20, 2.0}, {30, 3.0}, {40, 4.0}}}});
    Manual->Type(Manual->Item(0, 0), FrameColumn, QStringLiteral("35"));
    Manual->Type(Manual->Item(0, 3), FrameColumn, QStringLiteral("5"));
    Manual->Window.SortManList();
    const QStringList expected = {"[5:35]|Section", ">     5|     4", ">    20|     2",
                                  ">    30|     3", ">    35|     1"};
    QCOMPARE(Manual->Rows(), expected);
    for (int i = 0; i < 4; ++i)
    {
        QVERIFY(Manual->Item(0, i)->flags().testFlag(Qt::ItemIsEditable));
    }
}

void ManualSortTest::SectionsWithoutPointsGo()
{
    Manual->Load({{{{10, 1.0}}}, {{{20, 2.0}, {25, 2.0}}}, {{{30, 3.0}}}});
    Manual->Type(Manual->Item(1, 0), FrameColumn, QStringLiteral("abc"));
    Manual->Type(Manual->Item(1, 1), FrameColumn, QStringLiteral("def"));
    Manual->Choose(nullptr, QStringLiteral("Start Section"));
    QCOMPARE(Manual->Tree().topLevelItemCount(), 4);
    Manual->Window.SaveSettings();
    const QStringList expected = {"[10:10]|Section", ">    10|     1", "[30:30]|Section",
                                  ">    30|     3"};
    QCOMPARE(Manual->Rows(), expected);
    QCOMPARE(Manual->Saved(), QStringList({"10=1", "30=3"}));
}

void ManualSortTest::SortWithoutSections()
{
    Manual->Load({{{{10, 1.0}}}});
    Manual->Choose(nullptr, QStringLiteral("Clear all Sections"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Rows(), QStringList());
    QCOMPARE(Manual->Saved(), QStringList());
}

void ManualSortTest::SavedSectionsKeepTheirOrder()
{
    Manual->Load({{{{30, 1.0}}}, {{{60, 2.0}}}});
    Manual->Type(Manual->Item(0, 0), FrameColumn, QStringLiteral("90"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"90=1", "60=2"}));
    const QStringList expected = {"[60:60]|Section", ">    60|     2", "[90:90]|Section",
                                  ">    90|     1"};
    QCOMPARE(Manual->Rows(), expected);
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"60=2", "90=1"}));
}

void ManualSortTest::SortAloneLeavesTheSettings()
{
    Manual->Load({{{{30, 1.0}}}});
    Manual->Type(Manual->Item(0, 0), FrameColumn, QStringLiteral("90"));
    Manual->Window.SortManList();
    QCOMPARE(Manual->Saved(), QStringList({"30=1"}));
}

void ManualSortTest::WithoutFramesTheTreeStays()
{
    Manual = std::make_unique<ManualPathWindow>(0);
    Manual->Load({{{{30, 1.0}, {40, 1.0}}}, {{{50, 2.0}}}});
    Manual->Type(Manual->Item(0, 1), FrameColumn, QStringLiteral("abc"));
    Manual->Type(Manual->Item(0, 1), ValueColumn, QStringLiteral("X"));
    const QStringList expected = {"[-1:-1]|Section", ">    30|     1", ">abc|X", "[-1:-1]|Section",
                                  ">    50|     2"};
    QCOMPARE(Manual->Rows(), expected);
    Manual->Window.SortManList();
    QCOMPARE(Manual->Rows(), expected);
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Rows(), expected);
}

void ManualSortTest::WithoutFramesTheLastPathIsSaved()
{
    Manual = std::make_unique<ManualPathWindow>(0);
    Manual->Load({{{{30, 1.0}}}});
    Manual->Type(Manual->Item(0, 0), FrameColumn, QStringLiteral("40"));
    Manual->Axis.Proj.FlowH.ManualPath.clear();
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"30=1"}));
}

void ManualSortTest::PathWithoutSettings()
{
    Manual->Load({{{{30, 1.0}}}});
    Manual->Axis.Path.Settings = nullptr;
    Manual->Type(Manual->Item(0, 0), FrameColumn, QStringLiteral("40"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"30=1"}));
    Manual->Window.LoadSettings();
    QCOMPARE(Manual->Rows(), QStringList());
}

/** The tree is what the next sort reads, so a value loses what the tree does not show. */
void ManualSortTest::SixDigitsAreKept()
{
    Manual->Load({{{{30, 1.23456789}}}});
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Axis.Proj.FlowH.ManualPath.front().Points.front().Value, 1.23457);
}

QTEST_MAIN(ManualSortTest)
#include "manualsort_test.moc"
