// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/graphwindow.h"
#include "graphs/simpleplot.h"

#include <QComboBox>
#include <QPoint>

/** The user's hand on the plot of a shown graph window, and on the choice of what it does there. */
class PlotHands
{
public:
    // Items of comboBoxGraphMouse.
    static constexpr int PanAndZoom = 0;
    static constexpr int ManualPoints = 1;
    static constexpr int FlatPoints = 2;
    static constexpr int LocalIgnore = 3;
    static constexpr int GlobalIgnore = 4;

    /** @param window  outlives the object */
    explicit PlotHands(GraphWindow& window) : Window(window) {}

    [[nodiscard]] SimplePlot& Plot() const { return *Window.findChild<SimplePlot*>(); }
    [[nodiscard]] QComboBox& Modes() const;
    void ChooseMode(int mode) const;

    /** In place of curves, so that a test knows the axes and no later update moves them. */
    void SetAxes(double minX, double maxX, double minY, double maxY) const;

    /** The pixel of the canvas next to a point of the axes; less than 0.1 of 100 frames away. */
    [[nodiscard]] QPoint PixelAt(double x, double y) const;
    [[nodiscard]] QPoint InFrame(int frame) const { return PixelAt(frame + 0.5, 10.0); }
    /** The value of a pixel on the left axis. */
    [[nodiscard]] double ValueAt(const QPoint& pixel) const;

    void Click(const QPoint& pixel) const;
    void Drag(const QPoint& from, const QPoint& to) const;

private:
    GraphWindow& Window;
};
