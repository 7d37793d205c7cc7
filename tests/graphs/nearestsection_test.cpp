// SPDX-License-Identifier: MIT
#include "graphs/graphmousetest.h"
#include "support/testhome.h"

#include <QTest>

namespace
{
const TestHome Home;

/** A section with points at those frames, value 1. */
ManualPathSection SectionAt(const std::vector<int>& frames)
{
    ManualPathSection section;
    for (const int frame : frames)
    {
        section.Points.push_back({frame, 1.0});
    }
    return section;
}
}  // namespace

/** Which section of the manual path gets the point of a click in the plot. */
class NearestSectionTest : public GraphMouseBase
{
    Q_OBJECT

private slots:
    void NearestSection_data();
    void NearestSection();
    void TypedFrames_data();
    void TypedFrames();
    void EmptySectionTakesTheClick_data();
    void EmptySectionTakesTheClick();
    void PointOfAbcGoesAtTheNextSort();
    void LaterClicksMoveTheEnds();
    void TitleAfterAClick();
    void ClickChoosesTheSection();
    void FarFromEverySection_data();
    void FarFromEverySection();

private:
    [[nodiscard]] int ReceiverOf(int frame) const;
};

/** Clicks into @p frame. @return the section that has got a point more; -1 for none */
int NearestSectionTest::ReceiverOf(int frame) const
{
    QVector<int> counts;
    for (int i = 0; i < Manual->Tree().topLevelItemCount(); ++i)
    {
        counts.append(Manual->Item(i)->childCount());
    }
    Hands->Click(Hands->InFrame(frame));
    for (int i = 0; i < counts.size(); ++i)
    {
        const QTreeWidgetItem* section = Manual->Item(i);
        if (section->childCount() == counts.at(i) + 1 &&
            section->child(counts.at(i))->text(0) == QString::number(frame))
        {
            return i;
        }
    }
    return -1;
}

void NearestSectionTest::NearestSection_data()
{
    using Sections = std::vector<std::vector<int>>;
    QTest::addColumn<Sections>("sections");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("receiver");
    const auto row = [](const char* claim, const Sections& sections, int frame, int receiver)
    { QTest::newRow(claim) << sections << frame << receiver; };
    row("the start of the later section is nearest", {{10, 20}, {60, 70}}, 45, 1);
    row("the end of the earlier section is nearest", {{10, 50}, {60, 99}}, 53, 0);
    row("before all", {{30, 40}, {60, 70}}, 5, 0);
    row("behind all", {{10, 20}, {30, 40}}, 90, 1);
    row("inside a span, another section's end is nearer", {{0, 90}, {40, 50}}, 60, 1);
    row("points between the ends do not count", {{0, 40, 90}, {50, 60}}, 41, 1);
    row("of equal distances the earlier section stays", {{0, 10}, {30, 40}}, 20, 0);
    row("of equal distances of both starts the earlier section stays", {{40, 80}, {40, 80}}, 42, 0);
    row("one frame decides", {{0, 10}, {30, 40}}, 21, 1);
    row("a point alone is both ends", {{10}, {50}}, 31, 1);
}

void NearestSectionTest::NearestSection()
{
    QFETCH(std::vector<std::vector<int>>, sections);
    QFETCH(int, frame);
    QFETCH(int, receiver);
    std::vector<ManualPathSection> path;
    path.reserve(sections.size());
    for (const std::vector<int>& frames : sections)
    {
        path.push_back(SectionAt(frames));
    }
    Manual->Load(path);
    for (const int mode : {PlotHands::ManualPoints, PlotHands::FlatPoints})
    {
        Manual->Load(path);
        Hands->ChooseMode(mode);
        QCOMPARE(ReceiverOf(frame), receiver);
    }
}

void NearestSectionTest::TypedFrames_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<int>("point");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("receiver");
    QTest::newRow("abc at the start is nearest") << 1 << 0 << "abc" << 11 << 1;
    QTest::newRow("abc at the end is nearest") << 1 << 2 << "abc" << 11 << 1;
    QTest::newRow("abc between the ends does not count") << 1 << 1 << "abc" << 11 << 0;
    QTest::newRow("an empty frame is nearest") << 1 << 0 << "" << 11 << 1;
    QTest::newRow("abc does not beat an earlier point of that frame") << 1 << 0 << "abc" << 10 << 0;
    QTest::newRow("an earlier abc beats a later point of that frame") << 0 << 2 << "abc" << 60 << 0;
    QTest::newRow("a frame before the video counts as typed") << 0 << 2 << "-90" << 35 << 0;
    QTest::newRow("a frame behind the video counts as typed") << 1 << 0 << "99000" << 50 << 0;
}

/** Sections 10, 20, 30 and 60, 70, 80, of which one point is typed over. */
void NearestSectionTest::TypedFrames()
{
    QFETCH(int, section);
    QFETCH(int, point);
    QFETCH(QString, typed);
    QFETCH(int, frame);
    QFETCH(int, receiver);
    Manual->Load({SectionAt({10, 20, 30}), SectionAt({60, 70, 80})});
    Manual->Type(Manual->Item(section, point), 0, typed);
    Hands->ChooseMode(PlotHands::FlatPoints);
    QCOMPARE(ReceiverOf(frame), receiver);
}

void NearestSectionTest::EmptySectionTakesTheClick_data()
{
    QTest::addColumn<QVector<int>>("emptied");
    QTest::addColumn<int>("frame");
    QTest::addColumn<int>("receiver");
    QTest::newRow("before a nearer one") << QVector<int>{1} << 70 << 1;
    QTest::newRow("behind a nearer one") << QVector<int>{1} << 10 << 1;
    QTest::newRow("the last one") << QVector<int>{2} << 10 << 2;
    QTest::newRow("the first of two") << QVector<int>{2, 1} << 10 << 1;
}

/** Sections at 10, 40 and 70, some of which have lost their point. */
void NearestSectionTest::EmptySectionTakesTheClick()
{
    QFETCH(QVector<int>, emptied);
    QFETCH(int, frame);
    QFETCH(int, receiver);
    Manual->Load({SectionAt({10}), SectionAt({40}), SectionAt({70})});
    for (const int section : emptied)
    {
        Manual->Choose(Manual->Item(section, 0), QStringLiteral("Remove Point"));
    }
    Hands->ChooseMode(PlotHands::FlatPoints);
    QCOMPARE(ReceiverOf(frame), receiver);
    const QString title = QStringLiteral("[%1:%1]").arg(frame);
    QCOMPARE(Manual->Item(receiver)->text(0), title);
    QCOMPARE(Manual->Tree().topLevelItemCount(), 3);
}

void NearestSectionTest::PointOfAbcGoesAtTheNextSort()
{
    Manual->Load({SectionAt({10, 20}), SectionAt({60, 70})});
    Manual->Type(Manual->Item(1, 0), 0, QStringLiteral("abc"));
    Hands->ChooseMode(PlotHands::FlatPoints);
    QCOMPARE(ReceiverOf(12), 1);
    QCOMPARE(Manual->Item(1)->text(0), QStringLiteral("[12:70]"));
    Manual->Window.SaveSettings();
    QCOMPARE(Manual->Saved(), QStringList({"10=1 20=1", "12=26 70=1"}));
}

/** The ends are the rows at top and bottom, and a click adds at the bottom. */
void NearestSectionTest::LaterClicksMoveTheEnds()
{
    Manual->Load({SectionAt({10, 20}), SectionAt({26, 70})});
    Hands->ChooseMode(PlotHands::FlatPoints);
    QCOMPARE(ReceiverOf(13), 0);
    QCOMPARE(ReceiverOf(20), 1);  // 7 frames from 13, 6 from 26
}

void NearestSectionTest::TitleAfterAClick()
{
    Manual->Load({SectionAt({10, 20, 30})});
    Manual->Type(Manual->Item(0, 0), 0, QStringLiteral("abc"));
    Manual->Type(Manual->Item(0, 1), 0, QStringLiteral("-5"));
    Manual->Type(Manual->Item(0, 2), 0, QStringLiteral("1000000"));
    QCOMPARE(Manual->Item(0)->text(0), QStringLiteral("[10:30]"));
    Hands->ChooseMode(PlotHands::FlatPoints);
    Hands->Click(Hands->InFrame(50));
    QCOMPARE(Manual->Rows(), QStringList({"[0:99]|Section", ">abc|     1", ">-5|     1",
                                          ">1000000|     1", ">50|X"}));
}

void NearestSectionTest::ClickChoosesTheSection()
{
    Manual->Load({SectionAt({10}), SectionAt({60})});
    Manual->Choose(Manual->Item(0), QString());
    Hands->ChooseMode(PlotHands::FlatPoints);
    Hands->Click(Hands->InFrame(70));
    Manual->Window.AddPoint();
    QCOMPARE(Manual->Rows().mid(3), QStringList({">    60|     1", ">70|X", ">0|X"}));
}

void NearestSectionTest::FarFromEverySection_data()
{
    QTest::addColumn<int>("point");
    QTest::addColumn<int>("receiver");
    QTest::newRow("9999999 frames are near") << 10000004 << 0;
    QTest::newRow("10000000 frames are too far") << 10000005 << -1;
    QTest::newRow("the largest frame is too far") << 2147483647 << -1;
    QTest::newRow("the smallest frame is too far") << -2147483647 - 1 << -1;
}

void NearestSectionTest::FarFromEverySection()
{
    QFETCH(int, point);
    QFETCH(int, receiver);
    Manual->Load({SectionAt({point})});
    Manual->Choose(Manual->Item(0), QString());
    const QStringList before = Manual->Rows();
    Hands->ChooseMode(PlotHands::FlatPoints);
    QCOMPARE(ReceiverOf(5), receiver);
    Manual->Window.AddPoint();  // a click that was too far chooses no section
    const QStringList added = receiver < 0 ? QStringList() : QStringList({">5|X", ">0|X"});
    QCOMPARE(Manual->Rows().mid(before.size()), added);
    QCOMPARE(Manual->Item(0, 0)->text(0), QString::number(point).rightJustified(6));
}

QTEST_MAIN(NearestSectionTest)
#include "nearestsection_test.moc"
