// SPDX-License-Identifier: MIT
#include "support/buttonclick.h"

#include <QAbstractButton>
#include <QTest>

void ClickOn(QAbstractButton* button)
{
    QVERIFY2(button->isVisible() && button->isEnabled(), qPrintable(button->objectName()));
    constexpr int nearTheBox = 8;  // pixels; the text of a check box need not reach its middle
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier,
                      QPoint(nearTheBox, button->height() / 2));
}
