# SPDX-License-Identifier: MIT
"""Where readers are looked for, and what is said when none is there."""

import json
import os
import pathlib
import socket
import subprocess
import sys
import threading

import pytest

import zeltag
from zeltag import _places


def test_usb_without_a_reader_is_told(bench, monkeypatch):
    monkeypatch.setattr(_places, "HIDRAW", "/nowhere")
    with pytest.raises(zeltag.NoDevice, match="no reader found; plug one in"):
        zeltag.connect()


def test_reader_that_may_not_be_opened_is_told(bench, monkeypatch, tmp_path):
    node = tmp_path / "node"
    node.touch()
    monkeypatch.setattr(_places, "_reader_nodes", lambda: [str(node)])
    monkeypatch.setattr(os, "access", lambda *_: False)
    with pytest.raises(zeltag.NoPermission, match="no permission to open the reader .*uaccess"):
        zeltag.connect()


def test_node_of_a_reader_is_known_by_its_identity(tmp_path, monkeypatch):
    for number, identity in ((0, "00005A3E:00009D23"), (1, "0000046D:0000C31C")):
        folder = tmp_path / f"hidraw{number}" / "device"
        folder.mkdir(parents=True)
        (folder / "uevent").write_text(f"DRIVER=hid\nHID_ID=0003:{identity}\n")
    monkeypatch.setattr(_places, "HIDRAW", str(tmp_path))
    assert _places._reader_nodes() == ["/dev/hidraw0"]


@pytest.mark.parametrize("ascii", [False, True])
def test_reader_on_a_line_is_read(bench, ascii):
    bench.line(0x4711, ascii)
    with zeltag.connect(bench.LINE, ascii=ascii) as connection:
        reader = connection.readers[0]
        assert repr(reader) == "<Reader 0: COM1: at /dev/ttySIM1>"
        assert (reader.read().id, reader.settings.iIDHoldTO) == (0x4711, 1000)
        reader.settings.bBeepID = True
        reader.settings.save()
        assert reader.settings.bBeepID is True


def test_card_data_on_a_line_is_refused(bench):
    bench.line(0x4711)
    with zeltag.connect(bench.LINE) as connection:
        with pytest.raises(zeltag.DeviceError, match="reading the card data of COM1: failed"):
            connection.readers[0].card_data()


def test_reader_behind_a_bridge_is_read():
    """On the real clock: in processes of their own."""
    program = pathlib.Path(os.environ["ZELTAG_LIBRARY"]).parent.parent / "bin" / "zelsim"
    code = ("import sys, zeltag\nfor reader in zeltag.readers(tcp=sys.argv[1]):\n"
            "    print(reader.place == sys.argv[1], reader.part_number)")
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    with subprocess.Popen([program, "bridge", "--port", "0", "--no-discovery", "--json"], text=True,
                          stdout=subprocess.PIPE, env=environment) as bridge:
        try:
            port = json.loads(bridge.stdout.readline())["listening"]["port"]
            result = subprocess.run([sys.executable, "-c", code, f"127.0.0.1:{port}"],
                                    capture_output=True, text=True, env=environment, timeout=60)
        finally:
            bridge.terminate()
    assert (result.stdout, result.stderr) == ("True ZT7\n", "")


def test_missing_line_is_told(bench):
    with pytest.raises(zeltag.NoDevice, match="there is no /dev/ttyNone; plug the adapter in"):
        zeltag.connect("/dev/ttyNone")


def test_file_is_no_line(bench, tmp_path):
    path = tmp_path / "file"
    path.touch()
    with pytest.raises(zeltag.NoDevice, match="file is no serial line"):
        zeltag.connect(str(path))


def test_silent_line_is_told(bench):
    with pytest.raises(zeltag.NoDevice, match="no reader answers on /dev/null at 19200 baud"):
        zeltag.connect("/dev/null", baud=19200)


@pytest.mark.parametrize("arguments, text", [
    ({"port": "/dev/ttyS0", "tcp": "host"}, "exclude each other"),
    ({"ascii": True}, "readers on USB know no ASCII"),
    ({"tcp": ":1"}, ":1 is no address"),
    ({"tcp": "host:0"}, "host:0 is no address"),
    ({"tcp": "host:port"}, "write one as 10.0.0.17:10001"),
])
def test_contradiction_is_refused(arguments, text):
    with pytest.raises(ValueError, match=text):
        zeltag.connect(**arguments)


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as server:
        return server.getsockname()[1]


def test_bridge_that_refuses_is_told(bench):
    with pytest.raises(zeltag.NoDevice, match="no connection to 127.0.0.1:.*refused"):
        zeltag.connect(tcp=f"127.0.0.1:{free_port()}")


def test_whole_network_is_no_bridge(bench):
    with pytest.raises(zeltag.NoDevice, match="stands for a whole network"):
        zeltag.connect(tcp="127.0.0.0:1")


def test_bridge_without_a_reader_is_told(bench):
    with socket.create_server(("127.0.0.1", 0)) as server:
        server.settimeout(0.05)
        over = threading.Event()

        def take():
            while not over.is_set():
                try:
                    server.accept()[0].close()
                except socket.timeout:
                    pass
        thread = threading.Thread(target=take)
        thread.start()
        try:
            with pytest.raises(zeltag.NoDevice, match="takes the connection, but no reader"):
                zeltag.connect(tcp="127.0.0.1:%d" % server.getsockname()[1])
        finally:
            over.set()
            thread.join()
