// SPDX-License-Identifier: MIT
#pragma once

#include "app/endguard.h"
#include "app/tabindex.h"
#include "app/testwindow.h"

#include <QObject>
#include <QTest>

#include <memory>

/** Base of the tests of the program's window on the start project. */
class WindowTest : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestWindow> Window;

private slots:
    void init()
    {
        Guard = std::make_unique<MessageGuard>();
        Window = std::make_unique<TestWindow>();
    }
    void cleanup()
    {
        Window.reset();
        QCOMPARE(EndGuard(Guard), QStringList());
    }
};
