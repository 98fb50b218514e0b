# SPDX-License-Identifier: MIT
"""Magnetic stripe readers on a serial line."""

import pytest

import zeltag
from zeltag.stripe import cut


@pytest.fixture
def stripe(bench):
    """A stripe reader at the end of the line."""
    bench.stripe()
    with zeltag.connect(bench.LINE) as connection:
        yield connection.stripe_readers[0]


def test_swipe_has_the_tracks(bench, stripe):
    bench.swipe("%B00^SIMULATED?", ";00=11?")
    swipe = stripe.swipe()
    assert (swipe[1], swipe[2], swipe.track(3)) == ("B00^SIMULATED", "00=11", None)
    assert [track.number for track in swipe] == [1, 2]
    with pytest.raises(KeyError):
        swipe[3]
    assert stripe.swipe(0) is None


def test_tracks_are_not_shown_by_chance():
    swipe = zeltag.Swipe((cut(2, ";4711=99?"),))
    assert "4711" not in repr(swipe)


def test_no_swipe_is_none(bench, stripe):
    start = bench.now()
    assert stripe.swipe(2) is None
    assert bench.now() - start >= 2


def test_silent_reader_is_told(bench, stripe):
    bench.silence(100)
    with pytest.raises(zeltag.DeviceError, match="asking COM1: failed"):
        stripe.swipe(2)


@pytest.mark.parametrize("number, characters, start, text, end", [
    (1, "5B0?7", "%", "B0", "?7"),
    (1, "%B0", "%", "B0", ""),
    (2, ";1=2?", ";", "1=2", "?"),
    (3, "1?", "", "1", "?"),
    (2, "", "", "", ""),
])
def test_track_is_cut_at_its_sentinels(number, characters, start, text, end):
    assert cut(number, characters) == zeltag.Track(number, start, text, end)


def test_settings_are_saved(stripe):
    settings = stripe.settings
    settings.Beeper = 0x13
    settings.KeyPressTime = 40
    settings.LedColor = (1, 2, 3, 0, 0)
    settings.UserField[10].Length = 7
    settings.UserField[0].Keybyte = tuple(range(16))
    settings.LUID = 300
    settings.save()
    assert (settings.Beeper, settings.LedColor, stripe.luid) == (0x13, (1, 2, 3, 0, 0), 300)
    assert (settings.KeyPressTime, settings.KeyPressTime.unit) == (40, "ms")
    assert settings.UserField[10].Length == 7
    assert settings.UserField[0].Keybyte == tuple(range(16))


def test_setting_out_of_range_is_refused(stripe):
    with pytest.raises(zeltag.SettingError, match="it takes 0 to 3"):
        stripe.settings.UserField[0].Track = 4
    with pytest.raises(zeltag.SettingError, match="LedColor has 5 bytes, not 2"):
        stripe.settings.LedColor = (1, 2)


def test_change_that_raises_changes_nothing(stripe):
    before = stripe.settings.Beeper
    with pytest.raises(RuntimeError):
        with stripe.settings.change() as settings:
            settings.Beeper = 0x77
            raise RuntimeError
    assert stripe.settings.Beeper == before


def test_file_is_exported_and_loaded(stripe, tmp_path):
    path = tmp_path / "stripe.txt"
    stripe.settings.export_file(path)
    stripe.settings.Beeper = 0x21
    stripe.settings.save()
    change, = stripe.settings.load_file(path)
    assert (change.name, change.old, change.kept) == ("Beeper", 0x21, change.new)
    with pytest.raises(zeltag.ZelTagError, match="no checksum"):
        stripe.settings.export_file(path, sealed=True)


def test_file_of_a_proximity_reader_is_refused(bench, stripe, tmp_path):
    path = tmp_path / "tag.txt"
    path.write_text("/--- zelTag and OEM Reader Configuration Template File ---\n")
    with pytest.raises(zeltag.FileError, match="no title"):
        stripe.settings.load_file(path)


def test_what_the_reader_tells_of_itself(bench, stripe):
    assert (stripe.product, stripe.place, stripe.name) == ("zelBand", bench.LINE, "COM1:")
    assert (stripe.cards_read, len(stripe.counters)) == (0, 4)
    assert stripe.uptime >= 0 and "/" in stripe.firmware
    stripe.beep(2)
    stripe.light(1, 3)
    assert stripe.settings.LedColor[1] == 3
    with pytest.raises(ValueError):
        stripe.light(5, 0)
