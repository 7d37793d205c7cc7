// SPDX-License-Identifier: MIT
#pragma once

#include "app/mainwindow.h"
#include "support/freshhost.h"

#include <QString>
#include <QStringList>

/** The window as it stands after its start with an argument, in whatever home there is. */
class StartedWindow
{
public:
    explicit StartedWindow(const QString& projectFile = QString()) : Window(nullptr, projectFile) {}

    [[nodiscard]] QString Title() const { return Window.windowTitle(); }
    [[nodiscard]] QString Text(const char* lineEdit) const;
    [[nodiscard]] double Number(const char* field) const;
    [[nodiscard]] QStringList Log() const;  ///< lines of the text area, with their prefixes
    [[nodiscard]] QStringList Entries(const char* menu) const;  ///< "-" is a separator

private:
    FreshHost Host;  // outlives the window
    MainWindow Window;
};
