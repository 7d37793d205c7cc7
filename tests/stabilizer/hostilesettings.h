// SPDX-License-Identifier: MIT
#pragma once

#include "support/seededrandom.h"

#include <QVector>

struct AxisFilterSettings;
struct IgnoreSection;
struct ManualPathSection;
struct Project;

/**
 * What nobody would choose: settings as only a hand-written project file can hold them, and motion
 * as only a damaged file can. The same number gives the same, on every machine.
 */
class HostileSettings : public SeededRandom
{
public:
    /** At most 2000 frames, with numbers beyond all limits among them, and NaN. */
    [[nodiscard]] QVector<double> Motion();

    /** Anything at all, but of strengths only those that want little memory, or more than a list
     * can hold. */
    void Fill(Project& project, AxisFilterSettings& axis, int frames);

    [[nodiscard]] double Number();  ///< any 64 bits, often one from around a limit
    [[nodiscard]] std::int32_t Whole(int frames);

private:
    [[nodiscard]] std::int32_t Strength();
    [[nodiscard]] double Value(double size);
    [[nodiscard]] std::vector<IgnoreSection> IgnoreList(int frames);
    [[nodiscard]] std::vector<ManualPathSection> ManualList(int frames);
};
