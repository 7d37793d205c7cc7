// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/ignoresection.h"

#include <QObject>

#include <cstdint>
#include <vector>

class QPoint;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

/**
 * The ignore sections of one tree widget, with its context menu. The tree is the edited form, which
 * the user types into; Sections is the stored form. User interface thread only.
 */
class IgnoreList : public QObject
{
    Q_OBJECT

public:
    /** @param parent owner, also of the menu. @param tree not owned, outlives the object */
    IgnoreList(QWidget* parent, QTreeWidget* tree);
    IgnoreList(const IgnoreList&) = delete;
    IgnoreList& operator=(const IgnoreList&) = delete;

    void AddSection(IgnoreSection section);  ///< a new row at the end; Sections stays as it is
    void Rebuild();                          ///< the tree anew from Sections

    // The order of the slots is part of the design.
public slots:
    /**
     * Takes the tree into Sections, without sorting, and drops rows that cannot be read or that end
     * before they start. An end below 0 becomes the frame count, a start below 0 becomes 0. Does
     * nothing while there are no frames.
     */
    void SortList();
    void Add();        ///< a row for the whole video
    void Remove();     ///< the row under the last right click
    void Clear();      ///< empties the tree; Sections stays in force until SortList
    void DoNothing();  ///< the line in the menu

private:
    void ShowMenu(const QPoint& pos);

    // Field order is part of the design.
    QWidget* Parent;    ///< not owned
    QTreeWidget* Tree;  ///< not owned
    /// Under the last right click. It may have gone: it is only followed when the tree has it.
    QTreeWidgetItem* MenuItem = nullptr;

public:
    std::int32_t FrameCount = 0;  ///< set by the graph window
    std::vector<IgnoreSection> Sections;
};
