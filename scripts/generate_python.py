#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the parts of the Python package that follow from the library's tables and public headers.
--check only compares."""

import pathlib
import re
import sys
import textwrap

import public_headers as headers
import python_settings
from python_settings import quoted

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
    "zelObserver": "c_void_p",
}
OPAQUE = {"std::string", "pthread_mutex_t", "pthread_mutexattr_t", "ErrorCodes*"}


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
    return list({row[1]: row for row in reversed(rows)}.values())[::-1]


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


def settings():
    return HEAD.format("The settings of the devices, word by word.",
                       "frame/records.def, frame/band_settings.def,\nfamily/tag/validators.cpp and "
                       "frame/zelTagEcho.h") + python_settings.text()


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
