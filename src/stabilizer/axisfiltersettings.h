// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/ignoresection.h"
#include "stabilizer/manualpath.h"

#include <cstdint>
#include <vector>

class QJsonObject;

/**
 * The user's choices for one axis of the camera path. Field names are the keys of the project
 * file. A constructed record is all zero; the reader of projects supplies the defaults.
 */
struct AxisFilterSettings
{
    bool Lock = false;                  ///< hold the camera still at the path's mean
    bool UseModified = false;           ///< stored and copied, without effect
    bool UseStartValue = false;         ///< the path comes from StartValue
    bool UseEndValue = false;           ///< the path goes to EndValue
    bool EnableIgnoreSections = false;  ///< apply IgnoreSections
    bool EnableManualPath = false;      ///< apply ManualPath
    std::int32_t AvgPathImages = 0;     ///< filter strength N, half the averaging window in frames
    std::int32_t AvgPathOrder = 0;      ///< filter type, 1 to 5
    /// Types 4 and 5 disregard violations of the margin that begin up to this frame.
    std::int32_t IgnoreStartFramesMargin = 0;
    double StartValue = 0.0;  ///< pixels, or degrees on the rotation axis
    double EndValue = 0.0;    ///< pixels, or degrees on the rotation axis
    std::vector<IgnoreSection> IgnoreSections;
    std::vector<ManualPathSection> ManualPath;

    /**
     * Takes all fields from the object of one axis in a project file; what is missing or of another
     * type gets its default. The defaults of AvgPathImages and AvgPathOrder differ from axis to
     * axis.
     */
    void ReadJson(const QJsonObject& obj, int avgPathImages, int avgPathOrder);

    /** Sets the keys of all fields in @p obj; empty lists are left out. */
    void WriteJson(QJsonObject& obj) const;
};

/**
 * Fills the settings that filter the rotation of the frames, in radians, from those of the
 * rotation graph, in degrees. Pure data, any thread.
 *
 * Deliberate: EnableIgnoreSections, EnableManualPath and IgnoreSections of @p radians keep what
 * they hold, and the points of the manual path stay numbers in degrees. So the ignore sections and
 * the manual path of the rotation axis show in its graph and never turn a frame.
 */
void CopyAsRadians(const AxisFilterSettings& degrees, AxisFilterSettings& radians);
