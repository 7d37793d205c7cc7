#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the documents against the sources: check_docs.py [ROOT]

Each text that the program logs as an error must stand in README.md's table of lines, and each link between the
documents, and to pictures, must lead to a file. Prints each breach; exit status 1 if any.
"""
import re
import sys
from pathlib import Path

STATEMENT = re.compile(r"\(LogError,(.*?);", re.DOTALL)
TEXT = re.compile(r'"((?:[^"\\]|\\.)*)"')
LINK = re.compile(r"\[[^\]]*\]\(([^)#\s]+)(?:#[^)]*)?\)")


def errors_logged(root):
    """File and text of each error line; a text that is put together counts by its pieces."""
    for source in sorted((root / "src").rglob("*.cpp")):
        for statement in STATEMENT.findall(source.read_text(encoding="utf-8")):
            literals = TEXT.findall(statement)
            # The first literal of tr and translate with a context is the context.
            for text in literals[1:] if "translate(" in statement else literals:
                yield source.name, text.strip()


def breaches(root):
    readme = (root / "README.md").read_text(encoding="utf-8")
    rows = "\n".join(line for line in readme.splitlines() if line.startswith("|"))
    told = 0
    for name, text in errors_logged(root):
        told += 1
        if text not in rows:
            yield f'README.md has no row for "{text}" of {name}'
    if told == 0:
        yield "no error lines found in the sources: the pattern is out of date"
    for document in [*root.glob("*.md"), *(root / "docs").glob("*.md")]:
        for target in LINK.findall(document.read_text(encoding="utf-8")):
            if "://" not in target and not (document.parent / target).exists():
                yield f"{document.name} links to {target}, which is not there"


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    found = list(breaches(root))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
