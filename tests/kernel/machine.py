# SPDX-License-Identifier: MIT
"""A virtual machine that boots Debian's kernel, runs a program and tells whether it passed."""

import subprocess

import kernel_package

QEMU = "qemu-system-x86_64"
PASSED = 33  # the guest writes 16 to the debug port, and the exit code is twice that and one
MEMORY = "256"  # MiB
# Without what an emulated processor spends most of its boot on.
KERNEL_OPTIONS = "console=ttyS0 quiet oops=panic panic=-1 acpi=off nolapic mitigations=off"


class Machine:
    """One boot. Its console is this program's output, as it comes."""

    def __init__(self, kernel, initramfs):
        self.kernel = kernel
        self.initramfs = initramfs
        self.lines = []
        self.devices = []
        self.inherited = []

    def count_instructions(self):
        """Time is what the processor did: an instruction a nanosecond, and a pause is over at once.

        Waits of seconds cost nothing then, and each run is like the one before."""
        self.devices += ["-icount", "shift=0,sleep=off", "-rtc", "clock=vm"]

    def add_line(self, name, descriptor):
        """A serial line whose other end is that of a socket; the first one is /dev/ttyS1."""
        self.devices += ["-chardev", f"socket,id={name},fd={descriptor}",
                         "-serial", f"chardev:{name}"]
        self.inherited.append(descriptor)

    def command(self, words):
        return [QEMU, "-accel", "tcg", "-M", "pc", "-m", MEMORY, "-nodefaults", "-no-user-config",
                "-display", "none", "-no-reboot", "-device", "isa-debug-exit,iobase=0xf4",
                "-serial", "stdio", *self.devices,
                "-kernel", str(self.kernel / kernel_package.IMAGE),
                "-initrd", str(self.initramfs),
                "-append", f"{KERNEL_OPTIONS} {words}"]

    def run(self, program, modules, **variables):
        """Whether the program passed, with these modules loaded and these variables set."""
        variables |= {"CASE": program, "MODULES": ",".join(modules)}
        words = " ".join(f"{name}={value}" for name, value in variables.items())
        with subprocess.Popen(self.command(words), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, pass_fds=self.inherited) as process:
            for line in process.stdout:
                text = line.decode(errors="replace").rstrip()
                print(text, flush=True)
                self.lines.append(text)
        return process.returncode == PASSED
