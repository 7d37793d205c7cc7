// SPDX-License-Identifier: MIT
#include "graphs/timescaledraw.h"

#include "stabilizer/truncation.h"

QwtText TimeScaleDraw::label(double v) const
{
    const std::int32_t ms = TruncateToInt32(v * MsPerFrame);
    QString text =
        QStringLiteral("%1:%2:%3").arg(ms / 60000, 2).arg(ms / 1000 % 60, 2).arg(ms % 1000, 3);
    return QwtText(text.replace(QLatin1Char(' '), QLatin1Char('0')));
}
