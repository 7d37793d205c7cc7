// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class TestWindow;

/** Title word and what is on, in words: of the job buttons, the file fields and the menu. */
[[nodiscard]] QString ShownState(const TestWindow& window);

/** What the window is to show for the JobState @p state. */
[[nodiscard]] QString ShownStateOf(int state);
