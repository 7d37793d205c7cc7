// SPDX-License-Identifier: MIT
#pragma once

#include "app/log.h"
#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"

#include <qwt_legend.h>
#include <qwt_legend_label.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_map.h>

#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStringList>
#include <QTest>
#include <QWidget>

/** A plot that counts what is asked of it and what reaches its screen. */
class PlotProbe : public SimplePlot
{
public:
    explicit PlotProbe(QWidget* parent = nullptr) : SimplePlot(parent)
    {
        setObjectName(QStringLiteral("plotProbe"));
    }

    void replot() override
    {
        ++Replots;
        SimplePlot::replot();
    }

    bool event(QEvent* event) override
    {
        Paints += event->type() == QEvent::Paint ? 1 : 0;
        return SimplePlot::event(event);
    }

    /** Shows the plot with one curve of two samples, @p xEnd frames apart, and forgets the counts.
     */
    [[nodiscard]] bool ShowWithCurve(double xEnd = 100.0)
    {
        resize(600, 400);
        AddCurve(QStringLiteral("probe"), Qt::blue, 1.0);
        SetCurveData(0, {-10.0, 10.0}, {0.0, xEnd});
        show();
        Refresh();
        const bool isShown = QTest::qWaitForWindowExposed(this);
        Replots = 0;
        Paints = 0;
        return isShown;
    }

    [[nodiscard]] GridAndPos& Grid() const
    {
        const QwtPlotItemList grids = itemList(QwtPlotItem::Rtti_PlotGrid);
        auto* grid = grids.size() == 1 ? dynamic_cast<GridAndPos*>(grids.constFirst()) : nullptr;
        if (grid == nullptr)
        {
            qFatal("the plot has not the one grid");
        }
        return *grid;
    }

    [[nodiscard]] QVector<QwtPlotCurve*> CurveItems() const
    {
        QVector<QwtPlotCurve*> curves;
        for (QwtPlotItem* item : itemList(QwtPlotItem::Rtti_PlotCurve))
        {
            curves.append(static_cast<QwtPlotCurve*>(item));
        }
        return curves;
    }

    [[nodiscard]] QStringList LegendTexts() const
    {
        QStringList texts;
        for (const QwtPlotCurve* curve : CurveItems())
        {
            const auto* legendOf = static_cast<const QwtLegend*>(legend());
            const QWidget* entry = legendOf->legendWidget(itemToInfo(
                const_cast<QwtPlotCurve*>(curve)));  // the toolkit asks so, and only compares
            const auto* label = qobject_cast<const QwtLegendLabel*>(entry);
            texts.append(label == nullptr ? QStringLiteral("none") : label->text().text());
        }
        return texts;
    }

    /** Both ends of an axis as it stands after the scales were brought up to date. */
    [[nodiscard]] QVector<double> Ends(int axis)
    {
        updateAxes();
        return {axisScaleDiv(axis).lowerBound(), axisScaleDiv(axis).upperBound()};
    }

    /** Plot coordinates of a pixel of the canvas. */
    [[nodiscard]] QPointF At(const QPoint& pixel) const
    {
        return {canvasMap(xBottom).invTransform(pixel.x()),
                canvasMap(yLeft).invTransform(pixel.y())};
    }

    int Replots = 0;  ///< calls of replot
    int Paints = 0;   ///< paint events of the plot itself
};

/** The samples of a drawn curve as "x:y x:y". */
[[nodiscard]] inline QString Samples(const QwtPlotCurve* curve)
{
    QStringList texts;
    for (std::size_t i = 0; i < curve->dataSize(); ++i)
    {
        const QPointF sample = curve->sample(static_cast<int>(i));
        texts.append(QStringLiteral("%1:%2").arg(sample.x()).arg(sample.y()));
    }
    return texts.join(QLatin1Char(' '));
}

/** The log's widgets on a window of their own. */
class LogView
{
public:
    LogView() { ProgramLog.Setup(&Window); }

    /** The last message of any level. */
    [[nodiscard]] QString Label() const { return Window.findChild<QLabel*>("labelLog")->text(); }

    /** The messages of the levels 0 to 3. */
    [[nodiscard]] QString Area() const
    {
        return Window.findChild<QPlainTextEdit*>("plainTextEdit")->toPlainText();
    }

private:
    QWidget Window;
};
