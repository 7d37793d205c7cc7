// SPDX-License-Identifier: MIT
#pragma once

#include "project/configuration.h"

#include <QStringList>

/** All fields of a configuration, for comparing. */
[[nodiscard]] QStringList FieldsOf(const GlobalConfiguration& configuration);

/** A configuration whose fields all differ from the defaults. */
[[nodiscard]] GlobalConfiguration UnusualConfiguration();
