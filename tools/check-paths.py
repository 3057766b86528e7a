#!/usr/bin/env python3
"""Checks that every file and folder that a page names is there.

Usage: check-paths.py PAGE...    from the root of the repository

Looks at what stands in `backticks` and has a slash or the suffix of a source, and at the targets of
links. A name in backticks may leave out the folders in front, as an include does: `memory/Pool.hpp`.
What the pages invent to show where a new file goes is named below; of such a file only the folder
must be there. Prints one line for each name that is not there, and fails if there is any.
"""

import os
import re
import sys

INVENTED = re.compile(r"(^|/)(NAME|Timer|TimerBinding|TimerTest|CountVerb|CountTest|SortStep)(/|\.|$)")
SUFFIXES = (".hpp", ".cpp", ".def", ".awk", ".py", ".md", ".txt", ".cmake", ".map")
PATH = re.compile(r"[\w.][\w./-]*")
# What is made by a build, and what is not a file of ours though it has a slash.
ELSEWHERE = re.compile(r"build/|\.\./|\./dev$")


def known_names():
    """Every file and folder of the repository, and every tail of their paths."""
    names = set()
    for folder, folders, files in os.walk("."):
        folders[:] = [name for name in folders if name != ".git" and (folder, name) != (".", "build")]
        parts = folder.split("/")[1:]
        for name in folders + files:
            path = [*parts, name]
            names.update("/".join(path[start:]) for start in range(len(path)))
    return names


def named_paths(line):
    """What a line names in backticks and looks like a path."""
    for quoted in re.findall(r"`([^`]+)`", line):
        name = quoted.rstrip("/").removeprefix("./")
        if not PATH.fullmatch(name) or ELSEWHERE.match(quoted):
            continue
        if "/" in quoted or name.endswith(SUFFIXES) and not name.startswith("."):
            yield name


def stands(name, names):
    """Whether a name is there; of an invented one, the folders that are not invented."""
    while INVENTED.search(name):
        name = os.path.dirname(name)
    return name == "" or name in names


def faults(page, names):
    with open(page, encoding="utf-8") as file:
        lines = file.read().splitlines()
    for number, line in enumerate(lines, 1):
        for name in named_paths(line):
            if not stands(name, names):
                yield f"{page}:{number}: there is no {name}"
        for target in re.findall(r"\]\(([^)#]+)[^)]*\)", line):
            if "://" not in target and not os.path.exists(
                os.path.join(os.path.dirname(page), target)
            ):
                yield f"{page}:{number}: the link to {target} leads nowhere"


def main(pages):
    names = known_names()
    found = [fault for page in pages for fault in faults(page, names)]
    for fault in found:
        print(fault)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
