// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QUrl>

class QFileDialog;

/**
 * The file dialogs of the program: Qt's own, all with the same sidebar. The functions that run a
 * dialog block the user interface thread until it is closed; a job of the worker goes on meanwhile.
 */

/**
 * What the sidebar of every file dialog shows, with all words replaced; DirSettings fills it.
 * Others ask GetSidebarUrls.
 */
extern QList<QUrl> SidebarUrls;

[[nodiscard]] QList<QUrl>& GetSidebarUrls();

/**
 * What all dialogs have in common. @param filter a name filter as of QFileDialog; empty for none
 */
void SetupFileDialog(QFileDialog& dialog, const QString& directory, const QString& title,
                     const QString& filter);

/** SetupFileDialog for directories. */
void SetupDirDialog(QFileDialog& dialog, const QString& directory, const QString& title);

/**
 * Lets the user choose a file, or type a name that need not exist.
 * @param path  in: where the dialog starts; out: the chosen file
 * @return      false when the user cancels; @p path is untouched then
 */
[[nodiscard]] bool ChooseFile(QString& path, const QString& title, const QString& filter);

/** ChooseFile for files that exist. */
[[nodiscard]] bool ChooseExistingFile(QString& path, const QString& title, const QString& filter);

/**
 * Lets the user name a project's directory, or a project file inside its own directory. Makes the
 * directory if needed, one level only, and in it an empty file of its name with the extension
 * ".mvprj"; a file that is there is emptied. A name with an extension, in a directory of another
 * name, becomes a directory of that whole name.
 * @param file       in and out: the project file
 * @param directory  in and out: its directory, without a trailing slash
 * @return           false when the user cancels or the file cannot be made; both are untouched then
 */
[[nodiscard]] bool ChooseProject(QString& file, QString& directory, const QString& title);
