# SPDX-License-Identifier: MIT
"""Settings as attributes: what a word is, how it is told and what it takes."""

from __future__ import annotations

import datetime
from typing import Any, Generic, Optional, Sequence, Tuple, Type, TypeVar, Union, overload

from .errors import SettingError

Told = TypeVar("Told")
Taken = TypeVar("Taken")
Self = TypeVar("Self", bound="Word[Any, Any]")


class Quantity(int):
    """A whole number with a unit: `1000 ms`. It counts and compares as a plain number."""

    #: The unit: "ms", "s" or "inches".
    unit: str

    def __new__(cls, value: int, unit: str) -> Quantity:
        quantity = super().__new__(cls, value)
        quantity.unit = unit
        return quantity

    def __getnewargs__(self) -> Tuple[int, str]:  # type: ignore[override]
        return int(self), self.unit

    def __repr__(self) -> str:
        return f"{int(self)} {self.unit}"

    __str__ = __repr__

    @property
    def time(self) -> datetime.timedelta:
        """The same as a duration; a distance has none."""
        if self.unit == "inches":
            raise ValueError(f"{self} is no time")
        return datetime.timedelta(**{"ms": {"milliseconds": int(self)},
                                     "s": {"seconds": int(self)}}[self.unit])


class Holder:
    """Where the words of a device are kept: the library's memory of it."""

    def get(self, word: Word[Any, Any]) -> Any:
        """The word as the library holds it. No device traffic."""
        raise NotImplementedError

    def set(self, word: Word[Any, Any], value: Any) -> None:
        """Changes the word in the library's memory. No device traffic."""
        raise NotImplementedError


class Words:
    """Some settings of a device, each an attribute. A misspelt name is refused."""

    _holder: Holder

    def __init__(self, holder: Holder) -> None:
        object.__setattr__(self, "_holder", holder)

    def __setattr__(self, name: str, value: Any) -> None:
        if not hasattr(type(self), name):
            raise AttributeError(f"there is no setting {name}")
        super().__setattr__(name, value)

    @classmethod
    def words(cls) -> Tuple[Word[Any, Any], ...]:
        """What describes each setting, in the order of the records."""
        return tuple(value for base in (*cls.__mro__[1:], cls) for value in vars(base).values()
                     if isinstance(value, Word))

    def as_dict(self) -> dict[str, Any]:
        """Every setting by its name, as the library holds it. No device traffic."""
        return {word.name: getattr(self, word.name) for word in self.words()}

    def __repr__(self) -> str:
        values = ", ".join(f"{name}={value}" for name, value in self.as_dict().items())
        return f"{type(self).__name__}({values})"


class Word(Generic[Told, Taken]):
    """One setting: `name` of `record`, from `least` to `most` in steps of `step` `unit`s."""

    def __init__(self, record: str, name: str, least: int, most: int, unit: str, step: int,
                 text: str, fixed: bool) -> None:
        self.record, self.name = record, name
        self.least, self.most, self.unit, self.step = least, most, unit, step
        self.is_read_only = fixed
        self.description = text
        self.__doc__ = f"{text}. {'Read-only.' if fixed else self.range}"

    @property
    def range(self) -> str:
        """What the setting takes, in words."""
        unit = f" {self.unit}" if self.unit else ""
        step = f" in steps of {self.step}" if self.step > 1 else ""
        return f"{self.least} to {self.most}{unit}{step}"

    @overload
    def __get__(self: Self, instance: None, owner: Type[Words]) -> Self: ...

    @overload
    def __get__(self, instance: Words, owner: Type[Words]) -> Told: ...

    def __get__(self, instance: Optional[Words], owner: Type[Words]) -> Any:
        return self if instance is None else self._told(instance._holder.get(self))

    def __set__(self, instance: Words, value: Taken) -> None:
        if self.is_read_only:
            raise SettingError(self.name, f"{self.name} is read-only: it tells what the reader is "
                               "or follows from other settings")
        instance._holder.set(self, self._stored(value))

    def _told(self, value: Any) -> Told:
        raise NotImplementedError

    def _stored(self, value: Any) -> Any:
        return self._checked(value)

    def _checked(self, value: Any) -> int:
        if not isinstance(value, int):
            raise SettingError(self.name, f"{self.name}: {value!r} is no whole number")
        if not self.least <= value <= self.most:
            raise SettingError(self.name, f"{self.name} can't be {value}: it takes {self.range}")
        return int(value)


class Flag(Word[bool, Union[bool, int]]):
    """A setting that is on or off."""

    def __init__(self, record: str, name: str, text: str, fixed: bool = False) -> None:
        super().__init__(record, name, 0, 1, "", 1, text, fixed)

    def _told(self, value: Any) -> bool:
        return bool(value)


class Number(Word[int, int]):
    """A setting that is a number without a unit: a count, a character code."""

    def __init__(self, record: str, name: str, least: int, most: int, text: str,
                 fixed: bool = False) -> None:
        super().__init__(record, name, least, most, "", 1, text, fixed)

    def _told(self, value: Any) -> int:
        return int(value)


class Measure(Word[Quantity, Union[int, datetime.timedelta]]):
    """A time or a distance. It takes a number of its unit; a time also a timedelta."""

    def __init__(self, record: str, name: str, least: int, most: int, unit: str, step: int,
                 text: str, fixed: bool = False) -> None:
        super().__init__(record, name, least, most, unit, step, text, fixed)

    def _told(self, value: Any) -> Quantity:
        return Quantity(value, self.unit)

    def _stored(self, value: Any) -> int:
        if not isinstance(value, datetime.timedelta):
            return self._checked(value)
        if self.unit == "inches":
            raise SettingError(self.name, f"{self.name} is a distance, no time")
        unit = datetime.timedelta(milliseconds=1 if self.unit == "ms" else 1000)
        return self._checked(value // unit)


class Array(Word[Tuple[int, ...], Sequence[int]]):
    """A setting of several bytes, told and taken all at once."""

    def __init__(self, record: str, name: str, least: int, most: int, text: str) -> None:
        super().__init__(record, name, least, most, "", 1, text, False)

    def _told(self, value: Any) -> Tuple[int, ...]:
        return tuple(value)

    def _stored(self, value: Any) -> Tuple[int, ...]:
        return tuple(self._checked(element) for element in value)
