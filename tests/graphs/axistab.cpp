// SPDX-License-Identifier: MIT
#include "graphs/axistab.h"

#include <QAbstractSpinBox>
#include <QTest>

#include <qwt_plot_curve.h>
#include <qwt_scale_div.h>

AxisTab::AxisTab(bool isPixelAxis)
    : Setup(isPixelAxis),
      Window(&Setup.Proj, &Setup.Path, QStringLiteral("down <- up"), &Setup.Proj.FlowV)
{}

void AxisTab::Show()
{
    Window.resize(996, 660);
    Window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&Window));
}

double AxisTab::Number(const char* field) const
{
    return Find<QAbstractSpinBox>(field)->property("value").toDouble();
}

QRect AxisTab::Place(const char* name) const
{
    const auto* widget = Find<QWidget>(name);
    return {widget->mapTo(&Window, QPoint()), widget->size()};
}

void AxisTab::Click(const char* box) const
{
    QVERIFY2(Box(box)->isVisible(), box);
    QTest::mouseClick(Box(box), Qt::LeftButton, Qt::NoModifier, {8, Box(box)->height() / 2});
}

void AxisTab::Type(const char* field, const QString& text) const
{
    auto* box = Find<QAbstractSpinBox>(field);
    QVERIFY2(box->isVisible(), field);
    box->selectAll();
    QTest::keyClicks(box, text);
    QTest::keyClick(box, Qt::Key_Return);
}

SimplePlot& AxisTab::Plot() const
{
    return *Window.findChild<SimplePlot*>();
}

GridAndPos& AxisTab::Grid() const
{
    return dynamic_cast<GridAndPos&>(*Plot().itemList(QwtPlotItem::Rtti_PlotGrid).first());
}

QStringList AxisTab::Curves() const
{
    QStringList titles;
    for (const QwtPlotItem* item : Plot().itemList(QwtPlotItem::Rtti_PlotCurve))
    {
        titles.append(item->title().text());
    }
    return titles;
}

QString AxisTab::Span(int axis) const
{
    const QwtScaleDiv& scale = Plot().axisScaleDiv(axis);
    return QStringLiteral("%1..%2").arg(scale.lowerBound()).arg(scale.upperBound());
}
