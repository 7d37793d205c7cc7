// SPDX-License-Identifier: MIT
#pragma once

#include "batch/jobstate.h"
#include "batch/logrecord.h"

#include <QList>
#include <QMutex>
#include <QThread>

#include <cstdint>

class Stabilize;
struct Project;

/**
 * The worker: one thread that runs one job at a time and ends with it. The object itself lives on
 * the user interface thread for the whole process; only run works on the other side.
 *
 * Messages of the worker wait in a queue, and each SignalLogEntry brings exactly one of them to the
 * Log, in the order in which they were added.
 */
class OpCVThread : public QThread
{
    Q_OBJECT

public:
    /** @param project not owned; outlives all jobs */
    explicit OpCVThread(Project* project);

    /**
     * The thread must have left run. With a stabilizer and a job in State it would ask for an
     * abort.
     */
    ~OpCVThread() override;

    /** @param s not owned, null for none; the jobs work on it */
    void SetStabilizer(Stabilize* s);

    /**
     * Starts the job @p state, a JobState, with the paths as the project has them now. Without a
     * stabilizer nothing starts, and SignalFinished never comes.
     */
    void StartJob(int state);

    /**
     * Asks the job to stop, waits as RequestAbort does, and takes back the state before it. A job
     * that reads data files goes on to its end, and one that stands between analysis and export
     * goes on with the export.
     */
    void AbortJob();

    [[nodiscard]] int GetState() const { return State; }  ///< a JobState

    /** Queues a message for the Log; texts that do not fit a LogRecord are cut. Any thread. */
    void AddLog(unsigned level, const char* text);

    // The order of signals and slots is part of the design.
signals:
    void SignalLogEntry();
    void SignalFinished(int t);  ///< a job has ended in the JobState @p t; once per run

private slots:
    void AddLogEntry();

protected:
    void run() override;

private:
    [[nodiscard]] std::int32_t RunJob(std::int32_t state);

    // Field order is part of the design.
    Project* Proj = nullptr;          ///< not owned
    Stabilize* Stabilizer = nullptr;  ///< not owned, of the StabilizerHost; null without one
    /// JobState. The user interface thread writes it before a job and after an abort, the worker at
    /// the end of a job. Whichever write of an abort comes last stays; the window goes by the
    /// emitted number alone, so no lock is needed.
    std::int32_t State = JobNone;
    std::int32_t PreviousState = JobNone;  ///< before the last StartJob; user interface thread only
    QMutex LogMutex;                       ///< guards LogQueue; not recursive
    QList<LogRecord> LogQueue;             ///< oldest first
};
