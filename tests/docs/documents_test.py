#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the console blocks of README.md and compares their output; compares its C program."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
README = (ROOT / "README.md").read_text(encoding="utf-8")


def blocks(language):
    return re.findall(rf"^```{language}\n(.*?)^```$", README, re.MULTILINE | re.DOTALL)


def commands(block):
    """Pairs of a command and the output that follows it."""
    for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
        command, _, output = part.partition("\n")
        yield command, output


def run(command, folder, build):
    environment = dict(os.environ, PATH=f"{build}/bin:{os.environ['PATH']}")
    result = subprocess.run(command.replace("build/release", str(build)), shell=True, cwd=folder,
                            env=environment, capture_output=True, text=True)
    return result.stdout + result.stderr


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    faults = []
    program = re.sub(r"^/\*.*\*/\n", "",
                     (ROOT / "examples" / "read_card.c").read_text(encoding="utf-8"),
                     flags=re.MULTILINE)
    if blocks("c") != [program]:
        faults.append("the C program differs from examples/read_card.c")
    ran = 0
    with tempfile.TemporaryDirectory() as folder:
        for name in ("frame", "examples"):
            shutil.copytree(ROOT / name, pathlib.Path(folder) / name)
        for command, expected in (pair for block in blocks("console") for pair in commands(block)):
            actual = run(command, folder, build)
            ran += 1
            if actual != expected:
                faults.append(f"$ {command}\nexpected:\n{expected}printed:\n{actual}")
    print(f"{ran} commands of the README run")
    for fault in faults:
        print(fault)
    for script in re.findall(r"^(scripts/\w+)$", README, re.MULTILINE):
        if not os.access(ROOT / script, os.X_OK):
            sys.exit(f"{script} can't be run")
    sys.exit(1 if faults or ran == 0 else 0)


if __name__ == "__main__":
    main()
