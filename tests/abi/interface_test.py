#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the types behind the exported names with those kept in tests/abi/zelTagAPI.abi."""

import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
KEPT = ROOT / "tests" / "abi" / "zelTagAPI.abi"


def differences(kept, library):
    """What abidiff prints and its exit code: 0 only when nothing is lost, changed or added."""
    with tempfile.TemporaryDirectory() as folder:
        built = pathlib.Path(folder) / "built.abi"
        subprocess.run([sys.executable, ROOT / "scripts" / "bless_abi", library, built], check=True)
        result = subprocess.run(["abidiff", "--harmless", "--no-show-locs", kept, built],
                                capture_output=True, text=True)
    return result.returncode, result.stdout + result.stderr


def main():
    missing = [tool for tool in ("abidw", "abidiff") if shutil.which(tool) is None]
    if missing:
        print(f"{' and '.join(missing)} not found: install abigail-tools")
        sys.exit(77)
    if not KEPT.exists():
        sys.exit(f"{KEPT} isn't there: scripts/bless_abi writes it")
    code, text = differences(KEPT, sys.argv[1])
    if code != 0:
        print(text)
        sys.exit("the binary interface differs from tests/abi/zelTagAPI.abi. If that is intended, "
                 "run scripts/bless_abi and commit the file; a lost or changed name also needs a "
                 "new major version.")
    print("the binary interface is the one that was kept")


if __name__ == "__main__":
    main()
