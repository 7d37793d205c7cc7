// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

/**
 * Compares two lists of doubles entry by entry, exactly or within @p tolerance.
 * @return an empty string when equal, else one sentence with the index and both values; for
 *         QCOMPARE(Difference(actual, expected), QString())
 */
[[nodiscard]] QString Difference(const QVector<double>& actual, const QVector<double>& expected,
                                 double tolerance = 0.0);
