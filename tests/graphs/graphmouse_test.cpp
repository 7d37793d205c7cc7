// SPDX-License-Identifier: MIT
#include "dialogs/dialogguard.h"
#include "graphs/gridandpos.h"
#include "graphs/manualpathwindow.h"
#include "graphs/plothands.h"
#include "support/testhome.h"

#include <qwt_scale_div.h>

#include <QCheckBox>
#include <QTest>
#include <QWheelEvent>

#include <cstdio>

namespace
{
const TestHome Home;

constexpr int Frames = 100;

QString SixDigits(double value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.6g", value);
    return QString::fromLatin1(text);
}
}  // namespace

/** The mouse on the plot of a graph window, in each of the modes that the user can choose. */
class GraphMouseTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ClickInEachMode_data();
    void ClickInEachMode();
    void DragInEachMode_data();
    void DragInEachMode();
    void ClicksOfOneModeFollow();
    void ClickedValue_data();
    void ClickedValue();
    void ClickedFrame_data();
    void ClickedFrame();
    void ClickOnACurve();
    void ClickWithoutFrames();
    void ClickExtendsThePolyline();
    void DragFromAnyCorner_data();
    void DragFromAnyCorner();
    void DragCutsTowardZero();
    void DragAgain();
    void RectInAnyMode_data();
    void RectInAnyMode();
    void ModeAgainAfterLoading();
    void PanMovesTheAxes_data();
    void PanMovesTheAxes();
    void WheelScalesTheAxes_data();
    void WheelScalesTheAxes();

private:
    [[nodiscard]] QStringList LocalRows() const;
    [[nodiscard]] QStringList GlobalRows() const;

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<ManualPathWindow> Manual;
    std::unique_ptr<PlotHands> Hands;
};

void GraphMouseTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Manual = std::make_unique<ManualPathWindow>(Frames);
    Hands = std::make_unique<PlotHands>(Manual->Window);
    Hands->SetAxes(0.0, 100.0, -50.0, 50.0);
}

void GraphMouseTest::cleanup()
{
    Hands.reset();
    Manual.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

QStringList GraphMouseTest::LocalRows() const
{
    return ManualPathWindow::RowsOf(Manual->Tree("treeWidgetIgnore"));
}

QStringList GraphMouseTest::GlobalRows() const
{
    return ManualPathWindow::RowsOf(Manual->Tree("treeWidgetGlobalIgnore"));
}

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

void GraphMouseTest::DragInEachMode_data()
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

void GraphMouseTest::DragInEachMode()
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
    Hands.reset();
    Manual = std::make_unique<ManualPathWindow>(0);
    Hands = std::make_unique<PlotHands>(Manual->Window);
    Hands->SetAxes(0.0, 100.0, -50.0, 50.0);
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

void GraphMouseTest::DragFromAnyCorner_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::newRow("right and down") << QPointF(20.5, 30.0) << QPointF(60.5, -20.0);
    QTest::newRow("right and up") << QPointF(20.5, -20.0) << QPointF(60.5, 30.0);
    QTest::newRow("left and down") << QPointF(60.5, 30.0) << QPointF(20.5, -20.0);
    QTest::newRow("left and up") << QPointF(60.5, -20.0) << QPointF(20.5, 30.0);
}

void GraphMouseTest::DragFromAnyCorner()
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

void GraphMouseTest::DragCutsTowardZero()
{
    Hands->SetAxes(-10.0, 110.0, -50.0, 50.0);
    Hands->ChooseMode(PlotHands::GlobalIgnore);
    Hands->Drag(Hands->PixelAt(-3.5, 30.0), Hands->PixelAt(60.8, -20.0));
    Hands->ChooseMode(PlotHands::GlobalIgnore);
    Hands->Drag(Hands->PixelAt(-0.6, 30.0), Hands->PixelAt(105.5, -20.0));
    QCOMPARE(GlobalRows(), QStringList({"    -3|    60", "     0|   105"}));
}

void GraphMouseTest::DragAgain()
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

void GraphMouseTest::RectInAnyMode_data()
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
void GraphMouseTest::RectInAnyMode()
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

void GraphMouseTest::ModeAgainAfterLoading()
{
    Hands->ChooseMode(PlotHands::FlatPoints);
    Manual->Window.LoadSettings();
    QCOMPARE(Hands->Modes().currentIndex(), PlotHands::PanAndZoom);
    Hands->Click(Hands->InFrame(40));
    Manual->Window.GraphLeftClick(QPointF(40.5, 1.0));
    QCOMPARE(Manual->Rows(), QStringList());
}

void GraphMouseTest::PanMovesTheAxes_data()
{
    QTest::addColumn<int>("former");
    QTest::newRow("from the start") << PlotHands::PanAndZoom;
    QTest::newRow("after clicks for points") << PlotHands::FlatPoints;
    QTest::newRow("after drags for sections") << PlotHands::GlobalIgnore;
}

void GraphMouseTest::PanMovesTheAxes()
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

void GraphMouseTest::WheelScalesTheAxes_data()
{
    QTest::addColumn<bool>("zoomX");
    QTest::addColumn<bool>("zoomY");
    QTest::newRow("both axes") << true << true;
    QTest::newRow("the timeline held") << false << true;
    QTest::newRow("the deviation held") << true << false;
    QTest::newRow("both held") << false << false;
}

void GraphMouseTest::WheelScalesTheAxes()
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

QTEST_MAIN(GraphMouseTest)
#include "graphmouse_test.moc"
