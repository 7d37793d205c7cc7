// SPDX-License-Identifier: MIT
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/camerapath.h"
#include "stabilizer/posrotstabilizer.h"

namespace
{
// What margins of the rotation are measured against. Deliberate: the two sizes give different
// margins. The crop border of the first is 0, so that the adaptive filters leave the rotation of
// the frames to the first filter, while the graph, in degrees, may show them.
constexpr double RotationSize = 0.5;          // radians
constexpr double RotationSizeDegrees = 90.0;  // degrees
}  // namespace

int PosRotStabilizer::GeneratePath()
{
    if (!StabilizeLoaded)
    {
        ProgramHost.Log(LogError, "No data to smooth!");
        return ResultNoData;
    }
    ProgramHost.Log(LogRun, "Generate Smoothing Path");
    PathGenerated = true;
    PathHorizontal.Generate(MotionX, FrameWidth, FrameRate);
    PathVertical.Generate(MotionY, FrameHeight, FrameRate);
    PathRotation.Generate(MotionAngle, RotationSize, FrameRate);
    PathRotationDegrees.Generate(MotionDegrees, RotationSizeDegrees, FrameRate);
    return ResultOk;
}
