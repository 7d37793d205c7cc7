// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"

#include <QPoint>
#include <QString>
#include <QStringList>

class QObject;
class QTreeWidget;

/** All that a user can read in the window: of widgets, menus, lists, graphs and context menus. */
class WindowTexts
{
public:
    /** Works the window for it: graphs get curves, lists get rows. */
    explicit WindowTexts(const TestWindow& window);

    /** Without mnemonics, and without blanks around. */
    [[nodiscard]] bool Has(const QString& text) const { return Texts.contains(text); }

private:
    void AddTextsOf(const QObject* object);
    void AddItemsOf(const QObject* object);
    void AddContextMenus(const TestWindow& window);
    void ReadMenu(QTreeWidget* tree, const QPoint& place, const QString& entry = QString());

    QStringList Texts;
};
