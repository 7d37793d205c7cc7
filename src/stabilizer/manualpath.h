// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <list>

/** A hand-set position of the camera path. */
struct ManualPathPoint
{
    std::int32_t FrameNr = 0;  ///< frame number
    /// Absolute position at that frame: pixels, or degrees on the rotation axis.
    double Value = -1.0;
};

/**
 * Points that are joined by straight lines; the stretch between them replaces the measured path.
 */
struct ManualPathSection
{
    std::list<ManualPathPoint>
        Points;  ///< ascending FrameNr when it comes from the editor, any order from a file
    std::int64_t SortKey = -1;  ///< used by the editor's tree alone
};
