// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <functional>

/**
 * Calls @p tryOne with the numbers of one input after the other, until a check in it fails: that
 * input is told by its number, from which it is made again. MOLVANE_FUZZ_INPUTS is how many there
 * are, MOLVANE_FUZZ_SEED the number of the first one.
 */
void RunFuzz(const std::function<void(std::uint32_t number)>& tryOne);

/** A new file in place of @p path: some file systems wait for the disk when one is emptied. */
void RenewFile(const QString& path, const QByteArray& bytes);
