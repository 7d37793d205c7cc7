// SPDX-License-Identifier: MIT
#include "batch/filefields.h"

#include <QFile>

#include <algorithm>

QByteArray Hex(const char* dump)
{
    return QByteArray::fromHex(dump);
}

QByteArray Int(std::int64_t value)
{
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8)
    {
        bytes.append(static_cast<char>((value >> shift) & 0xFF));
    }
    return bytes;
}

QByteArray Zeros(int count)
{
    return QByteArray(count, '\0');
}

QByteArray PathField(const QByteArray& path)
{
    return path + Zeros(256 - path.size());
}

void SetField(char (&field)[512], const QString& path)
{
    const QByteArray bytes = QFile::encodeName(path).left(511);
    std::fill(std::begin(field), std::end(field), '\0');
    std::copy(bytes.cbegin(), bytes.cend(), std::begin(field));
}
