// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <iterator>
#include <random>

/**
 * Choices for inputs that are told by a number. The same number gives the same choices, on every
 * machine: the distributions of the standard library differ between machines, and are not used.
 */
class SeededRandom
{
public:
    /** Begins the choices of input @p number. */
    void Begin(std::uint32_t number) { Random.seed(number); }

    /** 0 to @p count - 1. */
    [[nodiscard]] int Below(int count) { return static_cast<int>(Random() % unsigned(count)); }
    [[nodiscard]] bool OneIn(int count) { return Below(count) == 0; }
    [[nodiscard]] std::uint32_t Bits() { return static_cast<std::uint32_t>(Random()); }

    /** An entry of @p list, which has at least one. */
    template <typename List>
    [[nodiscard]] auto Any(const List& list)
    {
        return *std::next(std::begin(list), Below(static_cast<int>(std::size(list))));
    }

private:
    std::mt19937 Random;
};
