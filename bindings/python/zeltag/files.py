# SPDX-License-Identifier: MIT
"""Looks into the library's files. No device is needed and none is asked."""

from __future__ import annotations

import ctypes
import os
from dataclasses import dataclass
from typing import Optional, Union

from . import _process
from ._generated.numbers import FAULT_MEANINGS, FileFault, FileKind
from ._generated.structures import zelFileCheck, zelFirmwareFile
from ._library import load
from .errors import FileError

Path = Union[str, "os.PathLike[str]"]


def library_version() -> str:
    """The version of the shared library in use, such as "7.6.4"."""
    return load().version


def check_file(path: Path, kind: FileKind = FileKind.TEMPLATE) -> None:
    """Checks a file as the calls that use it do: its checksum trailer, or its lines where its kind
    has no trailer. Raises FileError, which tells the line, when something is wrong.

    :param path: the file
    :param kind: what it is meant to hold
    """
    name = os.fspath(path)
    check = zelFileCheck()
    with _process.lock:
        holds = load().zelTagAPI_checkFile(os.fsencode(name), kind, ctypes.byref(check))
    if holds != 1:
        raise file_error(name, FileFault(check.fault), check.line)


def file_error(path: str, fault: FileFault, line: int = 0) -> FileError:
    """What is wrong with a file, in words."""
    meaning = FAULT_MEANINGS[fault].replace("`line`", "the line" if line else "a line")
    return FileError(path, fault, line, meaning)


@dataclass(frozen=True)
class FirmwareFile:
    """What a firmware file says of itself."""

    path: str
    #: The new firmware's name; "" when the file has none.
    name: str
    #: The processor that it is for, 0 or 1; None when the file doesn't tell.
    micro: Optional[int]
    #: The lines that a load sends.
    lines: int

    @classmethod
    def read(cls, path: Path) -> FirmwareFile:
        """Checks a file's trailer and reads it; raises FileError.

        :param path: the file
        """
        name = os.fspath(path)
        check_file(name, FileKind.FIRMWARE)
        told = zelFirmwareFile()
        with _process.lock:
            if load().zelTagAPI_readFirmware(os.fsencode(name), ctypes.byref(told)) != 1:
                raise file_error(name, FileFault.OPEN)
        return cls(name, told.name.decode("ascii", "replace"),
                   None if told.micro < 0 else told.micro, told.lines)
