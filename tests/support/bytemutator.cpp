// SPDX-License-Identifier: MIT
#include "support/bytemutator.h"

void ByteMutator::FlipBits(QByteArray& bytes)
{
    for (int i = bytes.isEmpty() ? 0 : 1 + Below(8); i > 0; --i)
    {
        char& byte = bytes.data()[Below(bytes.size())];
        byte = static_cast<char>(byte ^ (1 << Below(8)));
    }
}

void ByteMutator::Splice(QByteArray& bytes)
{
    const QByteArray other = AnySeed();
    const int from = Position(other);
    bytes.insert(Position(bytes), other.mid(from, Below(other.size() - from + 1)));
}

QByteArray ByteMutator::RandomBytes(int tooMany)
{
    QByteArray bytes(Below(tooMany), '\0');
    for (char& byte : bytes)
    {
        byte = static_cast<char>(Below(256));
    }
    return bytes;
}
