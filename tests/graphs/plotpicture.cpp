// SPDX-License-Identifier: MIT
#include "graphs/plotpicture.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>

PlotPicture::PlotPicture(QwtPlot* plot)
    : Plot(plot), Image(plot->canvas()->grab().toImage().convertToFormat(QImage::Format_RGB32))
{}

QPoint PlotPicture::PixelOf(const QwtPlot* plot, const QPointF& point)
{
    return {static_cast<int>(
                std::floor(plot->canvasMap(QwtPlot::xBottom).transform(point.x()))),  // truncated
            static_cast<int>(std::floor(plot->canvasMap(QwtPlot::yLeft).transform(point.y())))};
}

bool PlotPicture::IsColour(int x, int y, const QColor& colour) const
{
    return Image.rect().contains(x, y) && Image.pixel(x, y) == colour.rgb();
}

bool PlotPicture::Shows(const QColor& colour, const QPointF& point) const
{
    const QPoint centre = PixelOf(point);
    for (int y = centre.y() - 1; y <= centre.y() + 1; ++y)
    {
        for (int x = centre.x() - 1; x <= centre.x() + 1; ++x)
        {
            if (IsColour(x, y, colour))
            {
                return true;
            }
        }
    }
    return false;
}

bool PlotPicture::ShowsAcross(const QColor& colour, const QPointF& point) const
{
    const QPoint centre = PixelOf(point);
    for (int y = centre.y() - 1; y <= centre.y() + 1; ++y)
    {
        if (IsColour(centre.x() - 1, y, colour) && IsColour(centre.x(), y, colour) &&
            IsColour(centre.x() + 1, y, colour))
        {
            return true;
        }
    }
    return false;
}

int PlotPicture::Count(const QColor& colour) const
{
    int count = 0;
    for (int y = 0; y < Image.height(); ++y)
    {
        for (int x = 0; x < Image.width(); ++x)
        {
            count += IsColour(x, y, colour) ? 1 : 0;
        }
    }
    return count;
}

int PlotPicture::CountInColumn(const QColor& colour, double frame) const
{
    const int centre = PixelOf({frame, 0.0}).x();
    int most = 0;
    for (int x = centre - 1; x <= centre + 1; ++x)
    {
        int count = 0;
        for (int y = 0; y < Image.height(); ++y)
        {
            count += IsColour(x, y, colour) ? 1 : 0;
        }
        most = std::max(most, count);
    }
    return most;
}

PlotPicture::Rows PlotPicture::RowsOf(const QColor& colour, double frame) const
{
    const int centre = PixelOf({frame, 0.0}).x();
    Rows rows;
    for (int y = 0; y < Image.height(); ++y)
    {
        for (int x = centre - 1; x <= centre + 1; ++x)
        {
            if (IsColour(x, y, colour))
            {
                rows.First = rows.First < 0 ? y : rows.First;
                rows.Last = y;
            }
        }
    }
    return rows;
}

int PlotPicture::Height() const
{
    return Plot->canvas()->contentsRect().height();
}
