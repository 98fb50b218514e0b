#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the sources against the map: includes go downward, heads and public calls are told."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The library's state as data; the other public headers are those that anyone may include.
FLOOR_HEADER = "frame/zelTagState.h"
LEAVES = {f"frame/{header.name}" for header in (ROOT / "frame").glob("zelTag*.h")} - {FLOOR_HEADER}
FLOOR = {"frame/state.h", "frame/lock.h", "frame/exported.h", FLOOR_HEADER, "frame/records.def"}

# What a folder may include beside itself and the leaves: folders, or single headers.
MAP = {
    "base": set(),
    "transport": FLOOR | {"base/"},
    "family/tag": FLOOR | {"base/", "transport/"},
    "family/band": FLOOR | {"base/", "transport/"},
    "family/echo": FLOOR | {"base/", "transport/"},
    "cfgfile": FLOOR | {"base/", "family/tag/"},
    "firmware": FLOOR | {"base/", "transport/", "family/tag/"},
    "frame": {"base/", "transport/", "family/tag/", "family/band/", "family/echo/", "cfgfile/",
              "firmware/"},
    "sim": {"transport/usb_backend.h", "transport/line_opener.h"},
    "cli": {"sim/demo.h", "frame/records.def", FLOOR_HEADER},
}
FREE = ("tests/", "bench/", "examples/", "fuzz/")
LONGEST_LINE = 100


def tracked(*patterns):
    text = subprocess.run(["git", "ls-files", *patterns], cwd=ROOT, check=True,
                          capture_output=True, text=True).stdout
    return [name for name in text.splitlines() if (ROOT / name).exists()]


def room(name):
    return next((folder for folder in MAP if name.startswith(folder + "/")), None)


def include_faults(name, text):
    folder = room(name)
    if name.startswith(FREE):
        return
    if folder is None:
        yield f"{name}: no place on the map"
        return
    for included in re.findall(r'^#include "([^"]+)"', text, re.MULTILINE):
        own = included.startswith(folder + "/")
        allowed = any(included == place or (place.endswith("/") and included.startswith(place))
                      for place in MAP[folder])
        if not (own or allowed or included in LEAVES):
            yield f"{name}: includes {included}, which the map doesn't allow"


def text_faults(name, text):
    if "SPDX-License-Identifier: MIT" not in text[:200]:
        yield f"{name}: no SPDX line at its head"
    for number, line in enumerate(text.splitlines(), 1):
        if len(line) > LONGEST_LINE and not name.endswith(".def"):
            yield f"{name}:{number}: {len(line)} columns"


def documentation_faults(name):
    previous = ""
    for number, line in enumerate((ROOT / name).read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("ZELTAGAPI_EXPORT") and not previous.endswith("*/"):
            yield f"{name}:{number}: a public call without documentation"
        previous = line.rstrip()


def main():
    faults = []
    for name in tracked("*.cpp", "*.h", "*.hpp", "*.c", "*.py", "*.def"):
        text = (ROOT / name).read_text(encoding="utf-8")
        faults += text_faults(name, text)
        if name.endswith((".cpp", ".h", ".hpp", ".c")):
            faults += include_faults(name, text)
    for name in sorted(LEAVES):
        faults += documentation_faults(name)
    for fault in faults:
        print(fault)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
