// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

/**
 * Does the job whose memory a benchmark measures in a process of its own, when the arguments of
 * this process ask for it, and prints the figures. @return the exit code then
 */
[[nodiscard]] std::optional<int> RunAsMemory();
