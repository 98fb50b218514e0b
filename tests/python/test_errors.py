# SPDX-License-Identifier: MIT
"""Error words in words."""

import pathlib
import re

import pytest

import zeltag
from zeltag import ErrorWord

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.mark.parametrize("word, parts", [
    (0, ()),
    (0x100002, (ErrorWord.GET, ErrorWord.NEVER_READ)),
    (0x20001, (ErrorWord.FIELD,)),
    (0x1020000, (ErrorWord.SERVICE, ErrorWord.READ)),
    (0x201031, (ErrorWord.SET,)),
    (261, (ErrorWord.LINE_ANSWER,)),
    (0x90100000, (ErrorWord.BOOT_ENTRY,)),
    (0x90300000, (ErrorWord.BOOT_REFUSED,)),
    (0x91000000, (ErrorWord.INTEGRITY,)),
    (0x80000000, (ErrorWord.REFERENCE,)),
])
def test_decoded_word(word, parts):
    assert zeltag.decode(word) == parts


@pytest.mark.parametrize("word", list(ErrorWord))
def test_each_word_alone_means_itself(word):
    assert zeltag.decode(word) == (word,)


def test_every_word_of_the_header_is_there():
    header = (ROOT / "frame" / "zelTagErrors.h").read_text("utf-8")
    defined = dict(re.findall(r"#define ZELTAGAPI_ERR_(\w+) (\w+)", header))
    assert {name: int(value, 0) for name, value in defined.items()} == {
        name: int(word) for name, word in ErrorWord.__members__.items()}


def test_unknown_word_is_told_as_a_number():
    error = zeltag.DeviceError("reading", "COM1:", 0x4000000)
    assert str(error).startswith("reading COM1: failed: not known (error word 0x4000000); ")


def test_interrupted_flash_says_how_to_go_on():
    assert "recover=True" in str(zeltag.DeviceError("loading into", "a", ErrorWord.BOOT_REPLY))
    assert "recover" not in str(zeltag.DeviceError("loading into", "a", ErrorWord.BOOT_FILE))


def test_all_exceptions_are_one_family():
    for name in zeltag.__all__:
        thing = getattr(zeltag, name)
        if isinstance(thing, type) and issubclass(thing, Exception):
            assert issubclass(thing, zeltag.ZelTagError)
    assert issubclass(zeltag.NoPermission, zeltag.NoDevice)
