# SPDX-License-Identifier: MIT
"""The way of settings to the device and to files."""

from __future__ import annotations

import contextlib
from dataclasses import dataclass
from typing import Iterator, List, Optional, Tuple, TypeVar, Union

from . import _memory, templates
from ._words import Holder, Words
from .device import Device
from .files import Path

Self = TypeVar("Self", bound="Saved")
Value = Union[int, bytes, Tuple[int, ...]]


@dataclass(frozen=True)
class Change:
    """A setting that a file changes."""

    #: Its configuration, from 0.
    configuration: int
    #: The setting's name.
    name: str
    #: Its value before.
    old: Value
    #: Its value in the file.
    new: Value
    #: Its value in the device afterwards: another one than `new` where the device counts in steps
    #: or the library refused the record. None when nothing was written.
    kept: Optional[Value]


class Saved(Words):
    """Settings that go to a device together."""

    _device: Device

    def __init__(self, device: Device, holder: Holder) -> None:
        super().__init__(holder)
        object.__setattr__(self, "_device", device)

    def save(self) -> None:
        """Sends what was changed to the device and reads everything back, so that the attributes
        show what the device kept: a time is rounded to the device's steps, and by the ASCII
        protocol no time is written at all. A proximity reader needs 20 ms or 1.2 s for each
        configuration, a magnetic stripe reader two times 37 commands and 1.3 s, a sensor 250 ms a
        block."""
        with self._device._active() as library:
            if library.WriteCfg() != 1:
                raise self._device._failure(library, "writing the settings of")
            self.read_back()

    def read_back(self) -> None:
        """Reads all settings from the device; changes that weren't saved are lost."""
        with self._device._active() as library:
            if library.ReadCfg() != 1:
                raise self._device._failure(library, "reading the settings of")

    @contextlib.contextmanager
    def change(self: Self) -> Iterator[Self]:
        """Saves once what is set in the `with` block. All or nothing: when the block raises, the
        library's memory goes back to what it was and nothing is sent. Other threads wait."""
        with self._device._active() as library:
            with _memory.restored(library, self._device.index, always=False):
                yield self
            self.save()

    def export_file(self, path: Path, sealed: bool = False) -> None:
        """Reads the settings of all configurations from the device and writes them to a text file,
        to be edited or loaded into other devices. A file that exists is replaced when all went
        well.

        :param path: the file
        :param sealed: with a checksum, which `load_file` can demand; proximity readers only
        """
        templates.export(self._device, path, sealed)

    def load_file(self, path: Path, sealed: bool = False, dry_run: bool = False
                  ) -> Tuple[Change, ...]:
        """Loads such a file into the device: sends what differs and reads everything back.

        :param path: the file
        :param sealed: raises FileError unless the file's checksum holds
        :param dry_run: tells what would change, and changes nothing
        :return: what the file changes
        """
        held = self._all_values()
        with self._device._active() as library:
            with _memory.restored(library, self._device.index, always=True):
                templates.try_file(self._device, library, path, sealed)
                told = self._all_values()
        if dry_run or told == held:
            return _changes(held, told, None)
        templates.load(self._device, path, sealed)
        self.read_back()
        return _changes(held, told, self._all_values())

    def _all_values(self) -> List[dict[str, Value]]:
        return [self._values()]

    def _values(self) -> dict[str, Value]:
        return self.as_dict()


def _changes(held: List[dict[str, Value]], told: List[dict[str, Value]],
             kept: Optional[List[dict[str, Value]]]) -> Tuple[Change, ...]:
    return tuple(Change(n, name, before[name], after[name], kept[n][name] if kept else None)
                 for n, (before, after) in enumerate(zip(held, told))
                 for name in before if before[name] != after[name])
