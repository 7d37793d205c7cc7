// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

/**
 * The story of a walkthrough, on standard output and in a file: facts, and steps that worked or
 * failed.
 */
class Report
{
public:
    /** @param file  the report is added at its end */
    explicit Report(const QString& file);

    void Fact(const QString& text);

    /** Notes whether a step did what it must. @return @p worked */
    bool Step(bool worked, const QString& text);

    [[nodiscard]] bool AllWorked() const { return Failures == 0; }

private:
    void Write(const QString& line);

    QFile File;
    int Failures = 0;
};
