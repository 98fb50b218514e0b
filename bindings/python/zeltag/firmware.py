# SPDX-License-Identifier: MIT
"""Firmware on its way into a reader, and outputs that act at once."""

from __future__ import annotations

import contextlib
import ctypes
import os
import signal
import threading
from typing import Dict, Iterator, Optional

from . import _memory
from ._generated.settings import RECORDS
from .device import Device
from .errors import FirmwareRefused, ZelTagError
from .files import FirmwareFile, Path

_TAKEN = (signal.SIGINT, signal.SIGABRT, signal.SIGTERM)


def check(device: Device, path: Path) -> FirmwareFile:
    """Raises where the reader wouldn't take the file."""
    file = FirmwareFile.read(path)
    with device._active() as library:
        text: Optional[bytes] = library.zelTagAPI_checkFirmware(os.fsencode(file.path))
    if text is not None:
        raise FirmwareRefused(file.path, device.name, text.decode("ascii", "replace"))
    return file


def load(device: Device, path: Path, recover: bool) -> None:
    """Checks the file, and the rules unless it is a recovery, and sends it."""
    file = FirmwareFile.read(path) if recover else check(device, path)
    with _quiet_signals(), device._active() as library:
        library.variable("DevDat")[device.index].lLastErr = 0
        if library.Bootload(os.fsencode(file.path)) != 1:
            raise device._failure(library, f"loading {file.path} into")


@contextlib.contextmanager
def _quiet_signals() -> Iterator[None]:
    """The library tells progress by SIGUSR1, whose default ends the process, and leaves its own
    handlers behind: Python's come back here."""
    if threading.current_thread() is not threading.main_thread():
        raise ZelTagError("firmware is loaded from the main thread alone: it works with signals")
    handlers = {number: signal.getsignal(number) for number in (*_TAKEN, signal.SIGUSR1)}
    signal.signal(signal.SIGUSR1, signal.SIG_IGN)
    try:
        yield
    finally:
        for number, handler in handlers.items():
            signal.signal(number, handler or signal.SIG_DFL)


def act_at_once(device: Device, wanted: Dict[str, Optional[bool]], record: str) -> None:
    """Sends the outputs of a record; the library's memory of them goes back to what it was."""
    states = {name: int(state) for name, state in wanted.items() if state is not None}
    if not states:
        return
    name, kind = RECORDS[record]
    with device._active() as library, _memory.restored(library, device.index, always=True):
        struct = kind()
        if getattr(library, "Get" + name)(ctypes.byref(struct)) != 1:
            raise device._failure(library, f"reading {record} of")
        for word, state in dict(states, bVolatile=1).items():
            setattr(struct, word, state)
        if getattr(library, "Set" + name)(ctypes.byref(struct)) != 1:
            raise device._failure(library, "switching the outputs of")
