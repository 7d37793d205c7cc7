// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs/homefiles.h"
#include "project/configuration.h"
#include "project/dirsettings.h"
#include "project/filedialogs.h"
#include "project/project.h"
#include "support/testhome.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QTreeWidget>

/** The dialog of the quick access directories, with a home, project and configuration of its own.
 */
class QuickDirectoriesDialog
{
public:
    QuickDirectoriesDialog();

    /** Opens it as the menu of the window does. */
    void Show();

    /** Puts @p entries into the configuration and opens the dialog. */
    void Fill(const QStringList& entries);

    void Press(QDialogButtonBox::StandardButton button) const;

    [[nodiscard]] QTreeWidget& Tree() const;
    [[nodiscard]] QStringList Entries() const;  ///< from top to bottom
    [[nodiscard]] bool CanBeTyped(int row) const;

    /** Types another text over an entry, as after a double click. */
    void TypeOver(int row, const QString& text) const;

    /** A click of the right button in the middle of an entry; blocks while the menu is open. */
    void RightClickOn(int row) const;
    void RightClickBeside() const;  ///< below all entries

private:
    void RightClick(const QPoint& pos) const;

    TestHome Home;

public:
    ::Project Project;
    GlobalConfiguration Config;
    DirSettings Dialog{nullptr, &Project, &Config};
};
