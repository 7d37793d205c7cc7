// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/** Levels of log messages. From LogDebug on a message shows in the "Last Action" label only. */
enum LogLevel : unsigned
{
    LogInit = 0,
    LogRun = 1,
    LogWarning = 2,
    LogError = 3,
    LogDebug = 4,
    LogTrace = 5,  ///< chatter of plots and player
};

/** Bytes of a worker's message, the closing zero included. */
inline constexpr std::size_t LogTextSize = 80;

/** One message on its way through the worker's queue to the Log; longer texts are cut. */
struct LogRecord
{
    std::uint32_t Level = LogInit;
    char Text[LogTextSize] = {};  ///< zero-terminated, 8-bit
};

static_assert(sizeof(LogRecord) == 84);
static_assert(std::is_trivially_copyable_v<LogRecord>);
