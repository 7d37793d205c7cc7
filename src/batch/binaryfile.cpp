// SPDX-License-Identifier: MIT
#include "batch/binaryfile.h"

#include "batch/samefile.h"

bool OpenForWriting(std::ofstream& file, const char* path, const char* source)
{
    if (!IsSameFile(path, source))
    {
        file.open(path, std::ios::binary);
    }
    return file.is_open();
}
