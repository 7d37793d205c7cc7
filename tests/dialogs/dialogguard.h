// SPDX-License-Identifier: MIT
#pragma once

#include "support/messageguard.h"

#include <memory>

/**
 * Ends a guard. @return what Qt complained of in the meantime, but for what the platform without a
 *         screen says of each dialog, menu and list of completions that pops up
 */
[[nodiscard]] inline QStringList EndDialogGuard(std::unique_ptr<MessageGuard>& guard)
{
    QStringList messages;
    for (const QString& message : guard->TakeUnexpected())
    {
        if (!message.startsWith(QLatin1String("This plugin does not support ")))
        {
            messages.append(message);
        }
    }
    guard.reset();
    return messages;
}
