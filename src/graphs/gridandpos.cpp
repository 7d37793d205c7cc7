// SPDX-License-Identifier: MIT
#include "graphs/gridandpos.h"

#include "stabilizer/truncation.h"

#include <qwt_painter.h>
#include <qwt_scale_map.h>

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{
/** A vertical line, in pixels, from its start to its end. */
struct Stroke
{
    double X = 0.0;
    double From = 0.0;
    double To = 0.0;
};

/**
 * Draws strokes one after the other, but as one those that fall into one pixel column and overlap.
 * Not one pixel differs from drawing each: a line of one pixel's width fills its column from end to
 * end.
 */
class StrokeDrawer
{
public:
    /** @param painter  not owned; has the pen. @param mayJoin  false draws each stroke */
    StrokeDrawer(QPainter* painter, bool mayJoin) : Painter(painter), MayJoin(mayJoin) {}
    ~StrokeDrawer() { Flush(); }
    StrokeDrawer(const StrokeDrawer&) = delete;
    StrokeDrawer& operator=(const StrokeDrawer&) = delete;

    void Add(const Stroke& stroke)
    {
        if (MayJoin && HasPending && Overlaps(stroke))
        {
            Pending.From = std::min(Pending.From, stroke.From);
            Pending.To = std::max(Pending.To, stroke.To);
            return;
        }
        Flush();
        Pending = stroke;
        HasPending = true;
    }

private:
    /** Both strokes run downward and share a piece of one pixel column. */
    [[nodiscard]] bool Overlaps(const Stroke& stroke) const
    {
        return std::floor(stroke.X) == std::floor(Pending.X) && stroke.From <= stroke.To &&
               Pending.From <= Pending.To && stroke.From <= Pending.To && Pending.From <= stroke.To;
    }

    void Flush()
    {
        if (HasPending)
        {
            QwtPainter::drawLine(Painter, QPointF(Pending.X, Pending.From),
                                 QPointF(Pending.X, Pending.To));
            HasPending = false;
        }
    }

    QPainter* Painter;
    bool MayJoin;
    bool HasPending = false;
    Stroke Pending;
};

/** Whether one unit is one pixel, so that columns can be told from coordinates. */
bool PaintsPlainPixels(const QPainter* painter)
{
    const QPaintEngine* engine = painter->paintEngine();
    return engine != nullptr && engine->type() == QPaintEngine::Raster &&
           painter->device()->devicePixelRatio() == 1 &&
           painter->transform().type() == QTransform::TxNone &&
           !painter->testRenderHint(QPainter::Antialiasing);
}
}  // namespace

void GridAndPos::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                      const QRectF& canvasRect) const
{
    const QPen pen = painter->pen();
    if (ShowMarginBand)
    {
        painter->setPen(Qt::darkCyan);
        DrawBand(painter, xMap, yMap, canvasRect);
    }
    painter->setPen(pen);
    QwtPlotGrid::draw(painter, xMap, yMap, canvasRect);
    if (ShowPosition)
    {
        painter->setPen(Qt::yellow);
        const double x = xMap.transform(Position);
        QwtPainter::drawLine(painter, QPointF(x, canvasRect.top()),
                             QPointF(x, canvasRect.top() + canvasRect.height() - 1.0));
    }
    if (ShowLine && !Line.isEmpty())
    {
        painter->setPen(Qt::lightGray);
        DrawLine(painter, xMap, yMap);
    }
}

void GridAndPos::DrawBand(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                          const QRectF& canvasRect) const
{
    // Strokes outside the canvas cost nothing: a zoomed plot of hours of video draws a few frames.
    constexpr double reach = 2.0;  // pixels that a stroke may reach beyond its coordinate, and some
    const auto [low, high] = std::minmax({xMap.invTransform(canvasRect.left() - reach),
                                          xMap.invTransform(canvasRect.right() + reach)});
    const auto frames = static_cast<double>(BandCentres.size());
    const int first = TruncateToInt32(std::clamp(std::floor(low), 0.0, frames));
    const int behind = TruncateToInt32(std::clamp(std::ceil(high) + 1.0, 0.0, frames));

    StrokeDrawer drawer(painter, PaintsPlainPixels(painter));
    for (int i = first; i < behind; ++i)
    {
        const double centre = BandCentres.at(i);
        drawer.Add({xMap.transform(i), yMap.transform(centre + BandHalfHeight),
                    yMap.transform(centre - BandHalfHeight)});
    }
}

void GridAndPos::DrawLine(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap) const
{
    constexpr double dot = 2.0;  // pixels
    const auto map = [&](const QPointF& point)
    { return QPointF(xMap.transform(point.x()), yMap.transform(point.y())); };
    QwtPainter::drawEllipse(painter, QRectF(map(Line.first()), QSizeF(dot, dot)));
    for (int i = 1; i < Line.size(); ++i)
    {
        QwtPainter::drawLine(painter, map(Line.at(i - 1)), map(Line.at(i)));
    }
}
