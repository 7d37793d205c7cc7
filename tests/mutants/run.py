#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Seeds small faults, one at a time, and tells which the tests notice: run.py BUILD [filter]

Works on a copy of the sources in BUILD/mutants, so the tree is never touched. A fault that does not compile counts as
an error of this list, not as noticed. Exit status 1 when fewer than 95 of 100 faults are noticed, or on an error.
"""
import filecmp
import re
import shutil
import subprocess
import sys
import time
from pathlib import Path

from faults import GROUPS

ROOT = Path(__file__).resolve().parents[2]
SHARE = 0.95
SKIPPED = "^(walkthrough|sample_clip|accuracy|includes|playersoak|settingsfuzz)$"


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)


def copy_sources(tree):
    """Copies what has changed since the last run, faults that a broken run has left among it."""
    for name in run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT).stdout.split("\0"):
        source, target = ROOT / name, tree / name
        if name and source.is_file() and not (target.is_file() and filecmp.cmp(source, target, shallow=False)):
            target.parent.mkdir(parents=True, exist_ok=True)
            target.unlink(missing_ok=True)
            shutil.copyfile(source, target)  # as new, so that it is built
            shutil.copymode(source, target)


def tests_of(tree, folders):
    """Names of the tests that the CMake files of these folders declare, with their folders."""
    listed = run(["ctest", "--show-only=json-v1"], cwd=tree / "build").stdout
    names = re.findall(r'"name"\s*:\s*"(\w+)",\s*\n\s*"properties"', listed)
    sources = {path.name[:-len("_test.cpp")]: folder for folder in folders
               for path in (tree / "tests" / folder).glob("*_test.cpp")}
    return {name: sources[name] for name in names if name in sources and not re.match(SKIPPED, name)}


def likely_first(path, tests, noticed_by):
    """The tests in steps: those that noticed a fault in this file before, named like it, of its folder, and all."""
    stem = Path(path).stem.replace("_", "")
    before = [name for name in tests if name in noticed_by.get(path, [])]
    named = [name for name in tests if name not in before and (name.startswith(stem) or stem.startswith(name))]
    rest = [name for name in tests if name not in before + named]
    near = [name for name in rest if tests[name] == path.split("/")[0]]
    return [[name] for name in before + named] + [near, [name for name in rest if name not in near]]


def failing(tree, tests):
    """Names of those that fail, or None when they cannot be built."""
    built = run(["ninja", *[f"{name}_test" for name in tests]], cwd=tree / "build")
    if built.returncode != 0:
        return None
    pattern = "^(" + "|".join(tests) + ")$"
    tested = run(["ctest", "-j2", "--stop-on-failure", "--timeout", "120", "-R", pattern], cwd=tree / "build")
    failed = re.findall(r"^\s*\d+ - (\w+) \(", tested.stdout, re.MULTILINE)
    return failed if tested.returncode == 0 or failed else ["an unknown test"]


def check(tree, fault, tests, noticed_by):
    """What became of one fault: "noticed by ...", "NOT noticed", "ERROR ..."."""
    path, old, new = fault
    source = tree / "src" / path
    original = source.read_text(encoding="utf-8")
    if original.count(old) != 1:
        return f"ERROR: its text stands {original.count(old)} times"
    source.write_text(original.replace(old, new), encoding="utf-8")
    try:
        for step in filter(None, likely_first(path, tests, noticed_by)):
            failed = failing(tree, step)
            if failed is None:
                return "ERROR: does not compile"
            if failed:
                noticed_by.setdefault(path, []).extend(failed)
                return "noticed by " + ", ".join(failed)
        return "NOT noticed"
    finally:
        source.write_text(original, encoding="utf-8")


def main():
    build = Path(sys.argv[1]).resolve()
    wanted = sys.argv[2] if len(sys.argv) > 2 else ""
    tree = build / "mutants"
    copy_sources(tree)
    configured = run(["cmake", "-S", str(tree), "-B", str(tree / "build"), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                      "-DCMAKE_CXX_FLAGS_DEBUG=-O1", *sys.argv[3:]])
    if configured.returncode != 0:
        print(configured.stdout)
        return 1
    count = noticed = errors = 0
    noticed_by = {}  # names of tests by the file in which they noticed a fault
    for faults, folders in GROUPS:
        tests = tests_of(tree, folders)
        for fault in faults:
            if wanted not in fault[0]:
                continue
            start = time.monotonic()
            outcome = check(tree, fault, tests, noticed_by)
            count += 1
            noticed += outcome.startswith("noticed")
            errors += outcome.startswith("ERROR")
            line = fault[1].strip().splitlines()[0]
            print(f"{fault[0]}: {line} -> {fault[2].strip() or 'nothing'}: {outcome} "
                  f"({time.monotonic() - start:.0f} s)", flush=True)
    print(f"{noticed} of {count} faults noticed, {errors} errors")
    return 0 if count > 0 and errors == 0 and noticed >= SHARE * count else 1


if __name__ == "__main__":
    sys.exit(main())
