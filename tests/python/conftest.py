# SPDX-License-Identifier: MIT
"""The simulator and the clock of the tests."""

import ctypes
import os

import pytest

import zeltag
from zeltag import _clock

ALL_SKIPPED = 77


class Bench:
    """The simulated devices of this process."""

    LINE = "/dev/ttySIM1"

    def __init__(self):
        self._dll = ctypes.CDLL(os.environ["LD_PRELOAD"].split(":")[0])
        self._dll.benchTakeTrace.restype = ctypes.c_char_p
        self._dll.benchNow.restype = ctypes.c_double
        self._dll.benchRed.restype = ctypes.c_bool
        self._dll.benchPresent.argtypes = [ctypes.c_int, ctypes.c_uint64, ctypes.c_uint8]

    def __getattr__(self, name):
        return getattr(self._dll, "bench" + name[0].upper() + name[1:])

    def start_trace(self):
        self._dll.benchTrace()

    def sleep(self, seconds):
        self._dll.benchSleep(ctypes.c_double(seconds))

    def present(self, port, number, bits=26):
        self._dll.benchPresent(port, number, bits)

    def take_away(self, port):
        self.present(port, 0, 0)

    def line(self, card, ascii=False):
        self._dll.benchLine(self.LINE.encode(), ascii, ctypes.c_uint64(card))

    def stripe(self):
        self._dll.benchStripe(self.LINE.encode())

    def swipe(self, first="", second=""):
        self._dll.benchSwipe(first.encode(), second.encode())

    def trace(self):
        """The exchanges since the last call or since `start_trace`."""
        return self._dll.benchTakeTrace().decode()


@pytest.fixture
def bench(monkeypatch):
    """An empty bench, with its time as that of the package."""
    bench = Bench()
    bench.clear()
    monkeypatch.setattr(_clock, "sleep", bench.sleep)
    monkeypatch.setattr(_clock, "now", bench.now)
    yield bench
    bench.clear()


@pytest.fixture
def port(bench):
    """A reader on the bus."""
    return bench.plug(1)


@pytest.fixture
def connection(bench, port):
    """A connection to it."""
    with zeltag.connect() as connection:
        yield connection


@pytest.fixture
def reader(connection):
    """The reader of that connection."""
    return connection.readers[0]


def pytest_sessionfinish(session):
    """A run whose tests were all skipped counts as skipped."""
    reporter = session.config.pluginmanager.getplugin("terminalreporter")
    told = {name for name in ("passed", "failed", "error", "skipped") if reporter.stats.get(name)}
    if told == {"skipped"}:
        session.exitstatus = ALL_SKIPPED
