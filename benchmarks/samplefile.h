// SPDX-License-Identifier: MIT
#pragma once

#include "batch/filenames.h"

#include <QTemporaryDir>

#include <string>

/** A rendered street as an .mp4 file, 16 to 9, in a directory of its own; made once for each size.
 */
class SampleFile
{
public:
    explicit SampleFile(int height);

    /** @param height  360 or 1080, pixels */
    [[nodiscard]] static const SampleFile& Of(int height);

    [[nodiscard]] int Frames() const;

    /** A file beside the source, or the source itself. */
    [[nodiscard]] std::string Path(const char* name = "source.mp4") const;

    /** The source and all that jobs make from it; the export is "export.mp4". */
    [[nodiscard]] FileNames Names() const;

    /** Where all of them lie. */
    [[nodiscard]] QString Directory() const;

    /** The same in the directory of another process' sample. */
    [[nodiscard]] static FileNames NamesIn(const QString& directory);

private:
    QTemporaryDir Dir;
    int Height;
};
