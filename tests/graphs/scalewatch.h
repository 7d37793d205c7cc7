// SPDX-License-Identifier: MIT
#pragma once

#include <qwt_plot.h>
#include <qwt_scale_engine.h>

#include <QVector>

#include <limits>

/**
 * A linear scale that notes the ends it is asked to divide between. The toolkit answers inverted
 * extremes with an empty scale, so that the plot itself does not tell which they were.
 */
class ScaleWatch : public QwtLinearScaleEngine
{
public:
    /** Puts a new one on an axis of @p plot, which owns it. */
    [[nodiscard]] static const ScaleWatch& On(QwtPlot& plot, int axis)
    {
        auto* watch = new ScaleWatch;
        plot.setAxisScaleEngine(axis, watch);
        return *watch;
    }

    QwtScaleDiv divideScale(double x1, double x2, int maxMajorSteps, int maxMinorSteps,
                            double stepSize) const override
    {
        Ends = {x1, x2};
        return QwtLinearScaleEngine::divideScale(x1, x2, maxMajorSteps, maxMinorSteps, stepSize);
    }

    mutable QVector<double> Ends;  ///< the last ones: from, to; empty before the first division
};

/** The ends of an axis without curves: from the largest number to the smallest one. */
inline const QVector<double> InvertedExtremes = {std::numeric_limits<double>::max(),
                                                 std::numeric_limits<double>::lowest()};
