// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

/** Whether two values have the same bits; all NaN of floating point numbers count as equal. */
template <typename Value>
[[nodiscard]] bool IsSameValue(const Value& a, const Value& b)
{
    static_assert(std::is_trivially_copyable_v<Value>);
    if constexpr (std::is_floating_point_v<Value>)
    {
        // A sum of two NaN may be either of them, as the compiler likes.
        if (a != a && b != b)
        {
            return true;
        }
    }
    return std::memcmp(&a, &b, sizeof(Value)) == 0;
}

/** The same of two lists, of whatever kinds. */
template <typename List, typename OtherList>
[[nodiscard]] bool HasBitsOf(const List& actual, const OtherList& expected)
{
    return std::equal(actual.begin(), actual.end(), expected.begin(), expected.end(),
                      [](const auto& a, const auto& b) { return IsSameValue(a, b); });
}
