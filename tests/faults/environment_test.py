#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The command line on a machine that is short of things, or has odd names."""

import argparse
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

EXITS = {0, 1, 2, 64, 65, 66, 69, 73, 77, 130}
NO_LOADER = 127  # the program's libraries can't be opened
SANITIZERS_OWN = b"<memory cannot be printed>"  # it looks at memory through a pipe, or tries to
LONGEST_PATH = 4095


def expect(given, wanted, what):
    if given != wanted:
        sys.exit(f"{what}: {given!r} instead of {wanted!r}")


def run(words, **options):
    return subprocess.run(words, capture_output=True, **options)


def in_a_disk(zeltag, size, more):
    """A shell's last lines on a disk of its own, with an old file of a page on it."""
    script = (f'mount -t tmpfs -o size={size} none "$1" && cd "$1" && printf old >old.txt'
              ' || exit 99\n'
              f'{more}\n"$2" config export old.txt --sim\ncode=$?\nls -A\ncat old.txt\nexit $code')
    with tempfile.TemporaryDirectory() as folder:
        told = run(["unshare", "--map-root-user", "--mount", "sh", "-c", script, "sh", folder,
                    zeltag])
    if b"unshare:" in told.stderr or told.returncode == 99:
        print("skipped: no disk of its own here: " + told.stderr.decode())
        sys.exit(77)
    return told


def small_disk(zeltag):
    """A disk without room leaves the file that was there, and nothing beside it."""
    told = in_a_disk(zeltag, "8k", "")
    expect(told.returncode, 73, "exit code")
    expect(told.stdout, b"old.txt\nold", "what is left")
    expect(b"old.txt can't be written: No space left on device" in told.stderr, True,
           told.stderr.decode())
    expect(in_a_disk(zeltag, "64k", "").returncode, 0, "exit code with room")


def read_only_disk(zeltag):
    """A disk that can't be written to is told as such."""
    told = in_a_disk(zeltag, "64k", 'mount -o remount,ro "$1"')
    expect(told.returncode, 73, "exit code")
    expect(told.stdout, b"old.txt\nold", "what is left")
    expect(b"Read-only file system" in told.stderr, True, told.stderr.decode())


def few_descriptors(zeltag):
    """With any number of descriptors a command does its work or says why not."""
    done = 0
    for most in range(3, 16):
        with tempfile.TemporaryDirectory() as folder:
            told = run([zeltag, "config", "export", "a.txt", "--sim"], cwd=folder,
                       preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_NOFILE, (most, most)))
            left = os.listdir(folder)
        if told.returncode == NO_LOADER or SANITIZERS_OWN in told.stderr:
            continue
        expect(told.returncode in EXITS, True, f"exit code {told.returncode}")
        expect(left, ["a.txt"] if told.returncode == 0 else [], f"files with {most} descriptors")
        expect(told.returncode == 0 or told.stderr.startswith(b"zeltag: "), True, "a word of why")
        done += told.returncode == 0
    expect(done > 0, True, "some number is enough")


def path_of(folder, size):
    """A path of so many characters that ends in a file's name."""
    path = folder
    while size - len(path) > 202:
        path += "/" + "d" * 150
    os.makedirs(path, exist_ok=True)
    return path + "/" + "f" * (size - len(path) - 1)


def long_paths(zeltag):
    """Paths of any length are used, or refused with a word; none is cut."""
    with tempfile.TemporaryDirectory() as folder:
        for size in (511, 512, 1024, LONGEST_PATH - 60):
            path = path_of(folder, size)
            for words in (["config", "export", "--sim"], ["file", "check"],
                          ["config", "import", "--sim"]):
                expect(run([zeltag, *words, path]).returncode, 0, f"{words} of {size} characters")
        longest = path_of(folder, LONGEST_PATH)
        expect(run([zeltag, "config", "export", longest, "--sim"]).returncode in (0, 73), True,
               "there may be no room for the name of a temporary file")
        for path in (longest + "f", "/" + "n" * 256, "/" + "n" * 4096, "x" * 10000):
            for words, exit_code in ((["config", "export"], 73), (["config", "import"], 66)):
                told = run([zeltag, *words, path, "--sim"])
                expect(told.returncode, exit_code, f"{words} of {len(path)} characters")
                expect(told.stderr.startswith(b"zeltag: "), True, "a word of why")
    for size in (511, 4096):
        told = run([zeltag, "list", "--port", "/dev/" + "n" * (size - 5)])
        expect(told.returncode in EXITS - {0}, True, f"a line of {size} characters")


def odd_names(zeltag):
    """A file's name is bytes; JSON is text all the same."""
    with tempfile.TemporaryDirectory() as folder:
        for name in (b"caf\xe9.txt", b"\xff\xfe", "größe.txt".encode(), b"new\nline", b"-"):
            path = os.fsencode(folder) + b"/" + name
            told = run([zeltag, "config", "export", path, "--sim", "--json"])
            expect(told.returncode, 0, f"export to {name!r}")
            expect(json.loads(told.stdout.decode("utf-8"))["configurations"], 1, "an object")
            expect(os.path.exists(path), True, f"the file {name!r}")
            missing = run([zeltag, "config", "import", path + b"\x80", "--sim", "--json"])
            expect(missing.returncode, 66, "a missing file")
            expect(json.loads(missing.stdout.decode("utf-8"))["error"]["code"], "missing_file",
                   "an object")


CASES = {function.__name__: function for function in
         (small_disk, read_only_disk, few_descriptors, long_paths, odd_names)}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("zeltag", type=pathlib.Path)
    parser.add_argument("case", choices=CASES)
    told = parser.parse_args()
    CASES[told.case](str(told.zeltag.resolve()))


if __name__ == "__main__":
    main()
