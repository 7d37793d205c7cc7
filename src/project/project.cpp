// SPDX-License-Identifier: MIT
#include "project/project.h"

#include <algorithm>

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
}  // namespace

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
