// SPDX-License-Identifier: MIT
#pragma once

/**
 * True when both paths name one existing file, also through links. Asked before a file is opened
 * for writing, so that no setting makes the program overwrite the user's video.
 */
[[nodiscard]] bool IsSameFile(const char* first, const char* second);
