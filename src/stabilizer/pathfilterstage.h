// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

#include <cstdint>

/** One filter of a camera path, or the blend of all. The lists are indexed by frame number. */
struct PathFilterStage
{
    QVector<double> Path;  ///< filtered path, units of the axis; padded while it is being filtered
    QVector<double> Correction;  ///< how far the frame must move to lie on Path, units of the axis
    QVector<double>
        Margin;  ///< left inside the crop border, units of the axis; negative: black shows
    QVector<std::int32_t> Weight;     ///< share of this stage in the blend, 0 to BlendFrames
    std::uint64_t WindowLength = 20;  ///< W, frames in one moving average
    std::uint64_t Order = 3;          ///< K, moving averages in a row
    std::uint64_t Delay = 0;          ///< d, frames of padding at each end and shift of the result
    bool Enabled = false;
};
