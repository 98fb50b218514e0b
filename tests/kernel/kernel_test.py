#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Boots Debian's kernel in a virtual machine and runs one case of the guest's programs there."""

import argparse
import os
import pathlib
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import threading

import kernel_package
from initramfs import Initramfs
from machine import QEMU, Machine, need
from paced_line import PacedLine

HERE = pathlib.Path(__file__).resolve().parent
EXAMPLES = HERE.parents[1] / "examples"
BUSYBOX = pathlib.Path("/bin/busybox")
SKIPPED = 77
SHORT_STORM = 300  # cycles
HID = ",".join(kernel_package.HID_MODULES)
HID_AND_USB = ",".join(kernel_package.HID_MODULES + kernel_package.USB_MODULES)


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(SKIPPED)


class Files:
    """Where a build's virtual machine lies."""

    def __init__(self, build, cache):
        self.build = build
        self.cache = cache
        self.kernel = cache / "kernel"
        self.initramfs = build / "kernel.cpio"

    def make(self):
        """Fetches the kernel and packs what the guest runs."""
        if shutil.which(QEMU) is None:
            skip(f"no {QEMU} (Debian: qemu-system-x86)")
        if not BUSYBOX.exists():
            skip("no busybox (Debian: busybox-static)")
        try:
            kernel_package.fetch(self.cache)
        except kernel_package.Unavailable as problem:
            skip(f"no kernel: {problem}")
        self.pack()

    def pack(self):
        root = Initramfs()
        root.add_file(HERE / "guest" / "init", "init")
        root.add_file(HERE / "guest" / "command_line.sh", "bin/command_line.sh")
        root.add_file(BUSYBOX, "bin/busybox")
        for module in self.kernel.glob("*.ko"):
            root.add_file(module, f"modules/{module.name}")
        for program in ("zeltag", "zelsim", "zel_kernel_guest", "zel_kernel_storm"):
            root.add_program(self.build / "bin" / program)
        root.add_file(EXAMPLES / "firmware.hex", "share/firmware.hex", executable=False)
        root.write(self.initramfs)

    def machine(self):
        if not self.initramfs.exists():
            skip("no virtual machine; the case `make` tells why")
        return Machine(self.kernel, self.initramfs)


LINE_SCENARIO = """format = 1
[[device]]
name = "till"
kind = "zelTag"
at = "/dev/ttySIM1"
luid = 11
[[event]]
at = 0
tap = "26:3512"
"""


class Simulator:
    """A zelsim on this side, with a reader at the end of a line."""

    def __init__(self, program):
        self.folder = tempfile.TemporaryDirectory()
        scenario = pathlib.Path(self.folder.name) / "scenario.toml"
        scenario.write_text(LINE_SCENARIO, encoding="utf-8")
        self.path = f"{self.folder.name}/socket"
        self.process = subprocess.Popen([program, "run", scenario, "--socket", self.path],
                                        stdout=subprocess.PIPE)
        self.process.stdout.readline()  # it listens

    def line(self):
        end = socket.socket(socket.AF_UNIX)
        end.connect(self.path)
        end.sendall(b"line /dev/ttySIM1\n")
        need(end.recv(3) == b"ok\n")
        return end

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()


def run_serial(files):
    """Time is real here: a line has its own."""
    machine = files.machine()
    with Simulator(files.build / "bin" / "zelsim") as simulator:
        line = PacedLine(simulator.line())
        orders, guest_orders = socket.socketpair()
        machine.add_line("line", line.guest.fileno())
        machine.add_line("orders", guest_orders.fileno())
        line.start()
        threading.Thread(target=line.obey, args=(orders,), daemon=True).start()
        run_tests(machine, "*PacedLine", "")


def run_storm(files):
    run_tests(files.machine(), "PlugStorm", HID, "zel_kernel_storm",
              CYCLES=os.environ.get("CYCLES", SHORT_STORM))


def run_command_line(files):
    machine = files.machine()
    machine.count_instructions()
    need(machine.run(CASE="command_line.sh", MODULES=HID))


def run_suite(files, suite, modules=HID):
    """A suite of the guest's tests, where waits cost nothing."""
    machine = files.machine()
    machine.count_instructions()
    run_tests(machine, suite, modules)


def run_tests(machine, suite, modules, program="zel_kernel_guest", **variables):
    need(machine.run(CASE=program, GTEST_FILTER=f"{suite}.*", GTEST_COLOR="no", MODULES=modules,
                     **variables))
    need(re.search(r"\[=+\] Running [1-9]", "\n".join(machine.lines)))  # at least one test


CASES = {
    "make": Files.make,
    "command_line": run_command_line,
    "uhid": lambda files: run_suite(files, "UhidReader"),
    "unplug": lambda files: run_suite(files, "*UnpluggedReader"),
    "serial": run_serial,
    "storm": run_storm,
    "cost": lambda files: run_suite(files, "ReadCost"),
    "usbhid": lambda files: run_suite(files, "KernelUsbReader", HID_AND_USB),
}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--cache", type=pathlib.Path, required=True)
    parser.add_argument("case", choices=CASES)
    told = parser.parse_args()
    CASES[told.case](Files(told.build.resolve(), told.cache.resolve()))


if __name__ == "__main__":
    main()
