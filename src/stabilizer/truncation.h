// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

/**
 * @p value cut toward zero to 32 bits. Numbers beyond the range give its nearest end and NaN gives
 * 0: a plain cast of them is undefined, and they come from video files and hand-written projects.
 */
[[nodiscard]] constexpr std::int32_t TruncateToInt32(double value)
{
    if (value >= static_cast<double>(std::numeric_limits<std::int32_t>::max()))
    {
        return std::numeric_limits<std::int32_t>::max();
    }
    if (value <= static_cast<double>(std::numeric_limits<std::int32_t>::min()))
    {
        return std::numeric_limits<std::int32_t>::min();
    }
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

/** @p value held to the range of 32 bits. */
[[nodiscard]] constexpr std::int32_t SaturateToInt32(std::int64_t value)
{
    return value > std::numeric_limits<std::int32_t>::max()
               ? std::numeric_limits<std::int32_t>::max()
           : value < std::numeric_limits<std::int32_t>::min()
               ? std::numeric_limits<std::int32_t>::min()
               : static_cast<std::int32_t>(value);
}
