# SPDX-License-Identifier: MIT
"""The whole build and the whole test suite, from nothing; takes many minutes."""

import os
import resource
import time

from .bench import ROOT, output, say
from .table import Row

NAMES = ("whole release build", "whole debug build with tests", "whole test suite")
FLOOR = "its processor time, shared evenly by the cores"


def rows(bench, is_wanted):
    if not is_wanted:
        return [Row(name, "", note="bench/run --all measures it") for name in NAMES]
    release = bench.work / "release"
    debug = bench.work / "debug"
    return [clean_build(NAMES[0], release, "-DCMAKE_BUILD_TYPE=Release"),
            clean_build(NAMES[1], debug, "-DCMAKE_BUILD_TYPE=Debug", "-DZEL_TESTS=ON",
                        "-DZEL_PRECOMPILE=ON", "-DCMAKE_CXX_COMPILER=clang++",
                        "-DCMAKE_C_COMPILER=clang"),
            timed(NAMES[2], ["ctest", "--test-dir", debug, "-j", os.cpu_count()],
                  "some tests wait for a process or a line of their own")]


def clean_build(name, folder, *settings):
    """Without a compiler cache, which would make it no build."""
    output(["cmake", "-G", "Ninja", "-S", ROOT, "-B", folder, "-DCMAKE_CXX_COMPILER_LAUNCHER=",
            "-DCMAKE_C_COMPILER_LAUNCHER=", *settings])
    return timed(name, ["cmake", "--build", folder, "-j", os.cpu_count()],
                 "few files are left to compile at the end")


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def timed(name, command, why):
    say(name)
    before, start = processor_seconds(), time.monotonic()
    output(command)
    took = time.monotonic() - start
    floor = (processor_seconds() - before) / os.cpu_count()
    return Row(name, "ns", took * 1e9, floor * 1e9, FLOOR, why)
