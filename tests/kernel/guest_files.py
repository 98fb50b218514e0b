# SPDX-License-Identifier: MIT
"""What a build's virtual machine is made of."""

import pathlib
import shutil
import sys

import kernel_package
from initramfs import Initramfs
from machine import QEMU, Machine

HERE = pathlib.Path(__file__).resolve().parent
FIRMWARE = HERE.parents[1] / "examples" / "firmware.hex"
BUSYBOX = pathlib.Path("/bin/busybox")
PROGRAMS = ("zeltag", "zelsim", "zel_kernel_guest", "zel_kernel_storm")
SKIPPED = 77


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(SKIPPED)


class GuestFiles:
    """The kernel, which all builds share, and a root file system with a build's programs."""

    def __init__(self, build, cache):
        self.programs = build / "bin"
        self.cache = cache
        self.initramfs = build / "kernel.cpio"

    def make(self):
        self.initramfs.unlink(missing_ok=True)  # of programs that were
        if shutil.which(QEMU) is None:
            skip(f"no {QEMU} (Debian: qemu-system-x86)")
        if not BUSYBOX.exists():
            skip("no busybox (Debian: busybox-static)")
        try:
            self.pack(kernel_package.fetch(self.cache))
        except kernel_package.Unavailable as problem:
            skip(f"no kernel: {problem}")

    def pack(self, kernel):
        root = Initramfs()
        root.add_file(HERE / "guest" / "init", "init")
        root.add_file(HERE / "guest" / "command_line.sh", "bin/command_line.sh")
        root.add_file(BUSYBOX, "bin/busybox")
        root.add_file(FIRMWARE, "share/firmware.hex", executable=False)
        for module in kernel.glob("*.ko"):
            root.add_file(module, f"modules/{module.name}", executable=False)
        for program in PROGRAMS:
            root.add_program(self.programs / program)
        root.write(self.initramfs)

    def machine(self):
        if not self.initramfs.exists():
            skip("no virtual machine: the case make tells why")
        return Machine(kernel_package.folder(self.cache), self.initramfs)
