// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

/** Settings files and their lists, past the code under test. */

/** Ends the program when the file holds no object. */
[[nodiscard]] QJsonObject ReadObject(const QString& path);

/** Numbered names, "1" to "15" for instance. */
[[nodiscard]] QStringList Numbers(int first, int last);

/** An array of objects that have @p key alone, with one text each. */
[[nodiscard]] QJsonArray Entries(const QString& key, const QStringList& texts);
