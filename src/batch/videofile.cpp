// SPDX-License-Identifier: MIT
#include "batch/videofile.h"

#include "batch/logrecord.h"
#include "batch/resultcodes.h"
#include "batch/stabilizerhost.h"
#include "stabilizer/truncation.h"

#include <sstream>
#include <string>

int VideoFile::Open(const char* path)
{
    // Deliberate: kept although nothing is open yet, so that the library ignores it.
    static_cast<void>(Capture.set(
        cv::CAP_PROP_FOURCC, static_cast<double>(cv::VideoWriter::fourcc('X', '2', '6', '4'))));
    if (!Capture.open(path, cv::CAP_ANY))
    {
        ProgramHost.Log(LogError, (std::string("Open ") + path + " failed!").c_str());
        return ResultNoAccess;
    }
    FrameCount = TruncateToInt32(Capture.get(cv::CAP_PROP_FRAME_COUNT));
    Width = TruncateToInt32(Capture.get(cv::CAP_PROP_FRAME_WIDTH));
    Height = TruncateToInt32(Capture.get(cv::CAP_PROP_FRAME_HEIGHT));
    Fps = Capture.get(cv::CAP_PROP_FPS);
    std::ostringstream line;
    line << "Input: Frames= " << FrameCount << " h=" << Width << " v=" << Height << " fps=" << Fps;
    ProgramHost.Log(LogRun, line.str().c_str());
    Opened = true;
    WriteMode = ReadOnly;
    return ResultOk;
}

int VideoFile::OpenForExport(const char* path, const char* outputPath, bool reservedMode)
{
    const int result = Open(path);
    if (result != ResultOk)
    {
        return result;
    }
    WriteMode = reservedMode ? WriterRefused : WriterWanted;
    OutputPath = outputPath;
    return ResultOk;
}

int VideoFile::Close()
{
    if (Capture.isOpened())
    {
        Capture.release();
        if (WriteMode > WriterRefused)
        {
            Writer.release();
        }
        WriteMode = ReadOnly;
    }
    return ResultOk;
}

int VideoFile::ReadFrame(cv::Mat& frame)
{
    return Capture.read(frame) ? ResultOk : ResultDamaged;
}

int VideoFile::WriteFrame(const cv::Mat& frame)
{
    if (WriteMode == WriterWanted)
    {
        const int codec = cv::VideoWriter::fourcc('m', 'p', '4', 'v');
        const bool isOpen =
            Writer.open(OutputPath, codec, Capture.get(cv::CAP_PROP_FPS), frame.size(), true);
        WriteMode = WriterOpen;
        if (!isOpen)
        {
            Close();
            return ResultNoAccess;
        }
    }
    if (WriteMode == WriterOpen)
    {
        Writer.write(frame);
        return ResultOk;
    }
    return ResultDamaged;
}

int VideoFile::SeekFrame(int frameNr)
{
    return Capture.set(cv::CAP_PROP_POS_FRAMES, frameNr) ? ResultOk : ResultDamaged;
}

double VideoFile::GetFps() const
{
    return Capture.get(cv::CAP_PROP_FPS);
}
