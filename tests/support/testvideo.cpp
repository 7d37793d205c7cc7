// SPDX-License-Identifier: MIT
#include "support/testvideo.h"

#include <opencv2/core.hpp>
#include <opencv2/videoio.hpp>

#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <cmath>
#include <functional>
#include <string>

namespace TestVideo
{
namespace
{
using FrameSource = std::function<void(int number, cv::Mat& frame)>;

std::string NativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

void Append(QByteArray& bytes, std::initializer_list<qint64> numbers)
{
    for (const qint64 number : numbers)
    {
        char buffer[4];
        qToLittleEndian(static_cast<quint32>(number), buffer);
        bytes.append(buffer, 4);
    }
}

/** A part of a RIFF file: name, length, content. Lists have the name of their kind in @p kind. */
QByteArray Chunk(const char* name, const QByteArray& content, const char* kind = "")
{
    QByteArray bytes(name);
    Append(bytes, {content.size() + static_cast<qint64>(qstrlen(kind))});
    return bytes + kind + content;
}

/** The pixels as an uncompressed .avi keeps them: from the lowest row up, rows filled up to 4
 * bytes. */
QByteArray Bitmap(const cv::Mat& frame)
{
    const int rowBytes = 3 * frame.cols;
    const QByteArray filler((4 - rowBytes % 4) % 4, '\0');
    QByteArray bytes;
    for (int row = frame.rows - 1; row >= 0; --row)
    {
        bytes.append(frame.ptr<char>(row), rowBytes);
        bytes.append(filler);
    }
    return bytes;
}

/** The header of an uncompressed .avi with one stream of @p frames frames of @p frameBytes bytes.
 */
QByteArray AviHeader(const Format& format, qint64 frames, qint64 frameBytes)
{
    constexpr qint64 hasIndex = 0x10;
    constexpr qint64 scale = 1000;
    const qint64 rate = std::llround(format.Fps * scale);
    QByteArray file;
    Append(file, {std::llround(1e6 / format.Fps), 0, 0, hasIndex, frames, 0, 1, frameBytes,
                  format.Width, format.Height, 0, 0, 0, 0});
    QByteArray stream("vidsDIB ");
    Append(stream, {0, 0, 0, scale, rate, 0, frames, frameBytes, -1, 0, 0, 0});
    constexpr qint64 onePlane24Bits = 1 | (24 << 16);
    QByteArray bitmap;
    Append(bitmap, {40, format.Width, format.Height, onePlane24Bits, 0, frameBytes, 0, 0, 0, 0});
    return Chunk(
        "LIST",
        Chunk("avih", file) + Chunk("LIST", Chunk("strh", stream) + Chunk("strf", bitmap), "strl"),
        "hdrl");
}

/** Writes an uncompressed .avi, for what the video library's writer refuses. */
bool WriteUncompressed(const QString& path, const Format& format, int promisedFrames,
                       const FrameSource& source)
{
    QByteArray frames;
    QByteArray index;
    qint64 frameBytes = 0;
    cv::Mat frame;
    for (int i = 0; i < format.Frames; ++i)
    {
        source(i, frame);
        const QByteArray bitmap = Bitmap(frame);
        frameBytes = bitmap.size();
        constexpr qint64 keyFrame = 0x10;
        index.append("00db");
        Append(index,
               {keyFrame, frames.size() + 4, frameBytes});  // places count from the word "movi"
        frames.append(Chunk("00db", bitmap));
    }
    const QByteArray content = AviHeader(format, promisedFrames, frameBytes) +
                               Chunk("LIST", frames, "movi") + Chunk("idx1", index);
    const QByteArray bytes = Chunk("RIFF", content, "AVI ");
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool WriteClip(const QString& path, const Format& format, const FrameSource& source)
{
    if (format.Width % 2 != 0 || format.Height % 2 != 0)
    {
        // The library's writer would cut the last column or row off.
        return WriteUncompressed(path, format, format.Frames, source);
    }
    const cv::Size size(format.Width, format.Height);
    cv::VideoWriter writer(NativePath(path), cv::CAP_FFMPEG,
                           cv::VideoWriter::fourcc('F', 'F', 'V', '1'), format.Fps, size);
    cv::Mat frame;
    for (int i = 0; i < format.Frames && writer.isOpened(); ++i)
    {
        source(i, frame);
        writer.write(frame);
    }
    return writer.isOpened();
}

FrameSource NumberedFrames(const Format& format)
{
    return [format](int number, cv::Mat& frame)
    {
        const cv::Vec3b colour = ColourOf(number);
        frame.create(format.Height, format.Width, CV_8UC3);
        frame.setTo(cv::Scalar(colour[0], colour[1], colour[2]));
    };
}

SampleSettings SettingsOf(const Format& format, std::uint64_t seed)
{
    SampleSettings settings;
    settings.Width = format.Width;
    settings.Height = format.Height;
    settings.Frames = format.Frames;
    settings.Fps = format.Fps;
    settings.Seed = seed;
    return settings;
}

// A number has three digits, one for each channel, that count in levels far from each other. None
// is near black, which surrounds a moved frame.
constexpr int Digits = 6;
constexpr int LowestLevel = 40;
constexpr int LevelStep = 36;
constexpr double MaxDeviation = 12.0;  ///< levels, a third of a step: what a lossy codec may add
}  // namespace

std::vector<FrameMotion> WriteStreetClip(const QString& path, const Format& format,
                                         std::uint64_t seed)
{
    return WriteStreetClip(path, format, HandHeldMotion(SettingsOf(format, seed)), seed);
}

std::vector<FrameMotion> WriteStreetClip(const QString& path, const Format& format,
                                         const std::vector<FrameMotion>& motions,
                                         std::uint64_t seed)
{
    const SampleVideo video = MakeSampleVideo(SettingsOf(format, seed), motions);
    Format clip = format;
    clip.Frames = video.Settings.Frames;
    const bool written = WriteClip(
        path, clip, [&video](int number, cv::Mat& frame) { RenderFrame(video, number, frame); });
    return written ? video.Motions : std::vector<FrameMotion>();
}

bool WriteNumberedClip(const QString& path, const Format& format)
{
    return format.Frames <= MaxNumberedFrames && WriteClip(path, format, NumberedFrames(format));
}

int NumberOf(const cv::Mat& frame)
{
    const cv::Rect middle(frame.cols / 3, frame.rows / 3, (frame.cols + 2) / 3,
                          (frame.rows + 2) / 3);
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(frame(middle), mean, deviation);
    int number = 0;
    for (const int channel : {2, 0, 1})
    {
        const int digit = cvRound((mean[channel] - LowestLevel) / LevelStep);
        const double level = LowestLevel + digit * LevelStep;
        if (digit < 0 || digit >= Digits || deviation[channel] > MaxDeviation ||
            std::abs(mean[channel] - level) > MaxDeviation)
        {
            return -1;
        }
        number = number * Digits + digit;
    }
    return number;
}

cv::Vec3b ColourOf(int number)
{
    // Green counts fastest: a codec keeps it best.
    const auto level = [](int digit)
    { return static_cast<uchar>(LowestLevel + digit % Digits * LevelStep); };
    return {level(number / Digits), level(number), level(number / (Digits * Digits))};
}

bool WriteBlackClip(const QString& path, const Format& format)
{
    return WriteClip(path, format,
                     [&format](int /*number*/, cv::Mat& frame)
                     { frame = cv::Mat::zeros(format.Height, format.Width, CV_8UC3); });
}

bool WriteShortClip(const QString& path, const Format& format, int promisedFrames)
{
    return format.Frames <= MaxNumberedFrames &&
           WriteUncompressed(path, format, promisedFrames, NumberedFrames(format));
}

std::vector<FrameMotion> WriteShortStreetClip(const QString& path, const Format& format,
                                              int promisedFrames, std::uint64_t seed)
{
    const SampleVideo video = MakeSampleVideo(SettingsOf(format, seed));
    const bool written = WriteUncompressed(path, format, promisedFrames,
                                           [&video](int number, cv::Mat& frame)
                                           { RenderFrame(video, number, frame); });
    return written ? video.Motions : std::vector<FrameMotion>();
}

std::vector<cv::Mat> ReadAllFrames(const QString& path)
{
    std::vector<cv::Mat> frames;
    cv::VideoCapture capture(NativePath(path));
    cv::Mat frame;
    while (capture.read(frame))
    {
        frames.push_back(frame.clone());
    }
    return frames;
}
}  // namespace TestVideo
