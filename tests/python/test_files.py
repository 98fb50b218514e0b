# SPDX-License-Identifier: MIT
"""Settings in files: written, checked, loaded."""

import os

import pytest

import zeltag
from zeltag import FileFault, FileKind, _library


@pytest.fixture
def file(tmp_path, reader):
    """A file of the reader's settings."""
    path = tmp_path / "settings.txt"
    reader.settings.export_file(path)
    return path


def replace(path, old, new):
    text = path.read_text("latin-1")
    assert old in text
    path.write_text(text.replace(old, new), "latin-1")


def test_export_writes_one_file(file, tmp_path):
    assert os.listdir(tmp_path) == ["settings.txt"]
    assert "iIDHoldTO = 1000 " in file.read_text("latin-1")


def test_file_of_the_reader_changes_nothing(bench, port, reader, file):
    bench.start_trace()
    assert reader.settings.load_file(file) == ()
    assert bench.trace() == ""


def test_load_sends_what_differs(bench, port, reader, file):
    replace(file, "iIDHoldTO = 1000 ", "iIDHoldTO = 2010 ")
    assert reader.settings.load_file(file) == (
        zeltag.Change(0, "iIDHoldTO", 1000, 2010, 2000),)
    assert bench.holdTime(port, 0) == 40
    assert reader.settings.iIDHoldTO == 2000


def test_dry_run_changes_nothing(bench, port, reader, file):
    replace(file, "iIDHoldTO = 1000 ", "iIDHoldTO = 2000 ")
    bench.start_trace()
    assert reader.settings.load_file(file, dry_run=True) == (
        zeltag.Change(0, "iIDHoldTO", 1000, 2000, None),)
    assert (bench.trace(), reader.settings.iIDHoldTO) == ("", 1000)


def test_refused_record_shows_in_what_was_kept(reader, file):
    replace(file, "iIDHoldTO = 1000 ", "iIDHoldTO = 20000 ")
    change, = reader.settings.load_file(file)
    assert (change.new, change.kept) == (20000, 1000)


def test_every_configuration_is_exported_and_loaded(bench, tmp_path):
    bench.plug(3)
    path = tmp_path / "all.txt"
    with zeltag.connect() as connection:
        settings = connection.readers[0].configurations
        settings[2].iIDHoldTO = 5000
        settings[0].save()
        settings[0].export_file(path)
        settings[2].iIDHoldTO = 6000
        settings[0].save()
        assert [(c.configuration, c.name, c.old, c.kept) for c in settings[0].load_file(path)] == [
            (2, "iIDHoldTO", 6000, 5000)]


def test_sealed_file_is_checked(reader, tmp_path):
    path = tmp_path / "sealed.txt"
    reader.settings.export_file(path, sealed=True)
    zeltag.check_file(path)
    assert reader.settings.load_file(path, sealed=True) == ()
    replace(path, "iIDHoldTO = 1000 ", "iIDHoldTO = 2000 ")
    for use in (lambda: zeltag.check_file(path, FileKind.TEMPLATE),
                lambda: reader.settings.load_file(path, sealed=True)):
        with pytest.raises(zeltag.FileError) as caught:
            use()
        assert caught.value.fault == FileFault.CHECKSUM
        assert caught.value.line == len(path.read_text("latin-1").splitlines())
        assert str(caught.value) == (f"{path}:{caught.value.line}: the trailer on the line tells "
                                     "another checksum")


def test_missing_file_is_told(reader, tmp_path):
    with pytest.raises(zeltag.FileError, match="can't be opened") as caught:
        reader.settings.load_file(tmp_path / "none.txt")
    assert (caught.value.fault, caught.value.line) == (FileFault.OPEN, 0)


def test_file_of_another_kind_is_refused(bench, reader, tmp_path):
    path = tmp_path / "other.txt"
    path.write_text("shopping list\n")
    bench.start_trace()
    with pytest.raises(zeltag.FileError, match="no title"):
        reader.settings.load_file(path)
    assert bench.trace() == ""


def test_failed_export_leaves_the_old_file(bench, port, reader, file, tmp_path):
    before = file.read_bytes()
    bench.unplug(port)
    with pytest.raises(zeltag.DeviceError, match="exporting the settings of reader-0 failed"):
        reader.settings.export_file(file)
    assert file.read_bytes() == before
    assert os.listdir(tmp_path) == ["settings.txt"]


@pytest.mark.parametrize("lines", [5, 40, 100])
def test_file_that_was_cut_short_is_not_kept(reader, tmp_path, monkeypatch, lines):
    library = _library.load()
    write = library.WriteDevCfgToFile

    def write_half(path):
        result = write(path)
        with open(path, "rb+") as file:
            kept = b"".join(file.readlines()[:lines])
            file.truncate(len(kept))
        return result
    monkeypatch.setattr(library, "WriteDevCfgToFile", write_half)
    with pytest.raises(zeltag.FileError, match="wasn't written whole; check the space"):
        reader.settings.export_file(tmp_path / "settings.txt")
    assert os.listdir(tmp_path) == []
