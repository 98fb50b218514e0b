# SPDX-License-Identifier: MIT
"""The settings of the devices as Python text: a class a record, a descriptor a word."""

import re
import textwrap

import public_headers as headers

ROOT = headers.ROOT
RECORD = re.compile(r"^ZEL_RECORD\((\w+), \w+, (\w+)\)$", re.MULTILINE)
WORD = re.compile(r'^ZEL_WORD\((\w+), (\d), (\w+), (?:same|"\w+"), (\w+), "(.*)", (.*)\)$',
                  re.MULTILINE)
RULE = re.compile(r"record->(\w+), (\w+), (\w+), \w+, 0x1\w{3}\}")
COUNT = re.compile(r"checkCount\(fix, record->(\w+)\)")
SETTING = re.compile(r'^ZEL_(SETTING|ARRAY|FIELDS|FIELD|FIELD_ARRAY)\((.*)\)$', re.MULTILINE)
SENSOR_RULE = re.compile(r"(\w+) (?:at most|(\d+) to) (\d+)[^(,]*\((?:code )?0x1\w{3}\)")
SENSOR_RECORDS = ("sSonarParms", "sWalkAwayParms", "sWalkUpParms", "sIdleParms")
READ_ONLY = {"isASCIIpresent", "ExFeatures01", "iTPCfgFlg3"}  # the reader's own, or made of others
LONGEST_PARITY = 142
MOST = 32767
STRIPE_STEP = 4  # ms



def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def limits():
    """Least and greatest of the words that the library tests."""
    text = (ROOT / "family" / "tag" / "validators.cpp").read_text("utf-8")
    found = {name: (0 if least == "kNoLeast" else int(least),
                    LONGEST_PARITY if most == "limit" else int(most))
             for name, least, most in RULE.findall(text)}
    return {**found, **{name: (0, 3) for name in COUNT.findall(text)}}


def word(kind, record, name, least, most, text, unit="", step=1, fixed=False):
    end = ", fixed=True)" if fixed else ")"
    if kind == "Flag":
        start = f'    {name} = Flag("{record}", "{name}",'
    else:
        extra = f' "{unit}", {step},' if kind == "Measure" else ""
        start = f'    {name} = {kind}("{record}", "{name}", {least}, {most},{extra}'
    line = f"{start} {quoted(text)}{end}\n"
    if len(line) <= 101:
        return line
    parts = textwrap.wrap(text, 84, drop_whitespace=False)
    body = "\n".join(" " * 8 + quoted(part) for part in parts)
    return f"{start}\n{body}{end}\n"


def tag_word(record, name, kind, text, place):
    unit = int(re.search(r"(\d+)\)$", place).group(1)) if place.startswith("wire") else 1
    least, most = limits().get(name, (0, MOST))
    text = text.strip() or "(the reader's own)"
    shape = "Flag" if kind == "flag" else "Measure" if unit > 1 else "Number"
    return word(shape, record, name, least, most, text, "ms", unit, name in READ_ONLY)


def tag_records():
    rows = (ROOT / "frame" / "records.def").read_text("utf-8")
    classes = {}
    for record, _, name, kind, text, place in WORD.findall(rows):
        if kind != "pad" and name != "bVolatile":  # tells a set to act at once: Reader.show()
            classes.setdefault(record, []).append(tag_word(record, name, kind, text, place))
    calls = dict(RECORD.findall(rows))
    texts = [f'class {record}(Words):\n    """The record of Get{calls[record]}() and '
             f'Set{calls[record]}()."""\n\n{"".join(words)}' for record, words in classes.items()]
    table = "".join(f'    "{record}": ("{name}", structures.s{record}),\n'
                    for record, name in calls.items())
    return texts, list(classes), table


def stripe_rows():
    """The classes of a user field and of all settings of a magnetic stripe reader."""
    field, rest = [], []
    for macro, row in SETTING.findall((ROOT / "frame" / "band_settings.def").read_text("utf-8")):
        if macro == "FIELDS" or "most" in row.split(", "):
            continue
        names, text = row.split(', "', 1)
        parts = names.split(", ")
        name, kind, most = parts[0], parts[-2], int(parts[-1])
        place = parts[1] if macro == "SETTING" else "Band." + name if macro == "ARRAY" else ""
        shape = ("Array" if macro.endswith("ARRAY")
                 else {"flag": "Flag", "time": "Measure"}.get(kind, "Number"))
        line = word(shape, place, name, 0, most, text.rstrip('"').removeprefix("// "), "ms",
                    STRIPE_STEP)
        (field if macro.startswith("FIELD") else rest).append(line)
    return [f'class UserField(Words):\n    """What a magnetic stripe reader cuts of a track, and '
            f'the keys it sends."""\n\n{"".join(field)}',
            f'class StripeWords(Words):\n    """The settings of a magnetic stripe reader that '
            f'stand alone."""\n\n{"".join(rest)}']


def sensor_unit(text):
    if re.match(r"ms ", text):
        return "ms"
    if re.match(r"s ", text):
        return "s"
    return "inches" if text.endswith(", inches") else ""


def sensor_limits():
    text = headers.in_one_line(headers.headers()["zelTagEcho.h"])
    return {name: (int(least or 0), int(most)) for name, least, most in SENSOR_RULE.findall(text)}


def sensor_word(record, member):
    unit = sensor_unit(member.text)
    step = re.search(r"in steps of (\d+)", member.text)
    least, most = sensor_limits().get(member.name, (0, MOST))
    return word("Measure" if unit else "Number", record, member.name, least, most, member.text,
                unit, step.group(1) if step else 1)


def sensor_records():
    texts = [f'class {name[1:]}(Words):\n    """The record of Get{name[1:]}() and '
             f'Set{name[1:]}()."""\n\n'
             + "".join(sensor_word(name[1:], member) for member in headers.structs()[name])
             for name in SENSOR_RECORDS]
    table = "".join(f'    "{name[1:]}": ("{name[1:]}", structures.{name}),\n'
                    for name in SENSOR_RECORDS)
    return texts, [name[1:] for name in SENSOR_RECORDS], table


def text():
    tags, tag_names, tag_table = tag_records()
    sensors, sensor_names, sensor_table = sensor_records()
    bases = textwrap.fill(", ".join(tag_names), 80).replace("\n", "\n               ")
    sensor_bases = ", ".join(sensor_names)
    groups = [
        f'class TagWords({bases}):\n'
        '    """The words of all ten records of a proximity reader."""\n',
        f'class SensorWords({sensor_bases}):\n'
        '    """The words of all four records of a presence sensor."""\n']
    return ("from __future__ import annotations\n\nfrom typing import Any\n\n"
            + "from . import structures\n"
            + "from .._words import Array, Flag, Measure, Number, Words\n\n"
            + "# The calls on a record are GetNAME and SetNAME.\n"
            + f"RECORDS: dict[str, tuple[str, Any]] = {{\n{tag_table}{sensor_table}}}\n\n\n"
            + "\n\n".join(tags + sensors + groups + stripe_rows()))
