// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <fstream>
#include <type_traits>

/**
 * How the data files are read and written: plain numbers and records in native byte order, no
 * header.
 */

/// What a reader believes of a count of frames or samples.
inline constexpr std::int32_t FewestEntries = 2;
inline constexpr std::int32_t MostEntries = 39999999;

/**
 * Opens @p path, emptied, for writing, unless it is the file @p source. @return whether it is open
 */
[[nodiscard]] bool OpenForWriting(std::ofstream& file, const char* path, const char* source);

/** Writes the bytes of @p value; failures stay in the state of @p file. */
template <typename Value>
void WriteValue(std::ofstream& file, const Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    file.write(reinterpret_cast<const char*>(&value), sizeof(value));
}

/** Reads the bytes of @p value. @return false when the file ends before */
template <typename Value>
[[nodiscard]] bool ReadValue(std::ifstream& file, Value& value)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    return static_cast<bool>(file.read(reinterpret_cast<char*>(&value), sizeof(value)));
}
