// SPDX-License-Identifier: MIT
#include "project/projectfields.h"

#include "project/project.h"

#include <QLocale>

namespace
{
QString Text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString Text(std::int32_t value)
{
    return QString::number(value);
}

QString Text(double value)
{
    // JSON has no negative zero.
    return QString::number(value == 0.0 ? 0.0 : value, 'g', QLocale::FloatingPointShortest);
}

QString Text(const std::vector<IgnoreSection>& sections)
{
    QStringList texts;
    for (const IgnoreSection& section : sections)
    {
        texts += '(' + Text(section.Start) + ", " + Text(section.End) + ", " +
                 Text(section.Offset) + ')';
    }
    return texts.join(' ');
}

QString Text(const std::vector<ManualPathSection>& path)
{
    QStringList texts;
    for (const ManualPathSection& section : path)
    {
        QStringList points;
        for (const ManualPathPoint& point : section.Points)
        {
            points += '(' + Text(point.FrameNr) + ", " + Text(point.Value) + ')';
        }
        texts += '[' + points.join(' ') + ']';
    }
    return texts.join(' ');
}

void AddAxis(FieldMap& fields, const QString& axis, const AxisFilterSettings& settings)
{
    fields[axis + ".Lock"] = Text(settings.Lock);
    fields[axis + ".UseModified"] = Text(settings.UseModified);
    fields[axis + ".UseStartValue"] = Text(settings.UseStartValue);
    fields[axis + ".UseEndValue"] = Text(settings.UseEndValue);
    fields[axis + ".EnableIgnoreSections"] = Text(settings.EnableIgnoreSections);
    fields[axis + ".EnableManualPath"] = Text(settings.EnableManualPath);
    fields[axis + ".AvgPathImages"] = Text(settings.AvgPathImages);
    fields[axis + ".AvgPathOrder"] = Text(settings.AvgPathOrder);
    fields[axis + ".IgnoreStartFramesMargin"] = Text(settings.IgnoreStartFramesMargin);
    fields[axis + ".StartValue"] = Text(settings.StartValue);
    fields[axis + ".EndValue"] = Text(settings.EndValue);
    fields[axis + ".IgnoreSections"] = Text(settings.IgnoreSections);
    fields[axis + ".ManualPath"] = Text(settings.ManualPath);
}

/** Each field off its default; @p base makes the axes differ. */
AxisFilterSettings UnusualAxis(int base)
{
    AxisFilterSettings settings;
    settings.Lock = true;
    settings.UseModified = true;
    settings.UseStartValue = true;
    settings.UseEndValue = true;
    settings.EnableIgnoreSections = false;
    settings.EnableManualPath = false;
    settings.AvgPathImages = base + 1;
    settings.AvgPathOrder = base + 2;
    settings.IgnoreStartFramesMargin = base + 3;
    settings.StartValue = base + 0.1;
    settings.EndValue = -base - 1.0 / 3.0;
    settings.IgnoreSections = {{base + 9, base + 4, 1e-300}, {0, -1, -0.5}};
    // From a file points may come in any order, and a section may have none.
    settings.ManualPath.resize(3);
    settings.ManualPath[0].Points = {{base + 30, 1.5}, {base + 10, -2.25}, {base + 20, 1e15}};
    settings.ManualPath[2].Points = {{-1, 0.0}};
    return settings;
}
}  // namespace

FieldMap FieldsOf(const Project& project)
{
    FieldMap fields;
    fields["SourceFile"] = project.SourceFile;
    fields["ExportFile"] = project.ExportFile;
    fields["TrackingFile"] = project.TrackingFile;
    fields["StabilizationFile"] = project.StabilizationFile;
    fields["StabilizeType"] = Text(project.StabilizeType);
    fields["MaxTrackingPoints"] = Text(project.TrackingParameters.MaxTrackingPoints);
    fields["IgnoreSections"] = Text(project.GlobalIgnoreSections);
    fields["EnGlobalIgnoreList"] = Text(project.EnGlobalIgnoreList);
    fields["UseFlowVSettings"] = Text(project.UseFlowVSettings);
    fields["UseFlowRotSettings"] = Text(project.UseFlowRotSettings);
    AddAxis(fields, "FlowH", project.FlowH);
    AddAxis(fields, "FlowV", project.FlowV);
    AddAxis(fields, "FlowAngle", project.FlowAngle);
    const ExportSettings& settings = project.ExportSettings;
    fields["EnableCrop"] = Text(settings.EnableCrop);
    fields["CropFactor"] = Text(settings.CropFactor);
    fields["EnRescale"] = Text(settings.EnRescale);
    fields["ExpResH"] = Text(settings.ExpResH);
    fields["ExpResV"] = Text(settings.ExpResV);
    fields["ExpOffH"] = Text(settings.ExpOffH);
    fields["ExpOffV"] = Text(settings.ExpOffV);
    fields["ExpAngle"] = Text(settings.ExpAngle);
    return fields;
}

FieldMap LoadDefaults()
{
    FieldMap fields{{"SourceFile", "Source.mp4"},
                    {"ExportFile", "Export.mp4"},
                    {"TrackingFile", "Tracking.dat"},
                    {"StabilizationFile", "Stabilize.dat"},
                    {"StabilizeType", "1"},
                    {"MaxTrackingPoints", "800"},
                    {"IgnoreSections", ""},
                    {"EnGlobalIgnoreList", "true"},
                    {"UseFlowVSettings", "true"},
                    {"UseFlowRotSettings", "true"},
                    {"EnableCrop", "true"},
                    {"CropFactor", "1.1"},
                    {"EnRescale", "false"},
                    {"ExpResH", "1920"},
                    {"ExpResV", "1080"},
                    {"ExpOffH", "0"},
                    {"ExpOffV", "0"},
                    {"ExpAngle", "0"}};
    for (const QString axis : {"FlowH", "FlowV", "FlowAngle"})
    {
        fields[axis + ".Lock"] = "false";
        fields[axis + ".UseModified"] = "false";
        fields[axis + ".UseStartValue"] = "false";
        fields[axis + ".UseEndValue"] = "false";
        fields[axis + ".EnableIgnoreSections"] = "true";
        fields[axis + ".EnableManualPath"] = "true";
        fields[axis + ".AvgPathImages"] = axis == "FlowAngle" ? "5" : "12";
        fields[axis + ".AvgPathOrder"] = "3";
        fields[axis + ".IgnoreStartFramesMargin"] = "5";
        fields[axis + ".StartValue"] = "0";
        fields[axis + ".EndValue"] = "0";
        fields[axis + ".IgnoreSections"] = "";
        fields[axis + ".ManualPath"] = "";
    }
    return fields;
}

QStringList Lines(const FieldMap& fields)
{
    QStringList lines;
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
    {
        lines += field.key() + " = " + field.value();
    }
    return lines;
}

Project UnusualProject()
{
    Project project;
    project.SourceFile = QString::fromUtf8("/v//Ümläut \xE4\xB8\xAD \"x\"\t.mov");
    project.ExportFile = "/e/out.mkv";
    project.TrackingFile = "t";
    project.StabilizationFile = "";
    project.StabilizeType = -7;
    project.TrackingParameters.MaxTrackingPoints = 2147483647;
    project.FlowH = UnusualAxis(100);
    project.FlowV = UnusualAxis(200);
    project.FlowAngle = UnusualAxis(300);
    project.UseFlowVSettings = false;
    project.UseFlowRotSettings = false;
    project.EnGlobalIgnoreList = false;
    project.GlobalIgnoreSections = {{7, 3, 0.25}, {-2147483647 - 1, 2147483647, 0.0}};
    project.ExportSettings = {false, true, 1.2345678901234567, -0.1, 1, 2, -3, -4};
    return project;
}
