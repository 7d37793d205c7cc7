// SPDX-License-Identifier: MIT
#pragma once

#include "graphs/ignorerows.h"
#include "support/messageguard.h"

#include <QObject>
#include <QString>

#include <memory>

// Entries of the menu of a tree.
inline const QString AddEntry = QStringLiteral("Add Ignore section");
inline const QString RemoveEntry = QStringLiteral("Remove ignore section");
inline const QString ClearEntry = QStringLiteral("Clear all ignore sections");

/**
 * The ignore sections of one tree: menu and typing, what SortList makes of the rows, two trees in a
 * window; each theme in a file of its own.
 */
class IgnoreListTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void SlotOrder();
    void StartsEmpty();
    void AddSectionWritesARow_data();
    void AddSectionWritesARow();
    void RebuildShowsTheSectionsInOrder();
    void MenuEntries_data();
    void MenuEntries();
    void MenuOpensAtThePointer();
    void AddFromTheMenu_data();
    void AddFromTheMenu();
    void RemoveFromTheMenu_data();
    void RemoveFromTheMenu();
    void WithoutEffect_data();
    void WithoutEffect();
    void ClearLeavesTheSectionsInForce_data();
    void ClearLeavesTheSectionsInForce();
    void RemoveAgainRemovesNothing();
    void RowThatWentUnderTheMenuIsNotFollowed();
    void CellsAreTypedInto();
    void SortListReadsARow_data();
    void SortListReadsARow();
    void SortListDropsARow_data();
    void SortListDropsARow();
    void SortListKeepsTheOrder();
    void SortListCutsTheSections();
    void NoFramesNoChange_data();
    void NoFramesNoChange();
    void WindowTakesTypedRows();
    void WindowKeepsTheHiddenOffset();
    void UnreadableHiddenOffsetDropsTheRow();
    void MenusOfTheWindowActOnTheirOwnTree();
    void ClearedWithoutFramesStaysInForce();
    void LastSavedWindowWins();

private:
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<BareList> Bare;
};
