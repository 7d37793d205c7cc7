// SPDX-License-Identifier: MIT
#pragma once

#include "support/bytemutator.h"

#include <QByteArray>
#include <QJsonValue>
#include <QList>

/**
 * Makes damaged and unlikely settings files from good ones. The same seed gives the same file, on
 * every machine.
 */
class SettingsMutator : private ByteMutator
{
public:
    /** @param seeds files to start from, at least one */
    explicit SettingsMutator(QList<QByteArray> seeds) : ByteMutator(std::move(seeds)) {}

    /** The file of that number, at most some 100 kilobytes. */
    [[nodiscard]] QByteArray File(std::uint32_t number);

private:
    void Mutate(QByteArray& bytes);
    void SwapValue(QByteArray& bytes);
    void Nest(QByteArray& bytes);
    void DuplicateKey(QByteArray& bytes);
    void BreakText(QByteArray& bytes);
    [[nodiscard]] QByteArray RandomObject();
    [[nodiscard]] QJsonValue RandomValue(int depth);
};
