#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tells how much of the parsers and decoders the fuzz corpora reach, by llvm-cov's JSON on stdin.

The files are those of fuzz/parsers.txt. Fails when their sum is below LEAST.
"""

import json
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
LEAST = {"lines": 95, "branches": 90}


def summaries():
    """Each file of the list with its summary; a file that no program holds has none."""
    files = json.load(sys.stdin)["data"][0]["files"]
    for name in (ROOT / "fuzz/parsers.txt").read_text().split():
        found = [file["summary"] for file in files if file["filename"].endswith("/" + name)]
        if not found:
            sys.exit(f"{name}: no program of the corpora holds it")
        yield name, found[0]


def percent(counts):
    return 100 * counts["covered"] / counts["count"] if counts["count"] else 100


def total(all_counts):
    counts = list(all_counts)
    return {key: sum(one[key] for one in counts) for key in ("count", "covered")}


def main():
    table = list(summaries())
    for name, summary in table:
        print(f"{name:36}" + "".join(f"{percent(summary[kind]):8.1f}" for kind in LEAST))
    reached = {kind: percent(total(summary[kind] for _, summary in table)) for kind in LEAST}
    print(f"The corpora reach {reached['lines']:.1f} % of the lines "
          f"and {reached['branches']:.1f} % of the branches.")
    sys.exit(any(reached[kind] < least for kind, least in LEAST.items()))


main()
