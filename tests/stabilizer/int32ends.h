// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

// The ends of the whole numbers that settings and files can hold.
inline constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
