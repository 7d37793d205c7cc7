// SPDX-License-Identifier: MIT
#include "dialogs/startedwindow.h"

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace
{
/** What the settings tab, or else the rest of the window, has of that name. */
template <typename Object>
Object& Find(const MainWindow& window, const char* name)
{
    const auto* tabs = window.findChild<QTabWidget*>(QStringLiteral("tabWidgetMain"));
    const QWidget* settings = tabs->widget(0);
    auto* object = settings->findChild<Object*>(QString::fromLatin1(name));
    object = object != nullptr ? object : window.findChild<Object*>(QString::fromLatin1(name));
    if (object == nullptr)
    {
        qFatal("the window has no %s", name);
    }
    return *object;
}
}  // namespace

QString StartedWindow::Text(const char* lineEdit) const
{
    return Find<QLineEdit>(Window, lineEdit).text();
}

double StartedWindow::Number(const char* field) const
{
    return Find<QAbstractSpinBox>(Window, field).property("value").toDouble();
}

QStringList StartedWindow::Log() const
{
    const QString text = Find<QPlainTextEdit>(Window, "plainTextEdit").toPlainText();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

QStringList StartedWindow::Entries(const char* menu) const
{
    QStringList texts;
    for (const QAction* action : Find<QMenu>(Window, menu).actions())
    {
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return texts;
}
