// SPDX-License-Identifier: MIT
#include "support/environment.h"

#include <QtGlobal>

int NumberFromEnvironment(const char* name, int defaultValue)
{
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? value : defaultValue;
}
