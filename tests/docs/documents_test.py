#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the blocks of a document in the order in which a reader meets them.

console     each command behind "$ ", whose output is compared
c, python   a program of examples/, which must be the same to the letter
cmake       a CMakeLists.txt, written beside the examples
toml        a scenario of examples/, the same to the letter
sh          commands that only have to succeed
none        shown, not run: what needs a real device, a terminal, or another machine

A block behind <!-- zelsim run ARGUMENTS --> has its commands run so. All runs on an installation of
the build in a folder of its own."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BLOCK = re.compile(r"(?:^<!-- (zelsim run .*?) -->\n)?^```(\w*)\n(.*?)^```$", re.M | re.S)
SETS_UP = ("scripts/demo", "scripts/test")  # install packages and build: what runs this test
HEADS = {".c": r"(?s)\A(/\*.*?\*/\n)+", ".py": r"\A(#.*\n)+", ".toml": r"\A(#.*\n)+"}
SUFFIXES = {"c": ".c", "python": ".py", "toml": ".toml"}


class Document:
    def __init__(self, path, build, folder, libdir):
        self.text = path.read_text(encoding="utf-8")
        self.build, self.folder, self.prefix = build, folder, folder / "usr"
        self.libdir = libdir
        self.ran, self.faults = 0, []
        shutil.copytree(ROOT / "examples", folder / "examples")
        for file in (folder / "examples").iterdir():
            if file.is_file():
                shutil.copy(file, folder)
        self.install(self.prefix)

    def install(self, prefix):
        subprocess.run(["cmake", "--install", self.build, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)

    def environment(self):
        lib = self.prefix / self.libdir
        ours = {"PATH": f"{self.prefix}/bin:/usr/bin:{os.environ['PATH']}",
                "LD_LIBRARY_PATH": str(lib),
                "PKG_CONFIG_PATH": f"{lib}/pkgconfig", "CMAKE_PREFIX_PATH": str(self.prefix),
                "PYTHONPATH": str(ROOT / "bindings" / "python")}
        kept = {name: value for name, value in os.environ.items() if name != "ZELSIM_SOCKET"}
        return kept | ours

    def run(self, command, simulator=None):
        command = command.replace("build/release", str(self.build))
        command = command.replace("/usr/local", str(self.prefix))
        words = [*simulator.split(), "--", "sh", "-c", command] if simulator else \
            ["sh", "-c", command]
        self.ran += 1
        return subprocess.run(words, cwd=self.folder, env=self.environment(), capture_output=True,
                              text=True, timeout=120)

    def check(self):
        for simulator, language, block in BLOCK.findall(self.text):
            if language == "console":
                self.check_console(block, simulator)
            elif language == "sh":
                self.check_commands(block)
            elif language == "cmake":
                (self.folder / "CMakeLists.txt").write_text(block, encoding="utf-8")
            elif language in SUFFIXES:
                self.check_file(block, SUFFIXES[language])
            elif language:
                self.faults.append(f"a block of {language}, which nothing runs:\n{block}")

    def check_console(self, block, simulator):
        for part in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            command, _, expected = part.partition("\n")
            result = self.run(command, simulator)
            actual = result.stdout + result.stderr
            if actual != expected:
                self.faults.append(f"$ {command}\nexpected:\n{expected}printed:\n{actual}")

    def check_commands(self, block):
        if block.strip() in SETS_UP:
            if not os.access(ROOT / block.strip(), os.X_OK):
                self.faults.append(f"{block.strip()} can't be run")
            return
        result = self.run("set -e\n" + block)
        if result.returncode != 0:
            self.faults.append(f"{block}exit {result.returncode}\n{result.stdout}{result.stderr}")

    def check_file(self, block, suffix):
        files = sorted((ROOT / "examples").glob(f"**/*{suffix}"))
        bodies = [re.sub(HEADS[suffix], "", file.read_text(encoding="utf-8")).lstrip("\n")
                  for file in files]
        if block not in bodies:
            self.faults.append(f"a program that isn't in examples/ like this:\n{block}")


def main():
    path, build, libdir = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    with tempfile.TemporaryDirectory() as folder:
        document = Document(path, build.resolve(), pathlib.Path(folder), libdir)
        document.check()
    print(f"{document.ran} commands of {path.name} run")
    for fault in document.faults:
        print(fault)
    sys.exit(1 if document.faults or document.ran == 0 else 0)


main()
