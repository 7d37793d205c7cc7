// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/flowplot.h"
#include "stabilizer/manualpath.h"

#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <QWidget>

#include <cstdint>
#include <vector>

class IgnoreList;
class QTreeWidgetItem;
struct AxisFilterSettings;

namespace Ui
{
class GraphWindow;
}

/** What the left mouse button does in the graph: items of comboBoxGraphMouse. */
enum MouseAction : std::int32_t
{
    PanAndZoom = 0,
    AddManualPoints = 1,
    AddFlatPoints = 2,
    AddLocalIgnore = 3,
    AddGlobalIgnore = 4,
};

/**
 * One graph tab: the plot of an axis, its filter settings, its manual path and the ignore sections.
 * It calculates nothing: it moves values between widgets and project and asks the main window to
 * calculate. User interface thread only.
 *
 * The manual path stands in a tree: a top-level item per section, a child per point. CurrentSection
 * gets new points; it and MenuItem may point at items that have gone, and are only followed when
 * they are found in the tree.
 */
class GraphWindow : public QWidget
{
    Q_OBJECT

public:
    /**
     * @param project, path, settings of this axis; not owned, outlive the window. @param yTitle
     * title of the left axis
     */
    GraphWindow(Project* project, CameraPath* path, QString yTitle, AxisFilterSettings* settings);
    ~GraphWindow() override;
    GraphWindow(const GraphWindow&) = delete;
    GraphWindow& operator=(const GraphWindow&) = delete;

    void LoadSettings();  ///< settings into the widgets
    void LoadAndPlot();   ///< LoadSettings, then PlotUpdate
    void SaveSettings();  ///< widgets into the settings; sorts and mends the lists on the way

    // The order of signals and slots is part of the design.
signals:
    void CalculateCameraPath();  ///< the user wants the path anew

public slots:
    // Slots of the widgets, connected by name. Boxes that turn a list on or off store that at once
    // and ask for the path; those of the display change the plot alone.

    void on_pushButtonCalc_clicked();
    void on_checkBoxZoomDeviation_clicked(bool checked);
    void on_checkBoxZoomTimeline_clicked(bool checked);
    void on_checkBoxTime_clicked(bool checked);
    void on_checkBoxCamFlow_clicked(bool checked);
    void on_checkBoxDeviation_clicked(bool checked);
    void on_checkBoxShowCorrection_clicked(bool checked);
    void on_checkBoxShowMargin_clicked(bool checked);
    void on_checkBoxMarginShadow_clicked(bool checked);
    void on_checkBoxEnIgnSectionsGlobal_clicked(bool checked);
    void on_checkBoxEnIgnSections_clicked(bool checked);
    void on_checkBoxEnManualCorrect_clicked(bool checked);
    void on_treeWidgetManualPathList_customContextMenuRequested(QPoint pos);
    void on_comboBoxGraphMouse_currentIndexChanged(int index);

    // Entries of the menu, and what else changes tree and plot.

    /**
     * Takes the tree into ManualSections and builds it anew: points without a frame number go,
     * frames are held to the video, values that are no number become the path's, of points of one
     * frame the upper one stays, sections without points go. Does nothing while there are no
     * frames.
     */
    void SortManList();
    void StartFlow();  ///< a new section; clicks add points to the nearest one

    /**
     * A new section of two points. Deliberate: both at frame 0, as this plot has no play position;
     * the user types the frame that the section is to reach.
     */
    void FlatIn();

    void AddPoint();       ///< Deliberate: a point at frame 0 in the current section, as in FlatIn
    void RemovePoint();    ///< Deliberate: leaves the section's title, until the next sort
    void RemoveSection();  ///< the section under the last right click, with its points
    void EndFlow();        ///< menu entries have no section to add to until the next click
    void FlatOut();        ///< a point at the last frame, and the section is closed
    void ClearAllSections();  ///< empties the tree; the path itself waits for SaveSettings
    void DoNothing();         ///< the line in the menu
    void PlotUpdate();        ///< new data: the plot anew, as the boxes say

    /** A point in the nearest section, or in a first one. @param pos  frame and value */
    void GraphLeftClick(QPointF pos);

    /** An ignore section in the list of the mouse action. @param rect  frames and values */
    void GraphRect(QRectF rect);

private:
    [[nodiscard]] int FrameCount() const;
    [[nodiscard]] int ClampFrame(int frame) const;
    [[nodiscard]] bool IsSection(QTreeWidgetItem* item) const;
    [[nodiscard]] bool IsInTree(const QTreeWidgetItem* item) const;
    [[nodiscard]] QTreeWidgetItem* NearestSection(int frame) const;
    void AddPointItem(int frame, const QString& value);  ///< needs CurrentSection
    void UpdateSectionTitle(QTreeWidgetItem* item);
    void ReadSection(const QTreeWidgetItem& item, ManualPathSection& section) const;
    void RebuildManualTree();
    void AddSectionItem(const ManualPathSection& section);
    void UpdateListStates();

    // Field order is part of the design.
    Ui::GraphWindow* ui;           ///< owned
    Project* Proj;                 ///< not owned
    AxisFilterSettings* Settings;  ///< not owned, of Proj
    CameraPath* Path;              ///< not owned
    FlowPlot Flow;
    QTreeWidgetItem* CurrentSection = nullptr;  ///< top-level item that gets new points
    QTreeWidgetItem* MenuItem = nullptr;        ///< under the last right click
    QPoint MenuPos;                             ///< of that click
    bool HasPlot = true;                        ///< nothing reads these two
    bool HasLists = true;
    std::int32_t MouseMode = 0;                     ///< index of comboBoxGraphMouse
    IgnoreList* GlobalIgnore;                       ///< child of this widget
    IgnoreList* LocalIgnore;                        ///< child of this widget
    std::vector<ManualPathSection> ManualSections;  ///< working copy of the manual path
};
