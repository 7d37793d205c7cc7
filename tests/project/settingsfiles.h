// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

/** Files as raw bytes and as objects, past the code under test. */

void WriteBytes(const QString& path, const QByteArray& bytes);  ///< ends the program when it cannot

/** All bytes; ends the program when there is no such file. */
[[nodiscard]] QByteArray ReadBytes(const QString& path);

void WriteObject(const QString& path, const QJsonObject& object);

/** Ends the program when the file holds no object. */
[[nodiscard]] QJsonObject ReadObject(const QString& path);

/** Numbered names, "1" to "15" for instance. */
[[nodiscard]] QStringList Numbers(int first, int last);

/** An array of objects that have @p key alone, with one text each. */
[[nodiscard]] QJsonArray Entries(const QString& key, const QStringList& texts);
