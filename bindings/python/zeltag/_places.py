# SPDX-License-Identifier: MIT
"""Where devices are looked for, and why none was found there."""

from __future__ import annotations

import os
import socket
import stat
from typing import List, Optional, Tuple

from ._library import Library
from .errors import NoDevice, NoPermission

USB, LINE, BRIDGE = 0, 1, 2  # of SetDevTypeSrch()
LINE_NUMBER = 1  # any: it is the only one
BRIDGE_PORT = 10001
LONGEST_CONNECT = 5.0  # s
VENDOR, PRODUCT = 0x5A3E, 0x9D23
HIDRAW = "/sys/class/hidraw"
UDEV_HINT = ('put the line SUBSYSTEM=="hidraw", ATTRS{idVendor}=="5a3e", ATTRS{idProduct}=="9d23", '
             'TAG+="uaccess" into /etc/udev/rules.d/70-zeltag.rules, then unplug it and plug it in '
             "again")


class Place:
    """The machine's USB."""

    text = ""
    ascii = False

    def check(self) -> None:
        """Raises where a look is no use."""

    def choose(self, library: Library) -> None:
        """Lets the library's next connect look here."""
        library.SetDevTypeSrch(USB)

    def why_nothing(self) -> NoDevice:
        """Why the connect found nothing."""
        for node in _reader_nodes():
            if os.path.exists(node) and not os.access(node, os.R_OK | os.W_OK):
                return NoPermission(f"no permission to open the reader {node}; {UDEV_HINT}")
        return NoDevice("no reader found; plug one in, or run the program by `zelsim run -- ...` "
                        "to try a simulated one")


def _reader_nodes() -> List[str]:
    """The hidraw nodes of proximity readers."""
    names = sorted(os.listdir(HIDRAW)) if os.path.isdir(HIDRAW) else []
    return ["/dev/" + name for name in names if _is_reader(f"{HIDRAW}/{name}/device/uevent")]


def _is_reader(uevent: str) -> bool:
    """Whether the file tells HID_ID=0003:00005A3E:00009D23: bus, vendor, product."""
    try:
        with open(uevent, encoding="utf-8", errors="replace") as file:
            text = file.read()
    except OSError:
        return False
    return f":{VENDOR:08X}:{PRODUCT:08X}" in text.upper()


class Line(Place):
    """A serial line."""

    def __init__(self, path: str, baud: int, ascii: bool) -> None:
        self.text, self.baud, self.ascii = path, baud, ascii

    def check(self) -> None:
        try:
            mode = os.stat(self.text).st_mode
        except OSError:
            return  # the library decides what it opens
        if not stat.S_ISCHR(mode):
            raise NoDevice(f"{self.text} is no serial line; `ls /dev/serial/by-id` shows the "
                           "adapters that are there")

    def choose(self, library: Library) -> None:
        library.SetComLinux(LINE_NUMBER, os.fsencode(self.text))
        library.SetComSrchRange(LINE_NUMBER, LINE_NUMBER)
        library.SetBaudRate(self.baud)
        library.SetDevTypeSrch(LINE)

    def why_nothing(self) -> NoDevice:
        if not os.path.exists(self.text):
            return NoDevice(f"there is no {self.text}; plug the adapter in; "
                            "`ls /dev/serial/by-id` shows those that are there")
        if not os.access(self.text, os.R_OK | os.W_OK):
            return NoPermission(f"no permission to open {self.text}; on most systems members of "
                                "the group dialout have it")
        return NoDevice(f"no reader answers on {self.text} at {self.baud} baud; check its cable "
                        "and power, and that no other program has the line open; a reader set to "
                        "another speed needs `baud`")


class Bridge(Place):
    """A network bridge."""

    def __init__(self, host: str, port: int, ascii: bool) -> None:
        self.host, self.port, self.ascii = host, port, ascii
        self.text = f"{host}:{port}"
        self._address = b""

    def check(self) -> None:
        """The library waits for minutes where nobody answers, so a connection is tried first."""
        try:
            self._address = socket.inet_aton(socket.gethostbyname(self.host))
        except OSError as error:
            raise NoDevice(f"the host {self.host} isn't known: {error}; check its name") from error
        if self._address[3] == 0:
            raise NoDevice(f"{self.host} stands for a whole network; give the address of one host")
        try:
            socket.create_connection((self.host, self.port), LONGEST_CONNECT).close()
        except OSError as error:
            raise NoDevice(f"no connection to {self.text}: {error}; check the address, the port "
                           "and the bridge's power") from error

    def choose(self, library: Library) -> None:
        library.SetIpPort(*self._address, self.port)
        library.SetDevTypeSrch(BRIDGE)

    def why_nothing(self) -> NoDevice:
        return NoDevice(f"{self.text} takes the connection, but no reader answers behind it; check "
                        "the cable between the two and the speed that the bridge is set to")


def _endpoint(text: str) -> Tuple[str, int]:
    host, colon, port = text.partition(":")
    if not host or (colon and not (port.isdigit() and 0 < int(port) <= 0xFFFF)):
        raise ValueError(f"{text} is no address; write one as 10.0.0.17:10001")
    return host, int(port) if colon else BRIDGE_PORT


def place_of(port: Optional[str], baud: int, tcp: Optional[str], ascii: bool) -> Place:
    """The place that the arguments name."""
    if port and tcp:
        raise ValueError("`port` and `tcp` exclude each other: a connection has one place")
    if port:
        return Line(port, baud, ascii)
    if tcp:
        return Bridge(*_endpoint(tcp), ascii)
    if ascii:
        raise ValueError("readers on USB know no ASCII protocol; leave `ascii` out")
    return Place()
