// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QJsonParseError>
#include <QString>

/**
 * How settings files are read and written. A reader never fails: a missing key or a value of
 * another type gives the caller's default, a file that cannot be read or parsed is an empty object.
 * No state; used on the user interface thread.
 */

[[nodiscard]] QString JsonGetString(const QJsonObject& obj, const QString& key,
                                    const QString& defaultValue);

/** Deliberate: a number that is no whole number of 32 bits gives 0 and not the default. */
[[nodiscard]] int JsonGetInt(const QJsonObject& obj, const QString& key, int defaultValue);

[[nodiscard]] bool JsonGetBool(const QJsonObject& obj, const QString& key, bool defaultValue);

[[nodiscard]] double JsonGetDouble(const QJsonObject& obj, const QString& key, double defaultValue);

/** True when the key is there with a value of that type; numbers are whole or not. */
[[nodiscard]] bool JsonHasString(const QJsonObject& obj, const QString& key);
[[nodiscard]] bool JsonHasNumber(const QJsonObject& obj, const QString& key);
[[nodiscard]] bool JsonHasBool(const QJsonObject& obj, const QString& key);

/**
 * Reads a file into @p obj, which becomes empty when there is no object to read. @p error tells
 * how parsing went; null when nobody asks.
 */
void JsonReadFile(const QString& fileName, QJsonObject& obj, QJsonParseError* error);

/** Writes @p obj indented. A file that cannot be written is left without a word. */
void JsonWriteFile(const QString& fileName, const QJsonObject& obj);

/**
 * Where and why parsing failed, in words. The position counts raw bytes and is off in files with
 * CR LF.
 */
[[nodiscard]] QString JsonErrorText(const QJsonParseError& error, const QString& fileName);

/**
 * @return true when @p error holds no error. What went wrong is put into words that have no reader
 * yet.
 */
bool JsonReportError(const QJsonParseError& error, const QString& fileName);
