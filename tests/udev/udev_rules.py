# SPDX-License-Identifier: MIT
"""What a file of rules does to a device, as udev would do it: the few keys that ours may have."""

import fnmatch
import re

TOKEN = re.compile(r'([A-Z]+)(?:\{(\w+)\})?(==|!=|\+=|=)"([^"]*)"')
MATCHES = {"ACTION", "SUBSYSTEM", "ATTR", "ATTRS", "ENV"}
ASSIGNMENTS = {"TAG", "ENV", "GOTO", "LABEL"}


class Rule:
    """One line: what a device must be, and what is then done to it."""

    def __init__(self, line):
        self.line = line
        tokens = [TOKEN.fullmatch(part) for part in line.split(", ")]
        if not all(tokens):
            raise ValueError(f"not a rule: {line}")
        self.matches = [t.groups() for t in tokens if t[3] in ("==", "!=")]
        self.assignments = [t.groups() for t in tokens if t[3] not in ("==", "!=")]
        unknown = ({key for key, *_ in self.matches} - MATCHES
                   | {key for key, *_ in self.assignments} - ASSIGNMENTS)
        if unknown:
            raise ValueError(f"{', '.join(sorted(unknown))}: not a key of ours: {line}")


class Device:
    """A device of sysfs with its parents; attributes are those of /sys."""

    def __init__(self, subsystem, parent=None, attributes=None, **properties):
        self.subsystem = subsystem
        self.parent = parent
        self.attributes = attributes or {}
        self.properties = dict(properties)
        self.tags = set()

    def itself_and_parents(self):
        device = self
        while device:
            yield device
            device = device.parent

    def is_matched_by(self, rule):
        above = [(name, value) for key, name, _, value in rule.matches if key == "ATTRS"]
        return (all(self.holds(*match) for match in rule.matches if match[0] != "ATTRS")
                and any(all(fits(device.attributes.get(name), value) for name, value in above)
                        for device in self.itself_and_parents()))

    def holds(self, key, name, operator, value):
        actual = {"ACTION": self.properties.get("ACTION"), "SUBSYSTEM": self.subsystem,
                  "ATTR": self.attributes.get(name), "ENV": self.properties.get(name)}[key]
        return fits(actual, value) == (operator == "==")

    def obey(self, rules):
        """Goes through the lines as udev does, labels and all; returns itself."""
        awaited = None
        for rule in rules:
            label = [value for key, _, _, value in rule.assignments if key == "LABEL"]
            if awaited in label:
                awaited = None
            if awaited is None and self.is_matched_by(rule):
                awaited = self.take(rule)
        return self

    def take(self, rule):
        """Where to go on from; none for the next line."""
        there = None
        for key, name, _, value in rule.assignments:
            if key == "TAG":
                self.tags.add(value)
            elif key == "ENV":
                self.properties[name] = value
            elif key == "GOTO":
                there = value
        return there


def fits(actual, pattern):
    return actual is not None and fnmatch.fnmatchcase(actual, pattern)


def parse(path):
    lines = [line.strip() for line in path.read_text(encoding="utf-8").splitlines()]
    return [Rule(line) for line in lines if line and not line.startswith("#")]
