// SPDX-License-Identifier: MIT
#pragma once

#include "batch/batchsetup.h"
#include "batch/scriptedstabilizer.h"

#include <QObject>
#include <QSemaphore>
#include <QVector>

class OpCVThread;

/** What the jobs of a thread ended in, in order, as the user interface thread gets to know. */
class FinishedStates : public QObject
{
public:
    explicit FinishedStates(const OpCVThread* thread);
    QVector<int> States;
};

/**
 * A numbered clip of 5 frames and the host's thread, which works on a stabilizer that a test can
 * hold at a frame. The end of this object stops a job that still runs.
 */
struct WorkerSetup : BatchSetup
{
    WorkerSetup();
    ~WorkerSetup();

    /** Runs a whole job on the worker. @return what it ended in; -1000 when the signal did not come
     * exactly once */
    int RunJob(int state);

    /** For a hook: tells WaitUntilHeld and stays until somebody asks the job to stop. */
    void HoldUntilAbort();

    /** For a hook: tells WaitUntilHeld and stays until Release. */
    void HoldUntilReleased();
    void Release() { Released.release(); }

    /** Waits for a hook that holds the job. @return false when none came in 20 seconds */
    [[nodiscard]] bool WaitUntilHeld();

    OpCVThread* Thread;  ///< not owned, of the host
    FinishedStates Finished;
    ScriptedStabilizer Object;

private:
    QSemaphore Held;
    QSemaphore Released;
};
