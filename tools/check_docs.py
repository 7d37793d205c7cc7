#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the documents against the sources: check_docs.py [ROOT]

Each text that the program logs as an error must stand in README.md's table of lines, and each link of the Markdown
files must lead to a file or folder, and to a heading if it names one. Prints each breach; exit
status 1 if any.
"""
import re
import sys
from pathlib import Path

STATEMENT = re.compile(r"\(LogError,(.*?);", re.DOTALL)
TEXT = re.compile(r'"((?:[^"\\]|\\.)*)"')
FORMAT = re.compile(r"%[a-z]")
CALL = re.compile(r"\b(\w+)\(")
LINK = re.compile(r"\[[^\]]*\]\(([^)#\s]*)(?:#([^)\s]*))?\)")
HEADING = re.compile(r"^#{1,6} +(.+?) *$", re.MULTILINE)
CODE_BLOCK = re.compile(r"^```.*?^```", re.DOTALL | re.MULTILINE)


def texts_of(statement, code):
    """The texts that a statement logs, or that the functions of the same file give which it calls."""
    literals = TEXT.findall(statement)
    if not literals:
        for name in CALL.findall(statement):
            for body in re.findall(rf"\b{name}\([^;{{}}]*\)\s*{{(.*?)^}}", code, re.DOTALL | re.MULTILINE):
                literals += TEXT.findall(body)
    # The first literal of tr and translate with a context is the context.
    return literals[1:] if "translate(" in statement else literals


def errors_logged(root):
    """File and text of each error line, "" if unknown; a text that is put together counts by its pieces."""
    for source in sorted((root / "src").rglob("*.cpp")):
        code = source.read_text(encoding="utf-8")
        for statement in STATEMENT.findall(code):
            for text in texts_of(statement, code) or [""]:
                for piece in FORMAT.split(text):
                    if piece or not text:
                        yield source.name, piece.strip()


def documents(root):
    """Every Markdown file of the project; what is built, fetched or hidden is none."""
    for document in sorted(root.rglob("*.md")):
        folders = document.relative_to(root).parts[:-1]
        if not any(folder == "build" or folder.startswith(".") for folder in folders):
            yield document


def anchors(document):
    """The names under which the headings of a document can be linked to, as code hosts make them."""
    text = CODE_BLOCK.sub("", document.read_text(encoding="utf-8"))
    for heading in HEADING.findall(text):
        yield re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def broken_links(root):
    for document in documents(root):
        for target, anchor in LINK.findall(document.read_text(encoding="utf-8")):
            if "://" in target or target.startswith("mailto:"):
                continue
            place = document.parent / target if target else document
            name = document.relative_to(root)
            if not place.exists():
                yield f"{name} links to {target}, which is not there"
            elif anchor and anchor not in anchors(place):
                yield f"{name} links to the heading {anchor} of {place.name}, which is not there"


def breaches(root):
    readme = (root / "README.md").read_text(encoding="utf-8")
    rows = "\n".join(line for line in readme.splitlines() if line.startswith("|"))
    told = 0
    for name, text in errors_logged(root):
        told += 1
        if not text:
            yield f"{name} logs an error whose text stands neither there nor in a function of that file"
        elif text not in rows:
            yield f'README.md has no row for "{text}" of {name}'
    if told == 0:
        yield "no error lines found in the sources: the pattern is out of date"
    yield from broken_links(root)


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    found = list(breaches(root))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
