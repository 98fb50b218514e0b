#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What an attacker meets in programs and libraries that were built to be handed out."""

import argparse
import pathlib
import re
import subprocess
import sys


def output(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True,
                          text=True).stdout


def faults_of(path, copies):
    """Told of one file: addresses chosen anew at each start, tables that can't be written, no stack
    that can be run, guarded stacks; checked copies, where there are any of a known size."""
    header, segments = output("readelf", "-hW", path), output("readelf", "-lW", path)
    dynamic, symbols = output("readelf", "-dW", path), output("readelf", "--dyn-syms", "-W", path)
    stack = re.search(r"GNU_STACK.*", segments)
    facts = {"position independent": re.search(r"Type:\s+DYN", header),
             "relro": "GNU_RELRO" in segments,
             "bound at the start": re.search(r"BIND_NOW|FLAGS_1.*NOW", dynamic),
             "no stack to run": stack and " RWE " not in stack[0] and " RW " in stack[0],
             "no segment to write and run": not re.search(r"LOAD.* RWE ", segments),
             "no text relocations": "TEXTREL" not in dynamic,
             "guarded stacks": "__stack_chk_fail" in symbols,
             "checked copies": not copies or re.search(r" __\w+_chk\b", symbols)}
    return [f"{path.name}: not true: {fact}" for fact, holds in facts.items() if not holds]


def functions(exports):
    text = exports.read_text(encoding="utf-8")
    return set(re.findall(r"^T (\w+)", text, re.MULTILINE))


def landing_faults(library, exports):
    """On x86-64 an exported function begins with the mark that an indirect call may land on."""
    if "X86-64" not in output("readelf", "-hW", library):
        return
    code = output("objdump", "-d", "--no-show-raw-insn", library)
    first = dict(re.findall(r"^[0-9a-f]+ <(\w+)(?:@\S+)?>:\n\s+[0-9a-f]+:\s+(\w+)", code,
                            re.MULTILINE))
    names = functions(exports) & first.keys()
    if len(names) < 100:
        yield f"{library.name}: only {len(names)} functions are seen"
    bare = sorted(name for name in names if first[name] != "endbr64")
    if bare:
        yield f"{library.name}: {len(bare)} functions without endbr64, such as {bare[0]}"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--library", type=pathlib.Path, required=True)
    parser.add_argument("--exports", type=pathlib.Path, required=True)
    parser.add_argument("--without-copies", type=pathlib.Path, required=True)
    parser.add_argument("programs", type=pathlib.Path, nargs="+")
    told = parser.parse_args()
    faults = [*landing_faults(told.library, told.exports)]
    for path in [told.library, *told.programs]:
        faults += faults_of(path, copies=True)
    faults += faults_of(told.without_copies, copies=False)
    sys.exit("\n".join(faults) if faults else 0)


if __name__ == "__main__":
    main()
