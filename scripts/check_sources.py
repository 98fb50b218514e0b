#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds the sources against the map: includes go downward, heads and public calls are told."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The library's state as data; the other public headers are those that anyone may include.
STATE_HEADER = "frame/zelTagState.h"
LEAVES = {f"frame/{header.name}" for header in (ROOT / "frame").glob("zelTag*.h")} - {STATE_HEADER}
TABLES = {"frame/records.def", "frame/band_settings.def", "frame/products.def"}
STATE = {"frame/state/", STATE_HEADER} | TABLES

# The rooms from the ground up, and what each may include beside itself and the leaves: a whole
# room, which ends with a slash, or a single header.
MAP = {
    "frame": set(),
    "base": set(),
    "frame/state": STATE,
    "transport": STATE | {"base/"},
    "family/tag": STATE | {"base/", "transport/"},
    "family/band": STATE | {"base/", "transport/"},
    "family/echo": STATE | {"base/", "transport/"},
    "cfgfile": STATE | {"base/", "family/tag/"},
    "firmware": STATE | {"base/", "transport/", "family/tag/"},
    "frame/calls": STATE | {"base/", "transport/", "family/tag/", "family/band/", "family/echo/",
                            "cfgfile/", "firmware/"},
    "sim/wire": {"transport/usb_backend.h", "transport/line_opener.h"},
    "sim/tag": {"sim/wire/", "transport/usb_identity.h"},
    "sim/band": {"sim/wire/", "transport/usb_identity.h"},
    "sim/echo": {"sim/wire/", "transport/usb_identity.h"},
    "sim/demo": {"sim/wire/", "sim/tag/", "sim/band/", "sim/echo/"},
    "sim/bridge": {"sim/wire/"},
    "sim/link": set(),
    "sim/scene": TABLES | {"sim/wire/", "sim/tag/", "sim/band/", "sim/echo/", "sim/demo/",
                           "sim/bridge/"},
    "sim/server": {"sim/wire/", "sim/link/", "sim/scene/"},
    "sim/preload": {"sim/demo/", "sim/link/", "transport/usb_backend.h",
                    "transport/line_opener.h"},
    "sim/uhid": {"sim/wire/", "sim/link/", "sim/server/", "sim/scene/trouble.h"},
    "sim/program": {"sim/bridge/", "sim/link/", "sim/scene/", "sim/server/", "sim/uhid/"},
    "cli/command": set(),
    "cli/network": {"cli/command/"},
    "cli/device": {"cli/command/", "cli/network/", "frame/products.def", "sim/demo/bench.h"},
    "cli/file": {"cli/command/"},
    "cli/card": {"cli/command/", "cli/device/"},
    "cli/config": TABLES | {"cli/command/", "cli/device/", "cli/file/", STATE_HEADER},
    "cli/firmware": {"cli/command/", "cli/device/", "cli/file/"},
    "cli/doctor": {"cli/command/", "cli/network/", "cli/device/"},
    "cli/trace": {"cli/command/", "sim/demo/names.h"},
    "cli/main": {"cli/command/", "cli/trace/"},
    "cli/reference": {"cli/command/", "cli/config/", "cli/main/", "sim/program/arguments.h"},
}
FREE = ("tests/", "bench/", "examples/", "fuzz/")
LONGEST_LINE = 100


def tracked(*patterns):
    text = subprocess.run(["git", "ls-files", *patterns], cwd=ROOT, check=True,
                          capture_output=True, text=True).stdout
    return [name for name in text.splitlines() if (ROOT / name).exists()]


def room(name):
    folder = str(pathlib.PurePosixPath(name).parent)
    return folder if folder in MAP else None


def is_allowed(folder, included):
    parent = str(pathlib.PurePosixPath(included).parent)
    return (parent == folder or included in LEAVES or included in MAP[folder]
            or parent + "/" in MAP[folder])


def include_faults(name, text):
    folder = room(name)
    if name.startswith(FREE):
        return
    if folder is None:
        yield f"{name}: no place on the map"
        return
    for included in re.findall(r'^#include "([^"]+)"', text, re.MULTILINE):
        if not is_allowed(folder, included):
            yield f"{name}: includes {included}, which the map doesn't allow"


def map_faults():
    """Each room stands on those before it in the map."""
    below = set()
    for folder, places in MAP.items():
        for place in places:
            ground = place[:-1] if place.endswith("/") else str(pathlib.PurePosixPath(place).parent)
            if ground != folder and ground not in below:
                yield f"the map: {folder} stands on {place}, which isn't below it"
        below.add(folder)


def circle_faults(names):
    """Files that include each other, over any number of others."""
    includes = {name: set(re.findall(r'^#include "([^"]+)"', (ROOT / name).read_text("utf-8"),
                                     re.MULTILINE)) & set(names) for name in names}
    while includes:
        leaves = {name for name, others in includes.items() if not others & includes.keys()}
        if not leaves:
            yield f"a circle of includes among {', '.join(sorted(includes))}"
            return
        includes = {name: others for name, others in includes.items() if name not in leaves}


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
    faults = [*map_faults(), *circle_faults(tracked("*.cpp", "*.h"))]
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
