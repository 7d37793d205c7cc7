// SPDX-License-Identifier: MIT
#include "graphs/graphmousetest.h"
#include "support/testhome.h"

#include <qwt_scale_div.h>

#include <QCheckBox>
#include <QTest>
#include <QWheelEvent>

namespace
{
const TestHome Home;
}  // namespace

/** Drags over the plot of a graph window in each mode: rectangles, and panning; and the wheel. */
class GraphDragTest : public GraphMouseBase
{
    Q_OBJECT

private slots:
    void DragInEachMode_data();
    void DragInEachMode();
    void DragFromAnyCorner_data();
    void DragFromAnyCorner();
    void DragCutsTowardZero();
    void DragAgain();
    void RectInAnyMode_data();
    void RectInAnyMode();
    void PanMovesTheAxes_data();
    void PanMovesTheAxes();
    void WheelScalesTheAxes_data();
    void WheelScalesTheAxes();
};

void GraphDragTest::DragInEachMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("points");
    QTest::addColumn<QStringList>("local");
    QTest::addColumn<QStringList>("global");
    const QStringList section = {"    20|    60"};
    QTest::newRow("panning adds nothing")
        << PlotHands::PanAndZoom << 0 << QStringList() << QStringList();
    QTest::newRow("manual points count where the button goes down")
        << PlotHands::ManualPoints << 1 << QStringList() << QStringList();
    QTest::newRow("flat points count where the button goes down")
        << PlotHands::FlatPoints << 1 << QStringList() << QStringList();
    QTest::newRow("a local section") << PlotHands::LocalIgnore << 0 << section << QStringList();
    QTest::newRow("a global section") << PlotHands::GlobalIgnore << 0 << QStringList() << section;
}

void GraphDragTest::DragInEachMode()
{
    QFETCH(int, mode);
    QFETCH(int, points);
    QFETCH(QStringList, local);
    QFETCH(QStringList, global);
    Hands->ChooseMode(mode);
    Hands->Drag(Hands->PixelAt(20.5, 30.0), Hands->PixelAt(60.5, -20.0));
    QCOMPARE(Manual->Rows().filter(">20|").size(), points);
    QCOMPARE(Manual->Rows().filter(">").size(), points);
    QCOMPARE(LocalRows(), local);
    QCOMPARE(GlobalRows(), global);
    QCOMPARE(Hands->Modes().currentIndex(),
             mode < PlotHands::LocalIgnore ? mode : PlotHands::PanAndZoom);
    Manual->Window.SaveSettings();
    const auto& saved = Manual->Axis.Proj;
    QCOMPARE(static_cast<int>(saved.FlowH.IgnoreSections.size()), local.size());
    QCOMPARE(static_cast<int>(saved.GlobalIgnoreSections.size()), global.size());
}

void GraphDragTest::DragFromAnyCorner_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::newRow("right and down") << QPointF(20.5, 30.0) << QPointF(60.5, -20.0);
    QTest::newRow("right and up") << QPointF(20.5, -20.0) << QPointF(60.5, 30.0);
    QTest::newRow("left and down") << QPointF(60.5, 30.0) << QPointF(20.5, -20.0);
    QTest::newRow("left and up") << QPointF(60.5, -20.0) << QPointF(20.5, 30.0);
}

void GraphDragTest::DragFromAnyCorner()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    Hands->ChooseMode(PlotHands::LocalIgnore);
    Hands->Drag(Hands->PixelAt(from.x(), from.y()), Hands->PixelAt(to.x(), to.y()));
    const QTreeWidgetItem* item = Manual->Tree("treeWidgetIgnore").topLevelItem(0);
    QVERIFY(item != nullptr);
    QCOMPARE(item->text(0) + '|' + item->text(1) + '|' + item->text(2),
             QStringLiteral("    20|    60|   0"));
    QVERIFY(item->flags().testFlag(Qt::ItemIsEditable));
}

void GraphDragTest::DragCutsTowardZero()
{
    Hands->SetAxes(-10.0, 110.0, -50.0, 50.0);
    Hands->ChooseMode(PlotHands::GlobalIgnore);
    Hands->Drag(Hands->PixelAt(-3.5, 30.0), Hands->PixelAt(60.8, -20.0));
    Hands->ChooseMode(PlotHands::GlobalIgnore);
    Hands->Drag(Hands->PixelAt(-0.6, 30.0), Hands->PixelAt(105.5, -20.0));
    QCOMPARE(GlobalRows(), QStringList({"    -3|    60", "     0|   105"}));
}

void GraphDragTest::DragAgain()
{
    Hands->ChooseMode(PlotHands::LocalIgnore);
    Hands->Drag(Hands->InFrame(10), Hands->InFrame(20));
    Hands->Drag(Hands->InFrame(30), Hands->InFrame(40));  // pans by now
    QCOMPARE(LocalRows(), QStringList("    10|    20"));
    Hands->SetAxes(0.0, 100.0, -50.0, 50.0);
    Hands->ChooseMode(PlotHands::LocalIgnore);
    Hands->Drag(Hands->InFrame(50), Hands->InFrame(60));
    QCOMPARE(LocalRows(), QStringList({"    10|    20", "    50|    60"}));
}

void GraphDragTest::RectInAnyMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("local");
    QTest::addColumn<QStringList>("global");
    const QStringList section = {"     7|    19"};
    QTest::newRow("panning") << PlotHands::PanAndZoom << QStringList() << QStringList();
    QTest::newRow("manual points") << PlotHands::ManualPoints << QStringList() << QStringList();
    QTest::newRow("flat points") << PlotHands::FlatPoints << QStringList() << QStringList();
    QTest::newRow("local") << PlotHands::LocalIgnore << section << QStringList();
    QTest::newRow("global") << PlotHands::GlobalIgnore << QStringList() << section;
}

/** A rectangle that is still under way when the mode changes only resets the mode. */
void GraphDragTest::RectInAnyMode()
{
    QFETCH(int, mode);
    QFETCH(QStringList, local);
    QFETCH(QStringList, global);
    Hands->ChooseMode(mode);
    Manual->Window.GraphRect(QRectF(7.9, -3.0, 11.2, 6.0));  // to 19.1
    QCOMPARE(LocalRows(), local);
    QCOMPARE(GlobalRows(), global);
    QCOMPARE(Manual->Rows(), QStringList());
    QCOMPARE(Hands->Modes().currentIndex(), PlotHands::PanAndZoom);
}

void GraphDragTest::PanMovesTheAxes_data()
{
    QTest::addColumn<int>("former");
    QTest::newRow("from the start") << PlotHands::PanAndZoom;
    QTest::newRow("after clicks for points") << PlotHands::FlatPoints;
    QTest::newRow("after drags for sections") << PlotHands::GlobalIgnore;
}

void GraphDragTest::PanMovesTheAxes()
{
    QFETCH(int, former);
    Hands->ChooseMode(former);
    Hands->ChooseMode(PlotHands::PanAndZoom);
    const QPoint from = Hands->PixelAt(60.0, 10.0);
    const QPoint to = Hands->PixelAt(40.0, 30.0);  // the graph follows: 20 to the left, 20 up
    const double pixelWidth = 100.0 / Hands->Plot().canvas()->width();
    const double pixelHeight = 100.0 / Hands->Plot().canvas()->height();
    Hands->Drag(from, to);
    const QwtScaleDiv& x = Hands->Plot().axisScaleDiv(QwtPlot::xBottom);
    const QwtScaleDiv& y = Hands->Plot().axisScaleDiv(QwtPlot::yLeft);
    QVERIFY(qAbs(x.lowerBound() - 20.0) < 2.0 * pixelWidth);
    QVERIFY(qAbs(x.upperBound() - 120.0) < 2.0 * pixelWidth);
    QVERIFY(qAbs(y.lowerBound() + 70.0) < 2.0 * pixelHeight);
    QVERIFY(qAbs(y.upperBound() - 30.0) < 2.0 * pixelHeight);
    QCOMPARE(Manual->Rows() + LocalRows() + GlobalRows(), QStringList());
}

void GraphDragTest::WheelScalesTheAxes_data()
{
    QTest::addColumn<bool>("zoomX");
    QTest::addColumn<bool>("zoomY");
    QTest::newRow("both axes") << true << true;
    QTest::newRow("the timeline held") << false << true;
    QTest::newRow("the deviation held") << true << false;
    QTest::newRow("both held") << false << false;
}

void GraphDragTest::WheelScalesTheAxes()
{
    QFETCH(bool, zoomX);
    QFETCH(bool, zoomY);
    for (const auto& [name, on] :
         {std::pair("checkBoxZoomTimeline", zoomX), std::pair("checkBoxZoomDeviation", zoomY)})
    {
        auto* box = Manual->Window.findChild<QCheckBox*>(QLatin1String(name));
        QVERIFY(box->isChecked());
        if (!on)
        {
            QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
        }
    }
    QWidget* canvas = Hands->Plot().canvas();
    const QPointF middle = canvas->rect().center();
    QWheelEvent wheel(middle, canvas->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(canvas, &wheel);
    QCOMPARE(qAbs(Hands->Plot().axisScaleDiv(QwtPlot::xBottom).range() - 100.0) > 1.0, zoomX);
    QCOMPARE(qAbs(Hands->Plot().axisScaleDiv(QwtPlot::yLeft).range() - 100.0) > 1.0, zoomY);
    QCOMPARE(Manual->Rows() + LocalRows() + GlobalRows(), QStringList());
}

QTEST_MAIN(GraphDragTest)
#include "graphdrag_test.moc"
