// SPDX-License-Identifier: MIT
#pragma once

#include "batch/exportsettings.h"
#include "batch/filenames.h"
#include "batch/jobstate.h"
#include "batch/trackingparameters.h"

#include <opencv2/core.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

class VideoFile;

/**
 * What was measured in one video, and the jobs that measure and use it. The base class has the job
 * bodies and the tracking points; a concrete stabilizer has the model of the motion between two
 * frames.
 *
 * Jobs run on the worker thread. While one runs, the user interface thread touches nothing here
 * but JobStatus; that rests on the window keeping its buttons off, not on a lock.
 */
class Stabilize
{
public:
    Stabilize() = default;
    Stabilize(const Stabilize&) = delete;
    Stabilize& operator=(const Stabilize&) = delete;

    // The order of the virtual operations is part of the design.
    virtual ~Stabilize() = default;

    /** Sizes the motion for @p count frames, keeping old entries, and clears PathGenerated. */
    virtual void PrepareFrames(int count) = 0;

    /** Writes the stabilization matching file and the stabilization file. @return a result code */
    [[nodiscard]] virtual int WriteStabilizeFile() = 0;

    /**
     * Reads them back and sets StabilizeLoaded. @return a result code; ResultOutOfDate for foreign
     * data
     */
    [[nodiscard]] virtual int ReadStabilizeFile() = 0;

    /**
     * Measures the motion between two frames and stores it as the next entry, at most as often as
     * PrepareFrames was told frames. Worker thread. Exceptions of OpenCV pass.
     * @param previousGray, nextGray  8-bit, one channel, same size
     * @param points      in: features of @p previousGray, pixels; out: those that were found again
     * @param nextPoints  scratch; out: their positions in @p nextGray
     */
    virtual void TrackFrame(const cv::Mat& previousGray, const cv::Mat& nextGray,
                            std::vector<cv::Point2f>& points,
                            std::vector<cv::Point2f>& nextPoints) = 0;

    /**
     * Calculates the camera paths, on the calling thread. @return ResultOk, or ResultNoData
     * without motion
     */
    [[nodiscard]] virtual int GeneratePath() = 0;

    /**
     * Moves @p source, 8-bit BGR, onto the path of frame number @p frame, which must have
     * corrections; @p target gets its size and type. Worker thread. Exceptions of OpenCV pass.
     */
    virtual void WarpFrame(const cv::Mat& source, cv::Mat& target, int frame) = 0;

    /** WarpFrame for a picture shrunk to @p scale, 1.0 for full size. User interface thread. */
    virtual void WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame,
                                 double scale) = 0;

    /**
     * Number of the kind of stabilizer, kept in projects and in the stabilization matching file.
     */
    [[nodiscard]] virtual int TypeId() const = 0;

    // The jobs. Each sets JobStatus to JobRunning on entry and polls it once per frame.

    /**
     * Reads the source once, tracks features from frame to frame, writes both data files. @return
     * a result code
     */
    [[nodiscard]] int AnalyseJob(const ::TrackingParameters& parameters);

    /**
     * Brings the motion back from tracking points in memory without looking for new ones: from
     * memory, from the stabilization file, or else by one more reading of the source. A full
     * analysis follows when the points no longer fit source or settings. Worker thread.
     *
     * Deliberate: after a motion measured anew, and after tracking data that cannot be checked,
     * JobStatus stays JobRunning; a RequestAbort would wait for ever. No button starts this job.
     * @param parameters  null runs the full analysis with the parameters that the object holds
     * @return            a result code; ResultNoData without points, or when the motion could not
     *                    be written
     */
    [[nodiscard]] int StabilizeJob(const ::TrackingParameters* parameters);

    /** Writes the stabilized video. @return a result code */
    [[nodiscard]] int ExportJob(const ::ExportSettings& settings);

    /**
     * Asks a running job to stop and waits until it has: as a rule the work of one frame and 10 ms,
     * but without a limit, as a job that opens or writes files looks up only afterwards. Returns at
     * once when no job looks up: also while one reads data files or calculates the path. Blocks the
     * caller, the user interface thread included.
     */
    void RequestAbort();

    // The data files. All are in native byte order without a header; a matching file ties each to
    // its source and settings.

    /**
     * Writes the source path, the video's facts and @p payload. @return ResultOk or ResultNoAccess
     */
    [[nodiscard]] int WriteMatchingFile(const char* path, const void* payload,
                                        std::size_t size) const;

    /**
     * Compares a matching file with the source path and @p expected. Takes FrameWidth, FrameHeight
     * and FrameRate from the file on the way, before the payload is looked at: this is how they get
     * known without opening the video.
     * @return ResultOk, ResultNoAccess, ResultOutOfDate, or ResultDamaged without memory
     */
    [[nodiscard]] int CheckMatchingFile(const char* path, const void* expected, std::size_t size);

    /**
     * Writes the tracking matching file and the tracking file. @return ResultOk or ResultNoAccess
     */
    [[nodiscard]] int WriteTracking() const;

    /**
     * Checks the tracking matching file and reads the tracking file, unless the points are in
     * memory.
     * @return a result code; ResultDamaged also for a file that ends early, whose points stay as
     * far as read
     */
    [[nodiscard]] int ReadTracking(const ::TrackingParameters& parameters);

    /**
     * Writes what is in memory. @return ResultNoData without tracking points, else a result code
     */
    [[nodiscard]] int SaveData();

    // Field order is part of the design.
    ::TrackingParameters TrackingParameters;
    ::ExportSettings ExportSettings;  ///< of the running export
    ::FileNames FileNames;            ///< paths as they were at the start of the job
    std::int32_t FrameWidth = 0;      ///< source pixels
    std::int32_t FrameHeight = 0;     ///< source pixels
    std::int32_t FrameRate = 0;       ///< frames per second, truncated: 29.97 is held as 29
    /// JobStatusValue. The worker writes JobRunning and JobEnded, the user interface thread writes
    /// JobAbortRequested, and JobEnded once the worker has left; both read. Plain by design:
    /// each store is one aligned number, and both sides look at it again and again. What remains
    /// is a request that is stored after the last look of the worker, at the end of run: nobody
    /// answers that one.
    std::int32_t JobStatus = JobEnded;
    bool StabilizeLoaded = false;  ///< the motion is complete
    bool PathGenerated = false;    ///< GeneratePath has run since the last PrepareFrames
    bool TrackingLoaded = false;   ///< TrackingPoints is complete
    /// Entry i holds the positions, in frame i - 1, of the points that were found again in frame i.
    std::vector<std::vector<cv::Point2f>> TrackingPoints;

private:
    /** Where the points of a frame come from. */
    enum class TrackedPoints
    {
        Fresh,
        Stored
    };

    [[nodiscard]] int EndJob(int result);
    [[nodiscard]] int AbortJob(VideoFile& video, const char* message);
    [[nodiscard]] int FailExport(VideoFile& video);
    [[nodiscard]] int FailStabilize();
    [[nodiscard]] bool TrackAllFrames(VideoFile& video, int frameCount, TrackedPoints tracked);
    [[nodiscard]] int MeasureStoredPoints();
};
