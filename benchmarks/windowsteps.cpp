// SPDX-License-Identifier: MIT
#include "windowsteps.h"

#include "app/mainwindow.h"

#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace
{
QTabWidget* TabsOf(const MainWindow& window)
{
    return window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"));
}
}  // namespace

QPushButton* ButtonOf(const QWidget& parent, const char* name)
{
    return parent.findChild<QPushButton*>(QString::fromLatin1(name));
}

void ClickTab(const MainWindow& window, int index)
{
    QTabBar* bar = TabsOf(window)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
}

QWidget* ShowHorizontalGraph(const MainWindow& window)
{
    auto* calculate = ButtonOf(window, "pushButtonCalculateTrack");
    QTest::mouseClick(ButtonOf(window, "pushButtonReadTrack"), Qt::LeftButton);
    if (!QTest::qWaitFor([calculate] { return calculate->isEnabled(); }, 60000))
    {
        qFatal("the data files were not read");
    }
    ClickTab(window, 1);
    QWidget* page = TabsOf(window)->currentWidget();
    QTest::mouseClick(ButtonOf(*page, "pushButtonCalc"), Qt::LeftButton);
    WaitForSecondUpdate();
    return page;
}

void WaitForSecondUpdate()
{
    QTest::qWait(400);
}
