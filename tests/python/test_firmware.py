# SPDX-License-Identifier: MIT
"""Firmware files: checked, refused, loaded."""

import pathlib
import signal
import threading

import pytest

import zeltag

FILE = pathlib.Path(__file__).resolve().parents[2] / "examples" / "firmware.hex"


def test_file_tells_what_it_is():
    file = zeltag.FirmwareFile.read(FILE)
    assert (file.name[:4], file.lines) == ("ZT7_", 40)


def test_damaged_file_is_told_with_its_line(tmp_path):
    path = tmp_path / "firmware.hex"
    text = FILE.read_text("latin-1")
    path.write_text(text.replace("ZT7", "ZT8", 1), "latin-1")
    with pytest.raises(zeltag.FileError, match=rf"^{path}:\d+: .*checksum"):
        zeltag.FirmwareFile.read(path)


def test_reader_would_take_the_file(bench, port, reader):
    bench.start_trace()
    assert reader.check_firmware(FILE).lines == 40
    assert bench.trace() == ""


def test_rule_refuses_a_file(bench):
    bench.plug(0)
    with zeltag.connect() as connection:
        reader = connection.readers[0]
        reader._session.library.variable("DevDat")[0].szFWFile = b"OTHER_0100"
        with pytest.raises(zeltag.FirmwareRefused, match="may not go into reader-0") as caught:
            reader.check_firmware(FILE)
        assert caught.value.rule == 207


def test_load_sends_every_line_and_leaves_the_signals(bench, port, reader):
    before = [signal.getsignal(number) for number in (signal.SIGINT, signal.SIGUSR1)]
    reader.load_firmware(FILE)
    assert bench.linesLoaded(port) == 40
    assert [signal.getsignal(number) for number in (signal.SIGINT, signal.SIGUSR1)] == before
    with pytest.raises(KeyboardInterrupt):
        signal.raise_signal(signal.SIGINT)


def test_failed_load_tells_the_error_word(bench, port, reader):
    bench.unplug(port)
    with pytest.raises(zeltag.DeviceError) as caught:
        reader.load_firmware(FILE, recover=True)
    assert caught.value.words == (zeltag.ErrorWord.BOOT_ENTRY,)


def test_load_beside_the_main_thread_is_refused(bench, port, reader):
    errors = []

    def load():
        try:
            reader.load_firmware(FILE)
        except zeltag.ZelTagError as error:
            errors.append(str(error))
    thread = threading.Thread(target=load)
    thread.start()
    thread.join()
    assert errors == ["firmware is loaded from the main thread alone: it works with signals"]
    assert bench.linesLoaded(port) == 0
