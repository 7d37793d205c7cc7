// SPDX-License-Identifier: MIT
#include "project/axisfiltersettings_json.h"

#include "project/jsonaccess.h"
#include "stabilizer/axisfiltersettings.h"

#include <QJsonArray>

namespace
{
const QString IgnoreSectionsKey = QStringLiteral("IgnoreSections");
const QString ManualPathKey = QStringLiteral("ManualPath");
const QString PointKey = QStringLiteral("Point");

ManualPathPoint ReadPoint(const QJsonObject& obj)
{
    return {JsonGetInt(obj, QStringLiteral("FrameNr"), 0),
            JsonGetDouble(obj, QStringLiteral("Value"), -1.0)};
}

ManualPathSection ReadSection(const QJsonObject& obj)
{
    ManualPathSection section;
    const QJsonArray points = obj.value(PointKey).toArray();
    for (const QJsonValue& point : points)
    {
        section.Points.push_back(ReadPoint(point.toObject()));
    }
    return section;
}

QJsonObject WriteSection(const ManualPathSection& section)
{
    QJsonArray points;
    for (const ManualPathPoint& point : section.Points)
    {
        points.append(QJsonObject{{QStringLiteral("FrameNr"), point.FrameNr},
                                  {QStringLiteral("Value"), point.Value}});
    }
    return {{PointKey, points}};
}

std::vector<ManualPathSection> ReadManualPath(const QJsonObject& obj)
{
    std::vector<ManualPathSection> sections;
    const QJsonArray array = obj.value(ManualPathKey).toArray();
    sections.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue& section : array)
    {
        sections.push_back(ReadSection(section.toObject()));
    }
    return sections;
}

void WriteManualPath(const std::vector<ManualPathSection>& sections, QJsonObject& obj)
{
    if (sections.empty())
    {
        return;
    }
    QJsonArray array;
    for (const ManualPathSection& section : sections)
    {
        array.append(WriteSection(section));
    }
    obj.insert(ManualPathKey, array);
}
}  // namespace

std::vector<IgnoreSection> ReadIgnoreSections(const QJsonObject& obj)
{
    std::vector<IgnoreSection> sections;
    const QJsonArray array = obj.value(IgnoreSectionsKey).toArray();
    sections.reserve(static_cast<std::size_t>(array.size()));
    for (const QJsonValue& value : array)
    {
        const QJsonObject section = value.toObject();
        sections.push_back({JsonGetInt(section, QStringLiteral("Start"), 0),
                            JsonGetInt(section, QStringLiteral("End"), 1),
                            JsonGetDouble(section, QStringLiteral("Offset"), 0.0)});
    }
    return sections;
}

void WriteIgnoreSections(const std::vector<IgnoreSection>& sections, QJsonObject& obj)
{
    if (sections.empty())
    {
        return;
    }
    QJsonArray array;
    for (const IgnoreSection& section : sections)
    {
        array.append(QJsonObject{{QStringLiteral("Start"), section.Start},
                                 {QStringLiteral("End"), section.End},
                                 {QStringLiteral("Offset"), section.Offset}});
    }
    obj.insert(IgnoreSectionsKey, array);
}

void AxisFilterSettings::ReadJson(const QJsonObject& obj, int avgPathImages, int avgPathOrder)
{
    UseModified = JsonGetBool(obj, QStringLiteral("UseModified"), false);
    UseStartValue = JsonGetBool(obj, QStringLiteral("UseStartValue"), false);
    UseEndValue = JsonGetBool(obj, QStringLiteral("UseEndValue"), false);
    EnableIgnoreSections = JsonGetBool(obj, QStringLiteral("EnableIgnoreSections"), true);
    EnableManualPath = JsonGetBool(obj, QStringLiteral("EnableManualPath"), true);
    Lock = JsonGetBool(obj, QStringLiteral("Lock"), false);
    AvgPathImages = JsonGetInt(obj, QStringLiteral("AvgPathImages"), avgPathImages);
    AvgPathOrder = JsonGetInt(obj, QStringLiteral("AvgPathOrder"), avgPathOrder);
    IgnoreStartFramesMargin = JsonGetInt(obj, QStringLiteral("IgnoreStartFramesMargin"), 5);
    StartValue = JsonGetDouble(obj, QStringLiteral("StartValue"), 0.0);
    EndValue = JsonGetDouble(obj, QStringLiteral("EndValue"), 0.0);
    IgnoreSections = ReadIgnoreSections(obj);
    ManualPath = ReadManualPath(obj);
}

void AxisFilterSettings::WriteJson(QJsonObject& obj) const
{
    obj.insert(QStringLiteral("UseModified"), UseModified);
    obj.insert(QStringLiteral("UseStartValue"), UseStartValue);
    obj.insert(QStringLiteral("UseEndValue"), UseEndValue);
    obj.insert(QStringLiteral("EnableIgnoreSections"), EnableIgnoreSections);
    obj.insert(QStringLiteral("EnableManualPath"), EnableManualPath);
    obj.insert(QStringLiteral("Lock"), Lock);
    obj.insert(QStringLiteral("AvgPathImages"), AvgPathImages);
    obj.insert(QStringLiteral("AvgPathOrder"), AvgPathOrder);
    obj.insert(QStringLiteral("IgnoreStartFramesMargin"), IgnoreStartFramesMargin);
    obj.insert(QStringLiteral("StartValue"), StartValue);
    obj.insert(QStringLiteral("EndValue"), EndValue);
    WriteManualPath(ManualPath, obj);
    WriteIgnoreSections(IgnoreSections, obj);
}
