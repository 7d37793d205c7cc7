// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"
#include "dialogs/showndialogs.h"
#include "support/messageguard.h"
#include "support/testhome.h"

#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <memory>

class QMenu;

/**
 * Base of the tests of the project commands: each test gets an empty home and a window on the start
 * project in it, and gives its commands through menus, buttons and answered dialogs.
 */
class ProjectWindowTest : public QObject
{
    Q_OBJECT

protected:
    using Button = QMessageBox::StandardButton;

    /** Takes a command of the menu and answers the question and then the dialog by typing. */
    void Command(const char* action, Button answer, const QString& typed) const;
    /** The same where no dialog is to come. */
    void Command(const char* action, Button answer) const;
    void Trigger(const char* action) const;  ///< where no question is to come

    /** The question of a command, answered with Cancel. */
    [[nodiscard]] ShownQuestion QuestionOf(const char* action) const;
    /** The file dialog of a command behind its question, which gets No; it is cancelled. */
    [[nodiscard]] ShownFileDialog DialogOf(const char* action) const;

    void NewProject(const QString& typed, Button answer = QMessageBox::No) const;
    void OpenProject(const QString& path, Button answer = QMessageBox::No) const;
    void SaveProjectAs(const QString& typed, Button answer = QMessageBox::No) const;

    [[nodiscard]] QMenu* RecentMenu() const;
    [[nodiscard]] QStringList RecentEntries() const;  ///< of the menu
    void ClickRecent(const QString& entry, Button answer) const;

    /** The player's line about a source that is not there; the short of it fits a record. */
    [[nodiscard]] static QString NotOpened(const QString& source)
    {
        return QStringLiteral("Error    Open %1 failed!").arg(source);
    }

    QStringList NewLines();  ///< of the log since the last call
    [[nodiscard]] QString InHome(const QString& name) const { return Home->Path(name); }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestHome> Home;
    std::unique_ptr<TestWindow> Window;

private slots:
    void init();
    void cleanup();

private:
    int SeenLines = 0;
};
