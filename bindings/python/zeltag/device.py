# SPDX-License-Identifier: MIT
"""What all devices have in common."""

from __future__ import annotations

import ctypes
from typing import Any, ContextManager, Optional

from . import _process
from ._library import Library
from ._words import Quantity
from .errors import DeviceError

NAME_SIZE = 512  # what GetDevName() may write
LONGEST_PING = 65535  # ms; an absent device is told by more


def text_of(pointer: Any) -> str:
    """A text of the library, with a question mark for what can't be printed."""
    data = ctypes.string_at(pointer) if pointer else b""
    return "".join(chr(byte) if 0x20 <= byte < 0x7F else "?" for byte in data)


class Device:
    """A device of the open connection. It is stale once the connection is closed."""

    #: The product's name, such as "zelTag".
    product = "unknown"

    def __init__(self, session: _process.Session, index: int, place: str) -> None:
        self._session = session
        #: Its place in the library's table, from 0.
        self.index = index
        #: Where it is when it isn't on USB: a path or an address.
        self.place = place
        with self._active() as library:
            name = ctypes.create_string_buffer(NAME_SIZE)
            library.GetDevName(name)
        #: The device's name: on USB its path.
        self.name = name.value.decode("utf-8", "replace")

    def _active(self) -> ContextManager[Library]:
        """Holds the process's lock with this device as the active one."""
        return _process.operation(self._session, self.index)

    def _failure(self, library: Library, what: str, hint: Optional[str] = None) -> DeviceError:
        return DeviceError(what, self.name, library.GetLastLibErr(), hint)

    @property
    def is_open(self) -> bool:
        """Whether the device's connection is still open."""
        return self._session.is_open

    @property
    def luid(self) -> int:
        """The logical unit ID, 0 to 65535. Setting it changes the library's memory: it goes to the
        device with `settings.save()`. No device traffic."""
        with self._active() as library:
            return int(library.GetLUID()) & 0xFFFF

    @luid.setter
    def luid(self, value: int) -> None:
        if not 0 <= value <= 0xFFFF:
            raise ValueError(f"a LUID can't be {value}: it is 0 to 65535")
        with self._active() as library:
            library.SetLUID(value)

    @property
    def device_id(self) -> int:
        """The ID that the device tells of its kind. No device traffic."""
        with self._active() as library:
            return int(library.GetDID()) & 0xFFFF

    @property
    def part_number(self) -> str:
        """The part number, "" for none. No device traffic."""
        with self._active() as library:
            return text_of(library.getPartNumberString())

    @property
    def firmware(self) -> str:
        """The firmware's version, "" where the device tells none. No device traffic."""
        with self._active() as library:
            return text_of(library.GetFullFWVersion())

    def ping(self) -> Optional[Quantity]:
        """Asks whether the device is there: a query.

        :return: the milliseconds it took to answer; None without an answer
        """
        with self._active() as library:
            time = library.Ping()
        return Quantity(time, "ms") if time <= LONGEST_PING else None

    def __repr__(self) -> str:
        place = f" at {self.place}" if self.place else ""
        return f"<{type(self).__name__} {self.index}: {self.name}{place}>"
