// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

constexpr double ReadableContrast = 4.5;  ///< to 1, of small text

/** As the Web Content Accessibility Guidelines define it, 0 to 1. */
[[nodiscard]] inline double Luminance(const QColor& color)
{
    const auto linear = [](double part)
    { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/** Of two colours, 1 to 21; their order does not matter. */
[[nodiscard]] inline double Contrast(const QColor& one, const QColor& other)
{
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}
