# SPDX-License-Identifier: MIT
"""Builds the benchmarks in a release folder and measures by them."""

import csv
import functools
import os
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROUNDS = 9  # of each timing, mixed at random; the median counts


def say(text):
    print(f"bench/run: {text}", file=sys.stderr, flush=True)


def have(program):
    return shutil.which(program) is not None


class Failed(Exception):
    """A program of the run failed; the text is what it said."""


def output(command, **how):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                            check=False, **how)
    if result.returncode != 0:
        raise Failed(f"{' '.join(map(str, command))}\n{result.stdout}{result.stderr}")
    return result.stdout, result.stderr


class Bench:
    """A folder with the programs, and a folder for the files that they make."""

    def __init__(self, folder, work):
        self.folder = folder
        self.work = work
        self.bin = folder / "bin"
        self.lib = folder / "lib"
        self.environment = {**os.environ, "LD_LIBRARY_PATH": str(self.lib)}

    def build(self):
        """Figures are those of a release build, so a folder made for something else is left."""
        cache = self.folder / "CMakeCache.txt"
        if cache.exists() and not re.search(r"^CMAKE_BUILD_TYPE:.*=Release$", cache.read_text(),
                                            re.MULTILINE):
            raise Failed(f"{self.folder} holds no release build: name another folder")
        say(f"building in {self.folder}")
        output(["cmake", "-S", ROOT, "-B", self.folder, "-DCMAKE_BUILD_TYPE=Release",
                "-DZEL_BENCHMARKS=ON"])
        output(["cmake", "--build", self.folder, "--target", "bench_programs",
                "-j", os.cpu_count()])
        os.sync()  # pages of a library that aren't on the disk yet count as the process's own

    def has_hidapi(self):
        return re.search(r"^hidapi_FOUND:.*=1$", (self.folder / "CMakeCache.txt").read_text(),
                         re.MULTILINE) is not None

    def run(self, *command):
        return output(command, cwd=self.work, env=self.environment)

    @functools.cache
    def readers(self, number):
        """What puts a program where so many readers are attached."""
        tree = self.work / f"readers-{number}"
        tree.write_text(output([ROOT / "bench" / "devices", number])[0])
        return ["umockdev-run", "-d", tree, "--"]

    def medians(self, program, *arguments, place=()):
        """Processor time in nanoseconds, by the name of a benchmark."""
        report, _ = self.run(*place, self.bin / program, *arguments,
                             f"--benchmark_repetitions={ROUNDS}", "--benchmark_min_time=0.05",
                             "--benchmark_enable_random_interleaving=true",
                             "--benchmark_report_aggregates_only=true", "--benchmark_format=csv")
        lines = report[report.index("name,"):].splitlines()
        return {row["name"].removesuffix("_median"): float(row["cpu_time"])
                for row in csv.DictReader(lines) if row["name"].endswith("_median")}

    def times(self, ways, place=()):
        pattern = "|".join(f"^{way}$" for way in ways)
        return self.medians("bench_time", f"--benchmark_filter={pattern}", place=place)

    def collected(self, *command, place=()):
        """Instructions of a whole program in user space."""
        _, said = self.run(*place, "valgrind", "--tool=callgrind",
                           "--callgrind-out-file=/dev/null", *command)
        return int(re.search(r"Collected : (\d+)", said).group(1))

    def instructions(self, way, times, place=()):
        """Of going the way once. Once through first warms up."""
        few, many = (self.collected(self.bin / "bench_repeat", way, count, place=place)
                     for count in (1, 1 + times))
        return (many - few) / times
