# SPDX-License-Identifier: MIT
"""Tests the door: `zelsim run door.toml -- pytest`."""

import subprocess

import pytest
import zeltag

import door


def simulate(*words):
    subprocess.run(["zelsim", *words], check=True)


@pytest.fixture
def reader():
    simulate("plug")
    simulate("remove")
    with zeltag.connect() as connection:
        yield connection.readers[0]


def test_the_door_stays_closed_without_a_card(reader):
    assert not door.is_open(reader)


def test_the_door_opens_to_the_card_that_is_welcome(reader):
    simulate("tap", "26:3512")
    assert door.is_open(reader)


def test_the_door_stays_closed_to_a_stranger(reader):
    simulate("tap", "77:1001")
    assert not door.is_open(reader)


def test_a_reader_that_is_unplugged_is_an_error(reader):
    simulate("unplug")
    with pytest.raises(zeltag.DeviceError):
        door.is_open(reader)
