// SPDX-License-Identifier: MIT
#pragma once

#include "support/bytemutator.h"

/**
 * Makes damaged data files and matching files from good ones. The same number gives the same file,
 * on every machine.
 */
class DataFileMutator : private ByteMutator
{
public:
    /** @param seeds files to start from, at least one */
    explicit DataFileMutator(QList<QByteArray> seeds) : ByteMutator(std::move(seeds)) {}

    /** The file of that number, some kilobytes. */
    [[nodiscard]] QByteArray File(std::uint32_t number);

    /**
     * The same for a file that begins with the count of its frames. The readers make room for as
     * many as 39999999 before they miss the first of them, at the cost of a gigabyte; only one
     * number in @p hugeEvery asks for more than 5000.
     */
    [[nodiscard]] QByteArray CountedFile(std::uint32_t number, std::uint32_t hugeEvery);

    /**
     * The same for a matching file, often with a bit flipped behind the path, in the few bytes that
     * are compared last.
     */
    [[nodiscard]] QByteArray MatchingFile(std::uint32_t number);

private:
    void Mutate(QByteArray& bytes);
    void SetNumber(QByteArray& bytes);
};
