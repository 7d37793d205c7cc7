// SPDX-License-Identifier: MIT
#include "graphs/graphmousetest.h"
#include "graphs/gridandpos.h"
#include "support/testhome.h"

#include <QTest>

#include <cstdio>

namespace
{
const TestHome Home;

QString SixDigits(double value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.6g", value);
    return QString::fromLatin1(text);
}
}  // namespace

/** Clicks on the plot of a graph window, in each of the modes that the user can choose. */
class GraphMouseTest : public GraphMouseBase
{
    Q_OBJECT

private slots:
    void ClickInEachMode_data();
    void ClickInEachMode();
    void ClicksOfOneModeFollow();
    void ClickedValue_data();
    void ClickedValue();
    void ClickedFrame_data();
    void ClickedFrame();
    void ClickOnACurve();
    void ClickWithoutFrames();
    void ClickExtendsThePolyline();
    void ModeAgainAfterLoading();
    void UnknownModeKeepsThePicker();
};

void GraphMouseTest::ClickInEachMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("added");  // %1 is the clicked value
    QTest::newRow("panning adds nothing") << PlotHands::PanAndZoom << QStringList();
    QTest::newRow("manual points take the clicked value")
        << PlotHands::ManualPoints << QStringList{"[40:40]|Section", ">40|%1"};
    QTest::newRow("flat points take an X")
        << PlotHands::FlatPoints << QStringList{"[40:40]|Section", ">40|X"};
}

void GraphMouseTest::ClickInEachMode()
{
    QFETCH(int, mode);
    QFETCH(QStringList, added);
    Hands->ChooseMode(mode);
    const QPoint pixel = Hands->InFrame(40);
    const double value = Hands->ValueAt(pixel);
    Hands->Click(pixel);
    QCOMPARE(Manual->Rows(), QStringList(added.replaceInStrings("%1", SixDigits(value))));
    QCOMPARE(LocalRows() + GlobalRows(), QStringList());
    QCOMPARE(Hands->Modes().currentIndex(), mode);
    for (const QString& row : added)
    {
        const bool isPoint = row.startsWith('>');
        const QTreeWidgetItem* item = isPoint ? Manual->Item(0, 0) : Manual->Item(0);
        QCOMPARE(item->flags().testFlag(Qt::ItemIsEditable), isPoint);
    }
}

void GraphMouseTest::ClicksOfOneModeFollow()
{
    Hands->ChooseMode(PlotHands::FlatPoints);
    for (const int frame : {40, 10, 90})
    {
        Hands->Click(Hands->InFrame(frame));
    }
    QCOMPARE(Manual->Rows(), QStringList({"[10:90]|Section", ">40|X", ">10|X", ">90|X"}));
    Hands->ChooseMode(PlotHands::PanAndZoom);
    Hands->Click(Hands->InFrame(50));
    QCOMPARE(Manual->Tree().topLevelItem(0)->childCount(), 3);
}

void GraphMouseTest::ClickedValue_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::newRow("of a pixel axis") << -50.0 << 50.0;
    QTest::newRow("of degrees") << -0.8 << 0.3;
    QTest::newRow("with more digits than are kept") << 123456.0 << 345678.0;
    QTest::newRow("in powers of ten") << 1.0e7 << 9.0e7;
    QTest::newRow("tiny") << 0.00001 << 0.00009;
}

void GraphMouseTest::ClickedValue()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    Hands->SetAxes(0.0, 100.0, lowest, highest);
    Hands->ChooseMode(PlotHands::ManualPoints);
    const QPoint pixel = Hands->PixelAt(40.5, lowest + (highest - lowest) * 0.7);
    const double value = Hands->ValueAt(pixel);
    Hands->Click(pixel);
    QCOMPARE(Manual->Item(0, 0)->text(1), SixDigits(value));
}

void GraphMouseTest::ClickedFrame_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("title");
    QTest::newRow("cut, not rounded") << 40.8 << "40"
                                      << "[40:40]|Section";
    QTest::newRow("cut toward zero before frame 0") << -0.7 << "0"
                                                    << "[0:0]|Section";
    QTest::newRow("a negative frame is kept in its row") << -3.5 << "-3"
                                                         << "[0:0]|Section";
    QTest::newRow("a frame behind the video too") << 105.5 << "105"
                                                  << "[99:99]|Section";
}

void GraphMouseTest::ClickedFrame()
{
    QFETCH(double, x);
    QFETCH(QString, frame);
    QFETCH(QString, title);
    Hands->SetAxes(-10.0, 110.0, -50.0, 50.0);
    Hands->ChooseMode(PlotHands::FlatPoints);
    Hands->Click(Hands->PixelAt(x, 0.0));
    QCOMPARE(Manual->Rows(), QStringList({title, '>' + frame + "|X"}));
}

/** Frame 40 of the path lies at 82. */
void GraphMouseTest::ClickOnACurve()
{
    Manual->Window.LoadAndPlot();
    Hands->ChooseMode(PlotHands::ManualPoints);
    const auto map = Hands->Plot().canvasMap(QwtPlot::yLeft);
    Hands->Click(Hands->PixelAt(40.5, 82.0));
    const QStringList rows = Manual->Rows();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.first(), QStringLiteral("[40:40]|Section"));
    const double pixelHeight = qAbs(map.invTransform(1.0) - map.invTransform(0.0));
    QVERIFY(qAbs(Manual->Item(0, 0)->text(1).toDouble() - 82.0) <= pixelHeight);
}

void GraphMouseTest::ClickWithoutFrames()
{
    StartWindow(0);
    Hands->ChooseMode(PlotHands::FlatPoints);
    Hands->Click(Hands->InFrame(40));
    Hands->Click(Hands->InFrame(60));
    QCOMPARE(Manual->Rows(), QStringList({"[-1:-1]|Section", ">40|X", ">60|X"}));
}

void GraphMouseTest::ClickExtendsThePolyline()
{
    const auto* grid = dynamic_cast<const GridAndPos*>(
        Hands->Plot().itemList(QwtPlotItem::Rtti_PlotGrid).value(0));
    QVERIFY(grid != nullptr);
    Hands->ChooseMode(PlotHands::FlatPoints);
    Hands->Click(Hands->InFrame(40));
    Hands->Click(Hands->InFrame(60));
    QVERIFY(grid->ShowLine);
    QCOMPARE(grid->Line.size(), 2);
    QCOMPARE(static_cast<int>(grid->Line.last().x()), 60);
}

void GraphMouseTest::ModeAgainAfterLoading()
{
    Hands->ChooseMode(PlotHands::FlatPoints);
    Manual->Window.LoadSettings();
    QCOMPARE(Hands->Modes().currentIndex(), PlotHands::PanAndZoom);
    Hands->Click(Hands->InFrame(40));
    Manual->Window.GraphLeftClick(QPointF(40.5, 1.0));
    QCOMPARE(Manual->Rows(), QStringList());
}

/** As of an item that a form has and the window knows nothing of. */
void GraphMouseTest::UnknownModeKeepsThePicker()
{
    const auto* grid = dynamic_cast<const GridAndPos*>(
        Hands->Plot().itemList(QwtPlotItem::Rtti_PlotGrid).value(0));
    QVERIFY(grid != nullptr);
    Hands->Modes().addItem(QStringLiteral("unknown"));
    Hands->ChooseMode(PlotHands::ManualPoints);
    Hands->Modes().setCurrentIndex(PlotHands::GlobalIgnore + 1);  // not by way of the others
    Hands->Click(Hands->InFrame(40));
    QCOMPARE(grid->Line.size(), 1);
    QCOMPARE(Manual->Rows(), QStringList());
    QCOMPARE(Hands->Modes().currentIndex(), PlotHands::GlobalIgnore + 1);
}

QTEST_MAIN(GraphMouseTest)
#include "graphmouse_test.moc"
