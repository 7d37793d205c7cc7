// SPDX-License-Identifier: MIT
#include "project/project.h"

#include "app/log.h"
#include "batch/logrecord.h"
#include "project/axisfiltersettings_json.h"
#include "project/jsonaccess.h"
#include "stabilizer/camerapath.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <mutex>

namespace
{
/** At most 511 characters of @p path, one byte each; a character beyond Latin-1 ends the string. */
void Narrow(const QString& path, char (&block)[FileNameSize])
{
    std::fill(std::begin(block), std::end(block), '\0');
    const int taken = std::min(path.size(), static_cast<int>(FileNameSize) - 1);
    for (int i = 0; i < taken; ++i)
    {
        const ushort unit = path.at(i).unicode();
        block[i] = unit < 256 ? static_cast<char>(unit) : '\0';
    }
}

QString MatchingFileOf(const QString& dataFile)
{
    return QStringLiteral("%1.cfg").arg(dataFile);
}

/** The string under @p key with every "//" made "/". */
QString ReadPath(const QJsonObject& root, const QString& key, const QString& defaultValue)
{
    return JsonGetString(root, key, defaultValue).replace(QLatin1String("//"), QLatin1String("/"));
}

void ReadAxis(const QJsonObject& root, const QString& key, int strength, AxisFilterSettings& axis)
{
    constexpr int type = 3;
    axis.ReadJson(root.value(key).toObject(), strength, type);
}

QJsonObject WriteAxis(const AxisFilterSettings& axis)
{
    QJsonObject obj;
    axis.WriteJson(obj);
    return obj;
}

void ReadExport(const QJsonObject& root, ExportSettings& settings)
{
    settings.EnableCrop = JsonGetBool(root, QStringLiteral("EnableCrop"), true);
    settings.CropFactor = JsonGetDouble(root, QStringLiteral("CropFactor"), 1.1);
    settings.EnRescale = JsonGetBool(root, QStringLiteral("EnRescale"), false);
    settings.ExpResH = JsonGetInt(root, QStringLiteral("ExpResH"), 1920);
    settings.ExpResV = JsonGetInt(root, QStringLiteral("ExpResV"), 1080);
    settings.ExpOffH = JsonGetInt(root, QStringLiteral("ExpOffH"), 0);
    settings.ExpOffV = JsonGetInt(root, QStringLiteral("ExpOffV"), 0);
    settings.ExpAngle = JsonGetDouble(root, QStringLiteral("ExpAngle"), 0.0);
}

void WriteExport(const ExportSettings& settings, QJsonObject& root)
{
    root.insert(QStringLiteral("EnableCrop"), settings.EnableCrop);
    root.insert(QStringLiteral("CropFactor"), settings.CropFactor);
    root.insert(QStringLiteral("EnRescale"), settings.EnRescale);
    root.insert(QStringLiteral("ExpResH"), settings.ExpResH);
    root.insert(QStringLiteral("ExpResV"), settings.ExpResV);
    root.insert(QStringLiteral("ExpOffH"), settings.ExpOffH);
    root.insert(QStringLiteral("ExpOffV"), settings.ExpOffV);
    root.insert(QStringLiteral("ExpAngle"), settings.ExpAngle);
}

/**
 * Reads the file into @p root; an old ".json" name is changed, and the content written there.
 * @return false when the file is missing and errors are reported
 */
bool ReadRoot(QString& file, bool reportErrors, QJsonObject& root)
{
    const bool isThere = QFile::exists(file);
    if (!file.isEmpty() && !isThere && reportErrors)
    {
        ProgramLog.Add(LogError,
                       QCoreApplication::translate("Project", "Project file access error!"));
        return false;
    }
    if (!file.isEmpty() && isThere)
    {
        JsonReadFile(file, root, nullptr);
    }
    if (file.contains(QLatin1String(".json")))
    {
        file.replace(QLatin1String(".json"), QLatin1String(".mvprj"));
        JsonWriteFile(file, root);
    }
    return true;
}
}  // namespace

bool Project::Load(QString& file, bool reportErrors)
{
    QJsonObject root;
    if (!ReadRoot(file, reportErrors, root))
    {
        return false;
    }
    // Deliberate: this mends the old name; the one that is read next keeps its doubled slashes.
    SourceFile.replace(QLatin1String("//"), QLatin1String("/"));
    SourceFile = JsonGetString(root, QStringLiteral("SourceFile"), QStringLiteral("Source.mp4"));
    if (reportErrors && !QFile::exists(file))
    {
        // Deliberate: asked of the project file, so that a moved-over project that could not be
        // written shows.
        ProgramLog.Add(LogError,
                       QCoreApplication::translate("Project", "Source video file access error!"));
    }
    ExportFile = ReadPath(root, QStringLiteral("ExportFile"), QStringLiteral("Export.mp4"));
    TrackingFile = ReadPath(root, QStringLiteral("TrackingFile"), QStringLiteral("Tracking.dat"));
    StabilizationFile =
        ReadPath(root, QStringLiteral("StabilizationFile"), QStringLiteral("Stabilize.dat"));
    StabilizeType = JsonGetInt(root, QStringLiteral("StabilizeType"), 1);
    TrackingParameters.MaxTrackingPoints =
        JsonGetInt(root, QStringLiteral("MaxTrackingPoints"), 800);
    ReadPathSettings(root);
    ReadExport(root, ExportSettings);
    ProgramLog.Add(LogRun, QCoreApplication::translate("Project", "Project file opened!"));
    SyncFileNames();
    return true;
}

/** What the camera paths read: under the engine lock, as a calculation may be running. */
void Project::ReadPathSettings(const QJsonObject& root)
{
    const std::lock_guard<std::recursive_mutex> lock(EngineLock);
    GlobalIgnoreSections = ReadIgnoreSections(root);
    EnGlobalIgnoreList = JsonGetBool(root, QStringLiteral("EnGlobalIgnoreList"), true);
    UseFlowVSettings = JsonGetBool(root, QStringLiteral("UseFlowVSettings"), true);
    UseFlowRotSettings = JsonGetBool(root, QStringLiteral("UseFlowRotSettings"), true);
    ReadAxis(root, QStringLiteral("FlowH"), 12, FlowH);
    ReadAxis(root, QStringLiteral("FlowV"), 12, FlowV);
    ReadAxis(root, QStringLiteral("FlowAngle"), 5, FlowAngle);
}

void Project::Save(const QString& file) const
{
    QJsonObject root;
    root.insert(QStringLiteral("SourceFile"), SourceFile);
    root.insert(QStringLiteral("ExportFile"), ExportFile);
    root.insert(QStringLiteral("TrackingFile"), TrackingFile);
    root.insert(QStringLiteral("StabilizationFile"), StabilizationFile);
    root.insert(QStringLiteral("StabilizeType"), StabilizeType);
    root.insert(QStringLiteral("MaxTrackingPoints"), TrackingParameters.MaxTrackingPoints);
    WriteIgnoreSections(GlobalIgnoreSections, root);
    root.insert(QStringLiteral("EnGlobalIgnoreList"), EnGlobalIgnoreList);
    root.insert(QStringLiteral("UseFlowVSettings"), UseFlowVSettings);
    root.insert(QStringLiteral("UseFlowRotSettings"), UseFlowRotSettings);
    root.insert(QStringLiteral("FlowH"), WriteAxis(FlowH));
    root.insert(QStringLiteral("FlowV"), WriteAxis(FlowV));
    root.insert(QStringLiteral("FlowAngle"), WriteAxis(FlowAngle));
    WriteExport(ExportSettings, root);
    JsonWriteFile(file, root);
    ProgramLog.Add(LogRun, QCoreApplication::translate("Project", "Project file written!"));
}

bool Project::CheckFile(const QString& file)
{
    if (file.isEmpty())
    {
        return false;
    }
    QJsonObject root;
    JsonReadFile(file, root, nullptr);
    return JsonHasString(root, QStringLiteral("TrackingFile")) &&
           JsonHasNumber(root, QStringLiteral("StabilizeType")) &&
           JsonHasNumber(root, QStringLiteral("MaxTrackingPoints")) &&
           JsonHasBool(root, QStringLiteral("EnableCrop")) &&
           JsonHasNumber(root, QStringLiteral("CropFactor")) &&
           JsonHasBool(root, QStringLiteral("EnRescale"));
}

void Project::SyncFileNames()
{
    Narrow(SourceFile, FileNames.SourceFile);
    Narrow(ExportFile, FileNames.ExportFile);
    Narrow(TrackingFile, FileNames.TrackingFile);
    Narrow(MatchingFileOf(TrackingFile), FileNames.TrackingMatchingFile);
    Narrow(StabilizationFile, FileNames.StabilizationFile);
    Narrow(MatchingFileOf(StabilizationFile), FileNames.StabilizationMatchingFile);
    FileNames.End = 0;
}
