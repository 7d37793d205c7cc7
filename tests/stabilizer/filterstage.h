// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/pathfilterstage.h"

#include <cstdint>

/** A stage that stands alone and is switched on. */
[[nodiscard]] inline PathFilterStage EnabledStage(std::uint64_t windowLength, std::uint64_t order,
                                                  std::uint64_t delay)
{
    PathFilterStage stage;
    stage.WindowLength = windowLength;
    stage.Order = order;
    stage.Delay = delay;
    stage.Enabled = true;
    return stage;
}
