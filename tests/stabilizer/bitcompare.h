// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

#include <cstdint>
#include <vector>

/**
 * Compares two lists bit by bit, the sign of zero included; all NaN count as equal.
 * @return an empty string when equal, else one sentence with the index and both values
 */
[[nodiscard]] QString BitDifference(const QVector<double>& actual,
                                    const std::vector<double>& expected);

/** The same for weights. */
[[nodiscard]] QString WeightDifference(const QVector<std::int32_t>& actual,
                                       const std::vector<std::int32_t>& expected);

/** The same numbers in the other kind of list. */
[[nodiscard]] QVector<double> ToQVector(const std::vector<double>& values);
