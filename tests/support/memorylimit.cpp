// SPDX-License-Identifier: MIT
#include "support/memorylimit.h"

#include <QFile>

#include <unistd.h>

namespace
{
/** Address space of the process, bytes. */
rlim_t MappedBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
    {
        qFatal("Cannot ask for the size of the process");
    }
    const rlim_t pages = file.readAll().split(' ').constFirst().toULongLong();
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}
}  // namespace

bool MemoryLimit::IsPossible()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

MemoryLimit::MemoryLimit(std::size_t moreBytes)
{
    getrlimit(RLIMIT_AS, &Former);
    rlimit limit = Former;
    limit.rlim_cur = MappedBytes() + moreBytes;
    if (setrlimit(RLIMIT_AS, &limit) != 0)
    {
        qFatal("Cannot limit the memory");
    }
}

MemoryLimit::~MemoryLimit()
{
    setrlimit(RLIMIT_AS, &Former);
}
