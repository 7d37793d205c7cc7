// SPDX-License-Identifier: MIT
#include "support/doublelists.h"

#include <cmath>

QString Difference(const QVector<double>& actual, const QVector<double>& expected, double tolerance)
{
    if (actual.size() != expected.size())
    {
        return QStringLiteral("%1 entries instead of %2").arg(actual.size()).arg(expected.size());
    }
    for (int i = 0; i < actual.size(); ++i)
    {
        const double a = actual.at(i);
        const double b = expected.at(i);
        const bool equal =
            a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= tolerance;
        if (!equal)
        {
            return QStringLiteral("entry %1 is %2 instead of %3")
                .arg(i)
                .arg(a, 0, 'g', 17)
                .arg(b, 0, 'g', 17);
        }
    }
    return {};
}
