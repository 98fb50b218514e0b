#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares what the shared library exports with the checked-in list: names, kinds, data sizes."""

import subprocess
import sys


def listed(path):
    symbols = {}
    for line in open(path, encoding="utf-8"):
        if line.startswith("T "):
            symbols[line.split()[1]] = ("function", None)
        elif line.startswith("D "):
            _, name, size = line.split()
            symbols[name] = ("data", int(size))
            symbols["zelTagAPI_" + name] = ("data", int(size))
    return symbols


def exported(path):
    symbols = {}
    text = subprocess.run(["readelf", "-W", "--dyn-syms", path], check=True, capture_output=True,
                          text=True).stdout
    for line in text.splitlines():
        field = line.split()
        if len(field) < 8 or not field[0][:-1].isdigit() or field[6] == "UND":
            continue
        name = field[7].split("@")[0]
        if field[3] == "FUNC":
            symbols[name] = ("function", None)
        elif field[6] != "ABS":
            symbols[name] = ("data", int(field[2], 0))
    return symbols


def needed(path):
    text = subprocess.run(["readelf", "-W", "-d", path], check=True, capture_output=True,
                          text=True).stdout
    return {line.split("[")[1].split("]")[0] for line in text.splitlines() if "(NEEDED)" in line}


def archive_globals(path):
    text = subprocess.run(["nm", "--defined-only", "-g", path], check=True, capture_output=True,
                          text=True).stdout
    names = {line.split()[2] for line in text.splitlines() if len(line.split()) == 3}
    # Instantiations of the standard library's templates stay shared with the program's own.
    return {name for name in names if not name.startswith((
        "_ZNSt", "_ZSt", "_ZZNSt", "_ZNKSt", "_ZN9__gnu_cxx", "_ZNK9__gnu_cxx"))}


def main():
    list_path, library, archive = sys.argv[1:]
    expected, actual = listed(list_path), exported(library)
    faults = [f"{name}: listed as {expected[name]}, exported as {actual.get(name)}"
              for name in expected if actual.get(name) != expected[name]]
    faults += [f"{name}: exported but not listed" for name in actual if name not in expected]
    faults += [f"the library needs {name}"
               for name in needed(library) - {"libstdc++.so.6", "libgcc_s.so.1", "libc.so.6",
                                              "libm.so.6", "ld-linux-x86-64.so.2"}]
    strangers = {name for name in archive_globals(archive)
                 if name not in expected and name not in ("DW.ref.__gxx_personality_v0",)}
    faults += [f"{name}: a global name of the archive but not listed" for name in strangers]
    for fault in sorted(faults):
        print(fault)
    if faults:
        sys.exit(f"{len(faults)} differences; an intended one belongs in frame/exports.txt")
    print(f"{len(expected)} exported names as listed")


if __name__ == "__main__":
    main()
