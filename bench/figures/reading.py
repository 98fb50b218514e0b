# SPDX-License-Identifier: MIT
"""A card read and a scan, over a stand-in for the kernel."""

from .bench import have
from .table import Row, missing

READS = 1000
LOOP = "hand-written loop of the same four ioctls"
ABOVE = "lock and checks of the record, then two copies and checks a report on its way down"
KEPT = "the kernel's part of a read isn't in it"


def rows(bench):
    if not have("umockdev-run"):
        return [missing("card read, scan", "umockdev")]
    return [*read_times(bench), *read_instructions(bench), *calls(bench),
            *scan(bench, 1, 20), *scan(bench, 64, 2)]


def read_times(bench):
    if not (bench.bin / "bench_time").exists():
        return [missing("card read, time", "libbenchmark-dev")]
    ways = ["read-by-loop", "read-by-library", "read-over-nothing", "read-by-hidapi"]
    times = bench.times(ways, bench.readers(1))
    return [Row("card read", "ns", times["read-by-library"], times["read-by-loop"], LOOP,
                ABOVE, KEPT),
            *beside_hidapi("card read", "ns", times["read-by-library"],
                           times.get("read-by-hidapi"))]


def beside_hidapi(name, unit, ours, theirs):
    if theirs is None:
        return [missing(f"{name}, beside hidapi", "libhidapi-dev pkg-config")]
    return [Row(f"{name}, beside hidapi", unit, ours, theirs, "hidapi, the same read", ABOVE)]


def read_instructions(bench):
    if not have("valgrind"):
        return [missing("card read, instructions", "valgrind")]
    name = "card read, instructions"
    ways = ["read-by-library", "read-by-loop"] + ["read-by-hidapi"] * bench.has_hidapi()
    counts = [bench.instructions(way, READS, bench.readers(1)) for way in ways]
    above = counts[0] - counts[1]
    goal = f"{above:,.0f} above the ioctls; goal: 3,000 at most, {met(above <= 3000)}"
    return [Row(name, "instructions", counts[0], counts[1], LOOP, ABOVE, goal),
            *beside_hidapi(name, "instructions", counts[0], (counts + [None])[2])]


def met(is_met):
    return "met" if is_met else "NOT MET"


def calls(bench):
    """Each counter has first shown that it sees a deliberate call."""
    said, _ = bench.run(*bench.readers(1), bench.bin / "bench_count_calls")
    counts = {name: int(number) for name, number in map(str.split, said.splitlines())}
    least = {"sends": ("feature reports sent", 2), "gets": ("feature reports fetched", 2),
             "other_ioctls": ("other ioctls", 0), "allocations": ("allocations", 0),
             "system_calls": ("other system calls", 0)}
    return [Row(f"1,000 card reads, {text}", "count", counts.get(name), each * READS,
                "two commands a read" if each else "none",
                note="" if name in counts else "the kernel here doesn't allow to count")
            for name, (text, each) in least.items()]


def scan(bench, readers, times):
    name = f"scan, readers: {readers}, instructions"
    if not have("valgrind"):
        return [missing(name, "valgrind")]
    place = bench.readers(readers)
    listing = bench.instructions("list-by-library", times, place)
    opening = bench.instructions("scan-by-library", times, place)
    listed = Row(name, "instructions", opening, listing, "the same listing without opening",
                 "opens each reader, asks the node who it is and closes it")
    if not bench.has_hidapi():
        return [listed, missing(f"{name}, beside hidapi", "libhidapi-dev pkg-config")]
    theirs = bench.instructions("scan-by-hidapi", times, place)
    goal = f"hidapi takes {theirs / opening:.0f} times as many; goal: 20 at least, " + \
        met(20 * opening <= theirs)
    return [listed, Row(f"{name}, beside hidapi", "instructions", opening, theirs,
                        "hid_enumerate()", note=goal)]
