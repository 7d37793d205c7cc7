// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>
#include <vector>

class ScriptedStabilizer;

// What the tests of the two jobs share that go through the source pair of frames by pair of frames.

using Pairs = std::vector<std::pair<int, int>>;

/** The gray levels of those pairs of frames of a numbered clip. */
[[nodiscard]] Pairs GrayPairs(const Pairs& numbers);

/** Rows of "frames" of the clip, the "pairs" the job asks for, and the "lists" of points of each.
 */
void AddPairRows();

/** Rows of "frames" of the clip and the progress "lines" of them, with 3 points left each time. */
void AddProgressRows();

/** Rows of "requestAt", a call of RequestStopAt, for a clip of 5 frames, and "isAborted". */
void AddAbortRows();

/** Rows of each other "result" than success that writing the motion can have. */
void AddFailedWriteRows();

/** Asks the job to stop in its preparation (0) or during that call of TrackFrame (from 1). */
void RequestStopAt(ScriptedStabilizer& object, int call);

/** Writes a clip of 64 by 64 whose only frame breaks off after its first bytes; fatal on failure.
 */
void WriteClipOfABrokenFrame(const QString& path);
