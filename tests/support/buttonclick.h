// SPDX-License-Identifier: MIT
#pragma once

class QAbstractButton;

/** Clicks on a button, or on the square of a check box; fails the test when it cannot be seen or
 * used. */
void ClickOn(QAbstractButton* button);
