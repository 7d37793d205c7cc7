// SPDX-License-Identifier: MIT
#include "batch/stabilizerhost.h"

#include "app/mainwindow.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/resultcodes.h"
#include "batch/stabilize.h"
#include "stabilizer/posrotstabilizer.h"

StabilizerHost::~StabilizerHost()
{
    LetWorkerLeave();
    if (Thread != nullptr)
    {
        Thread->SetStabilizer(nullptr);
    }
    delete Stabilizer;
    Stabilizer = nullptr;
    delete Thread;
    Thread = nullptr;
}

bool StabilizerHost::CreateStabilizer(int type, Project* project)
{
    Type = type;
    const bool isNewThread = Thread == nullptr;
    if (isNewThread)
    {
        Thread = new OpCVThread(project);
    }
    Stabilizer = type == PosRotStabilizer::Type ? new PosRotStabilizer : nullptr;
    Thread->SetStabilizer(Stabilizer);
    return isNewThread;
}

OpCVThread* StabilizerHost::SelectStabilizer(int type, Project* project)
{
    if (Stabilizer != nullptr && Type == type)
    {
        return nullptr;
    }
    delete Stabilizer;
    Stabilizer = nullptr;
    return CreateStabilizer(type, project) ? Thread : nullptr;
}

void StabilizerHost::Start(int state, MainWindow* window)
{
    window->ProcessUpdate(state);
    Thread->StartJob(state);
}

void StabilizerHost::Abort()
{
    Thread->AbortJob();
}

void StabilizerHost::LetWorkerLeave()
{
    while (Thread != nullptr && !Thread->wait(10))
    {
        if (Stabilizer != nullptr && Stabilizer->JobStatus == JobRunning)
        {
            Stabilizer->JobStatus = JobAbortRequested;
        }
    }
    if (Stabilizer != nullptr && Stabilizer->JobStatus == JobAbortRequested)
    {
        Stabilizer->JobStatus = JobEnded;  // the last request came just as the job ended
    }
}

int StabilizerHost::GeneratePath()
{
    return Stabilizer != nullptr ? Stabilizer->GeneratePath() : ResultNoStabilizer;
}

void StabilizerHost::SetFileNames(const FileNames& block)
{
    if (Stabilizer != nullptr)
    {
        Stabilizer->FileNames = block;
    }
}

int StabilizerHost::SaveData(const FileNames& block)
{
    if (Stabilizer == nullptr)
    {
        return ResultNoStabilizer;
    }
    Stabilizer->FileNames = block;
    return Stabilizer->SaveData();
}

void StabilizerHost::WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame,
                                     double scale)
{
    if (Stabilizer != nullptr)
    {
        Stabilizer->WarpFrameScaled(source, target, frame, scale);
    }
}

int StabilizerHost::GetState() const
{
    return Thread != nullptr ? Thread->GetState() : JobNone;
}

void StabilizerHost::Log(unsigned level, const char* text)
{
    if (Thread != nullptr)
    {
        Thread->AddLog(level, text);
    }
}
