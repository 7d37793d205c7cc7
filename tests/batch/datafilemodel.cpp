// SPDX-License-Identifier: MIT
#include "batch/datafilemodel.h"

#include <algorithm>
#include <cstring>

namespace
{
/** Takes bytes off the front of a file. */
class Bytes
{
public:
    explicit Bytes(const QByteArray& file) : Rest(file) {}

    /** Fills @p target as far as there are bytes. @return whether there were enough */
    template <typename Value>
    [[nodiscard]] bool Take(Value& target)
    {
        const auto size = static_cast<int>(sizeof(target));
        const int found = std::min(size, Rest.size());
        std::memcpy(static_cast<void*>(&target), Rest.constData(), static_cast<std::size_t>(found));
        Rest.remove(0, found);
        return found == size;
    }

    [[nodiscard]] QByteArray TakeFilledUp(int size)
    {
        const QByteArray bytes = Rest.left(size);
        Rest.remove(0, size);
        return bytes + QByteArray(size - bytes.size(), '\0');
    }

private:
    QByteArray Rest;
};
}  // namespace

int ModelCheckMatching(const QByteArray& file, const QByteArray& source, const QByteArray& payload,
                       ModelFacts& facts)
{
    Bytes bytes(file);
    if (bytes.TakeFilledUp(256) != source)
    {
        return 2;
    }
    static_cast<void>(bytes.Take(facts));
    return bytes.TakeFilledUp(payload.size()) == payload ? 0 : 2;
}

int ModelReadPoints(const QByteArray& file, ModelPointLists& lists)
{
    Bytes bytes(file);
    std::int32_t frames = 0;
    if (!bytes.Take(frames) || frames < 2 || frames > 39999999)
    {
        return -1;
    }
    lists.resize(static_cast<std::size_t>(frames));
    for (std::vector<cv::Point2f>& points : lists)
    {
        std::int32_t count = 0;
        if (!bytes.Take(count))
        {
            return -1;
        }
        if (count < 3 || count > 19999)
        {
            continue;
        }
        points.resize(static_cast<std::size_t>(count));
        for (cv::Point2f& point : points)
        {
            if (!bytes.Take(point.x) || !bytes.Take(point.y))
            {
                return -1;
            }
        }
    }
    return 0;
}

int ModelReadMotion(const QByteArray& file, ModelMotion& motion)
{
    Bytes bytes(file);
    std::int32_t count = 0;
    if (!bytes.Take(count))
    {
        return -1;
    }
    if (count >= 2 && count <= 39999999)
    {
        const auto length = static_cast<std::size_t>(count);
        for (std::vector<double>* list : {&motion.X, &motion.Y, &motion.Angle, &motion.Degrees})
        {
            list->resize(length);
        }
        motion.Count = 0;
        motion.PathGenerated = false;
        for (std::size_t i = 0; i < length; ++i)
        {
            std::array<double, 3> record{};
            if (!bytes.Take(record))
            {
                return -1;
            }
            motion.X[i] = record[0];
            motion.Y[i] = record[1];
            motion.Angle[i] = record[2];
            motion.Degrees[i] = record[2] * 180.0 / 3.141592653589793;
            ++motion.Count;
        }
    }
    motion.Loaded = true;
    return 0;
}
