#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the API reference in a folder; fails on a warning and on a public name left out of it."""

import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def make(folder):
    settings = (ROOT / "docs" / "Doxyfile").read_text(encoding="utf-8")
    settings += f"OUTPUT_DIRECTORY={folder}\nGENERATE_TAGFILE={folder}/names.xml\n"
    result = subprocess.run(["doxygen", "-"], cwd=ROOT, input=settings, capture_output=True,
                            text=True)
    if result.returncode != 0 or result.stderr:
        sys.exit(f"doxygen, exit {result.returncode}\n{result.stdout}{result.stderr}")


def declared(header):
    """The names of the functions and variables that a public header declares."""
    text = header.read_text(encoding="utf-8")
    return set(re.findall(r"^ZELTAGAPI_EXPORT [^(;]*?(\w+)\(", text, re.MULTILINE)
               + re.findall(r"^ZELTAGAPI_DATA\(.*, (\w+)\);", text, re.MULTILINE))


def main():
    if shutil.which("doxygen") is None:
        print("doxygen not found")
        sys.exit(77)
    folder = pathlib.Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    make(folder)
    index = (folder / "names.xml").read_text(encoding="utf-8")
    told = set(re.findall(r"<name>(.*?)</name>", index))
    # A header without a comment for itself (@file) is left out without a warning.
    names = set().union(*map(declared, (ROOT / "frame").glob("zelTag*.h")))
    missing = names - told
    if missing or not names:
        sys.exit(f"not in the reference: {', '.join(sorted(missing))}")
    print(f"{len(names)} functions and variables in {folder}/html/index.html")


if __name__ == "__main__":
    main()
