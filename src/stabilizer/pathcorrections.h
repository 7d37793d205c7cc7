// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/ignoresection.h"
#include "stabilizer/manualpath.h"

#include <QVector>

#include <cstdint>
#include <vector>

/**
 * The two tools by which the user steers the automatic path. Both change a padded working array of
 * the path calculation, in which frame f stands at index f + delay. Data in, data out, any thread;
 * one pass each. Frame numbers beyond the array change only what lies inside it.
 */

/**
 * Zeroes the motion inside the sections, so that the camera counts as still there and the path
 * closes up behind them.
 * @param motion    padded motion, changed in place
 * @param delay     padding at each end, frames
 * @param sections  frame ranges, End exclusive
 *
 * Deliberate: with a section that starts at frame 0, whatever its end, as many entries at the head
 * of @p motion become 0.0 as there are sections. More sections than padding clear first frames too.
 * Indices are compared without sign: an end in front of the padding counts as the far end.
 */
void ApplyIgnoreSections(QVector<double>& motion, std::uint64_t delay,
                         const std::vector<IgnoreSection>& sections);

/**
 * Replaces stretches of the path by straight lines between the points of each section; later
 * sections win. A path drawn to an end of the video carries on level into the padding there, a lone
 * point does not.
 * @param position  padded path, changed in place, in the unit of the points
 * @param delay     padding at each end, frames
 * @param sections  points with absolute positions; sections without points do nothing
 *
 * Deliberate: where two points of a section stand in falling frame order, which only a hand-written
 * project file can hold, the value that moves to the lower frame passes through an unsigned 64-bit
 * integer: it loses its fraction, and a negative one wraps. Indices are compared without sign: a
 * point in front of the padding counts as the far end.
 */
void ApplyManualPath(QVector<double>& position, std::uint64_t delay,
                     const std::vector<ManualPathSection>& sections);
