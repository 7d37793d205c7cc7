// SPDX-License-Identifier: MIT
#include "stabilizer/croprectangle.h"

#include "batch/exportsettings.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/truncation.h"

#include <QString>

#include <algorithm>

namespace
{
/** Size of the crop along one side: truncated, and made even for the codec. */
std::int32_t CroppedSize(int size, double cropFactor)
{
    const std::int32_t cropped = TruncateToInt32(size / cropFactor);
    // A negative factor, which only a hand-written project can hold, leaves nothing.
    return std::max(cropped % 2 != 0 ? cropped - 1 : cropped, 0);
}

/** First pixel of a crop that is centred and then shifted. */
std::int32_t CropStart(int size, std::int32_t cropped, std::int32_t offset)
{
    const std::int64_t rest = std::int64_t{size} - cropped;
    return SaturateToInt32(rest / 2 + offset);
}

/** The line for the log. Deliberate: of several violated limits only the last one is told. */
QString LastViolation(const CropRectangle& crop, const ExportSettings& settings, int height,
                      int width)
{
    if (crop.Bottom >= height)
    {
        return QString::asprintf("Offset vertical=%d exceeds limits with higher value %d",
                                 settings.ExpOffV, crop.Bottom);
    }
    if (crop.Top < 0)
    {
        return QString::asprintf("Offset vertical=%d exceeds limits with lower value %d",
                                 settings.ExpOffV, crop.Top);
    }
    if (crop.Right >= width)
    {
        return QString::asprintf("Offset horizontal=%d exceeds limits with higher value %d",
                                 settings.ExpOffH, crop.Right);
    }
    return QString::asprintf("Offset horizontal=%d exceeds limits with lower value %d",
                             settings.ExpOffH, crop.Left);
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

    Valid = Left >= 0 && Right < width && Top >= 0 && Bottom < height;
    if (Valid)
    {
        return ResultOk;
    }
    ProgramHost.Log(LogError, qPrintable(LastViolation(*this, settings, height, width)));
    return 1;
}

void CropRectangle::Reset()
{
    Valid = false;
    CropWidth = 0;
    CropHeight = 0;
}
