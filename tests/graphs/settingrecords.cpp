// SPDX-License-Identifier: MIT
#include "graphs/settingrecords.h"

#include <QTest>

void AddBoxes()
{
    QTest::addColumn<bool>("otherBoxes");
    for (const BoxField& field : BoxFields)
    {
        QTest::addRow("%s on, all others off", field.Box) << false;
        QTest::addRow("%s off, all others on", field.Box) << true;
    }
}

bool IsOnInRow(const char* box, bool otherBoxes)
{
    const QByteArray row = QTest::currentDataTag();
    return row.startsWith(QByteArray(box) + ' ') ? !otherBoxes : otherBoxes;
}

ManualPathSection OnePoint(int frame, double value)
{
    ManualPathSection section;
    section.Points = {{frame, value}};
    return section;
}

QStringList Points(const std::vector<ManualPathSection>& sections)
{
    QStringList texts;
    for (const ManualPathSection& section : sections)
    {
        for (const ManualPathPoint& point : section.Points)
        {
            texts.append(QStringLiteral("%1:%2").arg(point.FrameNr).arg(point.Value));
        }
    }
    return texts;
}

QStringList Spans(const std::vector<IgnoreSection>& sections)
{
    QStringList texts;
    for (const IgnoreSection& section : sections)
    {
        texts.append(QStringLiteral("%1,%2").arg(section.Start).arg(section.End));
    }
    return texts;
}

void FillLists(Project& project)
{
    project.GlobalIgnoreSections = {{1, 2, 0.0}};
    project.FlowH.IgnoreSections = {{3, 4, 0.0}};
    project.FlowV.IgnoreSections = {{5, 6, 0.0}};
    project.FlowH.ManualPath = {OnePoint(7, 1.5)};
    project.FlowV.ManualPath = {OnePoint(9, 2.5)};
}
