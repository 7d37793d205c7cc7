// SPDX-License-Identifier: MIT
#include "graphs/graphformrows.h"

#include <QStringList>
#include <QTest>

void GraphFormRows::AddTexts()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QString>("text");
    const auto add = [](const char* name, const char* kind, const char* text)
    { QTest::newRow(name) << QByteArray(kind) << QString::fromLatin1(text); };
    add("checkBoxLock", "QCheckBox", "Lock Stabilization");
    add("checkBoxEnIgnSectionsGlobal", "QCheckBox", "Use Global Ignore Sections");
    add("checkBoxEnIgnSections", "QCheckBox", "Use local Ignore Sections");
    add("checkBoxEnManualCorrect", "QCheckBox", "Enable Correction List");
    add("groupBoxSettings", "QGroupBox", "Filter Settings");
    add("labelAveragingPath", "QLabel", "Depth");
    add("labelAveragingOrder", "QLabel", "Type");
    add("checkBoxStartVal", "QCheckBox", "Custom Start Value");
    add("checkBoxEndVal", "QCheckBox", "Custom End Value");
    add("labelIgnMarginH", "QLabel", "FT5 Ign. Start Margins");
    add("label_3", "QLabel", "Crop Factor %");
    add("labelMargin", "QLabel", "Margin");
    add("pushButtonCalc", "QPushButton", "Calculate Camera Path");
    add("groupBox", "QGroupBox", "Display");
    add("checkBoxZoomDeviation", "QCheckBox", "Zoom Deviation");
    add("checkBoxZoomTimeline", "QCheckBox", "Zoom Timeline");
    add("checkBoxTime", "QCheckBox", " Time / Frame No.");
    add("checkBoxCamFlow", "QCheckBox", "Show Camera Flow");
    add("checkBoxMarginShadow", "QCheckBox", "Show Margin Shadow");
    add("checkBoxShowMargin", "QCheckBox", "Show Margin");
    add("checkBoxDeviation", "QCheckBox", "Show Deviation");
    add("checkBoxShowCorrection", "QCheckBox", "Show Correction");
    add("labelIgnStabListGlobal", "QLabel", "Ignore Stabilize Sections Global");
    add("labelIgnStabList", "QLabel", "Ignore Stabilize Sections Local");
    add("labelManPathList", "QLabel", "Manual Path Correction List");
}

void GraphFormRows::AddRanges()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("start");
    const auto add =
        [](const char* name, const char* kind, double minimum, double maximum, double start)
    { QTest::newRow(name) << QByteArray(kind) << minimum << maximum << start; };
    add("spinBoxAvgFrames", "QSpinBox", 3, 500, 50);
    add("spinBoxAvgOrder", "QSpinBox", 1, 5, 1);
    add("doubleSpinBoxStartVal", "QDoubleSpinBox", -150000, 150000, 0);
    add("doubleSpinBoxEndVal", "QDoubleSpinBox", -150000, 150000, 0);
    add("spinBoxIgnMargin", "QSpinBox", -1, 999, 0);
    add("doubleSpinBoxCrop", "QDoubleSpinBox", 1, 800, 100);
}

void GraphFormRows::AddTicks()
{
    QTest::addColumn<bool>("isChecked");
    const auto add = [](const char* name, bool isChecked) { QTest::newRow(name) << isChecked; };
    add("checkBoxLock", false);
    add("checkBoxEnIgnSectionsGlobal", false);
    add("checkBoxEnIgnSections", true);
    add("checkBoxEnManualCorrect", true);
    add("checkBoxStartVal", false);
    add("checkBoxEndVal", false);
    add("checkBoxZoomDeviation", true);
    add("checkBoxZoomTimeline", true);
    add("checkBoxTime", false);
    add("checkBoxCamFlow", true);
    add("checkBoxMarginShadow", true);
    add("checkBoxShowMargin", false);
    add("checkBoxDeviation", false);
    add("checkBoxShowCorrection", false);
}

void GraphFormRows::AddHeads()
{
    QTest::addColumn<QStringList>("heads");
    QTest::newRow("treeWidgetGlobalIgnore") << QStringList{"Start", "End"};
    QTest::newRow("treeWidgetIgnore") << QStringList{"Start", "End", "Offset"};
    QTest::newRow("treeWidgetManualPathList") << QStringList{"Frame No.", "Flow Path Value"};
}
