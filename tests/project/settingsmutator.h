// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QList>

#include <random>

/**
 * Makes damaged and unlikely settings files from good ones. The same seed gives the same file, on
 * every machine.
 */
class SettingsMutator
{
public:
    /** @param seeds files to start from, at least one */
    explicit SettingsMutator(QList<QByteArray> seeds) : Seeds(std::move(seeds)) {}

    /** The file of that number, at most some 100 kilobytes. */
    [[nodiscard]] QByteArray File(std::uint32_t number);

private:
    /** 0 to @p count - 1. The distributions of the standard library differ between machines. */
    [[nodiscard]] int Below(int count) { return static_cast<int>(Random() % unsigned(count)); }
    [[nodiscard]] int Position(const QByteArray& bytes) { return Below(bytes.size() + 1); }
    template <typename List>
    [[nodiscard]] auto Any(const List& list)
    {
        return list[Below(static_cast<int>(std::size(list)))];
    }

    void Mutate(QByteArray& bytes);
    void FlipBits(QByteArray& bytes);
    void Splice(QByteArray& bytes);
    void SwapValue(QByteArray& bytes);
    void Nest(QByteArray& bytes);
    void DuplicateKey(QByteArray& bytes);
    void BreakText(QByteArray& bytes);
    [[nodiscard]] QByteArray RandomBytes(int most);
    [[nodiscard]] QByteArray RandomObject();
    [[nodiscard]] QJsonValue RandomValue(int depth);

    QList<QByteArray> Seeds;
    std::mt19937 Random;
};
