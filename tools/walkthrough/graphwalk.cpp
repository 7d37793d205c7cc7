// SPDX-License-Identifier: MIT
#include "graphwalk.h"

#include "report.h"
#include "userhands/answermodal.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace
{
constexpr int SecondUpdate = 400;  ///< milliseconds until the second update of a graph is over
constexpr int LocalIgnore = 3;     ///< items of the box that chooses what the mouse does
constexpr int GlobalIgnore = 4;

/** With the left button held; Qt Test's own moves know no button. */
void Drag(QWidget* widget, const QPoint& from, const QPoint& to, const std::function<void()>& held)
{
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, from);
    for (const QPoint& place : {(from + to) / 2, to})
    {
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
    }
    if (held)
    {
        held();
    }
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, to);
}
}  // namespace

GraphWalk::GraphWalk(QWidget& window, const QDir& out, Report& report)
    : Window(window), Out(out), Story(report)
{}

template <typename Widget>
Widget* GraphWalk::Find(const char* name) const
{
    auto* widget = Page->findChild<Widget*>(QString::fromLatin1(name));
    if (widget == nullptr)
    {
        qFatal("the graph tab has no %s", name);
    }
    return widget;
}

void GraphWalk::EnterTab(int index)
{
    auto* tabs = Window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, Qt::NoModifier,
                      tabs->tabBar()->tabRect(index).center());
    Page = tabs->currentWidget();
    Plot = Page->findChild<QwtPlot*>();
    QTest::qWait(SecondUpdate);
}

void GraphWalk::Shape(const AxisChoice& choice)
{
    EnterTab(choice.Tab);
    SetFilter(choice);
    Tick("checkBoxShowMargin");
    Calculate();
    ClickPoints(PointKind::Manual, {{0.1, 0.4}, {0.2, 0.5}, {0.35, 0.65}});
    DragLocalSection(0.5, 0.6);
    DragSection(GlobalIgnore, "treeWidgetGlobalIgnore", 0.7, 0.75);
    EditLists();
    TakePicture(QStringLiteral("edited"));
    Calculate();
    TakePicture(QStringLiteral("frames"));
    Tick("checkBoxTime");
    QTest::qWait(SecondUpdate);
    Story.Step(Plot->axisTitle(QwtPlot::xBottom).text() == QStringLiteral("Time [min:sec:ms]"),
               QStringLiteral("the axis shows the time"));
    TakePicture(QStringLiteral("time"));
    Tick("checkBoxTime");
}

void GraphWalk::SetFilter(const AxisChoice& choice)
{
    Type("spinBoxAvgOrder", choice.Type);
    Type("spinBoxAvgFrames", choice.Depth);
}

/** A click on the box itself: the middle of the widget may lie behind its text. */
void GraphWalk::Tick(const char* checkBox)
{
    auto* box = Find<QCheckBox>(checkBox);
    const bool before = box->isChecked();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
    Story.Step(box->isChecked() != before, QStringLiteral("%1 changes").arg(box->text()));
}

void GraphWalk::Type(const char* spinBox, int value)
{
    auto* box = Find<QSpinBox>(spinBox);
    box->selectAll();
    QTest::keyClicks(box, QString::number(value));
    QTest::keyClick(box, Qt::Key_Return);
    Story.Step(box->value() == value, QStringLiteral("%1 shows %2").arg(spinBox).arg(value));
}

void GraphWalk::ChooseMouse(int index)
{
    auto* box = Find<QComboBox>("comboBoxGraphMouse");
    QTest::keyClick(box, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
    {
        QTest::keyClick(box, Qt::Key_Down);
    }
    Story.Step(box->currentIndex() == index,
               QStringLiteral("the mouse does \"%1\"").arg(box->currentText()));
}

/** A place by its share of the frames and, from the top, of the height. */
QPoint GraphWalk::OnCanvas(double frame, double share) const
{
    const QRect canvas = Plot->canvas()->contentsRect();
    const double last = Plot->axisScaleDiv(QwtPlot::xBottom).upperBound();
    const double x = Plot->canvasMap(QwtPlot::xBottom).transform(frame * last);
    return {qRound(x), canvas.top() + qRound(share * canvas.height())};
}

void GraphWalk::ClickPoints(PointKind kind, const QVector<QPointF>& places)
{
    ChooseMouse(static_cast<int>(kind));
    auto* tree = Find<QTreeWidget>("treeWidgetManualPathList");
    for (const QPointF& place : places)
    {
        QTest::mouseClick(Plot->canvas(), Qt::LeftButton, Qt::NoModifier,
                          OnCanvas(place.x(), place.y()));
    }
    Story.Step(
        tree->topLevelItemCount() == 1 && tree->topLevelItem(0)->childCount() >= places.size(),
        QStringLiteral("%1 clicks make points of one section").arg(places.size()));
}

void GraphWalk::DragLocalSection(double from, double to, const std::function<void()>& held)
{
    DragSection(LocalIgnore, "treeWidgetIgnore", from, to, held);
}

void GraphWalk::DragSection(int mouseIndex, const char* tree, double from, double to,
                            const std::function<void()>& held)
{
    ChooseMouse(mouseIndex);
    const int rows = Find<QTreeWidget>(tree)->topLevelItemCount();
    Drag(Plot->canvas(), OnCanvas(from, 0.2), OnCanvas(to, 0.8), held);
    const QTreeWidgetItem* row = Find<QTreeWidget>(tree)->topLevelItem(rows);
    Story.Step(row != nullptr, QStringLiteral("a drag adds a row to %1").arg(tree));
    if (row != nullptr)
    {
        Story.Fact(QStringLiteral("frames %1 to %2").arg(row->text(0), row->text(1)));
    }
}

/** By the context menu at the place of @p item, or beside all items for none. */
void GraphWalk::ChooseInTree(QTreeWidgetItem* item, const QString& entry)
{
    auto* tree = Find<QTreeWidget>("treeWidgetManualPathList");
    const QPoint place = item != nullptr ? tree->visualItemRect(item).center()
                                         : tree->viewport()->rect().bottomRight() - QPoint(2, 2);
    const AnswerModal menu = AnswerModal::Menu(entry);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, tree->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree->viewport(), &event);
    Story.Step(menu.WasAnswered(), QStringLiteral("the menu has \"%1\"").arg(entry));
}

void GraphWalk::TypeInto(QTreeWidgetItem* item, int column, const QString& text)
{
    QTreeWidget* tree = item->treeWidget();
    tree->scrollToItem(item);
    tree->setCurrentItem(item, column);
    tree->editItem(item, column);
    auto* editor = tree->viewport()->findChild<QLineEdit*>();
    if (Story.Step(editor != nullptr, QStringLiteral("a cell opens for typing")))
    {
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        const bool isTaken = QTest::qWaitFor([&] { return item->text(column) == text; });
        Story.Step(isTaken, QStringLiteral("the cell shows %1").arg(text));
    }
}

/** Flat sections at both ends, and some rows typed over. */
void GraphWalk::EditLists()
{
    auto* tree = Find<QTreeWidget>("treeWidgetManualPathList");
    ChooseInTree(nullptr, QStringLiteral("Start Flat In Section"));
    QTreeWidgetItem* flatIn = tree->topLevelItem(1);
    flatIn->setExpanded(true);
    TypeInto(flatIn->child(1), 0, QStringLiteral("8"));
    ChooseInTree(nullptr, QStringLiteral("Start Section"));
    ChooseInTree(tree->topLevelItem(2), QStringLiteral("Add Point"));
    QTreeWidgetItem* flatOut = tree->topLevelItem(2);
    flatOut->setExpanded(true);
    const double last = Plot->axisScaleDiv(QwtPlot::xBottom).upperBound();
    TypeInto(flatOut->child(0), 0, QString::number(qRound(0.9 * last)));
    ChooseInTree(flatOut, QStringLiteral("Flat Out"));
    Story.Step(tree->topLevelItemCount() == 3 && flatOut->childCount() == 2,
               QStringLiteral("the path is flat at both ends"));
    QTreeWidgetItem* ignored = Find<QTreeWidget>("treeWidgetIgnore")->topLevelItem(0);
    TypeInto(ignored, 1, QString::number(ignored->text(1).toInt() + 1));
}

void GraphWalk::Calculate()
{
    QTest::mouseClick(Find<QPushButton>("pushButtonCalc"), Qt::LeftButton);
    const auto* label = Window.findChild<QLabel*>(QStringLiteral("labelLog"));
    Story.Step(label->text() == QStringLiteral("Generate Smoothing Path"),
               QStringLiteral("the camera path is calculated from the graph"));
    QTest::qWait(SecondUpdate);
}

void GraphWalk::TakePicture(const QString& name)
{
    const QString file = QStringLiteral("graph-%1-%2.png").arg(Page->objectName(), name);
    Story.Step(Window.grab().save(Out.filePath(file)), QStringLiteral("screenshot %1").arg(file));
}

void GraphWalk::TakePictures(int width, int height, const QString& name)
{
    const QSize before = Window.size();
    Window.resize(width, height);
    for (int tab = 1; tab <= 3; ++tab)
    {
        EnterTab(tab);
        TakePicture(name);
    }
    Window.resize(before);
}
