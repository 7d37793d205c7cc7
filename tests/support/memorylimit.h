// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>

#include <cstddef>

/** Lets the process have a little more memory than it has, and no more, for the object's life. */
class MemoryLimit
{
public:
    /** False under sanitizers, which map more than there is and end the process without memory. */
    [[nodiscard]] static bool IsPossible();

    explicit MemoryLimit(std::size_t moreBytes);
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit Former = {};
};
