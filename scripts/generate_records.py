#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes frame/zelTagRecords.h from the rows of frame/records.def; --check only compares."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
ROWS = ROOT / "frame" / "records.def"
HEADER = ROOT / "frame" / "zelTagRecords.h"
ROW = re.compile(r'^ZEL_WORD\((\w+), (\d+), (\w+), (?:same|"\w+"), (\w+), "(.*)", .*\)$')

HEAD = """\
/* SPDX-License-Identifier: MIT */
/* The ten records of a proximity reader's settings, eight signed 16-bit words each.
 * Made from frame/records.def by scripts/generate_records.py; change the rows there. */
#ifndef ZELTAGAPI_RECORDS_H
#define ZELTAGAPI_RECORDS_H

#include <stdint.h>

/* clang-format off */

"""

TAIL = """\
/** Separator and field definitions of a reader that can split a card's data. */
typedef struct uSFD {
    uint8_t bytes[128];
} uSFD;

/** Two 16-byte key values. */
typedef struct sHashKeyData {
    uint8_t key[2][16];
} sHashKeyData;

#endif
"""


def read_rows():
    records = {}
    for line in ROWS.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith(("//", "ZEL_RECORD(")):
            continue
        match = ROW.match(line)
        if not match:
            sys.exit(f"{ROWS}: not a row: {line}")
        record, index, name, kind, description = match.groups()
        words = records.setdefault("s" + record, [])
        if int(index) != len(words):
            sys.exit(f"{ROWS}: {record}.{name} has index {index}, expected {len(words)}")
        words.append((name, kind, description))
    for record, words in records.items():
        if len(words) != 8:
            sys.exit(f"{ROWS}: {record} has {len(words)} words, expected 8")
    return records


def member(name, kind, description):
    text = description.strip() or ("carried, no effect" if kind == "pad" else "")
    line = f"    int16_t {name};" + (f" /**< {text} */\n" if text else "\n")
    return line if len(line) <= 101 else f"    /** {text} */\n    int16_t {name};\n"


def header(records):
    structs = [f"typedef struct {record} {{\n" + "".join(member(*word) for word in words)
               + f"}} {record};\n\n" for record, words in records.items()]
    return HEAD + "".join(structs) + TAIL


def main():
    text = header(read_rows())
    if sys.argv[1:] == ["--check"]:
        if HEADER.read_text(encoding="utf-8") != text:
            sys.exit(f"{HEADER} differs from its rows: run scripts/generate_records.py")
    else:
        HEADER.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
