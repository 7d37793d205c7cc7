// SPDX-License-Identifier: MIT
#include "manualpictures.h"

#include "playerwalk.h"
#include "report.h"

#include <QImage>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

namespace
{
constexpr int SettingsTab = 0;
constexpr int HorizontalTab = 1;
constexpr int SmoothType = 3;
constexpr int StrongType = 5;
constexpr int Depth = 12;  ///< frames
constexpr int Rim = 8;     ///< pixels around a column
constexpr int PlayerFrame = 200;
constexpr double PlayerZoom = 0.5;
constexpr int SecondUpdate = 400;  ///< milliseconds until the second update of a graph is over
}  // namespace

ManualPictures::ManualPictures(QWidget& window, const QDir& pictures, Report& report)
    : Window(window), Pictures(pictures), Story(report), Graphs(window, pictures, report)
{}

/** Where the tab on show has a widget, in the window. */
QRect ManualPictures::Area(const char* name) const
{
    const auto* tabs = Window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"));
    const auto* widget = tabs->currentWidget()->findChild<QWidget*>(QString::fromLatin1(name));
    if (widget == nullptr)
    {
        qFatal("the tab has no %s", name);
    }
    return {widget->mapTo(&Window, QPoint(0, 0)), widget->size()};
}

QRect ManualPictures::FilterColumn() const
{
    return (Area("checkBoxLock") | Area("groupBoxSettings") | Area("groupBox"))
        .adjusted(-Rim, -2, Rim, Rim);
}

QRect ManualPictures::PlotAndLists() const
{
    return (Area("scrollArea") | Area("treeWidgetGlobalIgnore") | Area("treeWidgetManualPathList"))
        .adjusted(-Rim, 0, 0, 2);
}

/** @p width in pixels, for a picture wider than that */
void ManualPictures::Save(const QRect& area, const QString& name, int width)
{
    if (QWidget* focus = Window.focusWidget())
    {
        focus->clearFocus();  // no cursor
    }
    for (QLineEdit* field : Window.findChildren<QLineEdit*>())
    {
        field->deselect();
    }
    QTest::qWait(SecondUpdate);
    const QString file = name + QStringLiteral(".png");
    QImage picture = Window.grab(area).toImage().convertToFormat(QImage::Format_RGB32);
    if (picture.width() > width)
    {
        picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
    }
    Story.Step(picture.save(Pictures.filePath(file)), QStringLiteral("picture %1").arg(file));
}

void ManualPictures::ShowSettings()
{
    Graphs.EnterTab(SettingsTab);
    Save(Window.rect(), QStringLiteral("settings"));
}

void ManualPictures::ShowPlayer()
{
    PlayerWalk(Window, Pictures, Story).ShowFrame(PlayerFrame, PlayerZoom);
    Save(Window.rect(), QStringLiteral("player"));
}

void ManualPictures::ShowGraphs()
{
    Graphs.EnterTab(HorizontalTab);
    Graphs.SetFilter({HorizontalTab, SmoothType, Depth});
    Graphs.Calculate();
    Save(FilterColumn(), QStringLiteral("filter-settings"));
    Save(Area("scrollArea"), QStringLiteral("graph-frames"));
    Graphs.Tick("checkBoxTime");
    Save(Area("scrollArea"), QStringLiteral("graph-time"));
    Graphs.Tick("checkBoxTime");

    Graphs.SetFilter({HorizontalTab, StrongType, Depth});
    Graphs.Tick("checkBoxShowMargin");
    Graphs.Calculate();
    Save(Area("scrollArea"), QStringLiteral("graph-type-5"));
    Graphs.Tick("checkBoxShowMargin");
    Graphs.SetFilter({HorizontalTab, SmoothType, Depth});
    Graphs.Calculate();
}

void ManualPictures::ShowSections()
{
    Graphs.ClickPoints(GraphWalk::PointKind::Flat,
                       {{0.33, 0.5}, {0.45, 0.5}, {0.57, 0.5}, {0.67, 0.5}, {0.8, 0.5}});
    Graphs.Calculate();
    Graphs.ShownPage()
        ->findChild<QTreeWidget*>(QStringLiteral("treeWidgetManualPathList"))
        ->expandAll();
    Save(PlotAndLists(), QStringLiteral("graph-manual"));
    Graphs.Tick("checkBoxEnManualCorrect");
    Graphs.DragLocalSection(0.35, 0.42,
                            [this] { Save(Area("scrollArea"), QStringLiteral("graph-ignore")); });
}
