// SPDX-License-Identifier: MIT
#pragma once

#include "project/project.h"
#include "stabilizer/manualpath.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

// The records behind the tab of FlowV, whose path follows FlowH.

/** A check box that stands for a field of the project, and the place of that field. */
struct BoxField
{
    const char* Box;
    bool& (*Field)(Project& project);
};

inline const BoxField BoxFields[] = {
    {"checkBoxLock", [](Project& p) -> bool& { return p.FlowV.Lock; }},
    {"checkBoxStartVal", [](Project& p) -> bool& { return p.FlowV.UseStartValue; }},
    {"checkBoxEndVal", [](Project& p) -> bool& { return p.FlowV.UseEndValue; }},
    {"checkBoxEnIgnSectionsGlobal", [](Project& p) -> bool& { return p.EnGlobalIgnoreList; }},
    {"checkBoxEnIgnSections", [](Project& p) -> bool& { return p.FlowV.EnableIgnoreSections; }},
    {"checkBoxEnManualCorrect", [](Project& p) -> bool& { return p.FlowV.EnableManualPath; }},
};

/** Two rows per box: it alone is on, it alone is off. */
void AddBoxes();

/** Whether the row of AddBoxes at hand has that box checked. */
[[nodiscard]] bool IsOnInRow(const char* box, bool otherBoxes);

[[nodiscard]] ManualPathSection OnePoint(int frame, double value);

/** The points of all sections as "frame:value". */
[[nodiscard]] QStringList Points(const std::vector<ManualPathSection>& sections);

/** The sections as "start,end". */
[[nodiscard]] QStringList Spans(const std::vector<IgnoreSection>& sections);

/** Two different lists of each kind: those of FlowH and those of FlowV. */
void FillLists(Project& project);
