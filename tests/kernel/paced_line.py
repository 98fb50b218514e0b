# SPDX-License-Identifier: MIT
"""The far end of a serial line of the virtual machine, at the pace of a real one.

The machine's UART sends a byte as soon as the host takes it, which no line does: what a program
discards too early would be out already. Here the host takes a byte when a line would, and the
buffer between the two holds no more than a few.
"""

import socket
import threading
import time

BITS = 10  # a byte's, with start and stop
QUIET = 0.3  # seconds in which nothing comes: the sender has ended
FRAMES = 200


def frame(number):
    """Frame number so and so of those that the guest sends to be counted."""
    return bytes((0xF0, number >> 8, number & 0xFF, *range(0x80, 0x95)))


class PacedLine:
    """A line, with a simulated reader at its end, or one who counts."""

    def __init__(self, reader):
        self.reader = reader
        self.guest, self.far = socket.socketpair()
        self.guest.setsockopt(socket.SOL_SOCKET, socket.SO_SNDBUF, 1)  # the least that there is
        self.set_speed(9600)
        self.counted = None
        self.began = self.ended = time.monotonic()

    def set_speed(self, baud):
        self.byte_time = BITS / baud

    def start(self):
        for source, target in ((self.far, self.take), (self.reader, self.far.sendall)):
            threading.Thread(target=self.carry, args=(source, target), daemon=True).start()

    def carry(self, source, target):
        """Carries bytes, and never more of them than the line has had time for."""
        due = 0.0
        while byte := source.recv(1):
            due = max(due, time.monotonic() - self.byte_time) + self.byte_time
            time.sleep(max(due - time.monotonic(), 0))
            target(byte)

    def take(self, byte):
        if self.counted is None:
            self.reader.sendall(byte)
            return
        if not self.counted:
            self.began = time.monotonic()
        self.counted += byte
        self.ended = time.monotonic()

    def count(self):
        self.ended = time.monotonic()
        self.counted = bytearray()

    def result(self):
        """Bytes, whole frames, and the milliseconds from the first byte to the last."""
        while time.monotonic() - self.ended < QUIET:
            time.sleep(QUIET / 10)
        counted, self.counted = bytes(self.counted), None
        whole = sum(frame(number) in counted for number in range(FRAMES))
        return f"{len(counted)} {whole} {int((self.ended - self.began) * 1000)}"

    def obey(self, orders):
        """Does what the guest asks for on another line, which answers each order by a line."""
        for order in orders.makefile("r"):
            word, *number = order.split()
            answer = "done"
            if word == "speed":
                self.set_speed(int(number[0]))
            elif word == "count":
                self.count()
            else:
                answer = self.result()
            orders.sendall(f"{answer}\n".encode())
