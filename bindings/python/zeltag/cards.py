# SPDX-License-Identifier: MIT
"""What a reader tells of a card."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Iterator, Optional, Tuple


@dataclass(frozen=True)
class Card:
    """A card in a reader's field."""

    #: Bits of the identifier, 1 to 255.
    bits: int
    #: The identifier, least significant byte first: the bytes that its bits fill, or all 32 of
    #: `read_long()`.
    data: bytes

    @property
    def id(self) -> int:
        """The identifier as a number."""
        return int.from_bytes(self.data, "little")

    @property
    def hex(self) -> str:
        """The identifier in hexadecimal, two digits a byte, most significant first."""
        return self.data[::-1].hex().upper()

    def __str__(self) -> str:
        return f"{self.bits} bits 0x{self.hex}"


@dataclass(frozen=True)
class QueuedCard:
    """An identifier that the reader kept for the host to fetch. The entry tells no bit count."""

    #: The identifier, least significant byte first, up to its last byte that isn't 0.
    data: bytes
    #: How old it is, as the reader counts.
    age: int
    #: A word and two bytes of the entry, as the reader tells them.
    rest: Tuple[int, int, int]

    @property
    def id(self) -> int:
        """The identifier as a number."""
        return int.from_bytes(self.data, "little")

    @property
    def hex(self) -> str:
        """The identifier in hexadecimal, two digits a byte, most significant first."""
        return self.data[::-1].hex().upper()


@dataclass(frozen=True)
class Track:
    """A track of a swiped card. Its text shows the card's number: mind where it is printed."""

    #: 1 to 3.
    number: int
    #: The start sentinel; empty where the reader doesn't tell it.
    start: str
    #: What stands between the sentinels.
    text: str
    #: The end sentinel and what follows it: the checksum (LRC).
    end: str

    def __repr__(self) -> str:
        return f"Track(number={self.number}, {len(self.text)} characters)"


@dataclass(frozen=True)
class Swipe:
    """A card that passed a magnetic stripe reader: the tracks that were read."""

    tracks: Tuple[Track, ...]

    def __getitem__(self, number: int) -> str:
        """The text of a track, 1 to 3; a KeyError for one that wasn't read."""
        track = self.track(number)
        if track is None:
            raise KeyError(number)
        return track.text

    def __iter__(self) -> Iterator[Track]:
        return iter(self.tracks)

    def track(self, number: int) -> Optional[Track]:
        """A track, 1 to 3; None where it wasn't read."""
        return next((track for track in self.tracks if track.number == number), None)
