// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool IsSanitized = true;  ///< freed memory is kept for a while
#else
inline constexpr bool IsSanitized = false;
#endif

/** What the process uses at this moment. */
struct ProcessFigures
{
    qint64 Heap = 0;      ///< bytes that are allocated and not freed
    qint64 Resident = 0;  ///< bytes of memory that the process occupies, freed ones among them
    int Threads = 0;
    int OpenFiles = 0;
};

[[nodiscard]] ProcessFigures TakeFigures();
