// SPDX-License-Identifier: MIT
#include "graphs/graphmousetest.h"

#include "dialogs/dialogguard.h"

#include <QTest>

void GraphMouseBase::StartWindow(int frames)
{
    Hands.reset();
    Manual = std::make_unique<ManualPathWindow>(frames);
    Hands = std::make_unique<PlotHands>(Manual->Window);
    Hands->SetAxes(0.0, 100.0, -50.0, 50.0);
}

void GraphMouseBase::init()
{
    Guard = std::make_unique<MessageGuard>();
    StartWindow();
}

void GraphMouseBase::cleanup()
{
    Hands.reset();
    Manual.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

QStringList GraphMouseBase::LocalRows() const
{
    return ManualPathWindow::RowsOf(Manual->Tree("treeWidgetIgnore"));
}

QStringList GraphMouseBase::GlobalRows() const
{
    return ManualPathWindow::RowsOf(Manual->Tree("treeWidgetGlobalIgnore"));
}
