// SPDX-License-Identifier: MIT
#pragma once

#include <opencv2/core/mat.hpp>

#include <cstdint>
#include <string>
#include <vector>

/**
 * How the picture's content moves from one frame to the next, as the motion step measures it:
 * a point p of the earlier frame is found at R(Angle) * p + (X, Y) in the later one, where R is
 * [cos -sin; sin cos] and the origin is the centre of the top left pixel.
 */
struct FrameMotion
{
    double X = 0.0;      ///< pixels, positive right
    double Y = 0.0;      ///< pixels, positive down
    double Angle = 0.0;  ///< radians
};

/** What a sample is made from. Equal settings give equal frames on every machine. */
struct SampleSettings
{
    int Width = 1920;        ///< pixels, above 0
    int Height = 1080;       ///< pixels, above 0; the scene scales with it
    int Frames = 300;        ///< above 0
    double Fps = 30.0;       ///< frames per second, above 0
    double Shake = 1.0;      ///< factor on the unrest of the hand, 0 to MaxShake
    std::uint64_t Seed = 1;  ///< chooses the street, the hand and the sensor's noise
};

constexpr double MaxShake = 10.0;  ///< keeps each frame within what the motion step accepts

/** A scene and a camera motion over it. Frames may be asked for in any order, from any thread. */
struct SampleVideo
{
    SampleSettings Settings;
    std::vector<FrameMotion> Motions;  ///< the truth, one entry per frame; the last one is zero
    std::vector<FrameMotion> Poses;    ///< motion from frame 0 to each frame
    cv::Mat World;                     ///< coefficients of the scene, CV_32FC4: blue, green, red, 0
    cv::Point Origin;                  ///< the World's first pixel, in the pixels of frame 0
};

/**
 * The unrest of a hand that also pans slowly: Settings.Frames entries, of which the last is zero.
 */
[[nodiscard]] std::vector<FrameMotion> HandHeldMotion(const SampleSettings& settings);

/** The same motion again and again: @p frames entries, of which the last is zero. */
[[nodiscard]] std::vector<FrameMotion> ConstantMotion(int frames, const FrameMotion& motion);

/** A sample with the unrest of HandHeldMotion. */
[[nodiscard]] SampleVideo MakeSampleVideo(const SampleSettings& settings);

/**
 * A sample with a motion of the caller's choice. There are as many frames as @p motions; its last
 * entry and Settings.Frames and Shake are not used. The scene is painted as large as the camera
 * gets to see: 16 bytes for each pixel of the bounding box of all frames.
 */
[[nodiscard]] SampleVideo MakeSampleVideo(const SampleSettings& settings,
                                          const std::vector<FrameMotion>& motions);

/**
 * Films frame @p index, 0 to frames - 1, into @p frame: CV_8UC3, blue first. The scene is a cubic
 * spline surface, sampled without rounding of coordinates, so the motion between frames is the
 * truth to far below a hundredth of a pixel; on top comes noise of one level, new in each frame.
 */
void RenderFrame(const SampleVideo& video, int index, cv::Mat& frame);

/** Writes all frames without loss; false when that failed. Width and height must be even. */
[[nodiscard]] bool WriteVideo(const SampleVideo& video, const std::string& path);

/**
 * Writes the motions as lines "frame,x,y,angle" under a header of that text, with all digits that
 * a double has. @return false when the file could not be written
 */
[[nodiscard]] bool WriteTruth(const std::vector<FrameMotion>& motions, const std::string& path);
