// SPDX-License-Identifier: MIT
#include "batch/binaryfile.h"
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"

#include <array>
#include <cstring>
#include <fstream>
#include <memory>
#include <new>

namespace
{
constexpr std::size_t SourcePathSize =
    256;  ///< bytes, the closing zero included; longer paths are cut alike
constexpr std::int32_t FewestPoints = 3;
constexpr std::int32_t MostPoints = 19999;

std::array<char, SourcePathSize> SourcePathField(const char* sourceFile)
{
    std::array<char, SourcePathSize> field{};
    std::memcpy(field.data(), sourceFile, strnlen(sourceFile, SourcePathSize - 1));
    return field;
}

[[nodiscard]] bool ReadPoints(std::ifstream& file, std::vector<cv::Point2f>& points)
{
    for (cv::Point2f& point : points)
    {
        if (!ReadValue(file, point.x) || !ReadValue(file, point.y))
        {
            return false;
        }
    }
    return true;
}

/**
 * Reads the points of one frame. Deliberate: a count outside the limits reads no points and keeps
 * those in memory, with no attempt to find the next frame in the file.
 */
[[nodiscard]] bool ReadFramePoints(std::ifstream& file, std::vector<cv::Point2f>& points)
{
    std::int32_t count = 0;
    if (!ReadValue(file, count))
    {
        return false;
    }
    if (count < FewestPoints || count > MostPoints)
    {
        return true;
    }
    points.resize(static_cast<std::size_t>(count));
    return ReadPoints(file, points);
}
}  // namespace

int Stabilize::WriteMatchingFile(const char* path, const void* payload, std::size_t size) const
{
    std::ofstream file;
    if (!OpenForWriting(file, path, FileNames.SourceFile))
    {
        ProgramHost.Log(LogError, "Could not write matching file (.cfg)!");
        return ResultNoAccess;
    }
    const std::array<char, SourcePathSize> source = SourcePathField(FileNames.SourceFile);
    file.write(source.data(), source.size());
    WriteValue(file, FrameWidth);
    WriteValue(file, FrameHeight);
    WriteValue(file, FrameRate);
    file.write(static_cast<const char*>(payload), static_cast<std::streamsize>(size));
    return ResultOk;
}

int Stabilize::CheckMatchingFile(const char* path, const void* expected, std::size_t size)
{
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open())
    {
        ProgramHost.Log(LogError, "Could not open matching file (.cfg)!");
        return ResultNoAccess;
    }
    std::array<char, SourcePathSize> source{};
    file.read(source.data(), source.size());
    if (source != SourcePathField(FileNames.SourceFile))
    {
        ProgramHost.Log(LogError, "Out of date!");
        return ResultOutOfDate;
    }
    // Deliberate: taken before the payload is looked at, so that they are known without the video.
    // A short file is left to the comparison of the payload.
    static_cast<void>(ReadValue(file, FrameWidth));
    static_cast<void>(ReadValue(file, FrameHeight));
    static_cast<void>(ReadValue(file, FrameRate));
    const std::unique_ptr<char[]> payload(new (std::nothrow) char[size]());
    if (payload == nullptr)
    {
        ProgramHost.Log(LogError, "Out of memory!");
        return ResultDamaged;
    }
    file.read(payload.get(), static_cast<std::streamsize>(size));
    if (std::memcmp(payload.get(), expected, size) != 0)
    {
        ProgramHost.Log(LogError, "Data file out of date!");
        return ResultOutOfDate;
    }
    return ResultOk;
}

int Stabilize::WriteTracking() const
{
    const int result = WriteMatchingFile(FileNames.TrackingMatchingFile, &TrackingParameters,
                                         sizeof(TrackingParameters));
    if (result != ResultOk)
    {
        return result;
    }
    std::ofstream file;
    if (!OpenForWriting(file, FileNames.TrackingFile, FileNames.SourceFile))
    {
        ProgramHost.Log(LogError, "Could not write Tracking file!");
        return ResultNoAccess;
    }
    WriteValue(file, static_cast<std::int32_t>(TrackingPoints.size()));
    for (const std::vector<cv::Point2f>& points : TrackingPoints)
    {
        WriteValue(file, static_cast<std::int32_t>(points.size()));
        for (const cv::Point2f& point : points)
        {
            WriteValue(file, point.x);
            WriteValue(file, point.y);
        }
    }
    file.flush();
    file.close();
    ProgramHost.Log(LogRun, "Tracking file written!");
    return ResultOk;
}

int Stabilize::ReadTracking(const ::TrackingParameters& parameters)
{
    TrackingParameters = parameters;
    const int result = CheckMatchingFile(FileNames.TrackingMatchingFile, &TrackingParameters,
                                         sizeof(TrackingParameters));
    if (result != ResultOk)
    {
        ProgramHost.Log(LogError, result == ResultOutOfDate ? "Tracking file out of date!"
                                                            : "Tracking file loading failed!");
        return result;
    }
    if (TrackingLoaded)
    {
        return ResultOk;
    }
    std::ifstream file(FileNames.TrackingFile, std::ios::binary);
    if (!file.is_open())
    {
        ProgramHost.Log(LogError, "Tracking file loading failed!");
        return ResultNoAccess;
    }
    std::int32_t frameCount = 0;
    if (!ReadValue(file, frameCount))
    {
        return ResultDamaged;
    }
    if (frameCount < FewestEntries || frameCount > MostEntries)
    {
        ProgramHost.Log(LogError, "Tracking file error!");
        return ResultDamaged;
    }
    TrackingPoints.resize(static_cast<std::size_t>(frameCount));
    for (std::vector<cv::Point2f>& points : TrackingPoints)
    {
        if (!ReadFramePoints(file, points))
        {
            return ResultDamaged;
        }
    }
    TrackingLoaded = true;
    ProgramHost.Log(LogRun, "Tracking file read successfully!");
    return ResultOk;
}

int Stabilize::SaveData()
{
    if (!TrackingLoaded)
    {
        return ResultNoData;
    }
    const int result = WriteTracking();
    if (!StabilizeLoaded || result != ResultOk)
    {
        return result;
    }
    return WriteStabilizeFile();
}
