# SPDX-License-Identifier: MIT
"""The one state of the process: one connection, one lock, no stale and no forked use."""

import os
import threading

import pytest

import zeltag
from zeltag import _process


def test_second_connect_is_refused(connection):
    with pytest.raises(zeltag.AlreadyConnected, match="one table of devices for all"):
        zeltag.connect()
    with pytest.raises(zeltag.AlreadyConnected):
        next(zeltag.readers())
    assert connection.is_open


def test_reader_of_a_closed_connection_is_stale(connection, reader):
    settings = reader.settings
    connection.close()
    connection.close()
    assert not connection.is_open and not reader.is_open
    for use in (reader.read, reader.ping, settings.save, lambda: settings.iIDHoldTO,
                lambda: reader.luid):
        with pytest.raises(zeltag.StaleReader, match="with zeltag.connect"):
            use()
    with pytest.raises(zeltag.StaleReader):
        connection.__enter__()


def test_reader_stays_stale_behind_a_new_connect(bench, port):
    with zeltag.connect() as connection:
        old = connection.readers[0]
    with zeltag.connect() as connection:
        assert connection.readers[0].read() is None
        with pytest.raises(zeltag.StaleReader):
            old.read()


def test_readers_are_stale_behind_their_loop(bench, port):
    readers = list(zeltag.readers())
    with pytest.raises(zeltag.StaleReader):
        readers[0].read()
    assert [reader.read() for reader in zeltag.readers()] == [None]


def test_loop_that_is_left_disconnects(bench, port):
    for reader in zeltag.readers():
        break
    with zeltag.connect():
        pass


def test_failed_connect_leaves_no_connection(bench):
    with pytest.raises(zeltag.NoDevice):
        zeltag.connect()
    bench.plug(1)
    with zeltag.connect() as connection:
        assert len(connection.devices) == 1


def test_connect_waits_for_a_device(bench, monkeypatch):
    looks = []

    def turn(_):
        looks.append(bench.plug(1) if len(looks) == 2 else None)
        bench.sleep(0.5)
    monkeypatch.setattr("zeltag._clock.sleep", turn)
    with zeltag.connect(wait=5) as connection:
        assert (len(connection.readers), len(looks)) == (1, 3)


def in_child(work):
    """What the function returns in a forked child, as text."""
    reading, writing = os.pipe()
    child = os.fork()
    if child == 0:
        try:
            text = str(work())
        except BaseException as error:
            text = type(error).__name__
        os.write(writing, text.encode())
        os._exit(0)
    os.close(writing)
    with os.fdopen(reading) as told:
        text = told.read()
    os.waitpid(child, 0)
    return text


def test_forked_child_is_refused(bench, port, connection, reader):
    assert in_child(reader.read) == "ForkedProcess"
    assert in_child(zeltag.connect) == "ForkedProcess"
    bench.present(port, 5)
    assert reader.read().id == 5


def test_forked_child_closes_nothing(connection, reader):
    assert in_child(connection.close) == "None"
    assert reader.read() is None


def test_child_forked_without_a_connection_connects(bench, port):
    assert in_child(lambda: len(zeltag.connect().readers)) == "1"


def test_child_forked_while_a_thread_holds_the_lock_is_refused_at_once(reader):
    held, over = threading.Event(), threading.Event()

    def hold():
        with _process.lock:
            held.set()
            over.wait()
    thread = threading.Thread(target=hold)
    thread.start()
    held.wait()
    try:
        assert in_child(reader.read) == "ForkedProcess"
        assert in_child(zeltag.connect) == "ForkedProcess"
    finally:
        over.set()
        thread.join()


def test_threads_read_their_own_readers(bench):
    ports = [bench.plug(1) for _ in range(4)]
    for number, port in enumerate(ports):
        bench.present(port, 100 + number)
    wrong = []

    def work(reader, number):
        for _ in range(200):
            card = reader.read()
            if card is None or card.id != number:
                wrong.append(card)
    with zeltag.connect() as connection:
        threads = [threading.Thread(target=work, args=(reader, 100 + number))
                   for number, reader in enumerate(connection.readers)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    assert wrong == []


def test_other_threads_wait_for_a_change(bench, port, connection, reader):
    order = []

    def save():
        reader.settings.save()
        order.append("other")
    thread = threading.Thread(target=save)
    with reader.settings.change() as settings:
        settings.iIDHoldTO = 5000
        thread.start()
        thread.join(0.05)
        order.append("change")
    thread.join()
    assert order == ["change", "other"]


def test_guard_is_told_plainly():
    text = " ".join(zeltag.__doc__.split())
    assert "one table of devices and one active device for the whole process" in text
