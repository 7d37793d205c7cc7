// SPDX-License-Identifier: MIT
#include "project/filedialogs.h"

#include "app/pathnames.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>

namespace
{
/** Runs a dialog for one file; see ChooseFile. */
bool RunFileDialog(QString& path, const QString& title, const QString& filter,
                   QFileDialog::FileMode mode)
{
    QFileDialog dialog(nullptr, QString(), QString(), QString());
    SetupFileDialog(dialog, path, title, filter);
    dialog.setFileMode(mode);
    const QFileInfo current(path);
    if (!path.isEmpty() && !current.isDir() && current.dir().exists())
    {
        dialog.selectFile(path);  // a file is no directory to start in: show it in its own
    }
    if (dialog.exec() == QDialog::Rejected)
    {
        return false;
    }
    const QString chosen = dialog.selectedFiles().value(0);
    if (!chosen.isEmpty())
    {
        path = chosen;
    }
    return true;
}

/** Makes an empty file, or empties the one that is there. */
bool MakeEmptyFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::Text);
}

/**
 * The project directory that the user meant by @p selected, which is there afterwards if it can
 * be.
 */
QString ProjectDirectoryOf(QString selected, const QString& name)
{
    const QString parent = DirOf(selected);
    if (FileNameOf(parent) == name)
    {
        selected = parent;  // a file inside its own directory
    }
    else if (!QFileInfo::exists(selected))
    {
        QDir().mkdir(selected);  // a failure shows when the file is made
    }
    selected.replace(QLatin1String("//"), QLatin1String("/"));
    if (selected.endsWith(QLatin1Char('/')))
    {
        selected.chop(1);
    }
    return selected;
}
}  // namespace

QList<QUrl>& GetSidebarUrls()
{
    return SidebarUrls;
}

void SetupFileDialog(QFileDialog& dialog, const QString& directory, const QString& title,
                     const QString& filter)
{
    const QString start = QDir(directory).path();
    dialog.setNameFilter(filter);
    dialog.setWindowTitle(title);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.setDirectory(start);
    dialog.setOptions(QFileDialog::DontUseNativeDialog);
    dialog.setSidebarUrls(GetSidebarUrls());
    dialog.setWindowIcon(QIcon(QStringLiteral(":/l/Logos/logo-kvar-klein.png")));
}

void SetupDirDialog(QFileDialog& dialog, const QString& directory, const QString& title)
{
    SetupFileDialog(dialog, directory, title, QString());
}

bool ChooseFile(QString& path, const QString& title, const QString& filter)
{
    return RunFileDialog(path, title, filter, QFileDialog::AnyFile);
}

bool ChooseExistingFile(QString& path, const QString& title, const QString& filter)
{
    return RunFileDialog(path, title, filter, QFileDialog::ExistingFile);
}

bool ChooseProject(QString& file, QString& directory, const QString& title)
{
    QFileDialog dialog;
    SetupDirDialog(dialog, DirOf(directory), title);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    if (dialog.exec() == QDialog::Rejected)
    {
        return false;
    }
    const QString selected = dialog.selectedFiles().value(0);
    if (selected.size() < 2)
    {
        return false;
    }
    QString name = FileNameOf(selected);
    name.remove(QLatin1String(".json")).remove(QLatin1String(".mvprj"));
    const QString chosenDirectory = ProjectDirectoryOf(selected, name);
    const QString chosenFile = QStringLiteral("%1/%2.mvprj").arg(chosenDirectory, name);
    if (!MakeEmptyFile(chosenFile))
    {
        return false;
    }
    file = chosenFile;
    directory = chosenDirectory;
    return true;
}
