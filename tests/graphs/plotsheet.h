// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/gridandpos.h"

#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPointF>
#include <QString>
#include <QVector>

inline const QColor White(Qt::white);
inline const QColor BandColour(Qt::darkCyan);
inline const QColor MarkerColour(Qt::yellow);
inline const QColor LineColour(Qt::lightGray);
inline const QColor GridColour(Qt::red);

/** The first pixel that differs, with both colours; empty when none does. */
[[nodiscard]] inline QString FirstDifference(const QImage& actual, const QImage& expected)
{
    for (int y = 0; y < expected.height(); ++y)
    {
        for (int x = 0; x < expected.width(); ++x)
        {
            if (actual.pixel(x, y) != expected.pixel(x, y))
            {
                return QStringLiteral("%1, %2 is %3 instead of %4")
                    .arg(x)
                    .arg(y)
                    .arg(actual.pixel(x, y), 8, 16)
                    .arg(expected.pixel(x, y), 8, 16);
            }
        }
    }
    return actual.size() == expected.size() ? QString() : QStringLiteral("other size");
}

/** A sheet of 100 by 80 white pixels and a grid on it: 10 pixels per unit, 0, 0 at the lower left.
 */
class Sheet
{
public:
    Sheet()
    {
        X.setScaleInterval(0.0, 10.0);
        X.setPaintInterval(0.0, 100.0);
        Y.setScaleInterval(0.0, 8.0);
        Y.setPaintInterval(80.0, 0.0);
        Grid.setMajorPen(GridColour, 1.0);
        Grid.enableX(false);
        Grid.enableY(false);
    }

    /** One grid line at x 5, pixel 50, and one at y 4, pixel 40. */
    void ShowGrid()
    {
        const QList<double> none;
        Grid.enableX(true);
        Grid.enableY(true);
        Grid.setXDiv(QwtScaleDiv(0.0, 10.0, none, none, {5.0}));
        Grid.setYDiv(QwtScaleDiv(0.0, 8.0, none, none, {4.0}));
    }

    /** Frames 0 to 10 around @p centre, which covers rows 10 * (8 - centre -+ halfHeight). */
    void ShowBand(double centre, double halfHeight)
    {
        Grid.ShowMarginBand = true;
        Grid.BandCentres = QVector<double>(11, centre);
        Grid.BandHalfHeight = halfHeight;
    }

    void ShowLine(const QVector<QPointF>& line)
    {
        Grid.ShowLine = true;
        Grid.Line = line;
    }

    [[nodiscard]] QImage Painted() const
    {
        QImage image(100, 80, QImage::Format_RGB32);
        image.fill(White);
        QPainter painter(&image);
        Grid.draw(&painter, X, Y, Canvas);
        return image;
    }

    GridAndPos Grid;
    QRectF Canvas{0.0, 0.0, 100.0, 80.0};
    QwtScaleMap X;
    QwtScaleMap Y;
};

/** First and last row of that colour in a column, and whether it fills what lies between. */
[[nodiscard]] inline QString RowsOf(const QImage& image, int column, const QColor& colour)
{
    QVector<int> rows;
    for (int y = 0; y < image.height(); ++y)
    {
        if (image.pixelColor(column, y) == colour)
        {
            rows.append(y);
        }
    }
    if (rows.isEmpty())
    {
        return QStringLiteral("none");
    }
    const bool isWhole = rows.last() - rows.first() + 1 == rows.size();
    return QStringLiteral("%1-%2%3")
        .arg(rows.first())
        .arg(rows.last())
        .arg(QLatin1String(isWhole ? "" : " with gaps"));
}

/** The smallest rectangle around all pixels of that colour. */
[[nodiscard]] inline QRect Extent(const QImage& image, const QColor& colour)
{
    QRect extent;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            extent |= image.pixelColor(x, y) == colour ? QRect(x, y, 1, 1) : QRect();
        }
    }
    return extent;
}
