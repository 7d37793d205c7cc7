// SPDX-License-Identifier: MIT
#pragma once

#include "support/toplevels.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <utility>

/** Classes of the dialogs that stand beside the main window. */
inline const QStringList OwnDialogs = {"About", "AboutQt", "AboutOpenCV", "AboutCodecs", "Help"};

/** The dialogs that the one window of the test has made. */
[[nodiscard]] inline QList<QWidget*> DialogsOfTheWindow()
{
    QList<QWidget*> dialogs;
    for (QWidget* widget : TopLevels<QWidget>())
    {
        if (OwnDialogs.contains(ClassOf(*widget)))
        {
            dialogs.append(widget);
        }
    }
    return dialogs;
}

/** Shows each event of an object to a function. */
class Watch : public QObject
{
public:
    Watch(QObject* watched, std::function<void(const QEvent&)> see) : See(std::move(see))
    {
        watched->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        See(*event);
        return false;
    }

private:
    std::function<void(const QEvent&)> See;
};
