// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <opencv2/core/types.hpp>

#include <array>
#include <cstdint>
#include <vector>

/**
 * Second readers of the data files, for tests alone: what is in memory after a reading, whatever
 * the bytes of the file, and what was there before. No code of the program.
 */

using ModelPointLists = std::vector<std::vector<cv::Point2f>>;

/** Width, height and rate as a matching file holds them. */
using ModelFacts = std::array<std::int32_t, 3>;

/** The fields of a stabilizer that a reading of motion may change. */
struct ModelMotion
{
    std::vector<double> X;
    std::vector<double> Y;
    std::vector<double> Angle;
    std::vector<double> Degrees;
    std::uint64_t Count = 0;
    bool PathGenerated = false;
    bool Loaded = false;
};

/**
 * @param source   the field of the path, 256 bytes
 * @param payload  what the file must end with
 * @return         0 or 2
 */
[[nodiscard]] int ModelCheckMatching(const QByteArray& file, const QByteArray& source,
                                     const QByteArray& payload, ModelFacts& facts);

/** @return 0 or -1 */
[[nodiscard]] int ModelReadPoints(const QByteArray& file, ModelPointLists& lists);

/** @return 0 or -1 */
[[nodiscard]] int ModelReadMotion(const QByteArray& file, ModelMotion& motion);
