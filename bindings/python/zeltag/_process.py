# SPDX-License-Identifier: MIT
"""Guards the one state that the library keeps for the whole process.

The library has one table of devices and one active device. So one lock stands around each
operation: it chooses the device and makes all of the operation's calls before another thread may.
"""

from __future__ import annotations

import contextlib
import os
import threading
from typing import Iterator, Optional

from ._library import Library
from .errors import AlreadyConnected, ForkedProcess, StaleReader

lock = threading.RLock()
_current: Optional[Session] = None


def _renew_lock() -> None:
    """In a forked child nobody can give back a lock that another thread held."""
    global lock
    lock = threading.RLock()


os.register_at_fork(after_in_child=_renew_lock)


class Session:
    """From a connect to its disconnect. The devices hold it; when it is over they are stale."""

    def __init__(self, library: Library) -> None:
        self.library = library
        self.pid = os.getpid()

    @property
    def is_open(self) -> bool:
        """Whether this session's devices can be used, here."""
        return _current is self and self.pid == os.getpid()

    def check(self) -> None:
        """Raises where the session can't be used."""
        if self.pid != os.getpid():
            raise ForkedProcess("this connection belongs to the process that this one was forked "
                                "from; connect before the fork in one of them only, or start the "
                                "other one by `multiprocessing`'s \"spawn\"")
        if _current is not self:
            raise StaleReader("the connection of this object is closed; keep it open while its "
                              "readers are used: with zeltag.connect() as connection: ...")


def begin(library: Library) -> Session:
    """Makes a session the process's one; under the lock."""
    global _current
    if _current is not None:
        if _current.pid != os.getpid():
            _current.check()
        raise AlreadyConnected("this process is connected already, and the library below keeps one "
                               "table of devices for all; use that connection, or close it first")
    _current = Session(library)
    return _current


def end(session: Session) -> None:
    """Ends a session, if it is the process's one; under the lock."""
    global _current
    if _current is session:
        _current = None


@contextlib.contextmanager
def operation(session: Session, index: Optional[int] = None) -> Iterator[Library]:
    """Holds the lock around an operation and makes the device of that index the active one."""
    if session.pid != os.getpid():
        session.check()
    with lock:
        session.check()
        if index is not None and session.library.SetActDev(index) != 1:
            raise StaleReader("the library's table of devices has changed: connect again")
        yield session.library
