// SPDX-License-Identifier: MIT
#pragma once

// Indices of the main window's tabs.

inline constexpr int SettingsTab = 0;
inline constexpr int HorizontalTab = 1;
inline constexpr int VerticalTab = 2;
inline constexpr int RotationTab = 3;
inline constexpr int PlayerTab = 4;
