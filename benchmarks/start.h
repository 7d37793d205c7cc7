// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/**
 * Does what the benchmark of the start asks this process for, when its arguments say so. @return
 * the exit code then
 */
[[nodiscard]] std::optional<int> RunAsStart();
