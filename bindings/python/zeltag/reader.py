# SPDX-License-Identifier: MIT
"""Proximity readers."""

from __future__ import annotations

import contextlib
import ctypes
from typing import Iterator, Optional, Tuple

from . import _clock, firmware
from ._library import Library
from .cards import Card, QueuedCard
from .errors import DeviceError, ZelTagError
from .files import FirmwareFile, Path
from .services import ReaderServices
from .settings import Settings

ID_SIZE = 32
SHORT_READ_BITS = 64  # the short read delivers no more
CARD_DATA_SIZE = 40
FAILURES_IN_ROW = 2  # one lost reply is no reason to stop watching
MOST_BEEPS = {False: 5, True: 2}
LOOK_EVERY = 0.1  # s


class Reader(ReaderServices):
    """A proximity reader."""

    _has_read = False

    def read(self) -> Optional[Card]:
        """The card in the field: two queries, five more for an identifier of more than 64 bits.

        :return: the card; None for an empty field
        """
        with self._active() as library:
            card = self._look(library, "GetActiveID", False)
            if card and card.bits > SHORT_READ_BITS:
                card = self._look(library, "GetActiveID32", False)
            return card

    def read_long(self) -> Optional[Card]:
        """As `read()`, with all 32 bytes, those behind the identifier's bits too: five queries."""
        with self._active() as library:
            return self._look(library, "GetActiveID32", True)

    def _look(self, library: Library, call: str, whole: bool) -> Optional[Card]:
        buffer = (ctypes.c_ubyte * ID_SIZE)()
        bits = getattr(library, call)(buffer, ID_SIZE)
        if bits > 0:
            return Card(bits, bytes(buffer)[:ID_SIZE if whole else (bits + 7) // 8])
        if library.GetLastLibErr() != 0:
            raise self._failure(library, "reading")
        return None

    def wait(self, seconds: float, interval: float = LOOK_EVERY) -> Optional[Card]:
        """Waits for a card, in looks of `read()`. Other threads may use readers meanwhile.

        :param seconds: how long at most
        :param interval: seconds between two looks
        :return: the card; None when none came
        """
        for _ in _clock.looks(seconds, interval):
            card = self.read()
            if card:
                return card
        return None

    def watch(self, interval: float = LOOK_EVERY, until_gone: bool = False) -> Iterator[Card]:
        """The cards that come into the field, one after the other; a card that stays is told once.
        Ends by an exception when the reader fails twice in a row, as an unplugged one does.

        :param interval: seconds between two looks of `read()`
        :param until_gone: ends when the first card leaves the field
        """
        last: Optional[Card] = None
        failures = 0
        while True:
            try:
                card = self.read()
                failures = 0
            except DeviceError:
                failures += 1
                if failures == FAILURES_IN_ROW:
                    raise
                card = last
            if card and card != last:
                yield card
            if last and not card and until_gone:
                return
            last = card
            _clock.sleep(interval)

    def queued(self) -> Optional[QueuedCard]:
        """The identifier that the reader kept for the host: five queries. It stays in the queue.

        :return: the entry; None for an empty queue
        """
        with self._active() as library:
            if library.GetQueuedID(0, 0) != 1:
                raise self._failure(library, "reading the queue of")
            data = bytes(library.GetQueuedID_index(index) & 0xFF for index in range(ID_SIZE))
            age, word, first, second = map(library.GetQueuedID_index, (33, 32, 34, 35))
        used = data.rstrip(b"\0")
        return QueuedCard(used, age, (word, first, second)) if used else None

    def card_data(self) -> Optional[bytes]:
        """The 40 bytes that the reader read of the card in the field: five queries, on USB alone.

        :return: the bytes; None where they are all zero, as without a card
        """
        with self._active() as library:
            if library.getActiveCardData() != 1:
                raise self._failure(library, "reading the card data of")
            data = bytes(library.getActiveCardData_byte(index) & 0xFF
                         for index in range(CARD_DATA_SIZE))
        return data if any(data) else None

    def beep(self, count: int = 1, long: bool = False) -> None:
        """Beeps at once: one query.

        :param count: how often, 1 to 5; 1 or 2 for long beeps
        :param long: long beeps
        """
        if not 1 <= count <= MOST_BEEPS[bool(long)]:
            raise ValueError(f"a reader beeps 1 to {MOST_BEEPS[bool(long)]} times, not {count}")
        with self._active() as library:
            if library.BeepNow(count, int(long)) != 1:
                raise self._failure(library, "the beep of")

    def show(self, red: Optional[bool] = None, green: Optional[bool] = None,
             beeper: Optional[bool] = None, relay: Optional[bool] = None) -> None:
        """Switches LEDs, beeper and relay at once: two reports out for the LEDs, two for beeper and
        relay. The reader doesn't keep it; `settings.LEDCtrl` and `settings.BprRlyCtrl` are kept.
        Whether the reports arrived isn't told.

        :param red: the red LED; None leaves it as it is
        :param green: the green LED
        :param beeper: the beeper
        :param relay: the relay
        """
        firmware.act_at_once(self, {"iRedLEDState": red, "iGrnLEDState": green}, "LEDCtrl")
        firmware.act_at_once(self, {"iBeeperState": beeper, "iRelayState": relay}, "BprRlyCtrl")

    @property
    def settings(self) -> Settings:
        """The settings of the active configuration; a reader of one configuration has this."""
        with self._active() as library:
            return self.configurations[int(library.GetActConfig())]

    @property
    def configurations(self) -> Tuple[Settings, ...]:
        """The settings of each configuration: one, or up to eleven."""
        self._demand_settings()
        with self._active() as library:
            count = library.GetMaxConfig() + 1
        return tuple(self._configuration(number) for number in range(count))

    def _configuration(self, number: int) -> Settings:
        return Settings(self, number, lambda: self._chosen(number))

    @contextlib.contextmanager
    def _chosen(self, number: int) -> Iterator[Library]:
        """As `_active()`, with a configuration that the library's calls mean; the reader's own
        choice stays."""
        with self._active() as library:
            before = library.GetActConfig()
            if library.GetMaxConfig() < number or (number != before
                                                   and library.SetActConfig(number) != 1):
                raise ZelTagError(f"{self.name} has no configuration {number}")
            try:
                yield library
            finally:
                library.SetActConfig(before)

    def _demand_settings(self) -> None:
        """A connect may leave settings unread: it ends at a reader that it can't read, and of some
        readers it reads the active configuration alone."""
        if self._has_read:
            return
        with self._active() as library:
            if not self._is_read() and (library.ReadCfg() != 1 or not self._is_read()):
                raise self._failure(library, "reading the settings of")
        self._has_read = True

    def _is_read(self) -> bool:
        with self._active() as library:
            configurations = library.variable("DevDat")[self.index].Cfg
            return all(configurations[number].bCfgValid
                       for number in range(library.GetMaxConfig() + 1))

    def reset_to_factory(self) -> None:
        """Returns to the factory's defaults and reads them: its settings are lost. 1.2 s."""
        with self._active() as library:
            if library.ResetFactoryDflts() != 1:
                raise self._failure(library, "resetting")

    def reset_to_user(self) -> None:
        """Returns a reader of several configurations to the user's defaults and reads them."""
        with self._active() as library:
            self._demand_several(library)
            if library.ResetUserDflts() != 1 or library.ReadCfg() != 1:
                raise self._failure(library, "resetting")

    def save_as_user(self) -> None:
        """Keeps the current settings of a reader of several configurations as user's defaults."""
        with self._active() as library:
            self._demand_several(library)
            if library.SaveUserDflts() != 1:
                raise self._failure(library, "keeping the user's defaults of")

    def _demand_several(self, library: Library) -> None:
        if library.GetCardType() == -1:
            raise ZelTagError(f"{self.name} has no user's defaults: it is no reader of several "
                              "configurations")

    def check_firmware(self, path: Path) -> FirmwareFile:
        """Asks whether the reader would take a firmware file; nothing is sent. Raises FileError for
        a damaged file, FirmwareRefused where a rule is against it.

        :param path: the file
        """
        return firmware.check(self, path)

    def load_firmware(self, path: Path, recover: bool = False) -> None:
        """Loads a firmware file; it takes minutes, and other threads wait for their readers. From
        the main thread alone: the library tells its progress by a signal, which is ignored here,
        and takes the signals that end a process until it is done. The reader starts anew behind a
        load: close the connection and connect again.

        :param path: the file
        :param recover: the rules aren't asked, since a reader that waits in its boot loader tells
            no firmware of its own
        """
        firmware.load(self, path, recover)
