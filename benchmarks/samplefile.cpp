// SPDX-License-Identifier: MIT
#include "samplefile.h"

#include "samplevideo/samplevideo.h"

#include <opencv2/videoio.hpp>

#include <QDir>

#include <map>

SampleFile::SampleFile(int height) : Height(height)
{
    SampleSettings settings;
    settings.Width = height * 16 / 9;
    settings.Height = height;
    settings.Frames = Frames();
    const SampleVideo sample = MakeSampleVideo(settings);
    cv::VideoWriter writer(Path(), cv::VideoWriter::fourcc('m', 'p', '4', 'v'), settings.Fps,
                           cv::Size(settings.Width, settings.Height));
    cv::Mat frame;
    for (int i = 0; i < Frames(); ++i)
    {
        RenderFrame(sample, i, frame);
        writer.write(frame);
    }
}

const SampleFile& SampleFile::Of(int height)
{
    static std::map<int, SampleFile> files;
    return files.try_emplace(height, height).first->second;
}

int SampleFile::Frames() const
{
    return Height > 720 ? 60 : 240;
}

std::string SampleFile::Path(const char* name) const
{
    return Dir.filePath(QString::fromLatin1(name)).toStdString();
}

FileNames SampleFile::Names() const
{
    return NamesIn(Directory());
}

QString SampleFile::Directory() const
{
    return Dir.path();
}

FileNames SampleFile::NamesIn(const QString& directory)
{
    FileNames names;
    const auto fill = [&directory](char* target, const char* name)
    {
        const QString path = QDir(directory).filePath(QString::fromLatin1(name));
        qstrncpy(target, path.toLatin1().constData(), static_cast<uint>(FileNameSize));
    };
    fill(names.SourceFile, "source.mp4");
    fill(names.ExportFile, "export.mp4");
    fill(names.TrackingFile, "Tracking.dat");
    fill(names.TrackingMatchingFile, "Tracking.dat.cfg");
    fill(names.StabilizationFile, "Stabilize.dat");
    fill(names.StabilizationMatchingFile, "Stabilize.dat.cfg");
    return names;
}
