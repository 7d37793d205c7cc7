// SPDX-License-Identifier: MIT
#include "batch/samefile.h"

#include <filesystem>
#include <system_error>

bool IsSameFile(const char* first, const char* second)
{
    std::error_code ignored;  // a path that cannot be asked about is no file to be harmed
    return std::filesystem::equivalent(first, second, ignored);
}
