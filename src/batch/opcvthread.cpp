// SPDX-License-Identifier: MIT
#include "batch/opcvthread.h"

#include "app/log.h"
#include "batch/jobstate.h"
#include "batch/resultcodes.h"
#include "batch/stabilize.h"
#include "batch/stabilizerhost.h"
#include "project/project.h"

#include <cstdio>

OpCVThread::OpCVThread(Project* project) : Proj(project)
{
    connect(this, &OpCVThread::SignalLogEntry, this, &OpCVThread::AddLogEntry);
}

OpCVThread::~OpCVThread()
{
    if (IsJob(State) && Stabilizer != nullptr)
    {
        Stabilizer->RequestAbort();
    }
}

void OpCVThread::SetStabilizer(Stabilize* s)
{
    Stabilizer = s;
}

void OpCVThread::StartJob(int state)
{
    // The last job has stored its result in State, but its thread may still be on its way out: it
    // has to read that result back, and start() would be lost on it.
    if (!IsJob(State))
    {
        wait();
    }
    PreviousState = State;
    State = state;
    if (Stabilizer == nullptr)
    {
        return;
    }
    Stabilizer->FileNames = Proj->FileNames;
    start(QThread::InheritPriority);
}

void OpCVThread::AbortJob()
{
    if (Stabilizer != nullptr)
    {
        Stabilizer->RequestAbort();
        State = PreviousState;
    }
}

void OpCVThread::run()
{
    State = Stabilizer != nullptr ? RunJob(State) : JobNone;
    if (Stabilizer != nullptr && Stabilizer->JobStatus == JobAbortRequested)
    {
        Stabilizer->JobStatus = JobEnded;  // the request came just as the job ended
    }
    emit SignalFinished(State);
}

/** Does what @p state asks for. @return the state that follows */
std::int32_t OpCVThread::RunJob(std::int32_t state)
{
    const auto analyse = [this] { return Stabilizer->AnalyseJob(Proj->TrackingParameters); };
    const auto stabilize = [this] { return Stabilizer->StabilizeJob(&Proj->TrackingParameters); };
    const auto exportVideo = [this]
    { static_cast<void>(Stabilizer->ExportJob(Proj->ExportSettings)); };
    const auto readTracking = [this] { return Stabilizer->ReadTracking(Proj->TrackingParameters); };
    switch (state)
    {
        case JobNone:
            Stabilizer->RequestAbort();
            return JobNone;
        case JobAnalyse:
            return analyse() == ResultOk ? JobPathReady : JobNone;
        case JobStabilize:
            return stabilize() == ResultOk ? JobPathReady : JobTrackingReady;
        case JobExport:
            exportVideo();  // a failed export leaves the path as good as it was
            return JobPathReady;
        case JobGenerateAll:
            if (analyse() != ResultOk)
            {
                return JobNone;
            }
            static_cast<void>(ProgramHost.GeneratePath());
            exportVideo();
            return JobPathReady;
        case JobReadTracking:
            return readTracking() == ResultOk ? JobTrackingReady : JobNone;
        case JobReadAll:
            if (readTracking() != ResultOk)
            {
                return JobNone;
            }
            return Stabilizer->ReadStabilizeFile() == ResultOk ? JobPathReady : JobTrackingReady;
        default:
            return state;
    }
}

void OpCVThread::AddLog(unsigned level, const char* text)
{
    {
        const QMutexLocker locker(&LogMutex);
        LogRecord record;
        record.Level = level;
        static_cast<void>(std::snprintf(record.Text, sizeof(record.Text), "%s", text));  // may cut
        LogQueue.append(record);
    }
    emit SignalLogEntry();  // outside the lock: on the user interface thread the slot runs at once
                            // and takes it
}

void OpCVThread::AddLogEntry()
{
    const QMutexLocker locker(&LogMutex);
    const LogRecord record = LogQueue.takeFirst();
    ProgramLog.Add(record.Level, QString::fromLatin1(record.Text));
}
