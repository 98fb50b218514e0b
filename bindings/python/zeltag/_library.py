# SPDX-License-Identifier: MIT
"""Finds the shared library and gives its calls their types."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import pathlib
import sys
from typing import Any, Iterator, List, Optional

from ._generated.prototypes import DATA, FUNCTIONS
from .errors import LibraryNotFound

_NAMES = {"darwin": ["libzelTagAPI.7.dylib", "libzelTagAPI.dylib"]}
_LINUX_NAMES = ["libzelTagAPI.so.7", "libzelTagAPI.so"]
_MAJOR = 7

_loaded: Optional[Library] = None


class Library:
    """The calls of the shared library, each by its name, with the types of the public headers."""

    def __init__(self, path: str) -> None:
        #: What was loaded.
        self.path = path
        self._dll = ctypes.CDLL(path)
        for name, (result, arguments) in FUNCTIONS.items():
            call = getattr(self._dll, name, None)
            if call is None:
                raise LibraryNotFound(f"{path} has no {name}: it is another library or version; "
                                      f"this package needs libzelTagAPI {_MAJOR}.6.4 or newer")
            call.restype = result
            call.argtypes = arguments
            setattr(self, name, call)

    def __getattr__(self, name: str) -> Any:
        raise AttributeError(f"no public header declares {name}")

    def variable(self, name: str) -> Any:
        """An exported variable, shared with the library."""
        return DATA[name].in_dll(self._dll, name)

    @property
    def version(self) -> str:
        """Its version, such as "7.6.4"."""
        parts = (self.getLibraryVersion_Major(), self.getLibraryVersion_Minor(),
                 self.getLibraryVersion_Build())
        return ".".join(map(str, parts))


def _candidates(path: Optional[str]) -> Iterator[str]:
    told = path or os.environ.get("ZELTAG_LIBRARY")
    if told:
        yield told
        return
    names = _NAMES.get(sys.platform, _LINUX_NAMES)
    yield from names
    found = ctypes.util.find_library("zelTagAPI")
    if found:
        yield found
    yield from _of_the_same_tree(names)


def _of_the_same_tree(names: List[str]) -> Iterator[str]:
    """Beside PREFIX/lib/python3/dist-packages/zeltag lies PREFIX/lib."""
    folders = pathlib.Path(__file__).resolve().parents
    if len(folders) < 4:
        return
    folder = folders[3]
    for name in names:
        for place in (folder / name, *folder.glob(f"*/{name}")):
            if place.exists():
                yield str(place)


def load(path: Optional[str] = None) -> Library:
    """The library, loaded once a process: `path`, else what the environment variable
    ZELTAG_LIBRARY names, else where the system looks."""
    global _loaded
    if _loaded is None:
        _loaded = _load(path)
    elif path and os.path.realpath(path) != os.path.realpath(_loaded.path):
        raise LibraryNotFound(f"{_loaded.path} is loaded already: a process has one library")
    return _loaded


def _load(path: Optional[str]) -> Library:
    reasons: List[str] = []
    for candidate in _candidates(path):
        try:
            return Library(candidate)
        except OSError as error:
            reasons.append(str(error))
    raise LibraryNotFound(f"libzelTagAPI can't be loaded: {reasons[0]}; install it, or name the "
                          "file in the environment variable ZELTAG_LIBRARY")
