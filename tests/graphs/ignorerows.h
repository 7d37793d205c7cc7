// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axissetup.h"
#include "graphs/graphwindow.h"
#include "graphs/ignorelist.h"

#include <QStringList>
#include <QTreeWidget>

#include <vector>

/** Frames of the video that the rows of AddReadableRows and AddDroppedRows are read for. */
constexpr int IgnoreRowFrames = 200;

/** The sections as "start,end,offset". */
[[nodiscard]] QStringList Texts(const std::vector<IgnoreSection>& sections);

/** Test data of rows that are read: their texts, the section, and the row built anew. */
void AddReadableRows();

/** Test data of rows that are dropped: their texts. */
void AddDroppedRows();

/** A tree of three columns with its list, which belongs to the frame around it. */
struct BareList
{
    BareList();

    void Show();
    void AddRow(const QStringList& texts) { Tree.addTopLevelItem(new QTreeWidgetItem(texts)); }

    QWidget Frame;
    QTreeWidget Tree;
    IgnoreList* List;  ///< child of Frame
};

/** A shown graph window with two global sections and a local one. */
struct ListWindow
{
    /** @param frames  of the video; 0 for none that was analysed */
    explicit ListWindow(int frames);

    [[nodiscard]] QTreeWidget& Global() const { return Find("treeWidgetGlobalIgnore"); }
    [[nodiscard]] QTreeWidget& Local() const { return Find("treeWidgetIgnore"); }
    [[nodiscard]] QTreeWidget& Find(const char* name) const;

    AxisSetup Setup;
    GraphWindow Window;
};
