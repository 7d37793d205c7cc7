// SPDX-License-Identifier: MIT
#include "stabilizer/axisfiltersettings.h"

namespace
{
constexpr double RadiansPerDegree = 0.017453292519943295;
}

void CopyAsRadians(const AxisFilterSettings& degrees, AxisFilterSettings& radians)
{
    radians.Lock = degrees.Lock;
    radians.UseModified = degrees.UseModified;
    radians.UseStartValue = degrees.UseStartValue;
    radians.UseEndValue = degrees.UseEndValue;
    radians.AvgPathImages = degrees.AvgPathImages;
    radians.AvgPathOrder = degrees.AvgPathOrder;
    radians.IgnoreStartFramesMargin = degrees.IgnoreStartFramesMargin;
    radians.ManualPath = degrees.ManualPath;
    radians.StartValue = degrees.StartValue * RadiansPerDegree;
    radians.EndValue = degrees.EndValue * RadiansPerDegree;
}
