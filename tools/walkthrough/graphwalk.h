// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QString>
#include <QVector>

#include <functional>

class QComboBox;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;
class QwtPlot;
class Report;

/** What a walk sets on a graph tab. */
struct AxisChoice
{
    int Tab = 0;    ///< index of the tab
    int Type = 0;   ///< filter type, 1 to 5
    int Depth = 0;  ///< filter strength, frames
};

/**
 * Works one graph tab of the main window by mouse and keys: filter, manual path, ignore sections.
 * The window must be shown and have a calculated path.
 */
class GraphWalk
{
public:
    /** @param window  main window, outlives the object. @param out  existing directory */
    GraphWalk(QWidget& window, const QDir& out, Report& report);

    /** Shapes the axis, calculates anew and takes pictures in frame and in time view. */
    void Shape(const AxisChoice& choice);

    /** Pictures of all graphs in a window of @p width by @p height pixels. */
    void TakePictures(int width, int height, const QString& name);

    void EnterTab(int index);
    void SetFilter(const AxisChoice& choice);  ///< of the tab on show
    void Tick(const char* checkBox);
    void Calculate();

    /** The mouse adds points: manual ones with the clicked value, flat ones on the path. */
    enum class PointKind
    {
        Manual = 1,
        Flat = 2
    };

    /**
     * Clicks the points of a section.
     * @param places  share of the frames and, from the top, share of the height
     */
    void ClickPoints(PointKind kind, const QVector<QPointF>& places);

    /** Drags a local ignore section; calls @p held before the button is let go. */
    void DragLocalSection(double from, double to, const std::function<void()>& held = nullptr);

    [[nodiscard]] QWidget* ShownPage() const { return Page; }

private:
    template <typename Widget>
    Widget* Find(const char* name) const;
    void Type(const char* spinBox, int value);
    void ChooseMouse(int index);
    [[nodiscard]] QPoint OnCanvas(double frame, double share) const;
    void DragSection(int mouseIndex, const char* tree, double from, double to,
                     const std::function<void()>& held = nullptr);
    void ChooseInTree(QTreeWidgetItem* item, const QString& entry);
    void TypeInto(QTreeWidgetItem* item, int column, const QString& text);
    void EditLists();
    void TakePicture(const QString& name);

    QWidget& Window;
    QDir Out;
    Report& Story;
    QWidget* Page = nullptr;  ///< tab on show
    QwtPlot* Plot = nullptr;  ///< of the page
};
