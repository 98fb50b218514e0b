# SPDX-License-Identifier: MIT
"""Presence sensors."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass

from ._generated.structures import sRangeInfo
from ._words import Quantity
from .device import Device
from .settings import SensorSettings


@dataclass(frozen=True)
class Range:
    """What a sensor sees."""

    #: How far the nearest object is, inches; 0 where nothing is.
    distance: Quantity
    #: Whether it is within the limits of `settings.SonarParms`.
    is_present: bool
    #: The sensor's whole status byte.
    status: int


class Sensor(Device):
    """A presence sensor."""

    product = "zelEcho"

    def look(self) -> Range:
        """What the sensor sees now: one report out, a pause of 250 ms, one report in."""
        info = sRangeInfo()
        with self._active() as library:
            if library.GetObjRangeInfo(ctypes.byref(info)) != 1:
                raise self._failure(library, "asking")
        return Range(Quantity(info.iObjDist, "inches"), bool(info.bRangeStat0), info.iRangeStat)

    @property
    def distance(self) -> Quantity:
        """How far the nearest object is, inches; the traffic of `look()`."""
        return self.look().distance

    @property
    def settings(self) -> SensorSettings:
        """The sensor's settings."""
        return SensorSettings(self)

    def halt(self, is_halted: bool = True) -> None:
        """Halts the sensor's keystrokes, or lets them go on: one report out.

        :param is_halted: False lets them go on
        """
        with self._active() as library:
            if library.HaltKBSends(int(is_halted)) != 1:
                raise self._failure(library, "halting")
