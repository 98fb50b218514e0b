# SPDX-License-Identifier: MIT
"""Template files written and read, and the check of a firmware file."""

from .bench import have
from .table import Row, missing

WAYS = {
    "template-write": ("template file, write", "template-write-by-fwrite",
                       "fwrite of the same bytes to a new file",
                       "reads the settings from the reader, and prints each word"),
    "template-read": ("template file, read", "template-read-by-fgets", "fgets of its lines",
                      "looks each key up by comparing without case, two fifths; reads its number "
                      "by sscanf, another third"),
    "trailer-check": ("trailer of a 10 MB firmware file", "trailer-by-crc32",
                      "reading it by blocks plus zlib's crc32",
                      "also looks for the end of each line, to tell text from trailer"),
}


def rows(bench):
    if not (bench.bin / "bench_time").exists():
        return [missing("template files, trailer", "libbenchmark-dev zlib1g-dev")]
    times = bench.times([name for way, text in WAYS.items() for name in (way, text[1])])
    return [row for way, text in WAYS.items() for row in of_way(bench, times, way, *text)]


def of_way(bench, times, way, name, floor, floor_name, why):
    if way not in times:
        return [missing(name, "zlib1g-dev")]
    timed = Row(name, "ns", times[way], times[floor], floor_name, why)
    if not have("valgrind"):
        return [timed, missing(f"{name}, instructions", "valgrind")]
    return [timed, Row(f"{name}, instructions", "instructions", bench.instructions(way, 5),
                       bench.instructions(floor, 5), floor_name, why)]
