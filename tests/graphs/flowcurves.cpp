// SPDX-License-Identifier: MIT
#include "graphs/flowcurves.h"

#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"

#include <qwt_plot_curve.h>

namespace
{
/** The same as a curve is told by Curves. */
QString MarkedCurve(const QString& title, const char* colour, int k)
{
    QString told = title + QLatin1Char(' ') + QLatin1String(colour);
    for (int frame = 0; frame < MarkedFrames; ++frame)
    {
        told += QStringLiteral(" %1:%2").arg(frame).arg(100 * k + frame);
    }
    return told;
}

QList<const QwtPlotCurve*> CurveItems(const SimplePlot* plot)
{
    QList<const QwtPlotCurve*> curves;
    for (const QwtPlotItem* item : plot->itemList(QwtPlotItem::Rtti_PlotCurve))
    {
        curves.append(static_cast<const QwtPlotCurve*>(item));
    }
    return curves;
}

}  // namespace

HiddenFlow::HiddenFlow(bool isPixelAxis) : Axis(isPixelAxis)
{
    Flow.GetPlot()->setParent(&Page);
}

const GridAndPos& HiddenFlow::Grid() const
{
    return *static_cast<GridAndPos*>(Plot()->itemList(QwtPlotItem::Rtti_PlotGrid).first());
}

QVector<double> Marked(int k)
{
    QVector<double> list;
    for (int frame = 0; frame < MarkedFrames; ++frame)
    {
        list.append(100.0 * k + frame);
    }
    return list;
}

void FillByHand(CameraPath& path)
{
    path.DetectedShakiness = Marked(1);
    path.UsedShakiness = Marked(2);
    path.Result.Correction = Marked(3);
    path.ShakinessPath = Marked(4);
    path.ModifiedPath = Marked(5);
    path.Result.Path = Marked(7);
    path.Result.Margin = Marked(9);
    path.Result.Weight = QVector<std::int32_t>(MarkedFrames, 30);
    path.Base.Path = Marked(11);
    path.Base.Correction = Marked(12);
    path.Base.Margin = Marked(13);
    path.Base.Weight = QVector<std::int32_t>(MarkedFrames, 40);
    path.SuperSmooth.Enabled = false;
    path.FrameSize = 640.0;
    path.FramesPerSecond = 25.0;
}

void FillStrongFilter(CameraPath& path)
{
    path.SuperSmooth.Path = Marked(6);
    path.SuperSmooth.Margin = Marked(8);
    path.SuperSmooth.Correction = Marked(14);
    path.SuperSmooth.Weight = QVector<std::int32_t>(MarkedFrames, 50);
    path.SuperSmooth.Enabled = true;
}

QStringList CurvesUnder(unsigned conditions)
{
    struct Claim
    {
        const char* Title;
        const char* Colour;
        int List;
        unsigned All;   ///< conditions that must all be given
        unsigned Any;   ///< of which one must be given, if there are any
        unsigned None;  ///< of which none may be given
    };
    static const Claim claims[] = {
        {"Detected Shakiness", "#0000ff", 1, Deviation, 0, 0},
        {"Used Shakiness", "#add8e6", 2, Deviation, LocalIgnore | GlobalIgnore, 0},
        {"Correction", "#008000", 3, Correction, 0, 0},
        {"Shakiness Path", "#ff0000", 4, CameraFlow, 0, 0},
        {"Modified Path", "#800080", 5, CameraFlow | Manual, 0, 0},
        {"F5 Super Smooth", "#808080", 6, CameraFlow | Adaptive, 0, 0},
        {"Smoothed Path", "#ffc0cb", 7, CameraFlow, 0, 0},
        {"F5 Margin", "#a52a2a", 8, Margin | Adaptive, 0, 0},
        {"Applied Margin", "#ffa500", 9, Margin | Adaptive, 0, 0},
        {"Margin", "#ffa500", 9, Margin, 0, Adaptive},
    };
    QStringList told;
    for (const Claim& claim : claims)
    {
        const bool any = claim.Any == 0 || (claim.Any & conditions) != 0;
        if ((claim.All & ~conditions) == 0 && any && (claim.None & conditions) == 0)
        {
            told.append(MarkedCurve(QLatin1String(claim.Title), claim.Colour, claim.List));
        }
    }
    return told;
}

QStringList Titles(const SimplePlot* plot)
{
    QStringList titles;
    for (const QwtPlotCurve* curve : CurveItems(plot))
    {
        titles.append(curve->title().text());
    }
    return titles;
}

QStringList Curves(const SimplePlot* plot)
{
    QStringList told;
    for (const QwtPlotCurve* curve : CurveItems(plot))
    {
        QString text = curve->title().text() + QLatin1Char(' ') + curve->pen().color().name();
        for (int i = 0; i < static_cast<int>(curve->dataSize()); ++i)
        {
            const QPointF sample = curve->sample(i);
            text += QStringLiteral(" %1:%2").arg(sample.x()).arg(sample.y());
        }
        told.append(text);
    }
    return told;
}

QVector<double> Values(const SimplePlot* plot, const QString& title)
{
    QVector<double> values;
    for (const QwtPlotCurve* curve : CurveItems(plot))
    {
        for (int i = 0; curve->title().text() == title && i < static_cast<int>(curve->dataSize());
             ++i)
        {
            values.append(curve->sample(i).y());
        }
    }
    return values;
}
