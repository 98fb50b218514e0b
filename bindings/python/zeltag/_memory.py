# SPDX-License-Identifier: MIT
"""Where settings are kept: the library's records by their calls, and its memory of a device."""

from __future__ import annotations

import contextlib
import ctypes
from typing import Any, Callable, ContextManager, Iterator, Tuple

from ._generated.numbers import ErrorWord
from ._generated.settings import RECORDS
from ._library import Library
from ._words import Holder, Word
from .errors import DeviceError, SettingError

# A word that travels with the block of another record, which has to be marked too.
_COMPANIONS = {"bNotBootDev": "CfgFlags2"}

# Makes a device active, and one of its configurations, while the library's calls are made.
Chooser = Callable[[], ContextManager[Library]]


class RecordHolder(Holder):
    """Words of records that the library has a get and a set for."""

    def __init__(self, device: str, choose: Chooser) -> None:
        self._device = device
        self._choose = choose

    def get(self, word: Word[Any, Any]) -> int:
        with self._choose() as library:
            if not word.record:
                return int(getattr(library, "Get" + word.name)())
            return int(getattr(self._read(library, word.record), word.name))

    def set(self, word: Word[Any, Any], value: int) -> None:
        with self._choose() as library:
            if not word.record:
                getattr(library, "Set" + word.name)(value)
                return
            record = self._read(library, word.record)
            setattr(record, word.name, value)
            self._write(library, word, value, record)
            if word.name in _COMPANIONS:
                companion = _COMPANIONS[word.name]
                self._write(library, word, value, self._read(library, companion), companion)

    def _read(self, library: Library, record: str) -> Any:
        name, kind = RECORDS[record]
        struct = kind()
        if getattr(library, "Get" + name)(struct) != 1:
            raise DeviceError(f"reading {record} of", self._device, library.GetLastLibErr())
        return struct

    def _write(self, library: Library, word: Word[Any, Any], value: int, struct: Any,
               record: str = "") -> None:
        name, _ = RECORDS[record or word.record]
        if getattr(library, "Set" + name)(struct) == 1:
            return
        error = library.GetLastLibErr()
        if error & ErrorWord.SET and error & 0x1000:
            raise SettingError(word.name, f"{word.name} can't be {value} on {self._device}: the "
                               f"library refuses the record {word.record} (error word "
                               f"0x{error:X})")
        raise DeviceError(f"setting {word.name} of", self._device, error)


class PlaceHolder(Holder):
    """Words that stand in the library's memory alone, by their place in a device's record."""

    def __init__(self, choose: Chooser, index: int, prefix: Tuple[str, ...] = ()) -> None:
        self._choose = choose
        self._index = index
        self._prefix = prefix

    def get(self, word: Word[Any, Any]) -> Any:
        with self._choose() as library:
            place, name = self._place(library, word)
            value = getattr(place, name)
            return value & 1 if word.most == 1 else value

    def set(self, word: Word[Any, Any], value: Any) -> None:
        with self._choose() as library:
            if word.name == "LUID":
                library.SetLUID(value)
                return
            place, name = self._place(library, word)
            if isinstance(value, tuple):
                kind = type(getattr(place, name))
                if len(value) != kind._length_:
                    raise SettingError(word.name, f"{word.name} has {kind._length_} bytes, not "
                                       f"{len(value)}")
                value = kind(*value)
            setattr(place, name, value)

    def _place(self, library: Library, word: Word[Any, Any]) -> Tuple[Any, str]:
        *path, name = self._prefix + tuple((word.record or word.name).split("."))
        place = library.variable("DevDat")[self._index]
        for part in path:
            place = place[int(part)] if part.isdigit() else getattr(place, part)
        return place, name


@contextlib.contextmanager
def restored(library: Library, index: int, always: bool) -> Iterator[None]:
    """The library's memory of a device goes back to what it was: always, or when what is done
    with it raises."""
    record = library.variable("DevDat")[index]
    copy = type(record).from_buffer_copy(record)
    try:
        yield
    except BaseException:
        always = True
        raise
    finally:
        if always:
            ctypes.memmove(ctypes.addressof(record), ctypes.addressof(copy), ctypes.sizeof(record))
