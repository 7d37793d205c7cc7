// SPDX-License-Identifier: MIT
#include "stabilizer/hostilesettings.h"

#include "project/project.h"

#include <cstring>
#include <limits>

namespace
{
using Int32 = std::numeric_limits<std::int32_t>;
using Double = std::numeric_limits<double>;

constexpr double TwoTo63 = 9223372036854775808.0;

const double Numbers[] = {0.0,
                          -0.0,
                          0.5,
                          1.0,
                          -1.0,
                          1.1,
                          90.0,
                          20000.0,
                          1e19,
                          -1e19,
                          TwoTo63,
                          -TwoTo63,
                          2.0 * TwoTo63,
                          Double::denorm_min(),
                          Double::max(),
                          Double::lowest(),
                          Double::infinity(),
                          -Double::infinity(),
                          Double::quiet_NaN()};

const std::int32_t Wholes[] = {Int32::min(), Int32::min() + 1, -1000000, -2, -1, 0, 1, 2, 3, 5, 6,
                               1000000,      Int32::max()};

const double CropFactors[] = {1.1, 1.1, 1.25, 1.5, 2.0, 1.0, 0.9};
}  // namespace

double HostileSettings::Number()
{
    if (!OneIn(3))
    {
        return Any(Numbers);
    }
    const std::uint64_t bits = std::uint64_t{Bits()} << 32U | Bits();
    double number = 0.0;
    std::memcpy(&number, &bits, sizeof(number));
    return number;
}

std::int32_t HostileSettings::Whole(int frames)
{
    switch (Below(4))
    {
        case 0:
            return Any(Wholes);
        case 1:
            return static_cast<std::int32_t>(Bits());
        case 2:
            return frames - 1 + Below(3);
        default:
            return Below(frames + 50) - 25;
    }
}

/** Mostly within @p size of 0. */
double HostileSettings::Value(double size)
{
    return OneIn(8) ? Number() : (Below(20001) - 10000) * 0.0001 * size;
}

QVector<double> HostileSettings::Motion()
{
    QVector<double> motion(OneIn(20) ? Below(2001) : Below(60));
    const bool isHostile = OneIn(4);
    const bool isSpoiled = OneIn(4);
    const double size = OneIn(2) ? 2.0 : 40.0;
    for (double& value : motion)
    {
        const bool isOdd = isHostile || (isSpoiled && OneIn(50));
        value = isOdd ? Number() : (Below(20001) - 10000) * 0.0001 * size;
    }
    return motion;
}

std::int32_t HostileSettings::Strength()
{
    switch (Below(8))
    {
        case 0:
            return OneIn(4) ? Int32::max() - Below(1 << 30) : Below(7);
        case 1:
            return Int32::min() + Below(Int32::max());
        case 2:
            return OneIn(8) ? Below(3000) : 3;
        default:
            return Below(40);
    }
}

std::vector<IgnoreSection> HostileSettings::IgnoreList(int frames)
{
    std::vector<IgnoreSection> sections(
        static_cast<std::size_t>(OneIn(20) ? Below(200) : Below(4)));
    for (IgnoreSection& section : sections)
    {
        section = {Whole(frames), Whole(frames), Number()};
    }
    return sections;
}

std::vector<ManualPathSection> HostileSettings::ManualList(int frames)
{
    std::vector<ManualPathSection> sections(static_cast<std::size_t>(Below(4)));
    for (ManualPathSection& section : sections)
    {
        for (int i = OneIn(30) ? Below(100) : Below(5); i > 0; --i)
        {
            section.Points.push_back({Whole(frames), Value(500.0)});
        }
    }
    return sections;
}

void HostileSettings::Fill(Project& project, AxisFilterSettings& axis, int frames)
{
    axis.Lock = OneIn(12);
    axis.UseModified = OneIn(2);
    axis.UseStartValue = OneIn(3);
    axis.UseEndValue = OneIn(3);
    axis.EnableIgnoreSections = OneIn(2);
    axis.EnableManualPath = OneIn(2);
    axis.AvgPathImages = Strength();
    axis.AvgPathOrder = OneIn(6) ? Whole(frames) : 1 + Below(5);
    axis.IgnoreStartFramesMargin = Whole(frames);
    axis.StartValue = Value(20000.0);
    axis.EndValue = Value(20000.0);
    axis.IgnoreSections = IgnoreList(frames);
    axis.ManualPath = ManualList(frames);
    project.EnGlobalIgnoreList = OneIn(2);
    project.GlobalIgnoreSections = IgnoreList(frames);
    project.ExportSettings.CropFactor = OneIn(4) ? Number() : Any(CropFactors);
}
