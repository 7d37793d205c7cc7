// SPDX-License-Identifier: MIT
#include "support/processfigures.h"

#include <QDir>
#include <QFile>

#include <malloc.h>
#include <unistd.h>

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // the compiler has no header
#endif

namespace
{
qint64 HeapBytes()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
}

qint64 ResidentBytes()
{
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    const QList<QByteArray> words =
        file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QList<QByteArray>();
    return words.size() > 1 ? words.at(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

int CountEntries(const char* directory)
{
    return static_cast<int>(QDir(QString::fromLatin1(directory))
                                .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                .size());
}
}  // namespace

ProcessFigures TakeFigures()
{
    ProcessFigures figures;
    figures.Heap = HeapBytes();
    figures.Resident = ResidentBytes();
    figures.Threads = CountEntries("/proc/self/task");
    figures.OpenFiles = CountEntries("/proc/self/fd");
    return figures;
}
