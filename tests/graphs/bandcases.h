// SPDX-License-Identifier: MIT
#pragma once

#include <qwt_scale_map.h>

#include <QImage>
#include <QRandomGenerator>
#include <QRectF>
#include <QVector>

#include <functional>

class QPainter;

using Draw = std::function<void(QPainter*)>;

/** A band with the maps that it is drawn by. */
struct Band
{
    QVector<double> Centres;  ///< per frame, y units
    double HalfHeight = 0.0;  ///< y units
    QwtScaleMap X;
    QwtScaleMap Y;
};

/** A kind of band, of which each state of the generator gives another one. */
struct BandShape
{
    const char* Name;
    std::function<Band(QRandomGenerator&)> Make;
    bool CanBeSeen = true;  ///< false where few of the strokes leave a pixel
};

/** What is painted on, and how the painter stands. */
struct BandTarget
{
    const char* Name;
    QRectF Canvas;
    Draw Prepare;
    QImage::Format Format = QImage::Format_RGB32;
    double PixelRatio = 1.0;
    bool IsPixmap = false;
};

[[nodiscard]] QVector<BandShape> BandShapes();
[[nodiscard]] QVector<BandTarget> BandTargets();

/** What @p draw leaves on a fresh target. */
[[nodiscard]] QImage PaintedOn(const BandTarget& target, const Draw& draw);

/** The oracle: one stroke per frame, whatever lies where. */
void DrawPlainly(QPainter* painter, const Band& band);
