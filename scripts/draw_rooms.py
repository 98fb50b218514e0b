#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws docs/rooms.svg: the folders as rooms, and which includes which. Needs graphviz.

With --check it only compares the picture with the include lines, and needs nothing. An include that
another way of includes makes needless to draw is left out.
"""

import pathlib
import re
import subprocess
import sys

from check_sources import FREE, MAP, ROOT, room, tracked

PICTURE = ROOT / "docs" / "rooms.svg"
HEAD = """digraph rooms {
    graph [rankdir=TB, nodesep=0.35, ranksep=0.45, fontname="Helvetica", bgcolor="white"]
    node [shape=box, style="filled,rounded", fillcolor="#f3f5f8", color="#5b6b80",
          fontname="Helvetica", fontsize=12, margin="0.14,0.08"]
    edge [color="#7d8ba0", arrowsize=0.7]
"""
COLOURS = {"frame": "#fde9c8", "family": "#dcebd7", "sim": "#e3dcf2", "cli": "#d8e6f5"}


def measured():
    """Lines of each room, and the rooms that each includes."""
    lines, stands_on = {name: 0 for name in MAP}, {name: set() for name in MAP}
    for name in tracked("*.cpp", "*.h"):
        here = room(name)
        if name.startswith(FREE) or here is None:
            continue
        text = (ROOT / name).read_text(encoding="utf-8")
        lines[here] += len(text.splitlines())
        for included in re.findall(r'^#include "([^"]+)"', text, re.MULTILINE):
            there = room(included)
            if there not in (None, here):
                stands_on[here].add(there)
    return lines, stands_on


def reach(stands_on, start):
    found, waiting = set(), list(stands_on[start])
    while waiting:
        name = waiting.pop()
        if name not in found:
            found.add(name)
            waiting += stands_on[name]
    return found


def needed(stands_on):
    for name, others in stands_on.items():
        for other in sorted(others):
            if not any(other in reach(stands_on, third) for third in others - {other}):
                yield name, other


def drawing():
    lines, stands_on = measured()
    rows = [HEAD]
    for name, count in sorted(lines.items()):
        colour = COLOURS.get(name.split("/")[0], "#f3f5f8")
        rounded = f"{round(count, -2):,}" if count >= 100 else str(count)
        told = "public headers" if name == "frame" else f"{rounded} lines"
        rows.append(f'    "{name}" [label="{name}\\n{told}", fillcolor="{colour}"]\n')
    for name, other in needed(stands_on):
        rows.append(f'    "{name}" -> "{other}"\n')
    return "".join(rows) + "}\n"


def without_lines(text):
    return re.sub(r"\\n[\d,]+ lines", "", text)


def main():
    source = drawing()
    comment = f"<!--\n{source.replace('->', '=>')}-->\n"
    if "--check" in sys.argv[1:]:
        if without_lines(comment) not in without_lines(PICTURE.read_text(encoding="utf-8")):
            sys.exit("docs/rooms.svg shows other includes: run scripts/draw_rooms.py")
        return
    svg = subprocess.run(["dot", "-Tsvg"], input=source, check=True, capture_output=True,
                         text=True).stdout
    PICTURE.write_text(svg.replace("<svg ", comment + "<svg ", 1), encoding="utf-8")


if __name__ == "__main__":
    main()
