// SPDX-License-Identifier: MIT
#include "stabilizer/croprectangle.h"

#include "batch/exportsettings.h"
#include "batch/logrecord.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/truncation.h"

#include <cstdio>

namespace
{
/** Size of the crop along one side: truncated, and made even for the codec. */
std::int32_t CroppedSize(int size, double cropFactor)
{
    const std::int32_t cropped = TruncateToInt32(size / cropFactor);
    return cropped % 2 != 0 ? cropped - 1 : cropped;
}

/** First pixel of a crop that is centred and then shifted. */
std::int32_t CropStart(int size, std::int32_t cropped, std::int32_t offset)
{
    const std::int64_t rest = std::int64_t{size} - cropped;
    return SaturateToInt32(rest / 2 + offset);
}
}  // namespace

int CropRectangle::Calculate(const ExportSettings& settings, int height, int width)
{
    CropWidth = CroppedSize(width, settings.CropFactor);
    CropHeight = CroppedSize(height, settings.CropFactor);
    Left = CropStart(width, CropWidth, settings.ExpOffH);
    Right = SaturateToInt32(std::int64_t{Left} + CropWidth);
    Top = CropStart(height, CropHeight, settings.ExpOffV);
    Bottom = SaturateToInt32(std::int64_t{Top} + CropHeight);

    char line[LogTextSize] = {};
    const auto report = [&line](const char* format, std::int32_t offset, std::int32_t value)
    { static_cast<void>(std::snprintf(line, sizeof(line), format, offset, value)); };
    if (Left < 0)
    {
        report("Offset horizontal=%d exceeds limits with lower value %d", settings.ExpOffH, Left);
    }
    if (Right >= width)
    {
        report("Offset horizontal=%d exceeds limits with higher value %d", settings.ExpOffH, Right);
    }
    if (Top < 0)
    {
        report("Offset vertical=%d exceeds limits with lower value %d", settings.ExpOffV, Top);
    }
    if (Bottom >= height)
    {
        report("Offset vertical=%d exceeds limits with higher value %d", settings.ExpOffV, Bottom);
    }
    Valid = line[0] == '\0';
    if (!Valid)
    {
        ProgramHost.Log(LogError, line);
        return 1;
    }
    return 0;
}

void CropRectangle::Reset()
{
    Valid = false;
    CropWidth = 0;
    CropHeight = 0;
}
