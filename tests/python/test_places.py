# SPDX-License-Identifier: MIT
"""Where readers are looked for, and what is said when none is there."""

import os
import socket
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
