// SPDX-License-Identifier: MIT
#pragma once

#include "stabilizer/ignoresection.h"

#include <vector>

class QJsonObject;

/**
 * The key "IgnoreSections" of a project file, at its root and in each axis. A missing key is an
 * empty list.
 */
[[nodiscard]] std::vector<IgnoreSection> ReadIgnoreSections(const QJsonObject& obj);

/** Leaves the key out when the list is empty. */
void WriteIgnoreSections(const std::vector<IgnoreSection>& sections, QJsonObject& obj);
