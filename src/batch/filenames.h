// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <type_traits>

/** Bytes of one path in FileNames, the closing zero included. */
inline constexpr std::size_t FileNameSize = 512;

/**
 * The paths of one job as a fixed block of zero-terminated 8-bit strings. Project::SyncFileNames
 * fills it; the stabilizer gets a copy at the start of each job, so that a job sees the paths as
 * they were then. Plain bytes, so that the copy between the threads needs no shared string data.
 */
struct FileNames
{
    char SourceFile[FileNameSize] = {};
    char ExportFile[FileNameSize] = {};
    char TrackingFile[FileNameSize] = {};
    char TrackingMatchingFile[FileNameSize] = {};  ///< TrackingFile with ".cfg" behind it
    char StabilizationFile[FileNameSize] = {};
    char StabilizationMatchingFile[FileNameSize] = {};  ///< StabilizationFile with ".cfg" behind it
    char End = 0;                                       ///< always 0
};

static_assert(sizeof(FileNames) == 6 * FileNameSize + 1);
static_assert(offsetof(FileNames, End) == 6 * FileNameSize);
static_assert(std::is_trivially_copyable_v<FileNames>);
