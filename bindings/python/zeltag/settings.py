# SPDX-License-Identifier: MIT
"""The settings of each kind of device, as attributes."""

from __future__ import annotations

from typing import List, Optional, Tuple

from . import _memory
from ._generated import settings as made
from ._generated.structures import sHashKeyData, uSFD
from ._words import Flag
from .device import Device
from .errors import SettingError
from .saved import Saved, Value

FIELD_DATA_SIZE = 128
KEY_SIZE = 16


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
