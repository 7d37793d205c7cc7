// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/**
 * A stretch of frames whose motion does not count, for cuts, transitions or failed measurements.
 */
struct IgnoreSection
{
    std::int32_t Start = 0;  ///< first ignored frame
    /// First frame that counts again. The editor's new sections say -1, which it turns into the
    /// end.
    std::int32_t End = 1;
    double Offset = 0.0;  ///< stored and shown; takes no part in any calculation
};
