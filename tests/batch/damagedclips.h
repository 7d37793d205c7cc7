// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/** Sources that are no good videos, made by code. All pictures are 64 by 64 pixels and textured. */
namespace DamagedClips
{
/** Frames of the good videos, which say so. */
constexpr int Frames = 12;

enum class Kind
{
    Mp4,     ///< MPEG-4 in .mp4, whose table of frames comes last
    Avi,     ///< JPEG pictures in .avi, whose header comes first
    Stream,  ///< JPEG pictures one behind the other, no header
};

/** The bytes of a good video. */
[[nodiscard]] QByteArray Good(Kind kind);

/** An .avi whose header is whole, and which breaks off behind so many frames. */
[[nodiscard]] QByteArray AviOfFrames(int frames);

/** @p avi with a header that tells of so many frames. */
[[nodiscard]] QByteArray Promising(QByteArray avi, int frames);

/** An .avi whose pictures are 96 by 48 pixels from frame 6 on. */
[[nodiscard]] QByteArray AviOfTwoSizes();

/** @p bytes with a few bits flipped; the same number flips the same bits. */
[[nodiscard]] QByteArray BitsFlipped(QByteArray bytes, std::uint32_t number);

/** Half a second of silence. */
[[nodiscard]] QByteArray Sound();

/**
 * Writes numbered pictures of 32-bit floats, 00.hdr to 11.hdr, to @p folder. The first six are
 * plain, the others textured and 96 by 48 pixels. @return the path of the first one
 */
[[nodiscard]] QString WritePictures(const QString& folder);
}  // namespace DamagedClips
