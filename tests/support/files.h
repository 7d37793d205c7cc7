// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/** Files as raw bytes and as objects, past the code under test. */

/**
 * Writes @p bytes to a file, whose directory is made. A test has no use for a failure, so it ends
 * the program.
 */
void WriteBytes(const QString& path, const QByteArray& bytes);
void WriteObject(const QString& path, const QJsonObject& object);  ///< likewise, as JSON

/** All bytes of a file, or "no file" when it cannot be read. */
[[nodiscard]] QByteArray ReadBytes(const QString& path);
