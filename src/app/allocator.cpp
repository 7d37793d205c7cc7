// SPDX-License-Identifier: MIT
#include "app/allocator.h"

#include <climits>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

void KeepFreedMemory()
{
#if defined(__GLIBC__)
    constexpr int largest = 32 * 1024 * 1024;  // the most that glibc takes
    // The heaps of further arenas end at 64 MB and come and go within a frame. Threads hardly wait
    // for the one arena: their small blocks come from caches of their own, large ones are few.
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, largest);
    mallopt(M_TRIM_THRESHOLD, INT_MAX);
#endif
}
