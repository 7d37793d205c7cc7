// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

class QMenu;
class QTreeWidget;

/** What a user sees of a shown tree of sections, and does to it. Rows are top-level items. */
namespace TreeHands
{
constexpr int Beside = -1;  ///< a place below the rows instead of a row

/** Per row the texts of its first three columns, also of those that are not shown: "a|b|c". */
[[nodiscard]] QStringList Rows(const QTreeWidget& tree);

/** Texts of the entries of a menu, in order. */
[[nodiscard]] QStringList Entries(const QMenu& menu);

/** The middle of a cell, or a place below all rows. Coordinates of the viewport. */
[[nodiscard]] QPoint Place(const QTreeWidget& tree, int row, int column = 0);

/** Double clicks a cell, types over its text and ends with the Return key. */
void TypeInto(QTreeWidget& tree, int row, int column, const QString& text);

/** Right clicks @p row and takes @p entry of the menu that opens; an empty text closes the menu. */
void Choose(QTreeWidget& tree, int row, const QString& entry);

/** Right clicks @p row or beside the rows; returns when the menu that opens has closed. */
void RightClick(QTreeWidget& tree, int row);
}  // namespace TreeHands
