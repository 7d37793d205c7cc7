// SPDX-License-Identifier: MIT
#include "batch/binaryfile.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/posrotstabilizer.h"

#include <fstream>
#include <type_traits>

namespace
{
/** One sample of the stabilization file. */
struct MotionRecord
{
    double X = 0.0;      ///< pixels
    double Y = 0.0;      ///< pixels
    double Angle = 0.0;  ///< radians
};

static_assert(sizeof(MotionRecord) == 24 && std::is_trivially_copyable_v<MotionRecord>);
}  // namespace

int PosRotStabilizer::WriteStabilizeFile()
{
    const std::int32_t type = TypeId();
    const int result = WriteMatchingFile(FileNames.StabilizationMatchingFile, &type, sizeof(type));
    if (result != ResultOk)
    {
        return result;
    }
    std::ofstream file;
    if (!OpenForWriting(file, FileNames.StabilizationFile, FileNames.SourceFile))
    {
        ProgramHost.Log(LogError, "Stabilizing file access error!");
        return ResultNoAccess;
    }
    const std::int32_t count = MotionX.size();
    WriteValue(file, count);
    for (int i = 0; i < count; ++i)
    {
        const MotionRecord record{MotionX.at(i), MotionY.at(i), MotionAngle.at(i)};
        WriteValue(file, record);
        if (!file)
        {
            return ResultDamaged;
        }
    }
    file.close();  // what a full disk refuses may show only here
    if (!file)
    {
        return ResultDamaged;
    }
    ProgramHost.Log(LogRun, "Stabilizing file written!");
    return ResultOk;
}

int PosRotStabilizer::ReadStabilizeFile()
{
    const std::int32_t type = TypeId();
    const int result = CheckMatchingFile(FileNames.StabilizationMatchingFile, &type, sizeof(type));
    if (result != ResultOk)
    {
        ProgramHost.Log(LogError, result == ResultOutOfDate ? "Stabilizing file out of date!"
                                                            : "Stabilizing file loading failed!");
        return result;
    }
    std::ifstream file(FileNames.StabilizationFile, std::ios::binary);
    if (!file.is_open())
    {
        ProgramHost.Log(LogError, "Stabilizing file access error!");
        return ResultNoAccess;
    }
    std::int32_t count = 0;
    if (!ReadValue(file, count))
    {
        return ResultDamaged;
    }
    // Deliberate: a count outside the limits reads nothing and counts as success all the same.
    if (count >= FewestEntries && count <= MostEntries)
    {
        PrepareFrames(count);
        for (int i = 0; i < count; ++i)
        {
            MotionRecord record;
            if (!ReadValue(file, record))
            {
                return ResultDamaged;
            }
            StoreMotion(record.X, record.Y, record.Angle, ToDegrees(record.Angle));
        }
    }
    StabilizeLoaded = true;
    ProgramHost.Log(LogRun, "Stabilizing file read successfully!");
    return ResultOk;
}
