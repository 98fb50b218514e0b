# SPDX-License-Identifier: MIT
"""What goes wrong, as exceptions. Each message says what failed, on what, and what to do next."""

from __future__ import annotations

import re
from typing import Dict, Optional, Tuple

from ._generated.numbers import ERROR_MEANINGS, ErrorWord, FileFault

_RANGE_CODES = 0x1000  # of words out of range, 0x1000 to 0x1FFF

_HINTS: Dict[int, str] = {
    ErrorWord.NEVER_READ: "read the settings again with `read_back()`",
    ErrorWord.LINE_CLOSED: "connect again",
    ErrorWord.LINE_ANSWER: "check that the reader speaks the ASCII protocol",
    ErrorWord.SET: "look at the setting's range: `help(zeltag.Settings)`",
    ErrorWord.INTEGRITY: "take a fresh copy of the file",
    ErrorWord.BOOT_FILE: "check the file's name",
    ErrorWord.BOOT_DEVICE: "only a proximity reader on USB takes firmware",
}
_IN_BOOT_LOADER = "it may be left in its boot loader: load the file again with `recover=True`"
_UNPLUGGED = "it may have been unplugged: check its cable, then connect again"


def decode(word: int) -> Tuple[ErrorWord, ...]:
    """What an error word is made of, the greatest first.

    The values are no plain bits, since many share some: a value counts where it fits as a whole.
    A code of a setting out of range, 0x1000 to 0x1FFF beside SET, has no value of its own.
    """
    found = []
    for value in sorted(ERROR_MEANINGS, reverse=True):
        if word & value == value:
            found.append(ErrorWord(value))
            word &= ~value
            if value == ErrorWord.SET and word & _RANGE_CODES:
                break
    return tuple(found)


def hint_for(word: int) -> str:
    """What helps against an error word."""
    if word >> 28 == 9 and word < ErrorWord.INTEGRITY and word not in _HINTS:
        return _IN_BOOT_LOADER
    hints = [_HINTS[value] for value in reversed(decode(word)) if value in _HINTS]
    return hints[0] if hints else _UNPLUGGED


class ZelTagError(Exception):
    """Whatever this package raises of its own."""


class LibraryNotFound(ZelTagError):
    """The shared library isn't there, or can't be loaded."""


class AlreadyConnected(ZelTagError):
    """The process has a connection: the library below keeps one for all."""


class StaleReader(ZelTagError):
    """The object belongs to a connection that is closed."""


class ForkedProcess(ZelTagError):
    """The connection belongs to the process that this one was forked from."""


class NoDevice(ZelTagError):
    """Nothing that can be used was found."""


class NoPermission(NoDevice):
    """There is a device, and this user may not open it."""


class SettingError(ZelTagError, ValueError):
    """A setting doesn't take a value; nothing was changed."""

    def __init__(self, name: str, message: str) -> None:
        super().__init__(message)
        #: The setting's name.
        self.name = name


class DeviceError(ZelTagError):
    """A device didn't do what it was asked."""

    def __init__(self, what: str, device: str, word: int = 0, hint: Optional[str] = None) -> None:
        #: What was asked, such as "reading".
        self.what = what
        #: The device's name.
        self.device = device
        #: The library's error word; 0 when it told none.
        self.word = word
        #: What the error word is made of.
        self.words = decode(word)
        #: What to do next.
        self.hint = hint if hint is not None else hint_for(word)
        super().__init__(f"{what} {device} failed{self._reason()}; {self.hint}")

    def _reason(self) -> str:
        if self.word == 0:
            return ""
        meanings = [ERROR_MEANINGS[word] for word in self.words] or ["not known"]
        return f": {', '.join(meanings)} (error word 0x{self.word:X})"


class FileError(ZelTagError):
    """A file is missing, damaged or of another kind."""

    def __init__(self, path: str, fault: FileFault, line: int, message: str) -> None:
        place = f"{path}:{line}" if line else path
        super().__init__(f"{place}: {message}")
        #: The file's name.
        self.path = path
        #: What is wrong.
        self.fault = fault
        #: The line meant, from 1; 0 for none.
        self.line = line


class FirmwareRefused(ZelTagError):
    """A rule keeps a firmware file from a reader; nothing was sent."""

    def __init__(self, path: str, device: str, text: str) -> None:
        super().__init__(f"{path} may not go into {device}: {text.rstrip('.')}; take a file made "
                         "for its firmware")
        #: The rule's number, 0 for none.
        self.rule = int((re.match(r"\d*", text) or [""])[0] or 0)
