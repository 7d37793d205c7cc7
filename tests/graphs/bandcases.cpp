// SPDX-License-Identifier: MIT
#include "graphs/bandcases.h"

#include <qwt_painter.h>

#include <QPainter>
#include <QPixmap>

#include <cmath>
#include <limits>

namespace
{
constexpr int Width = 120;  // pixels of the pictures
constexpr int Height = 60;

QwtScaleMap MapOf(double s1, double s2, double p1, double p2)
{
    QwtScaleMap map;
    map.setScaleInterval(s1, s2);
    map.setPaintInterval(p1, p2);
    return map;
}

double Between(QRandomGenerator& random, double low, double high)
{
    return low + (high - low) * random.generateDouble();
}

/** A wandering band of @p frames that fills the width of the picture. */
Band Wander(QRandomGenerator& random, int frames)
{
    static const double steps[] = {0.0, 0.3, 2.0, 12.0, 60.0};  // y units, of 60 in the picture
    static const double halves[] = {0.05, 0.6, 4.0, 25.0};
    const double step = steps[random.bounded(5)];
    Band band;
    band.HalfHeight = halves[random.bounded(4)] * random.generateDouble();
    double centre = Between(random, -20.0, 20.0);
    for (int i = 0; i < frames; ++i)
    {
        band.Centres.append(centre);
        centre += Between(random, -step, step);
        centre = std::abs(centre) > 40.0 ? 0.0 : centre;
    }
    band.X = MapOf(0.0, frames - 1.0, 0.0, Width - 1.0);
    band.Y = MapOf(-30.0, 30.0, Height - 1.0, 0.0);
    return band;
}

Band Dense(QRandomGenerator& random)
{
    return Wander(random, 300 + random.bounded(1500));
}

/** Replaces about one centre in ten. */
Band WithCentres(QRandomGenerator& random, const QVector<double>& values)
{
    Band band = Dense(random);
    for (double& centre : band.Centres)
    {
        centre = random.bounded(10) == 0 ? values.at(random.bounded(values.size())) : centre;
    }
    return band;
}

Band Zoomed(QRandomGenerator& random)
{
    Band band = Dense(random);
    const double left = Between(random, -100.0, band.Centres.size());
    const double bottom = Between(random, -40.0, 30.0);
    band.X = MapOf(left, left + Between(random, 0.5, 600.0), 0.0, Width - 1.0);
    band.Y = MapOf(bottom, bottom + Between(random, 0.001, 80.0), Height - 1.0, 0.0);
    return band;
}

Band OnOddPlaces(QRandomGenerator& random)
{
    Band band = Dense(random);
    band.X.setPaintInterval(Between(random, -20.0, 20.0), Between(random, 90.0, 200.0));
    band.Y.setPaintInterval(Between(random, 40.0, 90.0), Between(random, -20.0, 10.0));
    return band;
}

/** Steps and half heights down to parts of what a painter can tell, 1/64 of a pixel. */
Band Creeping(QRandomGenerator& random)
{
    Band band = Dense(random);
    const double step = std::pow(10.0, Between(random, -4.0, -1.0));
    double centre = Between(random, -20.0, 20.0);
    for (double& place : band.Centres)
    {
        place = centre;
        centre += Between(random, -step, step);
    }
    band.HalfHeight = step * Between(random, 0.3, 2.0);
    return band;
}

/** Every coordinate a whole or a half or a quarter pixel, where rounding turns. */
Band OnPixelEdges(QRandomGenerator& random)
{
    Band band = Dense(random);
    const double perPixel = 1 << random.bounded(4);
    band.X = MapOf(0.0, 128.0 * perPixel, random.bounded(4) / 4.0, 128.0 + random.bounded(4) / 4.0);
    band.Y = MapOf(0.0, 64.0, 64.0, 0.0);
    for (double& centre : band.Centres)
    {
        centre = std::round(centre * 4.0) / 4.0 + 32.0;
    }
    band.HalfHeight = random.bounded(40) / 8.0;
    return band;
}

template <typename Change>
std::function<Band(QRandomGenerator&)> Changed(Change change)
{
    return [change](QRandomGenerator& random)
    {
        Band band = Dense(random);
        change(band);
        return band;
    };
}

const QRectF Inner(30.0, 10.0, 60.0, 40.0);

/** Places the painter by @p move and clips it to the canvas there, as a plot does. */
template <typename Move>
Draw Clipped(Move move)
{
    return [move](QPainter* painter)
    {
        move(painter);
        painter->setClipRect(QRectF(0.0, 0.0, Width, Height));
    };
}

}  // namespace

void DrawPlainly(QPainter* painter, const Band& band)
{
    painter->setPen(Qt::darkCyan);
    for (int i = 0; i < band.Centres.size(); ++i)
    {
        const double x = band.X.transform(i);
        const double v = band.Centres.at(i);
        QwtPainter::drawLine(painter, QPointF(x, band.Y.transform(v + band.HalfHeight)),
                             QPointF(x, band.Y.transform(v - band.HalfHeight)));
    }
}

QVector<BandShape> BandShapes()
{
    const double infinity = std::numeric_limits<double>::infinity();
    return {
        {"many strokes per column", Dense},
        {"few strokes",
         [](QRandomGenerator& random) { return Wander(random, 2 + random.bounded(30)); }},
        {"zoomed and shifted maps", Zoomed},
        {"odd places", OnOddPlaces},
        {"pixel edges", OnPixelEdges},
        {"inverted y axis", Changed([](Band& b) { b.Y.setPaintInterval(0.0, Height - 1.0); })},
        {"inverted x axis", Changed([](Band& b) { b.X.setPaintInterval(Width - 1.0, 0.0); })},
        {"negative half height", Changed([](Band& b) { b.HalfHeight = -b.HalfHeight; })},
        {"no half height", Changed([](Band& b) { b.HalfHeight = 0.0; }), false},
        {"half a picture of half height", Changed([](Band& b) { b.HalfHeight = 30.0; })},
        {"endless half height", Changed([](Band& b) { b.HalfHeight = 1e300; }), false},
        {"a map of one column", Changed([](Band& b) { b.X.setPaintInterval(40.0, 40.0); })},
        {"NaN centres",
         [](QRandomGenerator& random) { return WithCentres(random, {std::nan("")}); }},
        {"endless centres",
         [infinity](QRandomGenerator& random) {
             return WithCentres(random, {infinity, -infinity});
         }},
        {"centres of some pictures away",
         [](QRandomGenerator& random) {
             return WithCentres(random, {-900.0, 300.0, 5000.0});
         }},
        {"centres of 1e4 to 1e6",
         [](QRandomGenerator& random) {
             return WithCentres(random, {1e4, -1e5, 1e6, -3e4});
         }},
        {"centres of 1e8 to 1e300",
         [](QRandomGenerator& random) {
             return WithCentres(random, {1e8, -1e9, 1e12, -1e300});
         }},
        {"centres of 1e13 and 1e300",
         [](QRandomGenerator& random) {
             return WithCentres(random, {1e13, 1e300, -1e300});
         }},
        {"tiny half height", Changed([](Band& b) { b.HalfHeight = 0.001; }), false},
        {"strokes too short for a pixel that touch", Creeping, false},
        {"half height of a sixteenth of a pixel", Changed([](Band& b) { b.HalfHeight = 0.0625; })},
    };
}

QVector<BandTarget> BandTargets()
{
    const QRectF whole(0.0, 0.0, Width, Height);
    return {
        {"image without a clip", whole, [](QPainter*) {}},
        {"transparent image", whole, [](QPainter*) {}, QImage::Format_ARGB32_Premultiplied},
        {"image of 16 bits", whole, [](QPainter*) {}, QImage::Format_RGB16},
        {"clip", Inner, [](QPainter* p) { p->setClipRect(Inner); }},
        {"round clip", whole,
         [](QPainter* p) { p->setClipRegion(QRegion(Inner.toRect(), QRegion::Ellipse)); }},
        {"antialiasing", whole, [](QPainter* p) { p->setRenderHint(QPainter::Antialiasing); }},
        {"enlarged painter", whole, Clipped([](QPainter* p) { p->scale(1.7, 1.3); })},
        {"reduced painter", whole, Clipped([](QPainter* p) { p->scale(0.35, 0.8); })},
        {"painter moved by parts of a pixel", whole,
         Clipped([](QPainter* p) { p->translate(3.4, 1.7); })},
        {"turned painter", whole, Clipped([](QPainter* p) { p->rotate(20.0); })},
        {"enlarged window", whole,
         Clipped([](QPainter* p) { p->setWindow(0, 0, Width / 3, Height / 2); })},
        {"half opaque", whole, [](QPainter* p) { p->setOpacity(0.5); }},
        {"adding colours", whole,
         [](QPainter* p) { p->setCompositionMode(QPainter::CompositionMode_Plus); }},
        {"two pixels per unit", whole, [](QPainter*) {}, QImage::Format_RGB32, 2.0},
        {"five pixels for four units", whole, [](QPainter*) {}, QImage::Format_RGB32, 1.25},
        {"pixmap of three pixels for two units", whole, [](QPainter*) {}, QImage::Format_RGB32, 1.5,
         true},
        {"pixmap", whole, [](QPainter*) {}, QImage::Format_RGB32, 1.0, true},
        {"clipped pixmap", Inner, [](QPainter* p) { p->setClipRect(Inner); }, QImage::Format_RGB32,
         1.0, true},
    };
}

QImage PaintedOn(const BandTarget& target, const Draw& draw)
{
    const auto paint = [&](QPaintDevice* device)
    {
        QPainter painter(device);
        target.Prepare(&painter);
        draw(&painter);
    };
    const QSize size = QSize(Width, Height) * target.PixelRatio;
    if (target.IsPixmap)
    {
        QPixmap pixmap(size);
        pixmap.setDevicePixelRatio(target.PixelRatio);
        pixmap.fill(Qt::black);
        paint(&pixmap);
        return pixmap.toImage();
    }
    QImage image(size, target.Format);
    image.setDevicePixelRatio(target.PixelRatio);
    image.fill(target.Format == QImage::Format_ARGB32_Premultiplied ? Qt::transparent : Qt::black);
    paint(&image);
    return image;
}
