# SPDX-License-Identifier: MIT
"""What the public headers declare, told to the scripts that make other things of it."""

import pathlib
import re
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
FUNCTION = re.compile(r"ZELTAGAPI_EXPORT\s+([^;(]*?)(\w+)\(([^()]*)\)"
                      r"(?:\s*ZELTAGAPI_PRINTF\S+ \d\))?;")
STRUCT = re.compile(r"typedef struct (\w+) \{(.*?)\n\} \1;", re.DOTALL)
MEMBER = re.compile(r"(?:/\*\*(?P<above>[^*]*)\*/\s*)?(?P<type>(?:const |struct |unsigned )?\w+\**)"
                    r" (?P<name>\w+)(?P<sizes>(?:\[\w+\])*);(?: */\*\*<(?P<behind>.*?)\*/)?",
                    re.DOTALL)
DATA = re.compile(r"^ZELTAGAPI_DATA\(((?:struct )?[\w:]+\*?) (\w+)((?:\[\w+\])*), \2\);",
                  re.MULTILINE)
ENUM = re.compile(r"^enum (\w+) \{(.*?)\};", re.MULTILINE | re.DOTALL)
ENUMERATOR = re.compile(r"(\w+) = (\w+),?\s*(?:/\*\*<(.*?)\*/)?", re.DOTALL)
DEFINE = re.compile(r"^#define ZELTAGAPI_ERR_(\w+) (\w+)\s*/\*\*<(.*?)\*/",
                    re.MULTILINE | re.DOTALL)


class Function(NamedTuple):
    name: str
    result: str
    arguments: list  # types


class Member(NamedTuple):
    name: str
    type: str
    sizes: list  # of an array, the outermost first
    text: str


def in_one_line(text):
    return re.sub(r"\s*\n\s*\*?\s*", " ", text or "").strip()


def without_comments(text):
    return re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.DOTALL)


def headers():
    """Name and text of each public header."""
    return {path.name: path.read_text("utf-8")
            for path in sorted((ROOT / "frame").glob("zelTag*.h")) if path.name != "zelTagExport.h"}


def argument_type(text):
    """`unsigned char* buffer` is an `unsigned char*`."""
    match = re.fullmatch(r"(.*?[\s*])?(\w+)", " ".join(text.split()))
    return (match.group(1) or match.group(2)).strip() if match else text.strip()


def functions():
    found = []
    for text in headers().values():
        for result, name, arguments in FUNCTION.findall(without_comments(text)):
            types = [argument_type(part) for part in arguments.split(",")]
            found.append(Function(name, " ".join(result.split()),
                                  [] if types == ["void"] else types))
    return sorted(found)


def members(body):
    return [Member(match["name"], match["type"].replace("struct ", ""),
                   re.findall(r"\[(\w+)\]", match["sizes"]),
                   in_one_line(match["behind"] or match["above"]))
            for match in MEMBER.finditer(body)]


def structs():
    """The members of each struct, in the order that they need."""
    texts = headers()
    order = ["zelTagRecords.h", "zelTagEcho.h", "zelTagState.h", "zelTagFiles.h"]
    return {name: members(body) for header in order for name, body in STRUCT.findall(texts[header])}


def data():
    """Type and sizes of each exported variable."""
    return {name: (kind.replace("struct ", ""), re.findall(r"\[(\w+)\]", sizes))
            for kind, name, sizes in DATA.findall(headers()["zelTagState.h"])}


def enums():
    """The enumerators of each named enumeration: name, value, meaning."""
    return {name: [(label, int(value, 0), in_one_line(text))
                   for label, value, text in ENUMERATOR.findall(body)]
            for text in headers().values() for name, body in ENUM.findall(text)}


def constants():
    """The numbers that stand for sizes."""
    return {name: int(value) for name, value in
            re.findall(r"(ZELTAGAPI_\w+) = (\d+)\b", headers()["zelTagState.h"])}


def error_words():
    """Name, value and meaning of each error word."""
    return [(name, int(value, 0), in_one_line(text))
            for name, value, text in DEFINE.findall(headers()["zelTagErrors.h"])]
