// SPDX-License-Identifier: MIT
#pragma once

#include <QPen>
#include <QPolygonF>
#include <QVector>

#include <qwt_plot_grid.h>

/**
 * The grid of a plot, with three things that are drawn along with it: a band of one vertical stroke
 * per frame under the grid, and above it a marker of the play position and the line of clicked
 * points. The plot that it is attached to owns it. User interface thread only.
 */
class GridAndPos : public QwtPlotGrid
{
public:
    ~GridAndPos() override = default;

    void draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
              const QRectF& canvasRect) const override;

    // Field order is part of the design. All positions in plot coordinates: frames and y units.
    bool ShowPosition = false;
    bool ShowMarginBand = false;
    bool ShowLine = false;
    double Position = 0.0;        ///< x of the marker, frames
    double BandHalfHeight = 0.0;  ///< y units
    QPolygonF Line;               ///< clicked points
    QVector<double> BandCentres;  ///< y of the band's middle, one per frame
    /// Deliberate: stored with the band and never used; the band is dark cyan, which the curves on
    /// it are chosen for.
    QPen BandPen;

private:
    void DrawBand(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap) const;
    void DrawLine(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap) const;
};
