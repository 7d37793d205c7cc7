// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/manualpathwindow.h"
#include "support/messageguard.h"

#include <QObject>
#include <QStringList>
#include <QTreeWidget>

#include <memory>
#include <vector>

/** Base of the tests of the manual path in its tree: a graph window over a path of 100 frames. */
class ManualPathTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int Frames = 100;
    static constexpr int FrameColumn = 0;
    static constexpr int ValueColumn = 1;

    void StartWindow();

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<ManualPathWindow> Manual;

private slots:
    void init() { StartWindow(); }
    void cleanup();
};

/** The same with two sections in the tree: one of the frames 10 and 20, one of frame 60. */
class TwoSectionsTest : public ManualPathTest
{
    Q_OBJECT

protected:
    static const QStringList TwoSectionsRows;
    [[nodiscard]] static std::vector<ManualPathSection> TwoSections();

    /** "section" is the first one, "point" its second point, all else nothing. */
    [[nodiscard]] QTreeWidgetItem* Target(const QString& name) const;
    /** @p rows without @p count of them from @p place on. */
    [[nodiscard]] static QStringList Without(QStringList rows, int place, int count);

private slots:
    void init();
};
