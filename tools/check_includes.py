#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks which header includes which: check_includes.py [SRC]

Headers stand in rows. A header may include headers of lower rows, and of its own row those that stand before it;
anything else is a forward declaration. A .cpp includes whatever it uses. Prints each breach; exit status 1 if any.
A header that stands in no row is a breach too, so that the table stays whole.
"""
import re
import sys
from pathlib import Path

ROWS = [
    # records: plain data
    ["batch/jobstate", "batch/resultcodes", "batch/trackingparameters", "batch/exportsettings", "batch/filenames",
     "batch/logrecord", "batch/samefile", "batch/binaryfile", "stabilizer/truncation", "stabilizer/ignoresection", "stabilizer/manualpath",
     "stabilizer/axisfiltersettings", "stabilizer/pathfilterstage", "app/allocator",
     "app/pathnames", "app/programapplication"],
    # engine
    ["app/log", "project/jsonaccess", "project/axisfiltersettings_json", "stabilizer/croprectangle", "stabilizer/pathfilter", "stabilizer/pathcorrections",
     "stabilizer/camerapath", "batch/videofile", "batch/stabilize"],
    # services
    ["stabilizer/posrotstabilizer", "batch/opcvthread", "batch/stabilizerhost", "project/project",
     "project/configuration", "project/filedialogs"],
    # widgets
    ["app/about", "app/aboutcodecs", "app/aboutopencv", "app/aboutqt", "app/help",
     "project/dirsettings", "graphs/plotcurve", "graphs/gridandpos", "graphs/timescaledraw", "graphs/simpleplot",
     "graphs/flowplot", "graphs/ignorelist", "graphs/graphwindow", "player/imageviewer", "player/playercapture",
     "player/playerconverter", "player/previewplayer"],
    # window
    ["app/mainwindow"],
]
PLACE = {header: (row, column) for row, headers in enumerate(ROWS) for column, header in enumerate(headers)}
INCLUDE = re.compile(r'^\s*#include "([^"]+)\.h"', re.MULTILINE)


def breaches(src: Path):
    for path in sorted(src.rglob("*.h")):
        header = path.relative_to(src).with_suffix("").as_posix()
        if header not in PLACE:
            yield f"{header}.h stands in no row of the table"
            continue
        for included in INCLUDE.findall(path.read_text(encoding="utf-8")):
            if included not in PLACE:
                yield f"{header}.h includes {included}.h, which stands in no row"
            elif PLACE[included] >= PLACE[header]:
                yield f"{header}.h must not include {included}.h"
    for path in sorted(src.rglob("*.cpp")):
        unit = path.relative_to(src).as_posix()
        if not unit.startswith("app/") and unit != "batch/stabilizerhost.cpp":
            if "app/mainwindow" in INCLUDE.findall(path.read_text(encoding="utf-8")):
                yield f"{unit} must not include app/mainwindow.h: emit a signal instead"
    for header in PLACE:
        if not (src / f"{header}.h").is_file():
            yield f"{header}.h stands in the table and not in the tree"


def main():
    found = list(breaches(Path(sys.argv[1] if len(sys.argv) > 1 else "src")))
    for breach in found:
        print(breach)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
