# SPDX-License-Identifier: MIT
"""Loading the library, and starting the command line."""

import csv
import os
import statistics

from .bench import ROUNDS, have
from .table import Row, missing

STARTS = 20  # of each program in a round
EMPTY = "an empty C++ program"
LISTED = "binding symbols, also libstdc++'s, is three fifths of it; naming 30 commands to the " \
    "parser a fifth"
BOUND = "its symbols are bound at once, and its pages mapped: code and tables, no start-up work"
MAPPED = "code, tables and symbols, shared with other processes"
OWN = "addresses in tables of names and commands, filled in for this process"


def rows(bench):
    return [*loading(bench), *starting(bench)]


def loading(bench):
    if not (bench.bin / "bench_load").exists():
        return [missing("loading the library", "libbenchmark-dev")]
    files = [bench.lib / "libzelTagAPI.so.7", bench.lib / "libbench_empty_library.so"]
    times = [bench.medians("bench_load", file, "--benchmark_filter=load")["load"]
             for file in files]
    kept = [memory(bench, file) for file in files]
    floor = "dlopen of an empty library"
    return [Row("loading and unloading the library", "ns", *times, floor,
                BOUND),
            *(Row(f"memory of the library, {text}", "KiB", *(each[name] for each in kept), floor,
                  why)
              for name, text, why in (("resident", "resident", MAPPED),
                                      ("own", "the process's own", OWN)))]


def memory(bench, file):
    """Of the first loading in a process: later ones find parts of it in place."""
    report, _ = bench.run(bench.bin / "bench_load", file, "--benchmark_filter=memory",
                          "--benchmark_format=csv")
    row, = csv.DictReader(report[report.index("name,"):].splitlines())
    return {name: float(row[name]) for name in ("resident", "own")}


def processor_time(bench, command):
    """Nanoseconds of the process from its first instruction to its end."""
    nothing = [(os.POSIX_SPAWN_OPEN, stream, "/dev/null", os.O_WRONLY, 0) for stream in (1, 2)]
    process = os.posix_spawn(command[0], command, bench.environment, file_actions=nothing)
    _, _, usage = os.wait4(process, 0)
    return (usage.ru_utime + usage.ru_stime) * 1e9


def start_times(bench, commands):
    """Medians, of rounds in which each has its turn."""
    found = [[] for _ in commands]
    for _ in range(ROUNDS * STARTS):
        for command, times in zip(commands, found):
            times.append(processor_time(bench, command))
    return [statistics.median(times) for times in found]


def starting(bench):
    zeltag = str(bench.bin / "zeltag")
    empty = [str(bench.bin / "bench_empty_program")]
    commands = [[zeltag, "--version"], [zeltag, "list"], empty, ["/bin/true"]]
    version, listing, least, true = start_times(bench, commands)
    found = [Row("zeltag --version", "ns", version, least, EMPTY, LISTED),
             Row("zeltag list, no reader", "ns", listing, least, EMPTY, LISTED),
             Row("an empty C++ program", "ns", least, true, "/bin/true",
                 "libstdc++'s relocations: no C++ program starts sooner")]
    return found + start_instructions(bench, commands)


def start_instructions(bench, commands):
    if not have("valgrind"):
        return [missing("zeltag --version, instructions", "valgrind")]
    version, least = (bench.collected(*command) for command in (commands[0], commands[2]))
    return [Row("zeltag --version, instructions", "instructions", version, least, EMPTY, LISTED)]
