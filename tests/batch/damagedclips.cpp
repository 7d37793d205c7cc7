// SPDX-License-Identifier: MIT
#include "batch/damagedclips.h"

#include "batch/filefields.h"
#include "support/files.h"
#include "support/seededrandom.h"

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>

#include <QTemporaryDir>

#include <vector>

namespace
{
constexpr int HalfTime = DamagedClips::Frames / 2;

/** A chessboard that moves to the right: many corners. */
cv::Mat Picture(int number, const cv::Size& size)
{
    constexpr int field = 8;
    cv::Mat picture(size, CV_8UC3, cv::Scalar(60, 80, 100));
    for (int y = 0; y < size.height; y += field)
    {
        for (int x = (y / field % 2) * field - 2 * field + number; x < size.width; x += 2 * field)
        {
            cv::rectangle(picture, cv::Rect(x, y, field, field), cv::Scalar(200, 180, 160), -1);
        }
    }
    return picture;
}

QByteArray Clip(const char* name, const char* codec, const cv::Size& size)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromLatin1(name));
    {
        cv::VideoWriter writer(path.toStdString(), cv::CAP_FFMPEG,
                               cv::VideoWriter::fourcc(codec[0], codec[1], codec[2], codec[3]),
                               25.0, size);
        for (int i = 0; i < DamagedClips::Frames; ++i)
        {
            writer.write(Picture(i, size));
        }
    }
    return ReadBytes(path);
}

QByteArray JpegAvi(const cv::Size& size)
{
    return Clip("clip.avi", "MJPG", size);
}

/** Where frame @p number begins; behind the last frame, where the index begins. */
int FrameStart(const QByteArray& avi, int number)
{
    int place = avi.indexOf("movi");
    for (int i = 0; i <= number && i < DamagedClips::Frames; ++i)
    {
        place = avi.indexOf("00dc", place + 4);
    }
    return number < DamagedClips::Frames ? place : avi.indexOf("idx1", place);
}

QByteArray Stream()
{
    QByteArray bytes;
    for (int i = 0; i < DamagedClips::Frames; ++i)
    {
        std::vector<uchar> jpeg;
        cv::imencode(".jpg", Picture(i, {64, 64}), jpeg);
        bytes.append(reinterpret_cast<const char*>(jpeg.data()), static_cast<int>(jpeg.size()));
    }
    return bytes;
}
}  // namespace

QByteArray DamagedClips::Good(Kind kind)
{
    switch (kind)
    {
        case Kind::Mp4:
            return Clip("clip.mp4", "mp4v", {64, 64});
        case Kind::Avi:
            return JpegAvi({64, 64});
        default:
            return Stream();
    }
}

QByteArray DamagedClips::AviOfFrames(int frames)
{
    const QByteArray avi = JpegAvi({64, 64});
    return avi.left(FrameStart(avi, frames));
}

QByteArray DamagedClips::Promising(QByteArray avi, int frames)
{
    const int length = avi.indexOf("strh") + 8 + 32;  // a field of the stream's header
    return avi.replace(length, 4, Int(frames));
}

QByteArray DamagedClips::AviOfTwoSizes()
{
    const QByteArray other = JpegAvi({96, 48});
    const int from = FrameStart(other, HalfTime);
    QByteArray avi = AviOfFrames(HalfTime) + other.mid(from, FrameStart(other, Frames) - from);
    avi.replace(avi.indexOf("movi") - 4, 4, Zeros(4));  // the list of frames goes to the end
    return avi;
}

QByteArray DamagedClips::BitsFlipped(QByteArray bytes, std::uint32_t number)
{
    SeededRandom random;
    random.Begin(number);
    for (int i = 1 + random.Below(30); i > 0; --i)
    {
        char& byte = bytes.data()[random.Below(bytes.size())];
        byte = static_cast<char>(byte ^ (1 << random.Below(8)));
    }
    return bytes;
}

QByteArray DamagedClips::Sound()
{
    constexpr int bytes = 8000;
    const QByteArray format = Hex("0100 0100 401f0000 803e0000 0200 1000");  // 8000 Hz, 16 bits
    return "RIFF" + Int(36 + bytes) + "WAVEfmt " + Int(16) + format + "data" + Int(bytes) +
           Zeros(bytes);
}

QString DamagedClips::WritePictures(const QString& folder)
{
    const auto path = [&](int number)
    { return QStringLiteral("%1/%2.hdr").arg(folder).arg(number, 2, 10, QLatin1Char('0')); };
    for (int i = 0; i < Frames; ++i)
    {
        cv::Mat picture(64, 64, CV_8UC3, cv::Scalar(60, 80, 100));
        picture = i < HalfTime ? picture : Picture(i, {96, 48});
        cv::Mat floats;
        picture.convertTo(floats, CV_32F, 1.0 / 255.0);
        cv::imwrite(path(i).toStdString(), floats);
    }
    return path(0);
}
