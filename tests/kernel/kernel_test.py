#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Boots Debian's kernel in a virtual machine and runs one case of the guest's programs there."""

import argparse
import pathlib
import re
import socket
import sys
import threading

from guest_files import GuestFiles
from kernel_package import HID_MODULES, USB_MODULES
from paced_line import PacedLine
from simulated_line import SimulatedLine

CYCLES = 300


def need(passed):
    if not passed:
        sys.exit(1)


def run_tests(machine, suite, program="zel_kernel_guest", modules=HID_MODULES, **variables):
    need(machine.run(program, modules, GTEST_FILTER=f"*{suite}.*", GTEST_COLOR="no", **variables))
    need(re.search(r"\[=+\] Running [1-9]", "\n".join(machine.lines)))  # at least one test


def run_timeless(files, suite, **options):
    """A suite whose waits cost nothing, and whose runs are all alike."""
    machine = files.machine()
    machine.count_instructions()
    run_tests(machine, suite, **options)


def run_command_line(files, _):
    machine = files.machine()
    machine.count_instructions()
    need(machine.run("command_line.sh", HID_MODULES))


def run_serial(files, _):
    """Time is real here: a line has its own."""
    machine = files.machine()
    with SimulatedLine(files.programs / "zelsim") as reader:
        line = PacedLine(reader)
        orders, guest_orders = socket.socketpair()
        machine.add_line("line", line.guest.fileno())
        machine.add_line("orders", guest_orders.fileno())
        line.start()
        threading.Thread(target=line.obey, args=(orders,), daemon=True).start()
        run_tests(machine, "PacedLine")


CASES = {
    "make": lambda files, _: files.make(),
    "uhid": lambda files, _: run_timeless(files, "UhidReader"),
    "unplug": lambda files, _: run_timeless(files, "UnpluggedReader"),
    "usbhid": lambda files, _: run_timeless(files, "KernelUsbReader",
                                           modules=HID_MODULES + USB_MODULES),
    "cost": lambda files, _: run_timeless(files, "ReadCost"),
    "command_line": run_command_line,
    "serial": run_serial,
    "storm": lambda files, cycles: run_tests(files.machine(), "PlugStorm",
                                             program="zel_kernel_storm", CYCLES=cycles),
}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--cache", type=pathlib.Path, required=True)
    parser.add_argument("--cycles", type=int, default=CYCLES, help="of the storm")
    parser.add_argument("case", choices=CASES)
    told = parser.parse_args()
    CASES[told.case](GuestFiles(told.build.resolve(), told.cache.resolve()), told.cycles)


if __name__ == "__main__":
    main()
