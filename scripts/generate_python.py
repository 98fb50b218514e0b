#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the parts of the Python package that follow from the library's tables and public headers.
--check only compares."""

import pathlib
import re
import sys
import textwrap

import public_headers as headers

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER = ROOT / "bindings" / "python" / "zeltag" / "_generated"
HEAD = '''\
# SPDX-License-Identifier: MIT
"""{0}

Made by scripts/generate_python.py of {1}; change those."""

'''
TYPES = {
    "void": "None", "bool": "c_bool", "char": "c_char", "unsigned char": "c_ubyte",
    "short": "c_short", "unsigned short": "c_ushort", "int": "c_int", "unsigned int": "c_uint",
    "int16_t": "c_int16", "uint16_t": "c_uint16", "uint8_t": "c_uint8", "int32_t": "c_int32",
    "uint32_t": "c_uint32", "int64_t": "c_int64", "uint64_t": "c_uint64", "intptr_t": "c_ssize_t",
    "uintptr_t": "c_size_t", "void*": "c_void_p", "CPort*": "c_void_p", "const char*": "c_char_p",
    "zelMarkerFunction": "c_void_p",
}
OPAQUE = {"std::string", "pthread_mutex_t", "pthread_mutexattr_t", "ErrorCodes*"}
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


def ctype(kind):
    if kind in TYPES:
        return TYPES[kind]
    if kind.endswith("*"):
        return f"POINTER({ctype(re.sub('^(const |struct )*', '', kind[:-1]))})"
    return kind


def argument(kind):
    return "c_char_p" if kind == "char*" else ctype(kind)


def with_sizes(kind, sizes):
    text = ctype(kind)
    for size in reversed(sizes):
        inner = f"({text})" if "*" in text else text
        text = f"{inner} * {headers.constants().get(size, size)}"
    return text


def prototype(function):
    arguments = ", ".join(argument(kind) for kind in function.arguments if kind != "...")
    line = f'    "{function.name}": ({ctype(function.result)}, [{arguments}]),\n'
    return line if len(line) <= 101 else line.replace("), [", "),\n        [").replace(
        ": (c_int, [", ": (c_int,\n        [").replace(": (c_char_p, [", ": (c_char_p,\n        [")


def used(text):
    """The import of those of ctypes that the text uses."""
    names = sorted(set(re.findall(r"\b(c_\w+|POINTER|Structure)\b", text)))
    return textwrap.fill(f"from ctypes import ({', '.join(names)})", 100,
                         subsequent_indent=" " * 20, break_on_hyphens=False) + "\n"


def prototypes():
    table = "".join(map(prototype, headers.functions()))
    data = "".join(f'    "{name}": {with_sizes(kind, sizes)},\n'
                   for name, (kind, sizes) in headers.data().items() if kind not in OPAQUE)
    structs = sorted(name for name in headers.structs()
                     if re.search(rf"\b{name}\b", table + data))
    names = textwrap.fill(f"from .structures import ({', '.join(structs)})", 100,
                          subsequent_indent=" " * 25)
    return (HEAD.format("The calls and variables that the public headers declare, for ctypes.",
                        "frame/zelTag*.h")
            + "from __future__ import annotations\n\n" + used(table + data)
            + "from typing import Any\n\n" + names
            + "\n\n# Result, arguments.\nFUNCTIONS: dict[str, tuple[Any, list[Any]]] = {\n"
            + table + "}\n\nDATA: dict[str, Any] = {\n" + data + "}\n")


def structure(name, members):
    fields = "".join(f'        ("{m.name}", {with_sizes(m.type, m.sizes)}),\n' for m in members)
    return f"class {name}(Structure):\n    _fields_ = [\n{fields}    ]\n"


def structures():
    body = "\n\n".join(structure(*item) for item in headers.structs().items())
    return (HEAD.format("The structs of the public headers, for ctypes.", "frame/zelTag*.h")
            + used(body) + "\n\n" + body)


def comment(text):
    lines = textwrap.wrap(text[:1].upper() + text[1:] + ("" if text.endswith(".") else "."), 92)
    return "".join(f"    #: {line}\n" for line in lines)


def enumeration(name, text, rows):
    values = "".join(f"{comment(meaning)}    {label} = {value}\n" for label, value, meaning in rows)
    return f'class {name}(enum.IntEnum):\n    """{text}"""\n\n{values}'


def meanings(name, rows):
    lines = "".join(f"    {value}: {quoted(text)},\n" for _, value, text in unique(rows))
    return f"{name}: dict[int, str] = {{\n{lines}}}\n"


def unique(rows):
    """The first row of each value: the second name of a value is another for the same."""
    return list({value: (label, value, text) for label, value, text in reversed(rows)}.values())[::-1]


def numbers():
    words = [(name, f"0x{value:X}", text) for name, value, text in headers.error_words()]
    kinds = [(label[len("ZELTAGAPI_FILE_"):], value, text)
             for label, value, text in headers.enums()["zelFileKind"]]
    faults = [(label[len("ZELTAGAPI_FAULT_"):], value, text)
              for label, value, text in headers.enums()["zelFileFault"]]
    return (HEAD.format("Error words, kinds and faults of files.",
                        "frame/zelTagErrors.h and frame/zelTagFiles.h")
            + "from __future__ import annotations\n\nimport enum\n\n\n"
            + enumeration("ErrorWord", "What an error word tells, alone or with others.", words)
            + "\n\n" + enumeration("FileKind", "What a file holds.", kinds)
            + "\n\n" + enumeration("FileFault", "What is wrong with a file.", faults)
            + "\n\n" + meanings("ERROR_MEANINGS", words)
            + "\n" + meanings("FAULT_MEANINGS", faults))


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


def settings():
    tags, tag_names, tag_table = tag_records()
    sensors, sensor_names, sensor_table = sensor_records()
    bases = textwrap.fill(", ".join(tag_names), 80).replace("\n", "\n               ")
    groups = [f'class TagWords({bases}):\n    """The words of all ten records of a proximity '
              'reader."""\n',
              f'class SensorWords({", ".join(sensor_names)}):\n    """The words of all four records '
              'of a presence sensor."""\n']
    return (HEAD.format("The settings of the devices, word by word.",
                        "frame/records.def, frame/band_settings.def,\nfamily/tag/validators.cpp and "
                        "frame/zelTagEcho.h")
            + "from __future__ import annotations\n\nfrom typing import Any\n\n"
            + "from . import structures\nfrom .._words import Array, Flag, Measure, Number, Words\n\n"
            + "# The calls on a record are GetNAME and SetNAME.\n"
            + f"RECORDS: dict[str, tuple[str, Any]] = {{\n{tag_table}{sensor_table}}}\n\n\n"
            + "\n\n".join(tags + sensors + groups + stripe_rows()))


def main():
    texts = {"__init__.py": HEAD.format("What is made of the library's tables and headers.",
                                        "them").rstrip() + "\n",
             "numbers.py": numbers(), "prototypes.py": prototypes(), "settings.py": settings(),
             "structures.py": structures()}
    for name, text in texts.items():
        path = FOLDER / name
        if sys.argv[1:] != ["--check"]:
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            sys.exit(f"{path} differs from its sources: run scripts/generate_python.py")


if __name__ == "__main__":
    main()
