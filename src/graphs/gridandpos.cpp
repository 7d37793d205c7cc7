// SPDX-License-Identifier: MIT
#include "graphs/gridandpos.h"

#include "stabilizer/truncation.h"

#include <qwt_painter.h>
#include <qwt_scale_map.h>

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

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
 * end. Strokes shorter than a pixel stay alone, as the painter rounds points otherwise than lines.
 */
class StrokeDrawer
{
public:
    /** @param painter  not owned; has the pen. @param mayJoin  false draws each stroke */
    StrokeDrawer(QPainter* painter, bool mayJoin) : Painter(painter), MayJoin(mayJoin) {}

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

    /** Draws what waits; call it behind the last stroke. */
    void Flush()
    {
        if (HasPending)
        {
            QwtPainter::drawLine(Painter, QPointF(Pending.X, Pending.From),
                                 QPointF(Pending.X, Pending.To));
            HasPending = false;
        }
    }

private:
    /** Both strokes run downward and share a piece of one pixel column. */
    [[nodiscard]] bool Overlaps(const Stroke& stroke) const
    {
        return std::floor(stroke.X) == std::floor(Pending.X) && IsLine(stroke) && IsLine(Pending) &&
               stroke.From <= Pending.To && Pending.From <= stroke.To;
    }

    /** At least a pixel long, downward, and at a place where the painter still counts in pixels. */
    [[nodiscard]] static bool IsLine(const Stroke& stroke)
    {
        constexpr double farthest = 1e6;  // pixels
        return stroke.To - stroke.From >= 1.0 && stroke.From >= -farthest && stroke.To <= farthest;
    }

    QPainter* Painter;
    bool MayJoin;
    bool HasPending = false;
    Stroke Pending;
};

/** Whether one unit is one opaque pixel, so that columns can be told from coordinates. */
bool PaintsPlainPixels(const QPainter* painter)
{
    const QPaintEngine* engine = painter->paintEngine();
    return engine != nullptr && engine->type() == QPaintEngine::Raster &&
           painter->device()->devicePixelRatioF() == 1.0 &&
           painter->combinedTransform().type() == QTransform::TxNone &&
           !painter->testRenderHint(QPainter::Antialiasing) && painter->opacity() == 1.0 &&
           painter->compositionMode() == QPainter::CompositionMode_SourceOver;
}

/** The frames, from the first to the one behind the last, whose strokes a painter may show. */
std::pair<int, int> VisibleFrames(const QPainter* painter, const QwtScaleMap& xMap, int count)
{
    if (!painter->hasClipping())
    {
        return {0, count};
    }
    constexpr double reach = 2.0;  // pixels that a stroke may reach beyond its coordinate, and some
    const QRectF clip = painter->clipBoundingRect();
    const auto [low, high] = std::minmax(
        {xMap.invTransform(clip.left() - reach), xMap.invTransform(clip.right() + reach)});
    return {TruncateToInt32(std::clamp(std::floor(low), 0.0, static_cast<double>(count))),
            TruncateToInt32(std::clamp(std::ceil(high) + 1.0, 0.0, static_cast<double>(count)))};
}
}  // namespace

void GridAndPos::draw(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap,
                      const QRectF& canvasRect) const
{
    const QPen pen = painter->pen();
    if (ShowMarginBand)
    {
        painter->setPen(Qt::darkCyan);
        DrawBand(painter, xMap, yMap);
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

void GridAndPos::DrawBand(QPainter* painter, const QwtScaleMap& xMap, const QwtScaleMap& yMap) const
{
    // Strokes outside the canvas cost nothing: a zoomed plot of hours of video draws a few frames.
    const auto [first, behind] = VisibleFrames(painter, xMap, BandCentres.size());
    StrokeDrawer drawer(painter, PaintsPlainPixels(painter));
    for (int i = first; i < behind; ++i)
    {
        const double centre = BandCentres.at(i);
        drawer.Add({xMap.transform(i), yMap.transform(centre + BandHalfHeight),
                    yMap.transform(centre - BandHalfHeight)});
    }
    drawer.Flush();
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
