# SPDX-License-Identifier: MIT
"""Magnetic stripe readers."""

from __future__ import annotations

import ctypes
from typing import List, Optional, Tuple

from . import _clock
from ._library import Library
from .cards import Swipe, Track
from .device import LONGEST_PING, Device, text_of
from .errors import DeviceError
from .settings import StripeSettings

TRACKS = (1, 2, 3)
TRACK_SIZE = 257
LOOKS_PER_TEST = 10  # no data and no answer look alike
COUNTERS = 4
LEDS = 5


def cut(number: int, characters: str) -> Track:
    """Cuts the characters of a track at its sentinels. A reader may tell track 1's start sentinel
    by the code that its alphabet has for the digit 5."""
    starts = {1: {"%": "%", "5": "%"}}.get(number, {";": ";"})
    start = starts.get(characters[:1], "")
    end = characters.find("?", len(start))
    end = len(characters) if end < 0 else end
    return Track(number, start, characters[len(start):end], characters[end:])


class StripeReader(Device):
    """A magnetic stripe reader, at the end of a serial line."""

    product = "zelBand"
    #: Whether the library holds its settings.
    _has_read = False

    def swipe(self, seconds: float = 10, interval: float = 0.1) -> Optional[Swipe]:
        """Waits for a card to be swiped, takes its tracks and lets the reader forget them. One
        command a look, up to 26 for a card.

        :param seconds: how long to wait at most; 0 looks once
        :param interval: seconds between two looks
        :return: the card; None when none was swiped
        """
        for look, _ in enumerate(_clock.looks(seconds, interval)):
            with self._active() as library:
                bits = library.zelBandIsDataAvailable()
                if bits:
                    return self._take(library, bits)
                if look % LOOKS_PER_TEST == 0 and library.Ping() > LONGEST_PING:
                    raise DeviceError("asking", self.name)
        return None

    def _take(self, library: Library, bits: int) -> Swipe:
        tracks: List[Track] = []
        for number in TRACKS:
            if bits >> (number - 1) & 1:
                tracks.append(cut(number, self._characters(library, number)))
        if library.zelBandClearDataAvailable() != 1:
            raise self._failure(library, "clearing the tracks of")
        return Swipe(tuple(tracks))

    def _characters(self, library: Library, number: int) -> str:
        pointer = library.zelBandGetTrackData(number, 1)
        data = ctypes.string_at(pointer, TRACK_SIZE) if pointer else b"\0"
        length = data[0] & 0x7F
        if length == 0:
            raise self._failure(library, "reading the tracks of")
        return data[1:1 + length].decode("latin-1")

    @property
    def settings(self) -> StripeSettings:
        """The reader's settings; those of its eleven user fields are `settings.UserField[0]` and
        on."""
        if not self._has_read:
            with self._active() as library:
                if library.ReadCfg() != 1:
                    raise self._failure(library, "reading the settings of")
            self._has_read = True
        return StripeSettings(self)

    @property
    def part_number(self) -> str:
        """The part number without the filling of its frame. No device traffic."""
        with self._active() as library:
            text = text_of(library.getPartNumberString()).split("?")[0]
        rest = text.rstrip("0")
        return rest.rstrip() if rest.endswith(" ") else text

    @property
    def firmware(self) -> str:
        """Device ID and firmware version, each in hexadecimal. No device traffic."""
        with self._active() as library:
            return "/".join(f"{library.GetFirmwareVersion(0, slot):04X}" for slot in (0, 1))

    @property
    def uptime(self) -> int:
        """Seconds since it got power. One command."""
        with self._active() as library:
            return int(library.zelBandGetSystemUptime())

    @property
    def cards_read(self) -> int:
        """Cards that were swiped since it got power. One command."""
        with self._active() as library:
            return int(library.zelBandGetSystemCardsRead())

    @property
    def counters(self) -> Tuple[int, ...]:
        """Its four internal counters. A command each."""
        with self._active() as library:
            return tuple(map(library.zelBandGetSystemInternalCount, range(COUNTERS)))

    def beep(self, count: int = 1, long: bool = False) -> None:
        """Beeps at once: one command.

        :param count: how often, 1 to 5; 1 or 2 for long beeps
        :param long: long beeps
        """
        with self._active() as library:
            if library.BeepNow(count, int(long)) != 1:
                raise self._failure(library, "the beep of")

    def light(self, led: int, colour: int) -> None:
        """Gives a LED its colour at once: one command.

        :param led: 0 to 4
        :param colour: 0 off, 1 red, 2 green, 3 amber
        """
        if led not in range(LEDS) or colour not in range(4):
            raise ValueError("LEDs are 0 to 4, colours 0 to 3")
        with self._active() as library:
            if library.zelBandSetLED(led, colour) != 1:
                raise self._failure(library, "switching a LED of")
