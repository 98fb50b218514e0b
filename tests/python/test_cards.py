# SPDX-License-Identifier: MIT
"""Cards in the field, in the queue and their data; the reader's other services."""

import pytest

import zeltag


def test_empty_field_is_none(reader):
    assert reader.read() is None


def test_card_has_the_bytes_that_its_bits_fill(bench, port, reader):
    bench.present(port, 0x2341B70)
    card = reader.read()
    assert (card.bits, card.data, card.id) == (26, b"\x70\x1b\x34\x02", 0x2341B70)
    assert str(card) == "26 bits 0x02341B70"


def test_read_takes_two_queries(bench, port, reader):
    bench.present(port, 5)
    bench.start_trace()
    reader.read()
    assert bench.trace() == ("> 8F 00 00 00 00 00 00 00  identifier\n"
                             "< 05 00 00 00 00 00 00 00\n"
                             "> 8E 00 00 00 00 00 00 00  bit count\n"
                             "< 1A 00 00 00 00 00 00 00\n")


def test_identifier_beyond_64_bits_is_read_by_the_long_read(bench, port, reader):
    bench.present(port, 7, 100)
    card = reader.read()
    assert (card.bits, len(card.data), card.id) == (100, 13, 7)


def test_long_read_has_all_bytes(bench, port, reader):
    bench.present(port, 7)
    assert reader.read_long() == zeltag.Card(26, b"\x07" + bytes(31))


def test_several_readers_read_their_own_cards(bench):
    ports = [bench.plug(1) for _ in range(3)]
    for number, port in enumerate(ports):
        bench.present(port, 100 + number)
    assert [reader.read().id for reader in zeltag.readers()] == [100, 101, 102]


def test_readers_may_be_used_in_any_order(bench):
    ports = [bench.plug(1), bench.plug(1)]
    with zeltag.connect() as connection:
        first, second = connection.readers
        bench.present(ports[0], 1)
        assert (second.read(), first.read().id, second.read()) == (None, 1, None)


def test_wait_ends_with_the_first_card(bench, port, reader):
    start = bench.now()
    bench.present(port, 3)
    assert reader.wait(10).id == 3
    assert bench.now() - start < 1


def test_wait_without_a_card_takes_its_time(bench, reader):
    start = bench.now()
    assert reader.wait(2) is None
    assert 2 <= bench.now() - start < 3


def test_connection_waits_for_a_card_at_any_reader(bench):
    bench.plug(1)
    second = bench.plug(1)
    with zeltag.connect() as connection:
        assert connection.wait(1) is None
        bench.present(second, 9)
        reader, card = connection.wait(1)
        assert (reader.name, card.id) == ("reader-1", 9)


def test_watch_tells_a_card_once(bench, port, reader, monkeypatch):
    looks = [1, 1, None, 2, 2, 2]

    def turn(_):
        number = looks.pop(0) if looks else None
        bench.present(port, number) if number else bench.take_away(port)
    monkeypatch.setattr("zeltag._clock.sleep", turn)
    cards = reader.watch()
    assert [next(cards).id for _ in range(2)] == [1, 2]


def test_watch_until_gone_ends_with_the_first_card(bench, port, reader):
    cards = reader.watch(until_gone=True)
    bench.present(port, 4)
    assert next(cards).id == 4
    bench.take_away(port)
    assert list(cards) == []


def test_watch_passes_over_one_lost_reply(bench, port, reader):
    bench.present(port, 6)
    bench.fail(port, 1, 6)
    assert next(reader.watch()).id == 6


def test_watch_of_an_unplugged_reader_raises(bench, port, reader):
    bench.unplug(port)
    with pytest.raises(zeltag.DeviceError, match="reading reader-0 failed: .*0x1000000.*cable"):
        next(reader.watch())


def test_queue_and_card_data_of_the_demonstration_reader(bench):
    bench.demo()
    with zeltag.connect() as connection:
        reader = connection.readers[0]
        assert reader.queued() == zeltag.QueuedCard(b"\xd2\x07\x9a", 42, (26, 1, 3))
        assert reader.card_data().startswith(b"Card 26-3512, staff, ground floor\0")


def test_empty_queue_and_no_card_data_are_none(reader):
    assert (reader.queued(), reader.card_data()) == (None, None)


def test_beep(bench, port, reader):
    reader.beep(2, long=True)
    reader.beep()
    assert bench.beeps(port) == 2
    with pytest.raises(ValueError, match="1 to 2 times, not 3"):
        reader.beep(3, long=True)


def test_leds_act_at_once_and_are_not_kept(bench, port, reader):
    reader.show(red=True)
    assert bench.red(port)
    assert reader.settings.iRedLEDState is False


def test_what_the_reader_tells_of_itself(reader):
    assert (reader.name, reader.product, reader.part_number, reader.firmware_file) == (
        "reader-0", "zelTag", "ZT7", "ZT7_0302")
    assert repr(reader) == "<Reader 0: reader-0>"
    assert (reader.beeper_volume, reader.serial_number) == (2, None)
    assert reader.device_id > 0 and reader.version_words == ()


def test_volume_can_be_set(reader):
    reader.beeper_volume = 1
    assert reader.beeper_volume == 1


def test_raw_report(bench, port, reader):
    bench.present(port, 0x1234)
    assert reader.raw(b"\x8f") == b"\x34\x12" + bytes(6)
    with pytest.raises(ValueError):
        reader.raw(bytes(9))


def test_ping_of_an_absent_reader_is_none(bench, port, reader):
    assert reader.ping().unit == "ms"
    bench.unplug(port)
    assert reader.ping() is None


def test_watch_until_gone_awaits_its_card(bench, port, reader, monkeypatch):
    looks = [4, 4, None]

    def turn(_):
        number = looks.pop(0)
        bench.present(port, number) if number else bench.take_away(port)
    monkeypatch.setattr("zeltag._clock.sleep", turn)
    assert [card.id for card in reader.watch(until_gone=True)] == [4]
