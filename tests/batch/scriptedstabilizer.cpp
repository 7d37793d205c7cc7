// SPDX-License-Identifier: MIT
#include "batch/scriptedstabilizer.h"

#include "stabilizer/camerapath.h"

#include <opencv2/imgproc.hpp>

void ScriptedStabilizer::PrepareFrames(int count)
{
    Calls.append(QStringLiteral("PrepareFrames %1").arg(count));
    OnPrepare();
}

int ScriptedStabilizer::WriteStabilizeFile()
{
    Calls.append(QStringLiteral("WriteStabilizeFile"));
    OnWrite();
    return WriteResult;
}

int ScriptedStabilizer::ReadStabilizeFile()
{
    Calls.append(QStringLiteral("ReadStabilizeFile"));
    OnRead();
    return ReadResult;
}

void ScriptedStabilizer::TrackFrame(const cv::Mat& previousGray, const cv::Mat& nextGray,
                                    std::vector<cv::Point2f>& points,
                                    std::vector<cv::Point2f>& /*nextPoints*/)
{
    Calls.append(QStringLiteral("TrackFrame"));
    GrayPairs.emplace_back(previousGray.at<uchar>(0, 0), nextGray.at<uchar>(0, 0));
    int list = -1;
    for (std::size_t i = 0; i < TrackingPoints.size(); ++i)
    {
        list = &points == &TrackingPoints[i] ? static_cast<int>(i) : list;
    }
    PointLists.push_back(list);
    OnTrack(static_cast<int>(GrayPairs.size()), previousGray, points);
}

int ScriptedStabilizer::GeneratePath()
{
    Calls.append(QStringLiteral("GeneratePath"));
    OnGenerate();
    return 0;
}

void ScriptedStabilizer::WarpFrame(const cv::Mat& source, cv::Mat& target, int frame)
{
    Calls.append(QStringLiteral("WarpFrame %1").arg(frame));
    source.copyTo(target);
    OnWarp(frame);
}

void ScriptedStabilizer::WarpFrameScaled(const cv::Mat& source, cv::Mat& target, int frame,
                                         double /*scale*/)
{
    Calls.append(QStringLiteral("WarpFrameScaled %1").arg(frame));
    source.copyTo(target);
}

void ScriptedStabilizer::PretendDataLoaded()
{
    TrackingLoaded = true;
    StabilizeLoaded = true;
    PathGenerated = true;
}

int GrayOf(const cv::Vec3b& colour)
{
    cv::Mat gray;
    cv::cvtColor(cv::Mat(1, 1, CV_8UC3, cv::Scalar(colour)), gray, cv::COLOR_BGR2GRAY, 0);
    return gray.at<uchar>(0, 0);
}

void SetZeroCorrections(int frames)
{
    for (CameraPath* path : {&PathHorizontal, &PathVertical, &PathRotation})
    {
        path->Result.Correction = QVector<double>(frames, 0.0);
    }
}
