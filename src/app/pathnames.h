// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/** Helpers on paths with "/" between their parts. Pure functions, any thread. */

/** The part behind the last "/", or the whole string if there is none. */
[[nodiscard]] QString FileNameOf(const QString& path);

/** The part in front of the last "/"; empty if there is none. */
[[nodiscard]] QString DirOf(const QString& path);

/** The file name of @p path in the directory @p dir, with every "//" made "/". */
[[nodiscard]] QString RebasePath(const QString& dir, const QString& path);
