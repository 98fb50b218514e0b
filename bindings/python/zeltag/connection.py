# SPDX-License-Identifier: MIT
"""Connects to the devices of one place and disconnects."""

from __future__ import annotations

from types import TracebackType
from typing import Dict, Iterator, Optional, Tuple, Type, TypeVar

from . import _clock, _process
from ._library import Library, load
from ._places import Place, place_of
from .cards import Card
from .device import Device
from .errors import NoDevice
from .reader import LOOK_EVERY, Reader
from .sensor import Sensor
from .stripe import StripeReader

PRODUCTS: Dict[int, Type[Device]] = {1: Reader, 2: StripeReader, 4: Sensor}
TRY_EVERY = 0.5  # s

Kind = TypeVar("Kind", bound=Device)


class Connection:
    """The devices of a place, open until `close()` or the end of a `with` block."""

    def __init__(self, library: Library, place: Place) -> None:
        with _process.lock:
            place.check()
            self._session = _process.begin(library)
            try:
                self._devices = self._open(library, place)
            except BaseException:
                self.close()
                raise

    def _open(self, library: Library, place: Place) -> Tuple[Device, ...]:
        library.zeltag_UseAsciiCommandProtocol(int(place.ascii))
        place.choose(library)
        is_all_read = library.USBConnect(None) == 1
        if library.GetDevCnt() == 0:
            raise place.why_nothing()
        devices = tuple(self._device(library, index, place)
                        for index in range(library.GetDevCnt()))
        for device in devices:
            if isinstance(device, StripeReader):
                device._has_read = is_all_read
        library.SetActDev(0)
        return devices

    def _device(self, library: Library, index: int, place: Place) -> Device:
        library.SetActDev(index)
        return PRODUCTS.get(library.GetProduct(), Device)(self._session, index, place.text)

    @property
    def devices(self) -> Tuple[Device, ...]:
        """All devices, in the library's order."""
        return self._devices

    @property
    def readers(self) -> Tuple[Reader, ...]:
        """The proximity readers."""
        return self._of(Reader)

    @property
    def stripe_readers(self) -> Tuple[StripeReader, ...]:
        """The magnetic stripe readers."""
        return self._of(StripeReader)

    @property
    def sensors(self) -> Tuple[Sensor, ...]:
        """The presence sensors."""
        return self._of(Sensor)

    def _of(self, kind: Type[Kind]) -> Tuple[Kind, ...]:
        return tuple(device for device in self._devices if isinstance(device, kind))

    @property
    def is_open(self) -> bool:
        """Whether the devices can be used."""
        return self._session.is_open

    def wait(self, seconds: float, interval: float = LOOK_EVERY
             ) -> Optional[Tuple[Reader, Card]]:
        """Waits for a card at any of the proximity readers, in looks of `Reader.read()`.

        :param seconds: how long at most
        :param interval: seconds between two rounds
        :return: the reader and its card; None when none came
        """
        for _ in _clock.looks(seconds, interval):
            for reader in self.readers:
                card = reader.read()
                if card:
                    return reader, card
        return None

    def close(self) -> None:
        """Closes the devices, which are stale then. Closing twice does no harm; a forked child
        closes nothing."""
        if not self._session.is_open:
            return
        with _process.lock:
            if self._session.is_open:
                self._session.library.USBDisconnect()
                _process.end(self._session)

    def __enter__(self) -> Connection:
        self._session.check()
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()

    def __repr__(self) -> str:
        state = f"{len(self._devices)} devices" if self.is_open else "closed"
        return f"<Connection: {state}>"


def connect(port: Optional[str] = None, *, baud: int = 9600, tcp: Optional[str] = None,
            ascii: bool = False, wait: float = 0, library: Optional[str] = None) -> Connection:
    """Finds the devices of a place and reads the settings of each. Without a place: on USB.

    :param port: a serial line, such as "/dev/ttyUSB0"
    :param baud: its speed; the readers' own is 9600
    :param tcp: a network bridge, as "host:port" or "host" for port 10001
    :param ascii: speaks the ASCII protocol, on a line or behind a bridge
    :param wait: seconds to wait for a device to be plugged in
    :param library: the shared library's file, where it isn't one that the system finds
    :return: the connection, for a `with` block; raises NoDevice, NoPermission, AlreadyConnected
    """
    place = place_of(port, baud, tcp, ascii)
    loaded = load(library)
    absent = NoDevice("no device found")
    for _ in _clock.looks(wait, TRY_EVERY):
        try:
            return Connection(loaded, place)
        except NoDevice as error:
            absent = error
    raise absent


def readers(port: Optional[str] = None, *, baud: int = 9600, tcp: Optional[str] = None,
            ascii: bool = False, wait: float = 0, library: Optional[str] = None
            ) -> Iterator[Reader]:
    """The proximity readers of a place, one after the other: connects when the loop begins and
    disconnects when it ends. To keep readers beyond their turn, use `connect()`.

    :param port: as for `connect()`, like all of the others
    """
    with connect(port, baud=baud, tcp=tcp, ascii=ascii, wait=wait, library=library) as connection:
        yield from connection.readers
