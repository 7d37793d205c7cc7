// SPDX-License-Identifier: MIT
#include "samplevideo/samplevideo.h"

#include "samplevideo/noise.h"
#include "samplevideo/scene.h"

#include <opencv2/videoio.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace
{
constexpr int Channels = 4;  ///< of the world: a power of two, so that a pixel fills a register
constexpr int Border = 4;    ///< pixels of the world around what the camera sees
constexpr int NoiseCount = 1 << 16;
constexpr double NoiseSigma = 1.0;  ///< levels

/** The motion @p first followed by @p second. */
FrameMotion Join(const FrameMotion& first, const FrameMotion& second)
{
    const Rotation turn = RotationOf(second.Angle);
    return {turn.Cos * first.X - turn.Sin * first.Y + second.X,
            turn.Sin * first.X + turn.Cos * first.Y + second.Y, first.Angle + second.Angle};
}

/** From the pixels of one frame to those of frame 0: rotate, then shift. */
struct ToFirstFrame
{
    Rotation Turn;
    double X = 0.0;
    double Y = 0.0;

    explicit ToFirstFrame(const FrameMotion& pose) : Turn(RotationOf(-pose.Angle))
    {
        X = -(Turn.Cos * pose.X - Turn.Sin * pose.Y);
        Y = -(Turn.Sin * pose.X + Turn.Cos * pose.Y);
    }
    [[nodiscard]] cv::Point2d At(double column, double row) const
    {
        return {Turn.Cos * column - Turn.Sin * row + X, Turn.Sin * column + Turn.Cos * row + Y};
    }
};

/** The pixels of frame 0 that hold all frames, with a border for the spline. */
cv::Rect SeenArea(const SampleVideo& video)
{
    const double right = video.Settings.Width - 1;
    const double bottom = video.Settings.Height - 1;
    cv::Point2d low(0.0, 0.0);
    cv::Point2d high(right, bottom);
    for (const FrameMotion& pose : video.Poses)
    {
        const ToFirstFrame way(pose);
        for (const cv::Point2d& corner :
             {way.At(0.0, 0.0), way.At(right, 0.0), way.At(0.0, bottom), way.At(right, bottom)})
        {
            low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
            high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
        }
    }
    const cv::Point first(static_cast<int>(std::floor(low.x)) - Border,
                          static_cast<int>(std::floor(low.y)) - Border);
    const cv::Point last(static_cast<int>(std::ceil(high.x)) + Border,
                         static_cast<int>(std::ceil(high.y)) + Border);
    return {first, last + cv::Point(1, 1)};
}

/**
 * Weights of the four knots around a point that lies @p t, 0 to 1, behind the second: cubic
 * B-spline.
 */
std::array<float, 4> SplineWeights(float t)
{
    const float s = 1.0F - t;
    const float t2 = t * t;
    const float s2 = s * s;
    return {s2 * s / 6.0F, 2.0F / 3.0F - t2 * (2.0F - t) / 2.0F,
            2.0F / 3.0F - s2 * (2.0F - s) / 2.0F, t2 * t / 6.0F};
}

/** The scene at a point given in the world's pixels: blue, green, red. */
std::array<float, Channels> SampleWorld(const cv::Mat& world, double x, double y)
{
    const int column = static_cast<int>(x);  // truncated; inside the border all is positive
    const int row = static_cast<int>(y);
    const auto weightsX = SplineWeights(static_cast<float>(x - column));
    const auto weightsY = SplineWeights(static_cast<float>(y - row));
    std::array<float, Channels> sum = {};
    for (int j = 0; j < 4; ++j)
    {
        const float* knot =
            world.ptr<float>(row - 1 + j) + static_cast<std::ptrdiff_t>(column - 1) * Channels;
        const float weightY = weightsY[static_cast<std::size_t>(j)];
        for (std::size_t i = 0; i < 4; ++i)
        {
            const float weight = weightY * weightsX[i];
            for (std::size_t c = 0; c < Channels; ++c)
            {
                sum[c] += weight * knot[i * Channels + c];
            }
        }
    }
    return sum;
}

/** Normally distributed noise, made once: twelve even numbers add up to nearly that. */
const std::vector<float>& SensorNoise()
{
    static const std::vector<float> table = []
    {
        std::vector<float> values(NoiseCount);
        Random random(99, 0);
        for (float& value : values)
        {
            double sum = -6.0;
            for (int i = 0; i < 12; ++i)
            {
                sum += random.Uniform(0.0, 1.0);
            }
            value = static_cast<float>(NoiseSigma * sum);
        }
        return values;
    }();
    return table;
}
}  // namespace

SampleVideo MakeSampleVideo(const SampleSettings& settings)
{
    return MakeSampleVideo(settings, HandHeldMotion(settings));
}

SampleVideo MakeSampleVideo(const SampleSettings& settings, const std::vector<FrameMotion>& motions)
{
    SampleVideo video;
    video.Settings = settings;
    video.Settings.Frames = static_cast<int>(motions.size());
    video.Motions = motions;
    FrameMotion pose;
    for (const FrameMotion& motion : motions)
    {
        video.Poses.push_back(pose);
        pose = Join(pose, motion);
    }
    if (!motions.empty())
    {
        video.Motions.back() = {};
    }
    const cv::Rect area = SeenArea(video);
    video.Origin = area.tl();
    video.World = PaintScene(area, settings.Height, SeedFor(settings.Seed, 5));
    return video;
}

void RenderFrame(const SampleVideo& video, int index, cv::Mat& frame)
{
    const int width = video.Settings.Width;
    frame.create(video.Settings.Height, width, CV_8UC3);
    const ToFirstFrame way(video.Poses[static_cast<std::size_t>(index)]);
    const std::vector<float>& noise = SensorNoise();
    const std::uint32_t seed = SeedFor(video.Settings.Seed, 11);
    for (int row = 0; row < frame.rows; ++row)
    {
        auto* pixel = frame.ptr<cv::Vec3b>(row);
        const std::uint32_t start = Hash(row, index, seed);
        for (int column = 0; column < width; ++column)
        {
            const cv::Point2d place = way.At(column, row);
            const auto colour =
                SampleWorld(video.World, place.x - video.Origin.x, place.y - video.Origin.y);
            for (std::uint32_t c = 0; c < 3; ++c)
            {
                const auto entry =
                    (start + 3 * static_cast<std::uint32_t>(column) + c) % NoiseCount;
                pixel[column][static_cast<int>(c)] =
                    cv::saturate_cast<uchar>(colour[c] + noise[entry]);
            }
        }
    }
}

bool WriteVideo(const SampleVideo& video, const std::string& path)
{
    const cv::Size size(video.Settings.Width, video.Settings.Height);
    cv::VideoWriter writer(path, cv::CAP_FFMPEG, cv::VideoWriter::fourcc('F', 'F', 'V', '1'),
                           video.Settings.Fps, size);
    if (!writer.isOpened())
    {
        return false;
    }
    cv::Mat frame;
    for (int i = 0; i < video.Settings.Frames; ++i)
    {
        RenderFrame(video, i, frame);
        writer.write(frame);
    }
    writer.release();
    // The writer reports no failed write, as on a full disk: the frame count of the result tells.
    const cv::VideoCapture result(path);
    return cvRound(result.get(cv::CAP_PROP_FRAME_COUNT)) == video.Settings.Frames;
}

bool WriteTruth(const std::vector<FrameMotion>& motions, const std::string& path)
{
    std::FILE* file = std::fopen(path.c_str(), "w");
    if (file == nullptr)
    {
        return false;
    }
    bool good = std::fputs("frame,x,y,angle\n", file) >= 0;
    for (std::size_t i = 0; i < motions.size(); ++i)
    {
        const FrameMotion& motion = motions[i];
        good = std::fprintf(file, "%zu,%.17g,%.17g,%.17g\n", i, motion.X, motion.Y, motion.Angle) >
                   0 &&
               good;
    }
    return std::fclose(file) == 0 && good;
}
