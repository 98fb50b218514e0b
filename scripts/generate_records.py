#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the public headers that follow from the rows of frame/records.def: the structs and the
calls on single words. --check only compares."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
ROWS = ROOT / "frame" / "records.def"
RECORDS = ROOT / "frame" / "zelTagRecords.h"
ACCESSORS = ROOT / "frame" / "zelTagAccessors.h"
CALLS = re.compile(r"^ZEL_RECORD\((\w+), \w+, (\w+)\)$", re.MULTILINE)
ROW = re.compile(r'^ZEL_WORD\((\w+), (\d+), (\w+), (?:same|"\w+"), \w+, "(.*)", .*\)$')

RECORDS_HEAD = """\
/* SPDX-License-Identifier: MIT */
/** @file
 * The ten records of a proximity reader's settings, eight signed 16-bit words each.
 * Made from frame/records.def by scripts/generate_records.py; change the rows there. */
#ifndef ZELTAGAPI_RECORDS_H
#define ZELTAGAPI_RECORDS_H

#include <stdint.h>

/* clang-format off */

"""

RECORDS_TAIL = """\
/** Separator and field definitions of a reader that can split a card's data. */
typedef struct uSFD {
    uint8_t bytes[128]; /**< header, definitions, free data */
} uSFD;

/** Two 16-byte key values. */
typedef struct sHashKeyData {
    uint8_t key[2][16]; /**< sent with the field data */
} sHashKeyData;

#endif
"""

ACCESSORS_HEAD = """\
/* SPDX-License-Identifier: MIT */
/** @file
 * The calls on single words of the ten records, for callers that can pass numbers only.
 * Made from frame/records.def by scripts/generate_records.py; change the rows there.
 *
 * A get reads the record with its whole-record call and returns the word; a set reads it, changes
 * the word and sets it again: the whole record is checked and marked for WriteCfg(), in memory,
 * with no device traffic but that of a record whose bVolatile is set. No lock.
 *
 * A get returns the word, sign-extended, or the record call's result when that isn't 1; a word that
 * holds 0 or 1 can't be told from it: GetLastLibErr() can. A set returns 1; 0 with the reason in
 * the error word. Without an active device both return the unsupported value; they test for no
 * product, and where another product's record carries fewer words the others read as the library
 * holds them.
 */
#ifndef ZELTAGAPI_ACCESSORS_H
#define ZELTAGAPI_ACCESSORS_H

#include "frame/zelTagExport.h"

/* clang-format off */

ZELTAGAPI_BEGIN

"""

ACCESSORS_TAIL = """\
ZELTAGAPI_END

#endif
"""

# What a word's set does otherwise than store its value.
DEPARTURES = {
    ("sTimeParms", "ExFeatures01"): "The low seven bits come out set whatever the value.",
    ("sTimeParms", "iTPCfgFlg3"): "Has no effect: the third set of flags decides this word.",
    ("sLEDCtrl", "bVolatile"): "A value other than 0 sends the record to the reader at once.",
    ("sBprRlyCtrl", "bVolatile"): "A value other than 0 sends the record to the reader at once.",
}


def read_rows():
    records = {}
    for line in ROWS.read_text(encoding="utf-8").splitlines():
        if not line or line.startswith(("//", "ZEL_RECORD(")):
            continue
        match = ROW.match(line)
        if not match:
            sys.exit(f"{ROWS}: not a row: {line}")
        record, index, name, description = match.groups()
        words = records.setdefault("s" + record, [])
        if int(index) != len(words):
            sys.exit(f"{ROWS}: {record}.{name} has index {index}, expected {len(words)}")
        words.append((name, description))
    for record, words in records.items():
        if len(words) != 8:
            sys.exit(f"{ROWS}: {record} has {len(words)} words, expected 8")
    return records


# What a word means whose row has no description: the exported tables have none either.
MEANINGS = {
    "ExFeatures01": "features that the reader reports",
    "iLeadChr1": "the second lead character",
    "iLeadChr2": "the third lead character",
}


def member(name, description):
    text = description.strip() or MEANINGS.get(name, "carried, no effect")
    line = f"    int16_t {name}; /**< {text} */\n"
    return line if len(line) <= 101 else f"    /** {text} */\n    int16_t {name};\n"


def records_header(records):
    calls = {f"s{record}": name for record, name in CALLS.findall(ROWS.read_text("utf-8"))}
    structs = [f"/** The record of Get{calls[record]}() and Set{calls[record]}(). */\n"
               + f"typedef struct {record} {{\n" + "".join(member(*word) for word in words)
               + f"}} {record};\n\n" for record, words in records.items()]
    return RECORDS_HEAD + "".join(structs) + RECORDS_TAIL


def accessor(record, name, description):
    call = f"{record[1:]}_{name}"
    meaning = f" of {record}: {description.strip()}" if description.strip() else f" of {record}"
    effect = DEPARTURES.get((record, name), "Sets that word.")
    lines = [f"/** @return the word {name}{meaning} */",
             f"ZELTAGAPI_EXPORT int get{call}(void);",
             f"/** {effect}", " * @param value the word", " * @return 1 for success */",
             f"ZELTAGAPI_EXPORT int set{call}(short value);"]
    if len(lines[0]) > 100:
        lines[0:1] = [f"/** @return the word {name} of {record}:", f" * {description.strip()} */"]
    return "\n".join(lines) + "\n"


def accessors_header(records):
    groups = ["/* " + record + " */\n\n"
              + "".join(accessor(record, name, text) for name, text in words) + "\n"
              for record, words in records.items()]
    return ACCESSORS_HEAD + "".join(groups) + ACCESSORS_TAIL


def main():
    records = read_rows()
    for path, text in ((RECORDS, records_header(records)), (ACCESSORS, accessors_header(records))):
        if sys.argv[1:] != ["--check"]:
            path.write_text(text, encoding="utf-8")
        elif path.read_text(encoding="utf-8") != text:
            sys.exit(f"{path} differs from its rows: run scripts/generate_records.py")


if __name__ == "__main__":
    main()
