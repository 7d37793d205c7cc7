// SPDX-License-Identifier: MIT
#pragma once

#include "app/tabindex.h"
#include "app/testwindow.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <QWidget>

class CameraPath;
class QTreeWidget;
class QTreeWidgetItem;
class QwtPlot;

/** The three tabs with graphs. */
inline constexpr int GraphTabs[] = {HorizontalTab, VerticalTab, RotationTab};

/** A row of a test per graph tab: "tab", its index. */
void AddGraphTabRows();

/** The path that a graph tab shows. */
[[nodiscard]] CameraPath& PathOfTab(int index);

/**
 * One graph tab of the window and the user's hands on it. The tab need not be the one on show but
 * for what says so.
 */
class GraphTab
{
public:
    /** @param index  a graph tab. @param window  outlives this object's use */
    GraphTab(const TestWindow& window, int index);

    template <typename Object>
    [[nodiscard]] Object* Find(const char* name) const
    {
        auto* object = Page->findChild<Object*>(QString::fromLatin1(name));
        if (object == nullptr)
        {
            qFatal("the graph tab has no %s", name);
        }
        return object;
    }

    void Click(const char* button) const;  ///< also a check box; on show, enabled
    void SetBox(const char* checkBox, bool isChecked) const;  ///< by a click, if it is not so yet
    void Type(const char* field, int number) const;           ///< keys into a spin box; on show
    /** Changes a field behind the user's back, on a tab that is not on show. */
    void Slip(const char* field, double number) const;
    void ChooseMouse(int item) const;  ///< with the arrow keys; on show
    [[nodiscard]] double Number(const char* field) const;
    [[nodiscard]] bool IsChecked(const char* checkBox) const;

    [[nodiscard]] QwtPlot* Plot() const;
    [[nodiscard]] QStringList Curves() const;                       ///< titles, in drawing order
    [[nodiscard]] QVector<double> Values(const char* curve) const;  ///< per frame; empty if none

    /** Chooses from the context menu at the top level row @p row, or beside all rows; on show. */
    void ChooseFromTree(const char* tree, const char* entry, int row = -1) const;
    /** Types over a cell: a double click, the text, Return; on show. */
    void TypeIntoCell(const char* tree, QTreeWidgetItem* item, int column,
                      const QString& text) const;
    /** Adds an ignore section by menu and keys; on show. @param tree  of those that are on */
    void AddIgnore(const char* tree, int start, int end) const;
    /** Texts of the rows and, behind each, of its children, as in "2,4,0". */
    [[nodiscard]] QStringList Rows(const char* tree) const;

private:
    QWidget* Page;
};
