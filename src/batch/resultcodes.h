// SPDX-License-Identifier: MIT
#pragma once

/**
 * Return codes of jobs and file operations. Failures are these numbers and log lines, never
 * exceptions.
 */
inline constexpr int ResultOk = 0;
inline constexpr int ResultNoAccess = 1;        ///< a file or video could not be opened
inline constexpr int ResultOutOfDate = 2;       ///< data belong to another source or other settings
inline constexpr int ResultNoData = 2;          ///< the same number: nothing in memory to work on
inline constexpr int ResultDamaged = -1;        ///< damaged data, no memory, or a failed export
inline constexpr int ResultAborted = 10;        ///< the user asked a job to stop
inline constexpr int ResultNoStabilizer = 100;  ///< StabilizerHost has no stabilizer to ask
