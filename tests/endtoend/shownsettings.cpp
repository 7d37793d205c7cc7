// SPDX-License-Identifier: MIT
#include "endtoend/shownsettings.h"

#include "graphs/graphtabhands.h"

#include <QRegularExpression>

namespace
{
const char* const SettingsFields[] = {
    "spinBoxMaxTrackingPoints", "doubleSpinBoxZoom",   "doubleSpinBoxExpRot", "spinBoxExpOffsetH",
    "spinBoxExpOffsetV",        "spinBoxRescaleXAxis", "spinBoxRescaleYAxis"};
const char* const AxisFields[] = {"spinBoxAvgFrames",      "spinBoxAvgOrder",
                                  "doubleSpinBoxStartVal", "doubleSpinBoxEndVal",
                                  "spinBoxIgnMargin",      "doubleSpinBoxCrop"};
const char* const AxisBoxes[] = {"checkBoxLock",          "checkBoxEnIgnSectionsGlobal",
                                 "checkBoxEnIgnSections", "checkBoxEnManualCorrect",
                                 "checkBoxStartVal",      "checkBoxEndVal"};
}  // namespace

QStringList ShownSettings(const TestWindow& window)
{
    QStringList lines;
    const auto add = [&lines](const char* name, const QString& value)
    { lines.append(QString::fromLatin1(name) + QStringLiteral(": ") + value); };
    for (const char* name : PathFields)
    {
        add(name, window.Text(name));
    }
    for (const char* name : SettingsFields)
    {
        add(name, QString::number(window.Number(name)));
    }
    for (const char* name : {"checkBoxEnableZoom", "checkBoxRescale"})
    {
        add(name, window.IsChecked(name) ? QStringLiteral("on") : QStringLiteral("off"));
    }
    for (const int index : GraphTabs)
    {
        window.ClickTab(index);  // only then it shows what another tab has changed
        const GraphTab tab(window, index);
        for (const char* name : AxisFields)
        {
            add(name, QString::number(tab.Number(name)));
        }
        for (const char* name : AxisBoxes)
        {
            add(name, tab.IsChecked(name) ? QStringLiteral("on") : QStringLiteral("off"));
        }
        for (const char* name : {LocalTree, GlobalTree, ManualTree})
        {
            add(name, tab.Rows(name).join(QStringLiteral("; ")));
        }
    }
    window.ClickTab(SettingsTab);
    return lines;
}

QStringList WithoutRanges(QStringList lines)
{
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("\\[.*\\]")), QString());
}
