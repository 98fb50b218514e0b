#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What the rules for udev do to each product of the table, and to everything else."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from udev_rules import Device, parse

ROOT = pathlib.Path(__file__).resolve().parents[2]
SEAT_RULES = 73  # the number of the system's file that acts on the tag


def table():
    text = (ROOT / "frame" / "products.def").read_text(encoding="utf-8")
    rows = re.findall(r"^(?:PRODUCT|LISTED)\(\w+, (\w{4}), (\w{4}),", text, re.MULTILINE)
    if len(rows) < 3 or len(rows) != len(re.findall(r"^\w+\(", text, re.MULTILINE)):
        sys.exit("the table of products can't be read")
    return [(vendor.lower(), product.lower()) for vendor, product in rows]


def plugged(identity, action="add"):
    """A device's USB node, its hidraw node and its serial line, as sysfs lays them out."""
    usb = Device("usb", None, {"idVendor": identity[0], "idProduct": identity[1]},
                 ACTION=action, DEVTYPE="usb_device")
    interface = Device("usb", usb, {"bInterfaceNumber": "00"}, DEVTYPE="usb_interface")
    hidraw = Device("hidraw", Device("hid", interface), ACTION=action)
    return usb, hidraw, Device("tty", interface, ACTION=action)


def effects(rules, identity, action="add"):
    usb, hidraw, line = (device.obey(rules) for device in plugged(identity, action))
    return (hidraw.tags, usb.tags | line.tags, usb.properties.get("ID_MM_DEVICE_IGNORE"),
            line.properties.get("ID_MM_PORT_IGNORE"))


def expect(actual, expected, what):
    if actual != expected:
        sys.exit(f"{what}\nexpected: {expected}\nis:       {actual}")


def products(path):
    """Each product's hidraw node goes to the seat; modem managers pass its lines by."""
    for identity in table():
        expect(effects(parse(path), identity), ({"uaccess"}, set(), "1", "1"), identity)
    expect(effects(parse(path), table()[0], "remove"), (set(), set(), None, None), "when it goes")


def strangers(path):
    """Nobody else's device is touched: not even one of the same vendor or the same product."""
    known = set(table())
    vendors, numbers = ({row[part] for row in known} | {"0001"} for part in (0, 1))
    for identity in {(v, p) for v in vendors for p in numbers} - known:
        expect(effects(parse(path), identity), (set(), set(), None, None), identity)


def permissions(path):
    """No node is opened by its mode, and none to all: the seat's user gets it by the tag alone."""
    text = path.read_text(encoding="utf-8")
    expect(re.findall(r"MODE|GROUP|OWNER|RUN|666|777", text), [], "words that open a node")
    for rule in parse(path):  # refuses any other key
        expect(re.findall(r'=="[^"]*[A-F][^"]*"', rule.line), [], "IDs are in lower case")


def order(path):
    """The number comes before that of the system's file."""
    expect(path.name, "70-zeltag.rules", "the file's name")
    expect(int(path.name[:2]) < SEAT_RULES, True, "in time for the tag")


def readme(path):
    """A rule that the README shows is one of the file."""
    shown = re.findall(r"^SUBSYSTEM==.*$", (ROOT / "README.md").read_text("utf-8"), re.MULTILINE)
    expect(set(shown) - {rule.line for rule in parse(path)}, set(), "shown and not in the file")


def complaints(path):
    """What udev says of the file: by its own check, or when it reads it, in a private /run."""
    verify = ["udevadm", "verify", "--no-summary", str(path)]
    if subprocess.run(["udevadm", "verify", "--help"], capture_output=True).returncode == 0:
        return subprocess.run(verify, capture_output=True, text=True).stderr
    script = ('mount -t tmpfs none /run && mkdir -p /run/udev/rules.d && cp "$1" /run/udev/rules.d'
              ' && udevadm test /sys/class/mem/null 2>&1')
    result = subprocess.run(["unshare", "--map-root-user", "--mount", "sh", "-c", script, "sh",
                             str(path)], capture_output=True, text=True)
    lines = [line for line in result.stdout.splitlines() if path.name in line]
    if f"Reading rules file: /run/udev/rules.d/{path.name}" not in lines:
        print("udevadm can't read rules in a namespace of its own here: " + result.stderr)
        sys.exit(77)
    return "\n".join(line for line in lines if not line.startswith("Reading"))


def udevadm(path):
    """udev takes each line; it complains of a line that is none."""
    if shutil.which("udevadm") is None:
        print("udevadm not found")
        sys.exit(77)
    expect(complaints(path), "", "udev complains")
    with tempfile.TemporaryDirectory() as folder:
        broken = pathlib.Path(folder) / path.name
        broken.write_text(path.read_text(encoding="utf-8") + 'SUBSYSTEM=="usb", TAGS+="x"\n',
                          encoding="utf-8")
        expect(complaints(broken) != "", True, "a broken line is told")


CASES = {case.__name__: case for case in (products, strangers, permissions, order, readme, udevadm)}

if __name__ == "__main__":
    os.environ["PATH"] += ":/usr/sbin:/sbin"
    CASES[sys.argv[2]](pathlib.Path(sys.argv[1]).resolve())
