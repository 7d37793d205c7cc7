// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axissetup.h"
#include "graphs/graphwindow.h"

#include <QStringList>
#include <QTreeWidget>

#include <vector>

/** A shown graph window, its manual path as the user sees it, and the user's hands on the tree. */
class ManualPathWindow
{
public:
    /** @param frames  of the video, 0 for none; frame i of the path lies at 2 * (i + 1) pixels */
    explicit ManualPathWindow(int frames);

    /** Makes @p sections the manual path of the axis, and shows it unfolded. */
    void Load(const std::vector<ManualPathSection>& sections);

    /** Texts of the tree from top to bottom: "[3:9]|Section" and ">3|1.5" for a point. */
    [[nodiscard]] QStringList Rows() const { return RowsOf(Tree()); }
    [[nodiscard]] static QStringList RowsOf(const QTreeWidget& tree);

    /** The manual path of the settings, a section per line: "3=1.5 9=2". */
    [[nodiscard]] QStringList Saved() const;

    [[nodiscard]] QTreeWidget& Tree() const { return Tree("treeWidgetManualPathList"); }
    [[nodiscard]] QTreeWidget& Tree(const char* name) const;

    /** A section, or with @p point a point of it, both from 0. */
    [[nodiscard]] QTreeWidgetItem* Item(int section) const { return Tree().topLevelItem(section); }
    [[nodiscard]] QTreeWidgetItem* Item(int section, int point) const
    {
        return Item(section)->child(point);
    }

    /** Middle of a cell, in the viewport; of an unfolded tree. A null item is below all rows. */
    [[nodiscard]] QPoint Place(const QTreeWidgetItem* item, int column = 0) const;

    /** Double clicks a cell. @return the editor that opens, or null */
    [[nodiscard]] class QLineEdit* OpenEditor(const QTreeWidgetItem* item, int column) const;
    /** Double clicks a cell and types over its text. */
    void Type(const QTreeWidgetItem* item, int column, const QString& text) const;

    /** Right clicks the item, or beside all items when null, and waits for the end of the menu. */
    void RightClick(const QTreeWidgetItem* item) const;
    /** Right clicks, and takes @p entry of the menu; an empty text closes it. */
    void Choose(const QTreeWidgetItem* item, const QString& entry) const;

    AxisSetup Axis;
    GraphWindow Window;
};
