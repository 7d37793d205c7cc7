#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints covered lines by folder of src: coverage_table.py summary.json

Takes gcovr's JSON summary. Exit status 1 when a folder is below its bound.
"""
import json
import sys

BOUNDS = {"stabilizer": 95.0, "batch": 95.0, "project": 95.0}
OTHER_BOUND = 85.0


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        files = json.load(file)["files"]
    folders = {}
    for entry in files:
        folder = folders.setdefault(entry["filename"].split("/")[1], [0, 0])
        folder[0] += entry["line_covered"]
        folder[1] += entry["line_total"]
    below = False
    print(f"{'folder':<12} {'covered':>8} {'lines':>7} {'percent':>8} {'bound':>6}")
    for name, (covered, lines) in sorted(folders.items()):
        percent = 100.0 * covered / lines
        bound = BOUNDS.get(name, OTHER_BOUND)
        below |= percent < bound
        print(f"{name:<12} {covered:>8} {lines:>7} {percent:>8.1f} {bound:>6.0f}{'  BELOW' if percent < bound else ''}")
    return 1 if below or not folders else 0


if __name__ == "__main__":
    sys.exit(main())
