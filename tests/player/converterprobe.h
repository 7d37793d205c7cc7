// SPDX-License-Identifier: MIT
#pragma once

#include "player/playerconverter.h"
#include "project/project.h"
#include "support/freshhost.h"
#include "support/loglines.h"
#include "support/messageguard.h"

#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/**
 * A converter with all that it needs: project, stabilizer, log. Keeps what it sends and logs, in
 * order: "3 Offset ...", "source 40x30", "stabilized 36x26".
 */
struct ConverterProbe
{
    /** Nothing has come in yet: the first frame will be dropped. */
    ConverterProbe();
    ConverterProbe(const ConverterProbe&) = delete;
    ConverterProbe& operator=(const ConverterProbe&) = delete;

    /** Sends the frame that is dropped. The gate it locks is complained of at the end: announced.
     */
    void Wake(MessageGuard& guard);

    /** Converts a frame, in line. @return the events since the last call */
    QStringList Convert(const cv::Mat& frame, int index);

    QStringList Take();  ///< the events, and forgets them

    Project Proj;
    FreshHost Host;
    LogLines Lines;
    PlayerConverter Converter;
    QImage Source;                           ///< the last one, a copy
    QImage Stabilized;                       ///< the last one, a copy
    QVector<const uchar*> SourceBits;        ///< where the bits of each lay
    QVector<const uchar*> StabilizedBits;    ///< where the bits of each lay
    std::function<void()> OnSource = [] {};  ///< called with each source picture

private:
    QStringList Events;
};

/** Valid paths of @p frames frames that move nothing. */
void LayStillPath(int frames);

/** A colour for each pixel up to 2000 by 2000: neither black nor the green of the crop. */
[[nodiscard]] QRgb ColourAt(int x, int y);

/** A frame that shrinks to ColourAt in @p width by @p height: of squares with @p scale pixels. */
[[nodiscard]] cv::Mat SquareFrame(int width, int height, int scale = 2);

using Painting = std::function<QRgb(int x, int y)>;

/** Compares size and all pixels. @return an empty string, or the first difference */
[[nodiscard]] QString Difference(const QImage& actual, const QSize& size,
                                 const Painting& expected = ColourAt);
