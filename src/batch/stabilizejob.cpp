// SPDX-License-Identifier: MIT
#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"

int Stabilize::StabilizeJob(const ::TrackingParameters* parameters)
{
    JobStatus = JobRunning;
    if (!TrackingLoaded)
    {
        return FailStabilize();
    }
    if (parameters == nullptr)
    {
        return AnalyseJob(TrackingParameters);
    }
    const int tracking = ReadTracking(*parameters);  // the points are there: only compares
    if (tracking == ResultOutOfDate)
    {
        return AnalyseJob(TrackingParameters);
    }
    if (tracking != ResultOk)
    {
        return tracking;  // deliberate: JobStatus stays JobRunning
    }
    const std::int32_t type = TypeId();
    if (StabilizeLoaded &&
        CheckMatchingFile(FileNames.StabilizationMatchingFile, &type, sizeof(type)) == ResultOk)
    {
        return EndJob(ResultOk);
    }
    if (ReadStabilizeFile() == ResultOk)
    {
        StabilizeLoaded = true;
        return EndJob(ResultOk);
    }
    return MeasureStoredPoints();
}

/** The motion from one more reading of the source, over the points of the analysis. */
int Stabilize::MeasureStoredPoints()
{
    {
        VideoFile video;
        const int result = video.Open(FileNames.SourceFile);
        if (result != ResultOk)
        {
            return EndJob(result);
        }
        ProgramHost.Log(LogRun, "Start Stabilizing!");
        if (!TrackAllFrames(video, video.GetFrameCount(), TrackedPoints::Stored))
        {
            return AbortJob(video, "Stabilize aborted!");
        }
        video.Close();
    }
    if (WriteStabilizeFile() != ResultOk)
    {
        return FailStabilize();
    }
    StabilizeLoaded = true;
    ProgramHost.Log(LogRun, "Stabilizing done!");
    return ResultOk;  // deliberate: JobStatus stays JobRunning
}

/**
 * Deliberate: says that tracking data are missing also when it was the motion that could not be
 * written; the writer's own line stands before.
 */
int Stabilize::FailStabilize()
{
    StabilizeLoaded = false;
    ProgramHost.Log(LogError, "No Tracking Data (execute Analyse Source Video)!");
    return EndJob(ResultNoData);
}
