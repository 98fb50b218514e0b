#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs tests with the system's pytest, on the simulator. Exit 77: pytest is missing, or all of them
were skipped.

run_tests.py LIBRARY BENCH TEST..."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def main():
    pytest = shutil.which("pytest-3") or shutil.which("pytest")
    if pytest is None:
        print("pytest not found: python3-pytest of Debian")
        sys.exit(77)
    library, bench, *tests = [os.path.abspath(name) if os.path.exists(name) else name
                              for name in sys.argv[1:]]
    environment = dict(os.environ, ZELTAG_LIBRARY=library, LD_PRELOAD=bench,
                       PYTHONPATH=str(ROOT / "bindings" / "python"), PYTHONDONTWRITEBYTECODE="1")
    with tempfile.TemporaryDirectory() as folder:
        result = subprocess.run([pytest, "-q", "-rs", "-p", "no:cacheprovider",
                                 "--basetemp", os.path.join(folder, "tests"), *tests],
                                env=environment)
    sys.exit(result.returncode)


if __name__ == "__main__":
    main()
