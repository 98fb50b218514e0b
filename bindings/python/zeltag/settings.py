# SPDX-License-Identifier: MIT
"""The settings of a device: attributes, and the way to the device and to files."""

from __future__ import annotations

import contextlib
from dataclasses import dataclass
from typing import Any, Iterator, List, Optional, Tuple, TypeVar, Union

from . import _memory, templates
from ._generated import settings as made
from ._generated.structures import sHashKeyData, uSFD
from ._words import Flag, Holder, Words
from .device import Device
from .errors import SettingError

FIELD_DATA_SIZE = 128
KEY_SIZE = 16

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
        show what the device kept: a time is rounded to the device's steps. A proximity reader
        needs 20 ms or 1.2 s for each configuration, a magnetic stripe reader two times 37 commands
        and 1.3 s, a sensor 250 ms a block."""
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

    def export_file(self, path: str, sealed: bool = False) -> None:
        """Reads the settings of all configurations from the device and writes them to a text file,
        to be edited or loaded into other devices. A file that exists is replaced when all went
        well.

        :param path: the file
        :param sealed: with a checksum, which `load_file` can demand; proximity readers only
        """
        templates.export(self._device, path, sealed)

    def load_file(self, path: str, sealed: bool = False, dry_run: bool = False
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


class Settings(Saved, made.TagWords):
    """One configuration of a proximity reader: its words by their names, alone or by their records
    (`settings.iIDHoldTO`, `settings.TimeParms.iIDHoldTO`). Attributes show and change the library's
    memory, without device traffic; `save()` sends what was changed."""

    CfgFlags: made.CfgFlags
    CfgFlags2: made.CfgFlags2
    CfgFlags3: made.CfgFlags3
    IDBitCnts: made.IDBitCnts
    IDDispParms: made.IDDispParms
    IDDispParms2: made.IDDispParms2
    IDDispParms3: made.IDDispParms3
    TimeParms: made.TimeParms
    LEDCtrl: made.LEDCtrl
    BprRlyCtrl: made.BprRlyCtrl

    AZERTYShiftLock = Flag("", "AZERTYShiftLock", "Keyboard option: off or on")
    ExtendedPrecisionMath = Flag("", "ExtendedPrecisionMath", "Display option: off or on")

    def __init__(self, device: Device, number: int, choose: _memory.Chooser) -> None:
        holder = _memory.RecordHolder(device.name, choose)
        super().__init__(device, holder)
        object.__setattr__(self, "_choose", choose)
        #: Which configuration this is.
        object.__setattr__(self, "number", number)
        for name in made.RECORDS:
            if name in self.__annotations__:
                object.__setattr__(self, name, getattr(made, name)(holder))

    number: int
    _choose: _memory.Chooser

    @property
    def card_type(self) -> Optional[int]:
        """The card type of the configuration, 16 bits; None on a reader of one configuration."""
        with self._choose() as library:
            told = library.GetCardType()
        return None if told == -1 else told & 0xFFFF

    @card_type.setter
    def card_type(self, value: int) -> None:
        with self._choose() as library:
            if library.GetCardType() == -1 or not library.IsCardTypeInList(value):
                raise SettingError("card_type", f"{self._device.name} doesn't know the card type "
                                   f"0x{value:04X}")
            library.SetCardTypePriority(value, library.GetCardPriority())

    @property
    def card_priority(self) -> Optional[int]:
        """The priority of the card type, 0 or 1; None on a reader of one configuration."""
        with self._choose() as library:
            told = library.GetCardPriority()
        return None if told == -1 else int(told)

    @card_priority.setter
    def card_priority(self, value: int) -> None:
        with self._choose() as library:
            if library.GetCardType() == -1 or value not in (0, 1):
                raise SettingError("card_priority", f"card_priority can't be {value}: it takes 0 "
                                   "or 1, on a reader of several configurations")
            library.SetCardTypePriority(library.GetCardType(), value)

    @property
    def field_data(self) -> bytes:
        """The separator and field definitions, 128 bytes; they may hold what is secret."""
        buffer = uSFD()
        with self._choose() as library:
            if library.GetSepFldData(buffer, FIELD_DATA_SIZE) != 1:
                raise self._device._failure(library, "reading the field data of")
        return bytes(buffer)

    @field_data.setter
    def field_data(self, value: bytes) -> None:
        if len(value) != FIELD_DATA_SIZE:
            raise SettingError("field_data", f"field_data has 128 bytes, not {len(value)}")
        with self._choose() as library:
            if library.SetSepFldData(uSFD.from_buffer_copy(value), FIELD_DATA_SIZE) != 1:
                raise self._device._failure(library, "setting the field data of")

    def set_keys(self, first: bytes, second: bytes) -> None:
        """Sets the two key values of 16 bytes. They go to the reader with the field data and are
        never told again."""
        if len(first) != KEY_SIZE or len(second) != KEY_SIZE:
            raise SettingError("keys", "a key value has 16 bytes")
        with self._choose() as library:
            library.SetHashKeyData(sHashKeyData.from_buffer_copy(first + second))

    def _values(self) -> dict[str, Value]:
        values: dict[str, Value] = dict(self.as_dict(), field_data=self.field_data)
        if self.card_type is not None:
            values.update(card_type=self.card_type, card_priority=self.card_priority or 0)
        return values

    def _all_values(self) -> List[dict[str, Value]]:
        return [one._values() for one in self._device.configurations]  # type: ignore[attr-defined]


class SensorSettings(Saved, made.SensorWords):
    """The settings of a presence sensor, by their names alone or by their records."""

    SonarParms: made.SonarParms
    WalkAwayParms: made.WalkAwayParms
    WalkUpParms: made.WalkUpParms
    IdleParms: made.IdleParms

    def __init__(self, device: Device) -> None:
        holder = _memory.RecordHolder(device.name, device._active)
        super().__init__(device, holder)
        for name in self.__annotations__:
            object.__setattr__(self, name, getattr(made, name)(holder))


class StripeSettings(Saved, made.StripeWords):
    """The settings of a magnetic stripe reader. `save()` sends all of them."""

    #: The eleven user fields.
    UserField: Tuple[made.UserField, ...]

    def __init__(self, device: Device) -> None:
        super().__init__(device, _memory.PlaceHolder(device._active, device.index))
        with device._active() as library:
            fields = library.variable("DevDat")[device.index].Band.UserField
        object.__setattr__(self, "UserField", tuple(
            made.UserField(_memory.PlaceHolder(device._active, device.index,
                                               ("Band", "UserField", str(number))))
            for number in range(len(fields))))

    def _values(self) -> dict[str, Value]:
        values: dict[str, Value] = dict(self.as_dict())
        for number, field in enumerate(self.UserField):
            values.update({f"UserField[{number}].{name}": value
                           for name, value in field.as_dict().items()})
        return values
