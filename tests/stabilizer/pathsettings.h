// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/axisfiltersettings.h"

#include <cstdint>

/** Settings of an axis with that filter type and strength, all else as by default. */
[[nodiscard]] inline AxisFilterSettings Settings(std::int32_t type, std::int32_t strength)
{
    AxisFilterSettings settings;
    settings.AvgPathOrder = type;
    settings.AvgPathImages = strength;
    return settings;
}
