# SPDX-License-Identifier: MIT
"""What a proximity reader tells of itself, and its raw reports."""

from __future__ import annotations

import ctypes
from typing import Optional, Tuple

from .device import Device, text_of

SERIAL_NUMBER_SIZE = 32
UNITS, SLOTS = 3, 5


class ReaderServices(Device):
    """The part of a proximity reader that has nothing to do with cards or settings."""

    product = "zelTag"

    @property
    def firmware_file(self) -> str:
        """The name of the firmware, "" where the reader tells none. No device traffic."""
        with self._active() as library:
            return text_of(library.GetFWFilename())

    @property
    def version_words(self) -> Tuple[int, ...]:
        """The version words of a reader of several configurations. No device traffic."""
        with self._active() as library:
            words = [library.GetFirmwareVersion(unit, slot)
                     for unit in range(UNITS) for slot in range(SLOTS)]
        return tuple(word for word in words if word)

    @property
    def serial_number(self) -> Optional[bytes]:
        """The electronic serial number, up to its zeros; None without one. Five queries."""
        with self._active() as library:
            pointer = library.getESN()
            data = ctypes.string_at(pointer, SERIAL_NUMBER_SIZE) if pointer else b""
        return data.rstrip(b"\0") or None

    @property
    def beeper_volume(self) -> Optional[int]:
        """The beeper's volume as the reader counts it; None where it tells none. One query."""
        with self._active() as library:
            volume = int(library.GetBeeperVolume())
        return None if volume < 0 else volume

    @beeper_volume.setter
    def beeper_volume(self, value: int) -> None:
        if not 0 <= value <= 0xFF:
            raise ValueError(f"a volume can't be {value}: it is 0 to 255")
        with self._active() as library:
            if library.SetBeeperVolume(value) != 1:
                raise self._failure(library, "setting the volume of")

    def raw(self, report: bytes) -> bytes:
        """Sends a report of eight bytes and fetches the reply, which is zeros when that fails.

        :param report: up to eight bytes; zeros fill them up
        """
        if len(report) > 8:
            raise ValueError(f"a report has 8 bytes, not {len(report)}")
        with self._active() as library:
            text: Optional[bytes] = library.SetRawPayload(*report.ljust(8, b"\0"))
        return bytes.fromhex((text or b"").decode().replace(".", " "))
