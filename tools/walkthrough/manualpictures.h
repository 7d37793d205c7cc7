// SPDX-License-Identifier: MIT
#pragma once

#include "graphwalk.h"

#include <QDir>
#include <QRect>
#include <QString>

class QWidget;
class Report;

/**
 * Takes the pictures of the manual. Equal videos give equal pictures, as long as fonts and Qt stay
 * the same.
 */
class ManualPictures
{
public:
    /**
     * @param window    main window with a calculated path, outlives the object
     * @param pictures  existing directory; pictures of the same name are replaced
     */
    ManualPictures(QWidget& window, const QDir& pictures, Report& report);

    void ShowSettings();
    void ShowPlayer();
    void ShowGraphs();    ///< the horizontal axis with two filters
    void ShowSections();  ///< manual and ignored ones on the tab of ShowGraphs; they stay

private:
    [[nodiscard]] QRect Area(const char* name) const;
    [[nodiscard]] QRect PlotAndLists() const;
    [[nodiscard]] QRect FilterColumn() const;
    void Save(const QRect& area, const QString& name, int width = 900);

    QWidget& Window;
    QDir Pictures;
    Report& Story;
    GraphWalk Graphs;
};
