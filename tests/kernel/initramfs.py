# SPDX-License-Identifier: MIT
"""The first root file system of a virtual machine, in the kernel's own form of cpio."""

import pathlib
import re
import stat
import subprocess
import tempfile

LOADER = "/lib64/ld-linux-x86-64.so.2"


class Initramfs:
    """Collects files; the bytes are what the kernel unpacks."""

    def __init__(self):
        self.bytes = bytearray()
        self.names = set()

    def add(self, name, content, mode):
        self.add_folders(name)
        if name not in self.names:
            self.append(name, content, mode)

    def add_folders(self, name):
        for folder in reversed(pathlib.PurePosixPath(name).parents[:-1]):
            if str(folder) not in self.names:
                self.append(str(folder), b"", stat.S_IFDIR | 0o755)

    def append(self, name, content, mode):
        """One entry: thirteen numbers of eight digits, the name, the content, each padded to 4."""
        self.names.add(name)
        fields = [len(self.names), mode, 0, 0, 1, 0, len(content), 0, 0, 0, 0, len(name) + 1, 0]
        self.bytes += b"070701" + b"".join(b"%08X" % field for field in fields)
        self.bytes += name.encode() + b"\0"
        self.pad()
        self.bytes += content
        self.pad()

    def pad(self):
        self.bytes += bytes(-len(self.bytes) % 4)

    def add_file(self, path, name, executable=True):
        self.add(name, pathlib.Path(path).read_bytes(),
                 stat.S_IFREG | (0o755 if executable else 0o644))

    def add_program(self, path):
        """A program with the shared libraries that it needs, all without what debuggers read."""
        self.add_stripped(path, f"bin/{pathlib.Path(path).name}")
        needed = subprocess.run(["ldd", path], check=True, capture_output=True, text=True).stdout
        for soname, library in re.findall(r"(\S+) => (/\S+)", needed):
            self.add_stripped(library, f"lib/{soname}")
        self.add_stripped(LOADER, LOADER[1:])

    def add_stripped(self, path, name):
        with tempfile.NamedTemporaryFile() as stripped:
            subprocess.run(["strip", "-o", stripped.name, path], check=True)
            self.add_file(stripped.name, name)

    def write(self, path):
        self.append("TRAILER!!!", b"", 0)
        pathlib.Path(path).write_bytes(self.bytes)
