// SPDX-License-Identifier: MIT
#include "batch/stabilize.h"

#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "batch/videofile.h"

#include <QThread>

void Stabilize::RequestAbort()
{
    if (JobStatus == JobEnded)
    {
        return;
    }
    JobStatus = JobAbortRequested;
    while (JobStatus != JobEnded)
    {
        QThread::msleep(10);
        if (JobStatus == JobRunning)
        {
            JobStatus = JobAbortRequested;  // the export behind an analysis has begun meanwhile
        }
    }
}

/**
 * Every way out of a job goes through here, so that RequestAbort never waits for a job that has
 * gone; but for two of StabilizeJob.
 */
int Stabilize::EndJob(int result)
{
    JobStatus = JobEnded;
    return result;
}

int Stabilize::AbortJob(VideoFile& video, const char* message)
{
    video.Close();
    ProgramHost.Log(LogRun, message);
    return EndJob(ResultAborted);
}
