// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/axissetup.h"
#include "graphs/graphwindow.h"
#include "graphs/gridandpos.h"
#include "graphs/simpleplot.h"

#include <QCheckBox>
#include <QTreeWidget>

/**
 * A graph tab that stands alone: the tab of FlowV whose path is bound to FlowH, as the vertical one
 * is while it follows the horizontal axis.
 */
struct AxisTab
{
    explicit AxisTab(bool isPixelAxis = true);

    /** Shows the window in its full size. */
    void Show();

    /** The one widget of that name. */
    template <typename Widget>
    [[nodiscard]] Widget* Find(const char* name) const
    {
        const auto found = Window.findChildren<Widget*>(QString::fromLatin1(name));
        if (found.size() != 1)
        {
            qFatal("the form has %d widgets named %s", found.size(), name);
        }
        return found.first();
    }

    [[nodiscard]] QCheckBox* Box(const char* name) const { return Find<QCheckBox>(name); }
    [[nodiscard]] QTreeWidget& Tree(const char* name) const { return *Find<QTreeWidget>(name); }
    [[nodiscard]] double Number(const char* field) const;

    /** Where a widget lies in the window. */
    [[nodiscard]] QRect Place(const char* name) const;

    /** Clicks on the square of a check box. */
    void Click(const char* box) const;

    /** Types over the number of a field. */
    void Type(const char* field, const QString& text) const;

    [[nodiscard]] SimplePlot& Plot() const;
    [[nodiscard]] GridAndPos& Grid() const;

    /** Titles of the curves on the plot, in the order of drawing. */
    [[nodiscard]] QStringList Curves() const;

    /** First and last value of an axis, as "0..19". */
    [[nodiscard]] QString Span(int axis) const;

    AxisSetup Setup;
    GraphWindow Window;
};
