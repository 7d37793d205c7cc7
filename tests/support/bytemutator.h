// SPDX-License-Identifier: MIT
#pragma once

#include "support/seededrandom.h"

#include <QByteArray>
#include <QList>

/** Damage that any file can suffer. */
class ByteMutator : protected SeededRandom
{
protected:
    /** @param seeds good files, at least one */
    explicit ByteMutator(QList<QByteArray> seeds) : Seeds(std::move(seeds)) {}

    [[nodiscard]] QByteArray AnySeed() { return Any(Seeds); }
    [[nodiscard]] int Position(const QByteArray& bytes) { return Below(bytes.size() + 1); }
    void FlipBits(QByteArray& bytes);  ///< one to eight
    void Truncate(QByteArray& bytes) { bytes.truncate(Position(bytes)); }
    void Splice(QByteArray& bytes);                     ///< puts a piece of a seed in
    [[nodiscard]] QByteArray RandomBytes(int tooMany);  ///< fewer than @p tooMany

private:
    QList<QByteArray> Seeds;
};
