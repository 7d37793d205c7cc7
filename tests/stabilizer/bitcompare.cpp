// SPDX-License-Identifier: MIT
#include "stabilizer/bitcompare.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace
{
std::uint64_t Bits(double number)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

QString CountDifference(int actual, std::size_t expected)
{
    return QStringLiteral("%1 entries instead of %2").arg(actual).arg(expected);
}
}  // namespace

QString BitDifference(const QVector<double>& actual, const std::vector<double>& expected)
{
    if (static_cast<std::size_t>(actual.size()) != expected.size())
    {
        return CountDifference(actual.size(), expected.size());
    }
    for (int i = 0; i < actual.size(); ++i)
    {
        const double a = actual.at(i);
        const double b = expected[static_cast<std::size_t>(i)];
        const bool bothNan = std::isnan(a) && std::isnan(b);
        if (!bothNan && Bits(a) != Bits(b))
        {
            return QStringLiteral("entry %1 is %2 instead of %3")
                .arg(i)
                .arg(a, 0, 'g', 17)
                .arg(b, 0, 'g', 17);
        }
    }
    return {};
}

QString WeightDifference(const QVector<std::int32_t>& actual,
                         const std::vector<std::int32_t>& expected)
{
    if (static_cast<std::size_t>(actual.size()) != expected.size())
    {
        return CountDifference(actual.size(), expected.size());
    }
    for (int i = 0; i < actual.size(); ++i)
    {
        const std::int32_t b = expected[static_cast<std::size_t>(i)];
        if (actual.at(i) != b)
        {
            return QStringLiteral("weight %1 is %2 instead of %3").arg(i).arg(actual.at(i)).arg(b);
        }
    }
    return {};
}

QVector<double> ToQVector(const std::vector<double>& values)
{
    return QVector<double>(values.begin(), values.end());
}
