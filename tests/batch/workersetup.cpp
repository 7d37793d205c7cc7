// SPDX-License-Identifier: MIT
#include "batch/workersetup.h"

#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "support/testvideo.h"

#include <QtTest>

namespace
{
constexpr int Patience = 20000;  // milliseconds; ends a test that would hang

/** The job's field as it is now: the other thread writes it. */
int StatusOf(const volatile std::int32_t& status)
{
    return status;
}
}  // namespace

FinishedStates::FinishedStates(const OpCVThread* thread)
{
    connect(thread, &OpCVThread::SignalFinished, this, [this](int state) { States.append(state); });
}

WorkerSetup::WorkerSetup() : Thread(ProgramHost.GetThread()), Finished(Thread)
{
    if (!TestVideo::WriteNumberedClip(Path("source.avi"), {64, 64, 5, 25.0}))
    {
        qFatal("No clip for the test");
    }
    Thread->SetStabilizer(&Object);
}

WorkerSetup::~WorkerSetup()
{
    Released.release(1000);
    while (!Thread->wait(10))
    {
        if (StatusOf(Object.JobStatus) == JobRunning)
        {
            Object.JobStatus = JobAbortRequested;
        }
    }
    Thread->SetStabilizer(nullptr);
}

int WorkerSetup::RunJob(int state)
{
    Finished.States.clear();
    Thread->StartJob(state);
    const bool hasEnded = Thread->wait(Patience);
    QCoreApplication::processEvents();  // all that the thread has sent is queued by now
    return hasEnded && Finished.States.size() == 1 ? Finished.States.constFirst() : -1000;
}

void WorkerSetup::HoldUntilAbort()
{
    Held.release();
    for (int waited = 0; waited < Patience && StatusOf(Object.JobStatus) != JobAbortRequested;
         ++waited)
    {
        QThread::msleep(1);
    }
}

void WorkerSetup::HoldUntilReleased()
{
    Held.release();
    Released.tryAcquire(1, Patience);
}

bool WorkerSetup::WaitUntilHeld()
{
    return Held.tryAcquire(1, Patience);
}
