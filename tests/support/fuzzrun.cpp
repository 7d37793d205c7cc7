// SPDX-License-Identifier: MIT
#include "support/fuzzrun.h"

#include "support/environment.h"

#include <QFile>
#include <QtTest>

void RunFuzz(const std::function<void(std::uint32_t number)>& tryOne)
{
    const int inputs = NumberFromEnvironment("MOLVANE_FUZZ_INPUTS", 1000);
    const int seed = NumberFromEnvironment("MOLVANE_FUZZ_SEED", 1);
    QVERIFY(inputs > 0);
    qInfo("%d inputs, the first is number %d", inputs, seed);
    for (int i = 0; i < inputs; ++i)
    {
        const std::uint32_t number = static_cast<std::uint32_t>(seed) + static_cast<unsigned>(i);
        tryOne(number);
        if (QTest::currentTestFailed())
        {
            qWarning("The failing input is number %u", number);
            return;
        }
    }
}

void RenewFile(const QString& path, const QByteArray& bytes)
{
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    {
        qFatal("Cannot write %s", qPrintable(path));
    }
}
