// SPDX-License-Identifier: MIT
#pragma once

#include <qwt_scale_draw.h>

/** A scale that writes frame numbers as times. */
class TimeScaleDraw : public QwtScaleDraw
{
public:
    explicit TimeScaleDraw(double msPerFrame) : MsPerFrame(msPerFrame) {}

    /** "mm:ss:ttt" of frame @p v: minutes, which do not wrap into hours, seconds, milliseconds. */
    [[nodiscard]] QwtText label(double v) const override;

private:
    double MsPerFrame;  ///< milliseconds
};
