# SPDX-License-Identifier: MIT
"""A zelsim on this side of the virtual machine, with a reader at the end of a line."""

import pathlib
import socket
import subprocess
import tempfile

SCENARIO = """format = 1
[[device]]
name = "till"
kind = "zelTag"
at = "/dev/ttySIM1"
luid = 11
[[event]]
at = 0
tap = "26:3512"
"""


class SimulatedLine:
    """Its socket carries the bytes of the line, at no pace of its own."""

    def __init__(self, program):
        self.folder = tempfile.TemporaryDirectory()
        scenario = pathlib.Path(self.folder.name) / "scenario.toml"
        scenario.write_text(SCENARIO, encoding="utf-8")
        path = f"{self.folder.name}/socket"
        self.process = subprocess.Popen([program, "run", scenario, "--socket", path],
                                        stdout=subprocess.PIPE)
        self.process.stdout.readline()  # it listens
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(path)
        self.socket.sendall(b"line /dev/ttySIM1\n")
        answer = self.socket.recv(3)
        if answer != b"ok\n":
            raise OSError(f"the simulator's line can't be opened: {answer}")

    def __enter__(self):
        return self.socket

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()
