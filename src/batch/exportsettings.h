// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/**
 * How the stabilized frames become the exported video. Field names are the keys of the project
 * file. The values here hold until a project is loaded; the reader of projects has its own
 * defaults.
 */
struct ExportSettings
{
    bool EnableCrop = false;      ///< cut frames to the crop rectangle
    bool EnRescale = false;       ///< scale frames to ExpResH by ExpResV
    double CropFactor = 1.0;      ///< source size divided by crop size, shown as percent
    double ExpAngle = 0.0;        ///< extra rotation, degrees; only together with a crop
    std::int32_t ExpResH = 1920;  ///< output width when rescaling, pixels
    std::int32_t ExpResV = 1080;  ///< output height when rescaling, pixels
    std::int32_t ExpOffH = 0;     ///< shift of the crop to the right, source pixels
    std::int32_t ExpOffV = 0;     ///< shift of the crop downward, source pixels
};

/**
 * Angles, in degrees, that turn the export: those beyond a full turn and those nobody sees do not.
 */
[[nodiscard]] constexpr bool IsRotation(double angle)
{
    return (angle > 0.001 && angle < 360.0) || (angle > -360.0 && angle < -0.001);
}
