// SPDX-License-Identifier: MIT
#pragma once

#include <opencv2/videoio.hpp>

#include <cstdint>

/**
 * One source video and, lazily, the video that is exported from it. The output opens with the first
 * frame written and takes its size from that frame, its frame rate from the source. Used by one
 * thread at a time: each job makes its own object, and so does the player.
 */
class VideoFile
{
public:
    VideoFile() = default;
    VideoFile(const VideoFile&) = delete;
    VideoFile& operator=(const VideoFile&) = delete;

    /** Opens @p path for reading and logs its facts, or the failure. @return 0, or 1 on failure */
    [[nodiscard]] int Open(const char* path);

    /**
     * Opens @p path for reading and asks for an output that opens at the first WriteFrame.
     * @param outputPath    not owned; must outlive the writing
     * @param reservedMode  true makes WriteFrame refuse all frames; all callers pass false
     * @return              0, or the result of a failed Open, which changes nothing here
     */
    [[nodiscard]] int OpenForExport(const char* path, const char* outputPath, bool reservedMode);

    /**
     * Ends reading and finishes the output. Does nothing at all when no source is open. @return 0
     */
    int Close();

    /** Reads the next frame, 8-bit BGR, into @p frame. @return 0, or -1 when none came */
    [[nodiscard]] int ReadFrame(cv::Mat& frame);

    /**
     * Writes @p frame, 8-bit BGR. Frames of another size than the first are handed on untested.
     * @return 0 for a written frame; 1 when the output could not be opened, which closes the source
     *         too; -1 when no output was asked for
     */
    int WriteFrame(const cv::Mat& frame);

    /** Moves reading to a frame number. @return 0, or -1 on failure */
    [[nodiscard]] int SeekFrame(int frameNr);

    /** Frames per second of the source, asked anew; 0.0 when none is open. */
    [[nodiscard]] double GetFps() const;

    /** Frames as the file reports them, which may be wrong. */
    [[nodiscard]] std::int32_t GetFrameCount() const { return FrameCount; }

    [[nodiscard]] std::int32_t GetWidth() const { return Width; }    ///< pixels
    [[nodiscard]] std::int32_t GetHeight() const { return Height; }  ///< pixels
    [[nodiscard]] bool IsOpened() const { return Opened; }           ///< stays true after Close

private:
    enum Mode : std::int32_t
    {
        ReadOnly = 0,
        WriterWanted = 1,   ///< opens at the first frame written
        WriterRefused = 2,  ///< reserved
        WriterOpen = 3,
    };

    // Field order is part of the design.
    cv::VideoCapture Capture;
    cv::VideoWriter Writer;
    const char* OutputPath = nullptr;  ///< not owned
    std::int32_t FrameCount = 0;
    std::int32_t Width = 0;   ///< pixels
    std::int32_t Height = 0;  ///< pixels
    double Fps = 0.0;         ///< frames per second, as reported at Open
    bool Opened = false;      ///< set by a successful Open, never set back
    std::int32_t WriteMode = ReadOnly;
};
