// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

class MainWindow;
class OpCVThread;
class Stabilize;
struct FileNames;
struct Project;

namespace cv
{
class Mat;
}

/**
 * Owner of the active stabilizer and of the worker thread, for the whole process. All operations
 * are for the user interface thread, but Log and GeneratePath, which the worker calls too.
 */
class StabilizerHost
{
public:
    StabilizerHost() = default;
    StabilizerHost(const StabilizerHost&) = delete;
    StabilizerHost& operator=(const StabilizerHost&) = delete;

    /**
     * Lets a running job stop and the thread leave run, then deletes the stabilizer and the
     * thread.
     */
    ~StabilizerHost();

    /**
     * Makes the worker thread, if there is none, and the stabilizer of @p type; only type 1 has
     * one. The caller has deleted the one before.
     * @param project not owned; outlives all jobs
     * @return true when this call made the thread
     */
    bool CreateStabilizer(int type, Project* project);

    /**
     * Makes sure that a stabilizer of @p type is active. Another type replaces the old one and all
     * its data.
     * @return the thread when this call made it, so that the caller connects to it; else null
     */
    OpCVThread* SelectStabilizer(int type, Project* project);

    /** Shows @p window the job @p state, so that its buttons change first, then starts it. */
    void Start(int state, MainWindow* window);

    /** OpCVThread::AbortJob. Needs the thread. */
    void Abort();

    /**
     * Waits until the thread has left run, and asks the job to stop again and again: a job may
     * begin its next phase after an abort, as between analysis and export. For the end of window
     * and process.
     */
    void LetWorkerLeave();

    /** @return ResultNoStabilizer, or the result of Stabilize::GeneratePath */
    [[nodiscard]] int GeneratePath();

    /** Hands the paths to the stabilizer, if there is one. */
    void SetFileNames(const FileNames& block);

    /**
     * Writes the data files under the paths of @p block. @return ResultNoStabilizer, or the result
     * of the writing
     */
    [[nodiscard]] int SaveData(const FileNames& block);

    /**
     * Warps a frame of the preview by the active stabilizer, see Stabilize::WarpFrameScaled;
     * without one @p target stays as it is. The caller holds the engine lock and has seen that the
     * paths reach @p frame.
     */
    void WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame, double scale);

    /** Null until the first stabilizer. */
    [[nodiscard]] OpCVThread* GetThread() const { return Thread; }

    /** The thread's JobState, 0 without a thread. */
    [[nodiscard]] int GetState() const;

    /**
     * Sends a message to the Log by way of the thread's queue; without a thread it is dropped. Any
     * thread.
     */
    void Log(unsigned level, const char* text);

private:
    // Field order is part of the design.
    Stabilize* Stabilizer = nullptr;  ///< owned
    std::int32_t Type = 1;            ///< of the stabilizer
    OpCVThread* Thread = nullptr;     ///< owned
};

extern StabilizerHost ProgramHost;
