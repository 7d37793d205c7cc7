// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/manualpathwindow.h"
#include "graphs/plothands.h"
#include "support/messageguard.h"

#include <QObject>
#include <QStringList>

#include <memory>

/**
 * Base of the tests of the mouse on the plot of a graph window: a path of 100 frames without
 * curves, axes from 0 to 100 across and -50 to 50 up.
 */
class GraphMouseBase : public QObject
{
    Q_OBJECT

protected:
    void StartWindow(int frames = 100);
    [[nodiscard]] QStringList LocalRows() const;   ///< of the ignored sections of the axis
    [[nodiscard]] QStringList GlobalRows() const;  ///< of those of all axes

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<ManualPathWindow> Manual;
    std::unique_ptr<PlotHands> Hands;

private slots:
    void init();
    void cleanup();
};
