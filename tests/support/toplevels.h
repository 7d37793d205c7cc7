// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QList>
#include <QString>
#include <QWidget>

/** The widgets of that class that stand by themselves: windows, dialogs and menus, shown or not. */
template <typename Widget>
[[nodiscard]] QList<Widget*> TopLevels()
{
    QList<Widget*> found;
    for (QWidget* widget : QApplication::topLevelWidgets())
    {
        if (auto* match = qobject_cast<Widget*>(widget))
        {
            found.append(match);
        }
    }
    return found;
}

/** The name of an object's class, for those whose header is beside the point. */
[[nodiscard]] inline QString ClassOf(const QObject& object)
{
    return QString::fromLatin1(object.metaObject()->className());
}
