#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the lines that no test reaches with those that tests/unreached.txt names and justifies,
and the totals with the goals: coverage_gaps.py EXPORT.json, as llvm-cov writes it."""

import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
LIST = ROOT / "tests/unreached.txt"
GOALS = {"lines": 98, "branches": 93}


def read_list():
    """The named lines as (file, text), each with its place in the list."""
    named = {}
    for number, line in enumerate(LIST.read_text(encoding="utf-8").splitlines(), 1):
        if line and not line.startswith("#"):
            file, _, text = line.partition(": ")
            named[file, text.strip()] = number
    return named


def unreached(file):
    """Numbers of the lines whose every region was counted as never entered."""
    counts, count, lines = {}, None, set()
    for line, _, times, has_count, starts, is_gap in file["segments"]:
        counts.setdefault(line, []).append((times, has_count and not is_gap, starts))
    last = max(counts, default=0)
    for line in range(1, last + 1):
        begun = [times for times, counted, starts in counts.get(line, []) if counted and starts]
        entered = [count] if count is not None else []
        if (begun or entered) and not any(begun + entered):
            lines.add(line)
        for times, counted, _ in counts.get(line, []):
            count = times if counted else None
    return lines


def words_of(line):
    """A line without its indentation, and without the end that a macro's line has."""
    return line.rstrip("\\").strip()


def block_of(lines, first):
    """The lines of what begins at `first`: up to the brace that closes it; of a condition, its
    statement; else that line alone."""
    text = words_of(lines[first])
    if text.endswith(";"):
        return [first]
    if not text.endswith("{"):
        return [first, first + 1]
    depth = 0
    for at in range(first, len(lines)):
        depth += lines[at].count("{") - (lines[at].count("}") if at > first else 0)
        if depth == 0:
            return range(first, at + 1)
    return [first]


def explained(file, lines, named, used):
    found = set()
    for at, text in enumerate(lines):
        if (file, words_of(text)) in named:
            used.add((file, words_of(text)))
            found.update(place + 1 for place in block_of(lines, at))
    return found


def main():
    export = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))["data"][0]
    named, used, faults = read_list(), set(), 0
    for entry in export["files"]:
        path = pathlib.Path(entry["filename"])
        name = str(path.resolve().relative_to(ROOT))
        lines = path.read_text(encoding="utf-8").splitlines()
        missed = unreached(entry)
        for line in sorted(missed - explained(name, lines, named, used)):
            if lines[line - 1].strip(" {}"):
                print(f"{name}:{line}: no test reaches this: {lines[line - 1].strip()}")
                faults += 1
    for file, text in sorted(set(named) - used):
        print(f"{LIST.name}:{named[file, text]}: {file} has no such line any more")
        faults += 1
    for kind, goal in GOALS.items():
        total = export["totals"][kind]
        print(f"{kind}: {total['covered']} of {total['count']}, {total['percent']:.2f} %, "
              f"goal {goal} %")
        faults += total["percent"] < goal
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
