// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/**
 * Settings of the corner detection. The record's bytes are the payload of the tracking matching
 * file: tracking data are out of date as soon as one of the 12 bytes differs.
 */
struct TrackingParameters
{
    std::int32_t MaxTrackingPoints = 200;  ///< corners per frame; the form offers 20 to 5000
    std::int32_t Reserved = 0;             ///< never assigned; part of the file format
    std::int32_t Marker = -1;              ///< constant; part of the file format
};

static_assert(sizeof(TrackingParameters) == 12, "payload of the tracking matching file");
static_assert(offsetof(TrackingParameters, Reserved) == 4);
static_assert(offsetof(TrackingParameters, Marker) == 8);
static_assert(std::is_trivially_copyable_v<TrackingParameters>);
