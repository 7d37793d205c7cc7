// SPDX-License-Identifier: MIT
#include "batch/datafilemutator.h"

#include <QtEndian>

#include <cstddef>

namespace
{
constexpr int NumberSize = 4;
constexpr std::int32_t ManyFrames = 5000;
constexpr std::int32_t MostFrames = 39999999;

/** Around every limit that a count has, and the bits of unlikely floats. */
const std::int32_t Numbers[] = {-2147483647 - 1,
                                -1,
                                0,
                                1,
                                2,
                                3,
                                4,
                                5,
                                200,
                                5000,
                                19999,
                                20000,
                                39999999,
                                40000000,
                                16777216,
                                2147483647,
                                0x7F800000,
                                0x7FC00000};
}  // namespace

QByteArray DataFileMutator::File(std::uint32_t number)
{
    Begin(number);
    if (OneIn(10))
    {
        return RandomBytes(400);
    }
    QByteArray bytes = AnySeed();
    // Some stay as they are.
    for (int i = Below(4); i > 0; --i)
    {
        Mutate(bytes);
    }
    return bytes;
}

QByteArray DataFileMutator::CountedFile(std::uint32_t number, std::uint32_t hugeEvery)
{
    QByteArray bytes = File(number);
    if (bytes.size() >= NumberSize && number % hugeEvery != 0)
    {
        const auto count = qFromLittleEndian<qint32>(bytes.constData());
        if (count > ManyFrames && count <= MostFrames)
        {
            qToLittleEndian<qint32>(count % ManyFrames, bytes.data());
        }
    }
    return bytes;
}

QByteArray DataFileMutator::MatchingFile(std::uint32_t number)
{
    constexpr int pathSize = 256;
    QByteArray bytes = File(number);
    if (bytes.size() > pathSize && OneIn(2))
    {
        char& byte = bytes.data()[pathSize + Below(bytes.size() - pathSize)];
        byte = static_cast<char>(byte ^ (1 << Below(8)));
    }
    return bytes;
}

void DataFileMutator::Mutate(QByteArray& bytes)
{
    switch (Below(7))
    {
        case 0:
        case 1:
            FlipBits(bytes);
            break;
        case 2:
            Truncate(bytes);
            break;
        case 3:
            Splice(bytes);
            break;
        case 4:
            bytes += RandomBytes(60);
            break;
        default:
            SetNumber(bytes);
            break;
    }
}

/** In place of a number of the file, often the first one, which counts the frames. */
void DataFileMutator::SetNumber(QByteArray& bytes)
{
    const int numbers = bytes.size() / NumberSize;
    if (numbers > 0)
    {
        const int place = OneIn(3) ? 0 : Below(numbers);
        qToLittleEndian<qint32>(Any(Numbers), bytes.data() + std::ptrdiff_t(place) * NumberSize);
    }
}
