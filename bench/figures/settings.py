# SPDX-License-Identifier: MIT
"""Connects, and settings read and written, over readers that answer at once."""

from .bench import have
from .table import Row, missing

LOOP = "the same reports by a bare loop over the same backend"
DECODED = "the loop keeps the reports; the library takes them apart, checks each word and repairs"
LISTED = "four fifths of it parse the filter list's lines, once a connect"
CONNECTS = {1: LISTED, 16: f"{DECODED}; parses the filter list", 127: DECODED}
WAYS = {
    **{f"connect-{n}": (f"connect, readers: {n}", why) for n, why in CONNECTS.items()},
    "settings-read": ("ReadCfg", DECODED),
    "settings-write-all": ("WriteCfg, all changed",
                           "packs each word into its block, and tests each first"),
    "settings-write-one": ("WriteCfg, one block changed",
                           "packs the block; finds out whether the reader is a fast one"),
}


def rows(bench):
    return [*exchanges(bench), *instructions(bench), *times(bench)]


def floor_of(way):
    return f"{way}-by-loop"


def exchanges(bench):
    said, _ = bench.run(bench.bin / "bench_count_exchanges")
    counts = {way: int(sends) + int(gets)
              for way, sends, gets in map(str.split, said.splitlines())}
    return [Row(f"{name}, feature reports", "count", counts[way], counts[floor_of(way)],
                "what its blocks, pages and texts take") for way, (name, _) in WAYS.items()]


def instructions(bench):
    if not have("valgrind"):
        return [missing("connect, ReadCfg, WriteCfg, instructions", "valgrind")]
    return [Row(f"{name}, instructions", "instructions", bench.instructions(way, 20),
                bench.instructions(floor_of(way), 20), LOOP, why)
            for way, (name, why) in WAYS.items()]


def times(bench):
    if not (bench.bin / "bench_time").exists():
        return [missing("connect, time of the library's own", "libbenchmark-dev")]
    ways = [way for way in WAYS if way.startswith("connect")]
    found = bench.times(ways + [floor_of(way) for way in ways])
    return [Row(f"{WAYS[way][0]}, time of the library's own", "ns", found[way],
                found[floor_of(way)], LOOP, WAYS[way][1]) for way in ways]
