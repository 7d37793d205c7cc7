#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the results of scripts/bench as tables: bench_table.py benchmarks.json

One table for each benchmark, one line for each set of arguments. The figures of a benchmark that compares itself with
the bare library calls are per frame, where it has frames, and stand before the ratio and its quartiles.
"""
import json
import sys

STANDARD = {
    "name", "family_index", "per_family_instance_index", "run_name", "run_type", "repetitions", "repetition_index",
    "threads", "iterations", "real_time", "cpu_time", "time_unit", "label", "error_occurred", "error_message"}


def columns_of(runs):
    counters = sorted({key for run in runs for key in run} - STANDARD)
    if "ratio" in counters:
        order = ["ours_ms", "bare_ms", "ratio", "ratio_low", "ratio_high"]
        return order + [key for key in counters if key not in order]
    return ["real_time"] + counters


def text(value):
    return value if isinstance(value, str) else f"{value:.4g}" if value is not None else ""


def print_table(title, runs):
    columns = columns_of(runs)
    unit = runs[0]["time_unit"]
    header = ["arguments"] + [unit if key == "real_time" else key for key in columns] + ["what"]
    lines = [header]
    for run in runs:
        arguments = " ".join(part for part in run["name"].split("/")[1:]
                             if not part.startswith(("iterations:", "manual_time", "real_time")))
        what = run.get("error_message") or run.get("label", "")
        lines.append([arguments] + [text(run.get(key)) for key in columns] + [what])
    widths = [max(len(line[i]) for line in lines) for i in range(len(header))]
    print(f"\n{title}")
    for line in lines:
        print("  " + "  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        results = json.load(file)
    context = results["context"]
    print(f"{context['num_cpus']} processors at {context['mhz_per_cpu']} MHz, load "
          f"{' '.join(f'{load:.1f}' for load in context['load_avg'])}, {context['date']}")
    families = {}
    for run in results["benchmarks"]:
        families.setdefault(run["name"].split("/")[0], []).append(run)
    for title, runs in families.items():
        print_table(title, runs)
    return 1 if any(run.get("error_occurred") for run in results["benchmarks"]) else 0


if __name__ == "__main__":
    sys.exit(main())
