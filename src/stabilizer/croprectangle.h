// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

struct ExportSettings;

/**
 * Crop of a frame. All numbers are pixels of the image at hand; Right and Bottom lie behind the
 * crop.
 */
struct CropRectangle
{
    std::int32_t CropHeight = 0;  ///< even
    std::int32_t Top = 0;         ///< first row
    std::int32_t Bottom = 0;      ///< Top + CropHeight
    std::int32_t CropWidth = 0;   ///< even
    std::int32_t Left = 0;        ///< first column
    std::int32_t Right = 0;       ///< Left + CropWidth
    bool Valid = false;           ///< the rectangle lies inside the image

    /**
     * Fills the record for an image of that size, in pixels. A rectangle that leaves the image logs
     * one line at level 3: of several violated limits the last one.
     * @return 0 with Valid true, or 1 with Valid false. Any thread.
     *
     * Deliberate: the ends must stay below the image's size, so that a crop that touches the right
     * or bottom edge is refused, and with it a crop factor of 1.0 on an even size.
     */
    int Calculate(const ExportSettings& settings, int height, int width);

    /** Forgets the size, so that the rectangle is calculated anew. */
    void Reset();
};
