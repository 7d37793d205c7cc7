// SPDX-License-Identifier: MIT
#pragma once

/** A number from the environment, or its default. */
[[nodiscard]] int NumberFromEnvironment(const char* name, int defaultValue);
