// SPDX-License-Identifier: MIT
#pragma once

#include "support/messageguard.h"

#include <memory>

/**
 * Ends a guard. @return what Qt complained of in the meantime, but for what the platform without a
 *         screen says whenever a window with a smallest size is shown
 */
[[nodiscard]] inline QStringList EndGuard(std::unique_ptr<MessageGuard>& guard)
{
    QStringList messages = guard->TakeUnexpected();
    guard.reset();
    messages.removeAll(QStringLiteral("This plugin does not support propagateSizeHints()"));
    return messages;
}
