// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/**
 * Jobs of the worker and their results. The same numbers travel in OpCVThread::SignalFinished and
 * MainWindow::ProcessUpdate. 1 stays free, so that JobAnalyse keeps its 2.
 */
enum JobState : std::int32_t
{
    JobNone = 0,     ///< result: nothing usable; analyse or read failed, or there is no stabilizer
    JobAnalyse = 2,  ///< job: track the source video, write both data files
    JobStabilize = 3,        ///< job: rebuild the motion from stored tracking points
    JobExport = 4,           ///< job: write the stabilized video
    JobGenerateAll = 5,      ///< job: analyse, calculate the camera path, export
    JobReadTracking = 6,     ///< job: load the tracking file
    JobReadAll = 7,          ///< job: load the tracking file, then the stabilization file
    JobTrackingReady = 8,    ///< result: tracking points in memory, motion not
    JobPathReady = 9,        ///< result: tracking points and motion in memory
    JobPathCalculated = 10,  ///< for display only; the worker never holds it
};

/** True for the states in which the worker has something to do. */
[[nodiscard]] constexpr bool IsJob(std::int32_t state)
{
    return state >= JobAnalyse && state <= JobReadAll;
}

/**
 * True for the results, between which the window waits for the user. A number that is no JobState
 * counts as busy.
 */
[[nodiscard]] constexpr bool IsIdle(std::int32_t state)
{
    return state == JobNone || (state >= JobTrackingReady && state <= JobPathCalculated);
}

/**
 * Values of Stabilize::JobStatus, the abort handshake between the user interface thread and the
 * worker: a job sets JobRunning on entry and JobEnded on exit, and polls for JobAbortRequested.
 */
enum JobStatusValue : std::int32_t
{
    JobRunning = 0,
    JobAbortRequested = 1,
    JobEnded = 2,
};
