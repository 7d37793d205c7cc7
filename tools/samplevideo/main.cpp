// SPDX-License-Identifier: MIT
#include "samplevideo/samplevideo.h"

#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

namespace
{
constexpr int ExitNotWritten = 1;
constexpr int ExitUsage = 2;
constexpr int MinSize = 64;
constexpr int MaxSize = 8192;
constexpr double MaxFps = 240.0;

constexpr char Usage[] =
    "Usage: samplevideo [option...] OUT.avi\n"
    "Writes a video of a street, filmed by an unsteady hand, without loss, and beside it OUT.csv\n"
    "with the motion from each frame to the next: frame,x,y,angle in pixels and radians.\n"
    "  --size 1920x1080  width and height: even, 64 to 8192\n"
    "  --frames 300      number of frames, above 0\n"
    "  --seed 1          another number gives another street and another hand\n"
    "  --fps 30          frames per second, above 0 to 240\n"
    "  --shake 1         factor on the unrest of the hand, 0 to 10\n";

template <class Number>
bool ReadNumber(std::string_view text, Number& number)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool IsSide(int side)
{
    return side >= MinSize && side <= MaxSize && side % 2 == 0;  // the writer cuts an odd row off
}

bool ReadSize(std::string_view text, SampleSettings& settings)
{
    const std::size_t cross = text.find('x');
    return cross != std::string_view::npos && ReadNumber(text.substr(0, cross), settings.Width) &&
           ReadNumber(text.substr(cross + 1), settings.Height) && IsSide(settings.Width) &&
           IsSide(settings.Height);
}

bool ReadOption(std::string_view name, std::string_view value, SampleSettings& settings)
{
    if (name == "--size")
    {
        return ReadSize(value, settings);
    }
    if (name == "--frames")
    {
        return ReadNumber(value, settings.Frames) && settings.Frames > 0;
    }
    if (name == "--seed")
    {
        return ReadNumber(value, settings.Seed);
    }
    if (name == "--fps")
    {
        return ReadNumber(value, settings.Fps) && settings.Fps > 0.0 && settings.Fps <= MaxFps;
    }
    return name == "--shake" && ReadNumber(value, settings.Shake) && settings.Shake >= 0.0 &&
           settings.Shake <= MaxShake;
}

/** @return false, with the reason on the error stream, when the arguments make no sense */
bool ReadArguments(int count, char** arguments, SampleSettings& settings, std::string& path)
{
    for (int i = 1; i < count; ++i)
    {
        const std::string_view argument = arguments[i];
        if (argument.substr(0, 2) == "--")
        {
            const char* value = i + 1 < count ? arguments[i + 1] : "";
            if (!ReadOption(argument, value, settings))
            {
                std::fprintf(stderr, "samplevideo: \"%s %s\" is not understood.\n", arguments[i],
                             value);
                return false;
            }
            ++i;
        }
        else if (argument.empty() || !path.empty())
        {
            std::fprintf(stderr, "samplevideo: one file name is wanted.\n");
            return false;
        }
        else
        {
            path = argument;
        }
    }
    if (path.size() <= 4 || path.substr(path.size() - 4) != ".avi")
    {
        std::fprintf(stderr, "samplevideo: a file name that ends in .avi is wanted.\n");
        return false;
    }
    return true;
}
}  // namespace

int main(int count, char** arguments)
{
    SampleSettings settings;
    std::string path;
    if (!ReadArguments(count, arguments, settings, path))
    {
        std::fputs(Usage, stderr);
        return ExitUsage;
    }
    const std::string truthPath = path.substr(0, path.size() - 4) + ".csv";
    const SampleVideo video = MakeSampleVideo(settings);
    if (!WriteVideo(video, path))
    {
        std::fprintf(stderr, "samplevideo: \"%s\" cannot be written.\n", path.c_str());
        return ExitNotWritten;
    }
    if (!WriteTruth(video.Motions, truthPath))
    {
        std::fprintf(stderr, "samplevideo: \"%s\" cannot be written.\n", truthPath.c_str());
        return ExitNotWritten;
    }
    std::printf("%s: %d frames of %dx%d, truth in %s\n", path.c_str(), settings.Frames,
                settings.Width, settings.Height, truthPath.c_str());
    return 0;
}
