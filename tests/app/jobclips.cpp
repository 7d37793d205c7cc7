// SPDX-License-Identifier: MIT
#include "app/jobclips.h"

#include "support/testvideo.h"

namespace
{
constexpr TestVideo::Format ClipFormat{ClipWidth, ClipHeight, ShortFrames, ClipFps};
}

bool WriteShortClip(const QString& path)
{
    return !TestVideo::WriteStreetClip(path, ClipFormat).empty();
}

bool WriteLongClip(const QString& path)
{
    return !TestVideo::WriteStreetClip(path, ClipFormat, ConstantMotion(LongFrames, {})).empty();
}

int CountFrames(const QString& path)
{
    return static_cast<int>(TestVideo::ReadAllFrames(path).size());
}
