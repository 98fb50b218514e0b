#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the fields that docs/man/zeltag-json.7.md tells with those that commands print."""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "man" / "zeltag-json.7.md"
FAILURE = ROOT / "cli" / "command" / "failure.cpp"
BUILD = pathlib.Path(sys.argv[1]).resolve()
FIRMWARE = str(ROOT / "examples" / "firmware.hex")

# What is run for each section, in a folder with files of the simulated reader's settings.
RUNS = {
    "list": [["list", "--sim"]],
    "info": [["info", "--sim"]],
    "ping": [["ping", "--sim"]],
    "wait": [["wait", "--sim"], ["wait", "--gone", "--tcp", "127.0.0.1:1"]],
    "beep": [["beep", "--sim"]],
    "read": [["read", "--sim"], ["read", "--sim", "--long"], ["read", "--sim", "--queued"],
             ["read", "--sim", "--card-data"]],
    "config show": [["config", "show", "--sim"]],
    "config get": [["config", "get", "iIDHoldTO", "--sim"]],
    "config set": [["config", "set", "iIDHoldTO=2000", "--sim"],
                   ["config", "set", "iIDHoldTO=1000", "--sim"]],
    "config reset": [["config", "reset", "--yes", "--sim"]],
    "config export": [["config", "export", "again.txt", "--sim"]],
    "config import": [["config", "import", "settings.txt", "--sim"],
                      ["config", "import", "changed.txt", "--sim"],
                      ["config", "import", "changed.txt", "--sim", "--all"]],
    "config diff": [["config", "diff", "settings.txt", "--sim"],
                    ["config", "diff", "changed.txt", "settings.txt"]],
    "luid": [["luid", "12", "--sim"]],
    "file check": [["file", "check", "settings.txt"], ["file", "check", FIRMWARE]],
    "firmware check": [["firmware", "check", FIRMWARE, "--sim"]],
    "firmware load": [["firmware", "load", FIRMWARE, "--yes", "--sim"]],
    "net find": [["net", "find", "127.0.0.1"]],
    "doctor": [["doctor", "--sim"]],
    "trace": [["trace", "--", "read", "--sim"]],
    "raw": [["raw", "8A", "--sim"]],
    "dump": [["dump", "dump.txt", "--sim"]],
    "--version": [["--version"]],
}

# Sections that need what no simulated reader of this program has, and machines may lack.
NOT_RUN = {"swipe", "keys load", "net mac", "net my-ip"}

# Fields that those runs can't print: of other readers and places, of failures, of waits.
NOT_SEEN = re.compile(
    r"(.*\.)?(port|address)$|info\|(version_words\[\]|uptime|cards_read|counters\[\])$"
    r"|wait\|gone\[\]\..*|read\|event$|config show\|settings\..*"
    r"|config \w+\|(devices\[\]\.)?(changes\[\]|(changes|differences)\[\]\.config"
    r"|refused\[\]\..*|remarks\[\]|error)$"
    r"|file check\|whole$|firmware check\|device$|net find\|bridges\[\]\..*"
    r"|trace\|milliseconds$")
ERROR = re.compile(r"error(\..*)?$")


def tables():
    """{section: {field: types}}"""
    sections, section = {}, None
    for line in PAGE.read_text(encoding="utf-8").splitlines():
        if line.startswith("#"):
            section = line.lstrip("# ")
        row = re.match(r"\| `([^`]+)` \| ([a-z ]+) \| .+ \|$", line)
        if row:
            types = sections.setdefault(section, {}).setdefault(row[1], set())
            types.update(row[2].split(" or "))
    return sections


def leaves(value, path=""):
    """(field, type) for all that is neither a filled object nor a filled list."""
    if isinstance(value, dict):
        for name, inner in value.items():
            yield from leaves(inner, f"{path}.{name}" if path else name)
    elif isinstance(value, list):
        if not value:
            yield path + "[]", "none"
        for inner in value:
            yield from leaves(inner, path + "[]")
    else:
        names = {bool: "boolean", int: "integer", str: "string", type(None): "null"}
        yield path, names.get(type(value), type(value).__name__)


def run(arguments):
    ended = subprocess.run([BUILD / "bin" / "zeltag", *arguments[:1], "--json", *arguments[1:]]
                           if arguments[0] == "trace" else
                           [BUILD / "bin" / "zeltag", *arguments, "--json"],
                           capture_output=True, text=True, timeout=120, check=False)
    text = ended.stderr if arguments[0] == "trace" else ended.stdout
    objects = [json.loads(line) for line in text.splitlines() if line.startswith("{")]
    if not objects or (arguments[0] != "trace" and len(objects) != len(text.splitlines())):
        sys.exit(f"zeltag {' '.join(arguments)}: not an object a line: {text}{ended.stderr}")
    return objects


def fields_of(runs):
    return {leaf for arguments in runs for told in run(arguments) for leaf in leaves(told)}


def matches(documented, field):
    return re.fullmatch(re.escape(documented).replace(r"\*", r"[^.]+"), field)


def faults_of(section, documented, printed):
    for field, kind in sorted(printed):
        rows = [types for name, types in documented.items() if matches(name, field)]
        if not rows and not ERROR.match(field):
            yield f"{section}: {field} isn't in the page"
        elif rows and not any(kind in types for types in rows):
            yield f"{section}: {field} is {kind}, not {' or '.join(sorted(rows[0]))}"
    for name in documented:
        seen = any(matches(name, field) for field, _ in printed)
        if not seen and not NOT_SEEN.match(f"{section}|{name}"):
            yield f"{section}: {name} isn't printed"


def code_faults():
    """The codes of the page and those of the program."""
    told = dict(re.findall(r"^\| `(\w+)` \| (\d+) \|", PAGE.read_text(encoding="utf-8"), re.M))
    made = set(re.findall(r'return "(\w+)";', FAILURE.read_text(encoding="utf-8"))) - {"done"}
    if set(told) != made:
        yield f"codes of the page: {sorted(told)}, of the program: {sorted(made)}"


def error_faults(documented):
    for arguments, code in ((["frob"], "usage"), (["file", "check", "absent"], "missing_file"),
                            (["config", "show", "--sim", "--device", "9"], "no_device"),
                            (["ping", "--port", "/dev/null"], "no_device"),
                            (["trace", "--", "trace", "--", "list"], "usage")):
        text = subprocess.run([BUILD / "bin" / "zeltag", arguments[0], "--json", *arguments[1:]],
                              capture_output=True, text=True, check=False).stdout
        told = [json.loads(line) for line in text.splitlines()]
        if len(told) != 1 or told[0].get("error", {}).get("code") != code:
            yield f"zeltag {' '.join(arguments)}: {text} isn't an error of the code {code}"
        for field, _ in leaves(told):
            if field.removeprefix("[].") not in documented:
                yield f"ERRORS: {field} isn't in the page"


def make_files():
    subprocess.run([BUILD / "bin" / "zeltag", "config", "export", "settings.txt", "--sim"],
                   check=True, capture_output=True)
    text = pathlib.Path("settings.txt").read_text(encoding="latin-1")
    changed = re.sub(r"(iIDHoldTO\s*=\s*)\d+", r"\g<1>1500", text)
    if changed == text:
        sys.exit("no line of iIDHoldTO to change")
    pathlib.Path("changed.txt").write_text(changed, encoding="latin-1")


def main():
    sections = tables()
    errors = sections.pop("ERRORS")
    untold = (set(RUNS) | NOT_RUN) ^ set(sections)
    faults = [f"{name}: in the page or in this test alone" for name in sorted(untold)]
    commands = set(re.findall(r"COMMAND\((\w+)\)",
                              (ROOT / "cli/command/commands.def").read_text(encoding="utf-8")))
    faults += [f"{name}: not in the page" for name in commands - {"name"}
               if name not in {re.sub("[ -]", "_", section) for section in sections}]
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        make_files()
        for section, runs in RUNS.items():
            faults += faults_of(section, sections.get(section, {}), fields_of(runs))
        faults += [*code_faults(), *error_faults(errors)]
        os.chdir("/")
    sys.exit("\n".join(faults) or 0)


if __name__ == "__main__":
    main()
