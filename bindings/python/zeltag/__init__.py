# SPDX-License-Identifier: MIT
"""Readers of identification cards, by the shared library libzelTagAPI.

    import zeltag

    for reader in zeltag.readers():
        print(reader.read())

One state for the whole process
    The library below keeps one table of devices and one active device for the whole process, and
    this package can't change that. So a process has one connection at a time: a second connect
    raises `AlreadyConnected`. Each operation holds one lock from the choice of its device to its
    last call, so threads may use readers freely; they wait for each other. A reader whose
    connection is closed raises `StaleReader`; a forked child that uses its parent's connection
    gets `ForkedProcess`. What this guard can't see is other code of the process that calls the same
    shared library: let there be none.

Settings are attributes: `reader.settings.iIDHoldTO = 2000` changes the library's memory, and
`reader.settings.save()` sends what was changed. Failures are exceptions, all of `ZelTagError`.
"""

from ._generated.numbers import ErrorWord, FileFault, FileKind
from ._generated.settings import (BprRlyCtrl, CfgFlags, CfgFlags2, CfgFlags3, IDBitCnts,
                                  IDDispParms, IDDispParms2, IDDispParms3, IdleParms, LEDCtrl,
                                  SonarParms, TimeParms, UserField, WalkAwayParms, WalkUpParms)
from ._version import __version__
from ._words import Quantity, Word, Words
from .cards import Card, QueuedCard, Swipe, Track
from .connection import Connection, connect, readers
from .device import Device
from .errors import (AlreadyConnected, DeviceError, FileError, FirmwareRefused, ForkedProcess,
                     LibraryNotFound, NoDevice, NoPermission, SettingError, StaleReader,
                     ZelTagError, decode)
from .files import FirmwareFile, check_file, library_version
from .reader import Reader
from .sensor import Range, Sensor
from .saved import Change
from .settings import Settings, SensorSettings, StripeSettings
from .stripe import StripeReader

__all__ = [
    "AlreadyConnected", "BprRlyCtrl", "Card", "CfgFlags", "CfgFlags2", "CfgFlags3", "Change",
    "Connection", "Device", "DeviceError", "ErrorWord", "FileError", "FileFault", "FileKind",
    "FirmwareFile", "FirmwareRefused", "ForkedProcess", "IDBitCnts", "IDDispParms", "IDDispParms2",
    "IDDispParms3", "IdleParms", "LEDCtrl", "LibraryNotFound", "NoDevice", "NoPermission",
    "Quantity", "QueuedCard", "Range", "Reader", "Sensor", "SensorSettings", "SettingError",
    "Settings", "SonarParms", "StaleReader", "StripeReader", "StripeSettings", "Swipe", "TimeParms",
    "Track", "UserField", "WalkAwayParms", "WalkUpParms", "Word", "Words", "ZelTagError",
    "__version__", "check_file", "connect", "decode", "library_version", "readers",
]
