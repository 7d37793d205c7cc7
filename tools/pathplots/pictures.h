// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

class PlotPage;

/** A picture of docs/camera-path.md. */
struct Picture
{
    const char* Name;  ///< of its file, without the ending
    void (*Draw)(PlotPage& page);
};

/** All of them, in the order of the document. */
[[nodiscard]] std::vector<Picture> AllPictures();
