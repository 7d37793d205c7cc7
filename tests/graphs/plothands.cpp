// SPDX-License-Identifier: MIT
#include "graphs/plothands.h"

#include <QMouseEvent>
#include <QTest>

QComboBox& PlotHands::Modes() const
{
    return *Window.findChild<QComboBox*>(QStringLiteral("comboBoxGraphMouse"));
}

void PlotHands::ChooseMode(int mode) const
{
    QTest::keyClick(&Modes(), Qt::Key_Home);
    for (int i = 0; i < mode; ++i)
    {
        QTest::keyClick(&Modes(), Qt::Key_Down);
    }
    QCOMPARE(Modes().currentIndex(), mode);
}

void PlotHands::SetAxes(double minX, double maxX, double minY, double maxY) const
{
    Plot().setAxisScale(QwtPlot::xBottom, minX, maxX);
    Plot().setAxisScale(QwtPlot::yLeft, minY, maxY);
    Plot().replot();
    QApplication::processEvents();  // the axes take their room from the canvas
    QVERIFY(Plot().canvas()->width() >= 600);
}

QPoint PlotHands::PixelAt(double x, double y) const
{
    return {qRound(Plot().canvasMap(QwtPlot::xBottom).transform(x)),
            qRound(Plot().canvasMap(QwtPlot::yLeft).transform(y))};
}

double PlotHands::ValueAt(const QPoint& pixel) const
{
    return Plot().canvasMap(QwtPlot::yLeft).invTransform(pixel.y());
}

void PlotHands::Click(const QPoint& pixel) const
{
    QTest::mouseClick(Plot().canvas(), Qt::LeftButton, Qt::NoModifier, pixel);
}

void PlotHands::Drag(const QPoint& from, const QPoint& to) const
{
    QWidget* canvas = Plot().canvas();
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
    for (const QPoint& pixel : {(from + to) / 2, to})
    {
        QMouseEvent move(QEvent::MouseMove, pixel, canvas->mapToGlobal(pixel), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(canvas, &move);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
}
