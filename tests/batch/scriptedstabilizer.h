// SPDX-License-Identifier: MIT
#pragma once

#include "batch/stabilize.h"

#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

/**
 * A stabilizer without a motion model, which notes what the jobs ask of it. The hooks run on the
 * job's thread inside the call; they may hold the job or ask it to stop.
 */
class ScriptedStabilizer : public Stabilize
{
public:
    void PrepareFrames(int count) override;
    [[nodiscard]] int WriteStabilizeFile() override;
    [[nodiscard]] int ReadStabilizeFile() override;
    void TrackFrame(const cv::Mat& previousGray, const cv::Mat& nextGray,
                    std::vector<cv::Point2f>& points,
                    std::vector<cv::Point2f>& nextPoints) override;
    [[nodiscard]] int GeneratePath() override;
    void WarpFrame(const cv::Mat& source, cv::Mat& target, int frame) override;
    void WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame, double scale) override;
    [[nodiscard]] int TypeId() const override { return 1; }

    /** Both flags that an export needs. */
    void PretendDataLoaded();

    QStringList Calls;  ///< one word per call, with its number where it has one
    /// Gray levels of the top left pixels of each pair of frames that was to be tracked.
    std::vector<std::pair<int, int>> GrayPairs;
    /// Index in TrackingPoints of the points of each pair, -1 for other points.
    std::vector<int> PointLists;
    int WriteResult = 0;                       ///< what WriteStabilizeFile returns
    int ReadResult = 0;                        ///< what ReadStabilizeFile returns
    std::function<void()> OnPrepare = [] {};   ///< in PrepareFrames
    std::function<void()> OnGenerate = [] {};  ///< in GeneratePath
    std::function<void()> OnWrite = [] {};     ///< in WriteStabilizeFile
    std::function<void()> OnRead = [] {};      ///< in ReadStabilizeFile
    /// In TrackFrame, with the number of the call from 1, the earlier frame and the points.
    std::function<void(int call, const cv::Mat& gray, std::vector<cv::Point2f>& points)> OnTrack =
        [](int, const cv::Mat&, std::vector<cv::Point2f>&) {};
    std::function<void(int frame)> OnWarp = [](int) {};  ///< in WarpFrame
};

/** The gray level of a colour of 8 bits, as the video library converts it. */
[[nodiscard]] int GrayOf(const cv::Vec3b& colour);

/** Gives the three camera paths that move frames @p frames corrections of zero each. */
void SetZeroCorrections(int frames);
