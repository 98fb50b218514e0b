# SPDX-License-Identifier: MIT
"""The Debian packages of a build, the root that they are installed into, and how to work there."""

import os
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
NAMES = ("libzeltagapi-dev", "libzeltagapi7", "python3-zeltag", "zeltag-tools", "zeltag-udev")


def need(*programs):
    for program in programs:
        if shutil.which(program) is None:
            print(f"{program} not found")
            sys.exit(77)


def run(*command, told=(), **options):
    """The output of a command that succeeds and prints no error; `told` are mere remarks."""
    result = subprocess.run([str(part) for part in command], capture_output=True, text=True,
                            **options)
    errors = [line for line in result.stderr.splitlines()
              if not any(remark in line for remark in told)]
    if result.returncode != 0 or errors:
        sys.exit(f"{' '.join(map(str, command))}\nexit {result.returncode}\n"
                 f"{result.stdout}{result.stderr}")
    return result.stdout


def expect(actual, expected, what):
    if actual != expected:
        sys.exit(f"{what}\nexpected: {expected}\nis:       {actual}")


class Packages:
    """The packages, the root that they are installed into, and how programs are run there."""

    def __init__(self, build, version, libdir):
        self.build = build
        self.version = version
        self.folder = build / "packages"
        self.scratch = build / "package-test"
        self.root = self.scratch / "root"
        self.usr = self.root / "usr"
        self.lib = self.usr / libdir
        self.environment = {"PATH": f"{self.usr}/bin:/usr/bin:/bin",
                            "LD_LIBRARY_PATH": str(self.lib), "HOME": str(self.scratch),
                            "LC_ALL": "C.UTF-8",
                            "PKG_CONFIG_PATH": str(self.lib / "pkgconfig")}

    def files(self):
        found = {path.name.split("_")[0]: path for path in self.folder.glob("*.deb")}
        expect(sorted(found), sorted(NAMES), "the packages are")
        return found

    def field(self, package, name):
        return run("dpkg-deb", "--field", self.files()[package], name).strip()

    def listed(self, package):
        """The files of a package, without folders."""
        lines = run("dpkg-deb", "--contents", self.files()[package]).splitlines()
        return {line.split()[5].removeprefix("./"): line.split()[0] for line in lines
                if not line.startswith("d")}

    def run(self, *command, **environment):
        return run(*command, env=dict(self.environment, **environment), cwd=self.scratch)

    def simulated(self, program):
        return self.run(program, LD_PRELOAD=str(self.lib / "zeltag" / "libzelsim.so"))

    def example(self, case):
        folder = self.scratch / case
        shutil.rmtree(folder, ignore_errors=True)
        shutil.copytree(ROOT / "examples", folder)
        return folder

    def library_of(self, program):
        """The library file that a program starts with, None when it needs none."""
        listed = self.run(program, LD_TRACE_LOADED_OBJECTS="1")
        found = [line.split()[2] for line in listed.splitlines() if "zelTagAPI" in line]
        return pathlib.Path(found[0]).resolve() if found else None
