// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

inline constexpr int ClipWidth = 160;    ///< pixels
inline constexpr int ClipHeight = 120;   ///< pixels
inline constexpr int ClipFps = 25;       ///< frames per second
inline constexpr int ShortFrames = 12;   ///< a job over them takes a blink
inline constexpr int LongFrames = 1000;  ///< a job over them takes seconds; for aborts

/** Writes ShortFrames frames of a shaking camera to @p path, an .avi. */
[[nodiscard]] bool WriteShortClip(const QString& path);

/** Writes LongFrames frames of a camera that stands still to @p path, an .avi. */
[[nodiscard]] bool WriteLongClip(const QString& path);

/** Frames that can be read from a video; 0 if it does not open. */
[[nodiscard]] int CountFrames(const QString& path);
