// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPoint>

class QTreeWidgetItem;
struct GlobalConfiguration;
struct Project;

namespace Ui
{
class DirSettings;
}

/**
 * The dialog of the quick access directories, which stand in the sidebar of every file dialog. An
 * entry is a path or holds a word that stands for a directory of the current project; accept
 * replaces the words and fills the sidebar, which keeps those directories until the next accept.
 * Not modal. User interface thread only.
 */
class DirSettings : public QDialog
{
    Q_OBJECT

public:
    /** @param project, config not owned; outlive the dialog */
    DirSettings(QWidget* parent, Project* project, GlobalConfiguration* config);
    ~DirSettings() override;
    DirSettings(const DirSettings&) = delete;
    DirSettings& operator=(const DirSettings&) = delete;

    /**
     * Shows the directories of the configuration, which cannot be edited in place, or the default
     * ones when it has none.
     */
    void FillTree();

    /** FillTree, then shows the dialog. */
    void ShowDialog();

    // The order of the slots is part of the design.
public slots:
    void on_treeWidget_customContextMenuRequested(QPoint pos);
    void Add();
    void Remove();
    void ClearAll();
    void ClearNonExisisting();
    void ClearEmpty();
    void DoNothing();

    /**
     * Takes the tree into configuration and sidebar and writes the configuration.
     *
     * Deliberate: both get the entries from the last to the first, so that the tree's order flips
     * each time.
     */
    void accept() override;

    void reject() override;  ///< hides; what was changed stays in the tree until it is filled anew

private:
    void AddItem(const QString& text);
    [[nodiscard]] QString ReplaceWord(QString entry) const;
    template <typename Condition>
    void RemoveItems(Condition shouldRemove);

    // Field order is part of the design.
    Ui::DirSettings* ui;                     ///< owned
    QTreeWidgetItem* ContextItem = nullptr;  ///< under the last right click; null or in the tree
    Project* Proj;                           ///< not owned
    GlobalConfiguration* Config;             ///< not owned
};
