// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QPointF>

class QwtPlot;

/**
 * What the user sees of a plot: its canvas, and where on it the axes put a point. A coordinate
 * lies between two pixels, so a place means the pixels that are at most one away.
 */
class PlotPicture
{
public:
    explicit PlotPicture(QwtPlot* plot);

    /** The pixel of a point of the plot: frame and value. */
    [[nodiscard]] static QPoint PixelOf(const QwtPlot* plot, const QPointF& point);
    [[nodiscard]] QPoint PixelOf(const QPointF& point) const { return PixelOf(Plot, point); }

    /** True when one of the pixels at the place of @p point has that colour. */
    [[nodiscard]] bool Shows(const QColor& colour, const QPointF& point) const;

    /** True when one of the rows at that place has the colour from column to column. */
    [[nodiscard]] bool ShowsAcross(const QColor& colour, const QPointF& point) const;

    /** Number of pixels of that colour on the whole canvas. */
    [[nodiscard]] int Count(const QColor& colour) const;

    /** Number of them in the pixel column nearest to @p frame that has the most. */
    [[nodiscard]] int CountInColumn(const QColor& colour, double frame) const;

    /** First and last row of that colour in the columns at @p frame; -1 and -1 without any. */
    struct Rows
    {
        int First = -1;
        int Last = -1;
    };
    [[nodiscard]] Rows RowsOf(const QColor& colour, double frame) const;

    /** Rows of the canvas inside its frame. */
    [[nodiscard]] int Height() const;

private:
    [[nodiscard]] bool IsColour(int x, int y, const QColor& colour) const;

    const QwtPlot* Plot;
    QImage Image;
};
