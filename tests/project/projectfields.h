// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

struct Project;

/** Text of each field by its name, as in "FlowH.AvgPathImages". */
using FieldMap = QMap<QString, QString>;

/**
 * Every field that a project file holds, as text. Equal texts mean equal values: numbers have as
 * many digits as tell them apart. Sections read "(0, 1, 0.5) (3, 9, 0)", manual paths
 * "[(10, -1) (5, 2)] []". FileNames and RadianSettings are left out: they are made from others.
 */
[[nodiscard]] FieldMap FieldsOf(const Project& project);

/** What a project has when its file says nothing. */
[[nodiscard]] FieldMap LoadDefaults();

/** For comparing: one line per field. */
[[nodiscard]] QStringList Lines(const FieldMap& fields);

/** A project in which each stored field differs from its default, lists included. */
[[nodiscard]] Project UnusualProject();
