// SPDX-License-Identifier: MIT
#include "app/allocator.h"

#include <QTest>

#include <array>
#include <cstring>
#include <memory>
#include <thread>

#include <sys/resource.h>

namespace
{
/** A little below what glibc takes from its heap at most, as a 1080p frame of three floats. */
constexpr std::size_t Large = 1920UL * 1080UL * 12UL;

/** Takes as much as the library calls of one large frame, writes to all of it and frees it. */
void UseAndFree()
{
    std::array<std::unique_ptr<char[]>, 4> blocks;
    for (std::unique_ptr<char[]>& block : blocks)
    {
        block = std::make_unique<char[]>(Large);
        std::memset(block.get(), 1, Large);
    }
}

/** Pages that the system had to bring for the calling thread so far. */
long PageFaults()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_minflt;
}

/** Pages that the second of two uses still asked the system for, of some 24,000. */
long FaultsOfTheSecondUse()
{
    UseAndFree();
    const long before = PageFaults();
    UseAndFree();
    return PageFaults() - before;
}
}  // namespace

/** What is freed stays with the process, so that the next frame finds it. */
class AllocatorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizer has an allocator of its own");
#endif
        KeepFreedMemory();
    }

    void FreedMemoryIsUsedAgain()
    {
        QVERIFY(FaultsOfTheSecondUse() < 100);
    }

    void WorkersFindItToo()
    {
        long faults = 0;
        std::thread worker([&faults] { faults = FaultsOfTheSecondUse(); });
        worker.join();
        QVERIFY2(faults < 100, qPrintable(QString::number(faults)));
    }
};

QTEST_GUILESS_MAIN(AllocatorTest)
#include "allocator_test.moc"
