#!/usr/bin/env python3
"""Prints the proportions of the repository: how large its folders, files and functions are, how much
of the public headers is comment, and which arrows run between the rooms of each piece.

Usage: proportions.py < INCLUDES    from the root of the repository, with the includes as
                                    `awk -v list=1 -f check-includes.awk` prints them

Sources are as clang-format leaves them, and functions are found by that: one begins where a statement
outside any function has parameters and opens a block, and ends at the brace below its first column.
Its lines are all of these. Lambdas are part of the function around them.
"""

import os
import re
import sys
from collections import Counter

from draw_rooms import PIECES, read, without_circles

CONTROL = re.compile(r"\s*(namespace|class|struct|enum|union|extern|using|typedef|static_assert)\b")
# A block behind parameters, with what may stand between: qualifiers, a result, initialisers.
OPENS = re.compile(
    r"\)(\s*(const|noexcept|override|final|mutable|&&?|try))*"
    r"\s*(->[^{;]*|requires[^{;]*|:[^:].*)?\{"
)
LAMBDA = re.compile(r"\[[^\]]*\]\s*(\([^()]*\))?\s*(mutable|noexcept|->[^{]*)?\s*\{")
TEXT = re.compile(r'"(\\.|[^"\\])*"')


def sources(*suffixes):
    for folder, folders, files in os.walk("."):
        folders[:] = sorted(
            name for name in folders if name[0] != "." and (folder, name) != (".", "build")
        )
        for name in sorted(files):
            if name.endswith(suffixes):
                yield os.path.join(folder, name)[2:]


def lines_of(path):
    with open(path, encoding="utf-8", errors="replace") as file:
        return file.read().splitlines()


def statements(lines):
    """What stands outside functions: the number of its first line, its text, that of its last."""
    first, text = None, ""
    for number, line in enumerate(lines):
        code = TEXT.sub('""', line).split("//")[0].rstrip()
        if not code or code.lstrip().startswith("#"):
            continue
        if first is None:
            first = number
        text += " " + code
        if code[-1] in ";{}" or code.endswith(":") and "(" not in text:
            yield first, text, number
            first, text = None, ""


def functions(lines):
    """The number of lines of each function."""
    end = -1
    for first, text, last in statements(lines):
        if first <= end or CONTROL.match(text) and "(" not in text.split("{")[0]:
            continue
        if not OPENS.search(text) or " = " in text.split("(")[0] or text.lstrip().startswith("}"):
            continue
        if LAMBDA.search(text) and not LAMBDA.sub("", text).count("{"):
            continue
        end = last
        if text.endswith("{"):
            brace = re.match(r"\s*", lines[first]).group() + "}"
            end = next((n for n in range(last + 1, len(lines)) if lines[n].startswith(brace)), last)
        yield end - first + 1


def share(part, whole):
    return f"{100 * part / whole:.0f} %" if whole else "-"


def at(values, place):
    values = sorted(values)
    return values[min(len(values) - 1, int(len(values) * place))]


def comment_lines(paths):
    comments = rows = 0
    for path in paths:
        for line in filter(None, map(str.strip, lines_of(path))):
            rows += 1
            comments += line.startswith("//")
    return comments, rows


def print_files():
    paths = list(sources(".hpp", ".cpp", ".def"))
    for title, chosen in (
        ("all", paths),
        ("product", [p for p in paths if "/tests/" not in "/" + p and not p.startswith("bench/")]),
    ):
        lengths = {path: len(lines_of(path)) for path in chosen}
        spans = [span for path in chosen for span in functions(lines_of(path))]
        largest = max(lengths, key=lengths.get)
        print(f"| {title}: files | {len(chosen)} |")
        print(f"| {title}: median file | {at(lengths.values(), 0.5)} lines |")
        print(f"| {title}: largest file | {lengths[largest]} lines, {largest} |")
        print(f"| {title}: files under 25 lines | {sum(n < 25 for n in lengths.values())} |")
        print(
            f"| {title}: functions, median, 90th percentile, largest "
            f"| {at(spans, 0.5)}, {at(spans, 0.9)}, {max(spans)} of {len(spans)} |"
        )
    public = [path for path in paths if "/include/" in path]
    print(f"| comment share of public headers | {share(*comment_lines(public))} |")
    folders = Counter(os.path.dirname(path) for path in paths)
    print("\n| folder | files |\n|---|---|")
    for folder, count in sorted(folders.items(), key=lambda item: (-item[1], item[0])):
        print(f"| {folder} | {count} |")


def print_arrows(includes):
    rooms, inside, _ = read(includes)
    print("\n| piece | rooms | arrows between them | of these, close a circle |\n|---|---|---|---|")
    for folder in PIECES:
        circles = set(inside[folder]) - without_circles(inside[folder])
        names = ", ".join(f"{a or PIECES[folder][0]} to {b}" for a, b in sorted(circles)) or "none"
        print(f"| {folder} | {len(rooms[folder])} | {len(inside[folder])} | {names} |")


if __name__ == "__main__":
    print("| what | how much |\n|---|---|")
    print_files()
    print_arrows(sys.stdin)
