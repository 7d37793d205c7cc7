// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

class MainWindow;

/** A button below @p parent by its object name. */
[[nodiscard]] QPushButton* ButtonOf(const QWidget& parent, const char* name);

/** Clicks one of the window's tabs: 0 the settings, 1 the horizontal graph. */
void ClickTab(const MainWindow& window, int index);

/**
 * Reads the data files of the open project, calculates the camera path and shows it.
 * @return the tab of the horizontal graph
 */
QWidget* ShowHorizontalGraph(const MainWindow& window);

/** Waits until the second update of a change is over. */
void WaitForSecondUpdate();
