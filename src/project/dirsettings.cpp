// SPDX-License-Identifier: MIT
#include "project/dirsettings.h"

#include "app/pathnames.h"
#include "project/configuration.h"
#include "project/filedialogs.h"
#include "project/project.h"

#include "ui_dirsettings.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

namespace
{
const QString Placeholder = QStringLiteral("#########");  ///< an entry that is yet to be typed in
const QString ProjectFilesWord = QStringLiteral("#ProjectFilesDir");
const QString SourceVideoWord = QStringLiteral("#SrcVideoFileDir");
const QString ExportVideoWord = QStringLiteral("#ExportVideoFileDir");

/** DirOf for a path that may have backslashes. */
QString DirOfAnySlashes(QString path)
{
    path.replace(QLatin1String("\\\\"), QLatin1String("/"));
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return DirOf(path);
}

QString Separator()
{
    return QStringLiteral("------------");
}
}  // namespace

DirSettings::DirSettings(QWidget* parent, Project* project, GlobalConfiguration* config)
    : QDialog(parent), ui(new Ui::DirSettings), Proj(project), Config(config)
{
    ui->setupUi(this);
    setWindowTitle(tr("Quick access directories"));
    FillTree();
}

DirSettings::~DirSettings()
{
    delete ui;
}

void DirSettings::FillTree()
{
    ClearAll();
    for (const QString& directory : qAsConst(Config->DirList))
    {
        ui->treeWidget->addTopLevelItem(new QTreeWidgetItem(QStringList(directory)));
    }
    if (Config->DirList.isEmpty())
    {
        AddItem(QStringLiteral("%1/Molvane").arg(QDir::homePath()));
        AddItem(ProjectFilesWord);
        AddItem(SourceVideoWord);
        AddItem(ExportVideoWord);
    }
}

void DirSettings::ShowDialog()
{
    FillTree();
    setHidden(false);
}

void DirSettings::AddItem(const QString& text)
{
    auto* item = new QTreeWidgetItem(QStringList(text));
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    ui->treeWidget->addTopLevelItem(item);
}

void DirSettings::on_treeWidget_customContextMenuRequested(QPoint pos)
{
    ContextItem = ui->treeWidget->itemAt(pos);
    QMenu menu(this);
    menu.addAction(tr("Add Directory"), this, &DirSettings::Add);
    if (ContextItem != nullptr)
    {
        menu.addAction(tr("Choose Directory"));  // Deliberate: connected to nothing
        menu.addAction(Separator(), this, &DirSettings::DoNothing);
        menu.addAction(tr("Remove Directory"), this, &DirSettings::Remove);
    }
    menu.addAction(Separator(), this, &DirSettings::DoNothing);
    menu.addAction(tr("Remove Invalid Directories"), this, &DirSettings::ClearNonExisisting);
    menu.addAction(Separator(), this, &DirSettings::DoNothing);
    menu.addAction(tr("Remove all Directories"), this, &DirSettings::ClearAll);
    menu.addAction(Separator(), this, &DirSettings::DoNothing);
    menu.exec(ui->treeWidget->viewport()->mapToGlobal(pos));
}

void DirSettings::Add()
{
    const QString directory = QFileDialog::getExistingDirectory(
        nullptr, tr("New quick access directory"), QDir::homePath(),
        QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    AddItem(directory.isEmpty() ? Placeholder : directory);
}

void DirSettings::Remove()
{
    delete ContextItem;
    ContextItem = nullptr;
}

void DirSettings::ClearAll()
{
    RemoveItems([](const QString&) { return true; });
}

void DirSettings::ClearNonExisisting()
{
    // Deliberate: the text as it stands, so that entries with a word go too.
    RemoveItems([](const QString& text) { return !QFileInfo::exists(text); });
}

void DirSettings::ClearEmpty()
{
    RemoveItems([](QString text)
                { return text.remove(Placeholder).remove(QLatin1Char(' ')).isEmpty(); });
}

template <typename Condition>
void DirSettings::RemoveItems(Condition shouldRemove)
{
    ContextItem = nullptr;
    for (int i = ui->treeWidget->topLevelItemCount() - 1; i >= 0; --i)
    {
        if (shouldRemove(ui->treeWidget->topLevelItem(i)->text(0)))
        {
            delete ui->treeWidget->takeTopLevelItem(i);
        }
    }
}

void DirSettings::DoNothing() {}

/** Of the three words only the first that stands in the entry is replaced. */
QString DirSettings::ReplaceWord(QString entry) const
{
    if (entry.contains(ProjectFilesWord))
    {
        // Deliberate: one level above the directory of the project.
        return entry.replace(ProjectFilesWord,
                             DirOfAnySlashes(DirOfAnySlashes(Config->ProjectFile)));
    }
    if (entry.contains(SourceVideoWord))
    {
        return entry.replace(SourceVideoWord, DirOfAnySlashes(Proj->SourceFile));
    }
    if (entry.contains(ExportVideoWord))
    {
        return entry.replace(ExportVideoWord, DirOfAnySlashes(Proj->ExportFile));
    }
    return entry;
}

void DirSettings::accept()
{
    ClearEmpty();
    Config->DirList.clear();
    ContextItem = nullptr;
    QList<QUrl>& sidebar = GetSidebarUrls();
    sidebar.clear();
    for (int i = ui->treeWidget->topLevelItemCount() - 1; i >= 0; --i)
    {
        const QString entry = ui->treeWidget->topLevelItem(i)->text(0);
        Config->DirList.append(entry);
        sidebar.append(QUrl::fromLocalFile(ReplaceWord(entry)));
    }
    Config->Save();
    hide();
}

void DirSettings::reject()
{
    hide();
}
