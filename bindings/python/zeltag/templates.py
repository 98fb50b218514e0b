# SPDX-License-Identifier: MIT
"""Settings on their way between a device and a file."""

from __future__ import annotations

import contextlib
import ctypes
import os
from typing import List

from . import _memory
from ._generated.numbers import FileFault, FileKind
from ._generated.settings import TagWords
from ._generated.structures import tsDevDat, tsTagCfg
from ._library import Library
from .device import Device
from .errors import FileError, ZelTagError
from .files import Path, check_file, file_error

MOST_CONFIGURATIONS = 11
FILE_KINDS = {"zelBand": FileKind.BAND, "zelEcho": FileKind.ECHO}


def export(device: Device, path: Path, sealed: bool) -> None:
    """Writes a device's settings to a file beside the one meant, which then takes its place."""
    _demand_tag(device, sealed)
    name = os.fspath(path)
    temporary = os.path.join(os.path.dirname(name), f".{os.path.basename(name)}.{os.getpid()}")
    with open(temporary, "xb"):
        pass
    try:
        _write(device, temporary, sealed)
        os.replace(temporary, name)
    finally:
        with contextlib.suppress(FileNotFoundError):
            os.unlink(temporary)


def _demand_tag(device: Device, sealed: bool) -> None:
    if sealed and device.product != "zelTag":
        raise ZelTagError(f"{device.name} is a {device.product}: its files have no checksum; leave "
                          "`sealed` out")


def _write(device: Device, path: Path, sealed: bool) -> None:
    with device._active() as library:
        call = library.WriteDevCfgToSecureFile if sealed else library.WriteDevCfgToFile
        if call(os.fsencode(path)) != 1:
            raise device._failure(library, "exporting the settings of")
        if sealed:
            check_file(path, FileKind.TEMPLATE)
        if device.product != "zelTag":
            check_file(path, FILE_KINDS[device.product])
        elif not _is_whole(device, library, path):
            raise FileError(os.fspath(path), FileFault.MISSING, 0, "the file wasn't written whole; "
                            "check the space on its disk")


def _is_whole(device: Device, library: Library, path: Path) -> bool:
    """Whether a file tells what the library holds: the export's result tells no full disk."""
    held = library.variable("DevDat")[device.index].Cfg[:library.GetMaxConfig() + 1]
    return all(_tells(library, path, held, filling) for filling in (0, 0xFF))


def _tells(library: Library, path: Path, held: List[tsTagCfg], filling: int) -> bool:
    """Whether a file brings such memory to what is held. What it lacks shows by one filling."""
    told = (tsTagCfg * MOST_CONFIGURATIONS)()
    ctypes.memset(told, filling, ctypes.sizeof(told))
    count = library.zelTagAPI_readTemplate(os.fsencode(path), told, len(told), 0)
    return count >= len(held) and all(map(_is_same, held, told))


def _is_same(held: tsTagCfg, told: tsTagCfg) -> bool:
    words = [word for word in TagWords.words() if not word.is_read_only]
    records = [("s" + word.record, word.name) for word in words]
    return bytes(held.uSFD) == bytes(told.uSFD) and all(
        getattr(getattr(held, record), name) == getattr(getattr(told, record), name)
        for record, name in records)


def try_file(device: Device, library: Library, path: Path, sealed: bool) -> None:
    """Takes a file into the library's memory of a device; raises FileError for one that the
    device has no use for. No device traffic."""
    _demand_tag(device, sealed)
    name = os.fspath(path)
    if not os.path.isfile(name) or not os.access(name, os.R_OK):
        raise file_error(name, FileFault.OPEN)
    if sealed:
        check_file(name, FileKind.TEMPLATE)
    if device.product == "zelTag":
        _try_template(device, library, name)
        return
    _demand_title(name, FILE_KINDS[device.product])
    if library.ReadDevCfgFmFile(os.fsencode(name)) != 1:
        raise file_error(name, FileFault.TITLE)


def _demand_title(name: str, kind: FileKind) -> None:
    try:
        check_file(name, kind)
    except FileError as error:
        if error.fault in (FileFault.TITLE, FileFault.OPEN):
            raise


def _try_template(device: Device, library: Library, name: str) -> None:
    probe = (tsTagCfg * MOST_CONFIGURATIONS)()
    if library.zelTagAPI_readTemplate(os.fsencode(name), probe, len(probe), 0) == 0:
        raise file_error(name, FileFault.TITLE)
    record: tsDevDat = library.variable("DevDat")[device.index]
    library.zelTagAPI_readTemplate(os.fsencode(name),
                                   ctypes.cast(record.Cfg, ctypes.POINTER(tsTagCfg)),
                                   library.GetMaxConfig() + 1, 1)


def load(device: Device, path: Path, sealed: bool) -> None:
    """Lets the library set and send what differs. A magnetic stripe reader's and a sensor's file
    goes to the library's memory, and from there to the device."""
    with device._active() as library:
        before = library.GetActConfig()
        call = library.ReadDevCfgFromSecureFile if sealed else library.ReadDevCfgFmFile
        taken = call(os.fsencode(os.fspath(path))) == 1
        failure = device._failure(library, "loading a file into")
        library.SetActConfig(before)
        if not taken:
            raise failure
        if device.product != "zelTag" and library.WriteCfg() != 1:
            raise device._failure(library, "writing the settings of")
