# SPDX-License-Identifier: MIT
"""A card read through the real kernel, in the virtual machine of tests/kernel."""

import os
import pathlib
import re

from .bench import ROOT, Failed, have, output, say
from .table import Row, missing

TEST = ROOT / "tests" / "kernel" / "kernel_test.py"
NAME = "card read through the kernel, instructions"
TARGETS = ("zeltag", "zelsim_program", "zel_kernel_guest", "zel_kernel_storm")
PACKAGES = "qemu-system-x86 busybox-static libgtest-dev libgmock-dev"
FIGURES = re.compile(r"library ([\d.]+) thousand instructions, bare calls ([\d.]+) thousand")


def rows(bench):
    if not TEST.exists():
        return []
    if not have("qemu-system-x86_64") or not pathlib.Path("/bin/busybox").exists():
        return [missing(NAME, PACKAGES)]
    try:
        return [measured(bench.folder)]
    except Failed as failure:
        say(str(failure))
        return [Row(NAME, "", note=f"not measured, see above; it needs {PACKAGES}")]


def run_case(folder, case):
    return output(["python3", TEST, "--build", folder, "--cache", ROOT / "build" / "kernel",
                   case])[0]


def measured(folder):
    say(f"building the virtual machine's programs in {folder}")
    output(["cmake", "-S", ROOT, "-B", folder, "-DZEL_TESTS=ON"])
    output(["cmake", "--build", folder, "-j", os.cpu_count(), "--target", *TARGETS])
    run_case(folder, "make")
    ours, floor = (1000 * float(number)
                   for number in FIGURES.search(run_case(folder, "cost")).groups())
    return Row(NAME, "instructions", ours, floor, "the same four ioctls bare",
               note="of the whole machine, kernel and all")
