// SPDX-License-Identifier: MIT
#pragma once

#include "app/testwindow.h"

#include <QString>
#include <QTemporaryDir>

#include <opencv2/core/mat.hpp>

#include <vector>

/** The program's window with a directory for data files and exports, and jobs that are waited for.
 */
class ExportWindow : public TestWindow
{
public:
    /** Crops the export; offsets in source pixels. */
    void SetCrop(double percent, int offsetH, int offsetV) const;
    void SetOutputSize(int width, int height) const;

    /** Analyses and calculates, with the settings so far. The clip must make the path move. */
    void Analyse(const QString& clip) const;

    void StartExport(const QString& name) const;  ///< from the settings tab
    void WaitForEnd() const;                      ///< of the job that runs
    /** Runs an export. @return its frames; none when it was refused */
    [[nodiscard]] std::vector<cv::Mat> Export() const;
    [[nodiscard]] QByteArray Bytes(const QString& name) const;  ///< of the export of that name

private:
    QTemporaryDir Directory;
};
