# SPDX-License-Identifier: MIT
"""Settings as attributes, and their way to the reader."""

import datetime
import pickle

import pytest

import zeltag


def test_setting_has_its_unit(reader):
    time = reader.settings.iIDHoldTO
    assert (time, time.unit, repr(time)) == (1000, "ms", "1000 ms")
    assert time.time == datetime.timedelta(seconds=1)


def test_flat_name_and_record_are_the_same(reader):
    reader.settings.TimeParms.iIDHoldTO = 3000
    assert reader.settings.iIDHoldTO == 3000


def test_set_changes_the_memory_and_sends_nothing(bench, port, reader):
    settings = reader.settings
    bench.start_trace()
    settings.iIDHoldTO = 2000
    settings.bBeepID = True
    assert bench.trace() == ""
    assert (settings.iIDHoldTO, settings.bBeepID) == (2000, True)
    assert bench.holdTime(port, 0) == 20


def test_save_sends_and_shows_what_was_kept(bench, port, reader):
    reader.settings.iIDHoldTO = 2010
    reader.settings.save()
    assert bench.holdTime(port, 0) == 40
    assert reader.settings.iIDHoldTO == 2000
    assert bench.violations(port) == 0


def test_time_takes_a_timedelta(reader):
    reader.settings.iIDHoldTO = datetime.timedelta(seconds=1.5)
    assert reader.settings.iIDHoldTO == 1500


def test_change_writes_once(bench, port, reader):
    settings = reader.settings
    bench.start_trace()
    with settings.change():
        settings.iIDHoldTO = 2000
        settings.bBeepID = True
    assert bench.trace().count("block 1 data") == 1
    assert bench.holdTime(port, 0) == 40


def test_change_that_raises_changes_nothing(bench, port, reader):
    settings = reader.settings
    bench.start_trace()
    with pytest.raises(zeltag.SettingError):
        with settings.change():
            settings.bBeepID = True
            settings.iIDHoldTO = 20000
    assert settings.bBeepID is False
    assert bench.trace() == ""
    settings.save()
    assert reader.settings.bBeepID is False


@pytest.mark.parametrize("name, value, text", [
    ("iIDHoldTO", 12751, "iIDHoldTO can't be 12751: it takes 0 to 12750 ms in steps of 50"),
    ("iIDHoldTO", -1, "iIDHoldTO can't be -1: it takes 0 to 12750 ms in steps of 50"),
    ("iTotalBitCnt", 25, "iTotalBitCnt can't be 25: it takes 26 to 255"),
    ("bBeepID", 2, "bBeepID can't be 2: it takes 0 to 1"),
    ("iELDelim", "x", "iELDelim: 'x' is no whole number"),
    ("ExFeatures01", 1, "ExFeatures01 is read-only"),
])
def test_value_out_of_range_is_refused(reader, name, value, text):
    with pytest.raises(zeltag.SettingError) as caught:
        setattr(reader.settings, name, value)
    assert str(caught.value).startswith(text)
    assert caught.value.name == name
    assert isinstance(caught.value, ValueError)


def test_range_that_depends_on_the_reader_is_the_librarys(reader):
    with pytest.raises(zeltag.SettingError, match="can't be 16 on reader-0: .*0x201010"):
        reader.settings.iLeadParityBitCnt = 16


def test_misspelt_setting_is_refused(reader):
    with pytest.raises(AttributeError, match="there is no setting iIDHoldTo"):
        reader.settings.iIDHoldTo = 1
    with pytest.raises(AttributeError):
        reader.settings.TimeParms.bBeepID = True


def test_flag_that_travels_with_another_record_reaches_the_reader(reader):
    reader.settings.bNotBootDev = True
    reader.settings.save()
    assert reader.settings.bNotBootDev is True


def test_luid_is_saved_with_the_settings(reader):
    reader.luid = 4711
    reader.settings.save()
    assert reader.luid == 4711
    with pytest.raises(ValueError):
        reader.luid = 65536


def test_modes_and_field_data(reader):
    settings = reader.settings
    settings.AZERTYShiftLock = True
    data = bytes(range(2)) + settings.field_data[2:]
    settings.field_data = data
    settings.save()
    assert settings.AZERTYShiftLock is True
    with pytest.raises(zeltag.SettingError, match="128 bytes, not 3"):
        settings.field_data = b"abc"
    with pytest.raises(zeltag.SettingError, match="16 bytes"):
        settings.set_keys(bytes(16), b"")


def test_configurations_are_apart(bench):
    port = bench.plug(3)
    with zeltag.connect() as connection:
        reader = connection.readers[0]
        assert len(reader.configurations) == 3
        reader.configurations[2].iIDHoldTO = 5000
        reader.settings.save()
        assert [one.iIDHoldTO for one in reader.configurations] == [1000, 1000, 5000]
        assert [bench.holdTime(port, number) for number in range(3)] == [20, 20, 100]
        assert reader.settings.number == 0


def test_second_reader_of_several_configurations_tells_them_all(bench):
    bench.plug(1)
    bench.plug(4)
    with zeltag.connect() as connection:
        assert [one.iIDHoldTO for one in connection.readers[1].configurations] == [1000] * 4


def test_card_type_of_a_configuration(bench):
    bench.plug(2)
    with zeltag.connect() as connection:
        first, second = connection.readers[0].configurations
        second.card_type = 0x1204
        second.card_priority = 1
        second.save()
        assert (second.card_type, second.card_priority) == (0x1204, 1)
        assert first.card_type != 0x1204
        with pytest.raises(zeltag.SettingError):
            second.card_priority = 2


def test_reader_of_one_configuration_has_no_card_type(reader):
    assert (reader.settings.card_type, reader.settings.card_priority) == (None, None)
    with pytest.raises(zeltag.SettingError):
        reader.settings.card_type = 1
    with pytest.raises(zeltag.ZelTagError, match="no user's defaults"):
        reader.reset_to_user()


def test_factory_reset_brings_the_settings_back(bench, port, reader):
    reader.settings.iIDHoldTO = 5000
    reader.settings.save()
    reader.reset_to_factory()
    assert reader.settings.iIDHoldTO == 1000


def test_user_defaults_of_several_configurations(bench):
    bench.plug(2)
    with zeltag.connect() as connection:
        reader = connection.readers[0]
        reader.settings.iIDHoldTO = 5000
        reader.settings.save()
        reader.save_as_user()
        reader.settings.iIDHoldTO = 6000
        reader.settings.save()
        reader.reset_to_user()
        assert reader.settings.iIDHoldTO == 5000


def test_save_that_fails_says_what_to_do(bench, port, reader):
    reader.settings.iIDHoldTO = 5000
    bench.unplug(port)
    with pytest.raises(zeltag.DeviceError) as caught:
        reader.settings.save()
    error = caught.value
    assert str(error).startswith("writing the settings of reader-0 failed")
    assert str(error).endswith("it may have been unplugged: check its cable, then connect again")
    assert (error.what, error.device) == ("writing the settings of", "reader-0")


def test_settings_that_cannot_be_read_back_tell_the_error_word(bench, port, reader):
    settings = reader.settings
    bench.unplug(port)
    with pytest.raises(zeltag.DeviceError) as caught:
        settings.read_back()
    assert caught.value.words == (zeltag.ErrorWord.READ,)
    assert "failed: reading the configuration failed (error word 0x20000); " in str(caught.value)


def test_words_are_described():
    words = {word.name: word for word in zeltag.Settings.words()}
    hold = words["iIDHoldTO"]
    assert (hold.record, hold.least, hold.most, hold.unit, hold.step) == (
        "TimeParms", 0, 12750, "ms", 50)
    assert zeltag.TimeParms.iIDHoldTO.__doc__ == (
        "Card ID remains valid for this msec time (50msec gran.). 0 to 12750 ms in steps of 50")
    assert list(words)[0] == "bFixLenDsp" and "bVolatile" not in words


def test_quantity_is_a_number_that_pickles():
    time = zeltag.Quantity(50, "ms")
    copy = pickle.loads(pickle.dumps(time))
    assert (copy, copy.unit, copy + 1) == (50, "ms", 51)
    with pytest.raises(ValueError, match="no time"):
        zeltag.Quantity(5, "inches").time
