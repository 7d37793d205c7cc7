// SPDX-License-Identifier: MIT
#include "app/shownlog.h"

#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

ShownLog::ShownLog()
{
    ReplaceWindow();
}

void ShownLog::ReplaceWindow()
{
    Window = std::make_unique<QWidget>();
    Messages.Setup(Window.get());
    Window->show();
    QVERIFY(QTest::qWaitForWindowExposed(Window.get()));
}

QString ShownLog::Text() const
{
    return Find<QPlainTextEdit>("plainTextEdit")->toPlainText();
}

QStringList ShownLog::Lines() const
{
    return Text().isEmpty() ? QStringList() : Text().split(QLatin1Char('\n'));
}

QString ShownLog::LastAction() const
{
    return Find<QLabel>("labelLog")->text();
}

void ShownLog::ClickBox(const char* name) const
{
    auto* box = Find<QCheckBox>(name);
    QStyleOptionButton option;
    option.initFrom(box);
    const QRect indicator =
        box->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, indicator.center());
}
