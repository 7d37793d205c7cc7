// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/** A stretch of frames whose motion does not count, for cuts, transitions or failed measurements.
 */
struct IgnoreSection
{
    std::int32_t Start = 0;  ///< first ignored frame
    std::int32_t End =
        1;  ///< first frame that counts again; a new section's -1 means the end of the video
    double Offset = 0.0;  ///< stored and shown; takes no part in any calculation
};
