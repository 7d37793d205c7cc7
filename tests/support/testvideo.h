// SPDX-License-Identifier: MIT
#pragma once

#include "samplevideo/samplevideo.h"

#include <QString>

#include <opencv2/core/mat.hpp>

#include <cstdint>
#include <vector>

/** Writes clips for tests. All are .avi files that read back bit for bit. */
namespace TestVideo
{
/** Size and length of a clip. An odd size is kept, though such a clip is not compressed. */
struct Format
{
    int Width = 320;    ///< pixels, above 0
    int Height = 180;   ///< pixels, above 0
    int Frames = 10;    ///< above 0
    double Fps = 25.0;  ///< frames per second, above 0; kept to a thousandth
};

/** Frames whose number can be told, and no more, in a numbered clip. */
constexpr int MaxNumberedFrames = 216;

/**
 * Films a street with a gently shaking hand. Equal arguments give equal clips.
 * @return the true motion, one entry per frame, of which the last is zero: between the last frame
 *         and itself; an empty list when the file could not be written
 */
[[nodiscard]] std::vector<FrameMotion> WriteStreetClip(const QString& path, const Format& format,
                                                       std::uint64_t seed = 1);

/**
 * Films the street with a motion of the test's choice: a pan with ConstantMotion, a jump with one
 * large entry, a still with zeros. Format::Frames is not used: there are as many frames as
 * @p motions, of which the last entry is not used.
 * @return as above
 */
[[nodiscard]] std::vector<FrameMotion> WriteStreetClip(const QString& path, const Format& format,
                                                       const std::vector<FrameMotion>& motions,
                                                       std::uint64_t seed = 1);

/**
 * Each frame has one plain colour that tells its number, also after a lossy codec, a crop or a
 * zoom. Up to MaxNumberedFrames frames. @return false when the file could not be written
 */
[[nodiscard]] bool WriteNumberedClip(const QString& path, const Format& format);

/** The frame number that the middle of @p frame shows, from 0; -1 if it is no such frame, as when
 * black. */
[[nodiscard]] int NumberOf(const cv::Mat& frame);

/** The colour of frame @p number of a numbered clip. */
[[nodiscard]] cv::Vec3b ColourOf(int number);

/** All frames are black: no corner is found in them. @return false when it could not be written */
[[nodiscard]] bool WriteBlackClip(const QString& path, const Format& format);

/**
 * A numbered clip that breaks off: its header promises @p promisedFrames frames, which is the
 * frame count that a reader reports, but only Format::Frames can be read.
 * @return false when the file could not be written
 */
[[nodiscard]] bool WriteShortClip(const QString& path, const Format& format, int promisedFrames);

/** The same of the street: @return the true motion of the Format::Frames frames, or an empty list.
 */
[[nodiscard]] std::vector<FrameMotion> WriteShortStreetClip(const QString& path,
                                                            const Format& format,
                                                            int promisedFrames,
                                                            std::uint64_t seed = 1);

/** All frames of a video in order; an empty list when it cannot be opened. */
[[nodiscard]] std::vector<cv::Mat> ReadAllFrames(const QString& path);
}  // namespace TestVideo
