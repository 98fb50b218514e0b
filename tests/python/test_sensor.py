# SPDX-License-Identifier: MIT
"""Presence sensors. No scan of this platform tells one: the bench hands it to the library."""

import ctypes

import pytest

import zeltag
from zeltag import _library


@pytest.fixture
def sensor(bench, monkeypatch):
    """A sensor that sees something 40 inches away."""
    library = _library.load()
    found = ctypes.cast(library._dll.zelecho_FoundDevice, ctypes.c_void_p)

    connect_nothing = library.USBConnect

    def connect(_):
        connect_nothing(None)
        bench.sensor(40, found)
        library.SetActDev(0)
        return library.ReadCfg()
    monkeypatch.setattr(library, "USBConnect", connect)
    with zeltag.connect() as connection:
        yield connection.sensors[0]


def test_distance_has_its_unit(sensor):
    assert (repr(sensor.distance), sensor.look()) == (
        "40 inches", zeltag.Range(zeltag.Quantity(40, "inches"), True, 1))


def test_settings_are_saved(sensor):
    sensor.settings.MaxDistS = 50
    sensor.settings.SonarParms.MinDistS = 10
    sensor.settings.save()
    assert (sensor.settings.MaxDistS, repr(sensor.settings.MinDistS)) == (50, "10 inches")
    with pytest.raises(zeltag.SettingError, match="it takes 200 to 1020 ms in steps of 4"):
        sensor.settings.PingRateS = 100


def test_file_is_exported_and_loaded(sensor, tmp_path):
    path = tmp_path / "sensor.txt"
    sensor.settings.export_file(path)
    sensor.settings.MaxDistS = 50
    sensor.settings.save()
    assert [change.name for change in sensor.settings.load_file(path)] == ["MaxDistS"]


def test_keys_can_be_halted(sensor):
    sensor.halt()
    sensor.halt(False)
