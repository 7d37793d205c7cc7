// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

// The fields of data files as bytes, built without the code under test.

/** Bytes from a hex dump; blanks are skipped. */
[[nodiscard]] QByteArray Hex(const char* dump);

/** @p value as 4 bytes, lowest first. */
[[nodiscard]] QByteArray Int(std::int64_t value);

/** @p count zero bytes. */
[[nodiscard]] QByteArray Zeros(int count);

/** The path as the first 256 bytes of a matching file. @p path has at most 255 bytes. */
[[nodiscard]] QByteArray PathField(const QByteArray& path);

/** Copies @p path, at most 511 bytes of it, into a field of the paths' block. */
void SetField(char (&field)[512], const QString& path);
