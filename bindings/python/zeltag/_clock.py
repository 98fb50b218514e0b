# SPDX-License-Identifier: MIT
"""The clock of everything that waits here; a test puts another one in its place."""

from __future__ import annotations

import time
from typing import Iterator

sleep = time.sleep
now = time.monotonic


def looks(seconds: float, interval: float) -> Iterator[None]:
    """A turn at once, then one each interval until the time is over."""
    end = now() + seconds
    yield
    while now() < end:
        sleep(min(interval, max(0.0, end - now())))
        yield
