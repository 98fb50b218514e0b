#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Installs a build into a folder of its own, moves it, and uses it as an integrator would."""

import os
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests" / "support"))
from run_case import run_case  # noqa: E402

CMAKE, CC, CXX = (os.environ[name] for name in ("CMAKE", "CC", "CXX"))
CARD = "26 bits, first byte 0x70\n"
STRICT = ["-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fsyntax-only"]


def run(*command, **environment):
    """The output of a command that succeeds and prints no error."""
    result = subprocess.run([str(part) for part in command], env=dict(os.environ, **environment),
                            capture_output=True, text=True)
    if result.returncode != 0 or result.stderr:
        sys.exit(f"{' '.join(map(str, command))}\nexit {result.returncode}\n"
                 f"{result.stdout}{result.stderr}")
    return result.stdout


def expect(actual, expected, what):
    if actual != expected:
        sys.exit(f"{what}\nexpected: {expected}\nis:       {actual}")


def examples():
    return run("git", "-C", ROOT, "ls-files", "examples").splitlines()


def python_modules():
    folder = ROOT / "bindings" / "python"
    return [path.relative_to(folder) for pattern in ("*.py", "py.typed")
            for path in (folder / "zeltag").rglob(pattern)]


class Installed:
    """The installed tree, and what an application is built and run with."""

    def __init__(self, build, version, libdir):
        self.build = build
        self.version = version
        self.libdir = libdir
        self.scratch = build / "install-test"
        self.prefix = self.scratch / "moved"
        self.lib = self.prefix / libdir
        self.pkg_config = {"PKG_CONFIG_PATH": str(self.lib / "pkgconfig")}

    def install(self, prefix, **environment):
        run(CMAKE, "--install", self.build, "--prefix", prefix, **environment)

    def expect_files(self, folder):
        actual = {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}
        expect(sorted(actual ^ self.expected_files()), [], f"missing from {folder}, or too much")

    def expected_files(self):
        major = self.version.split(".")[0]
        libraries = [f"libzelTagAPI.{end}"
                     for end in ("a", "so", f"so.{major}", f"so.{self.version}")]
        package = [f"cmake/zelTagAPI/zelTagAPI{end}.cmake"
                   for end in ("Config", "ConfigVersion", "Targets")]
        return {"bin/zeltag", "bin/zelsim", "lib/udev/rules.d/70-zeltag.rules",
                 f"{self.libdir}/zeltag/libzelsim.so", *self.references(),
                *(f"include/zelTagAPI/frame/{name}" for name in public_headers()),
                *(f"{self.libdir}/{name}" for name in libraries + package),
                *(f"lib/python3/dist-packages/{name}" for name in python_modules()),
                *(f"share/doc/libzeltagapi-dev/{name}" for name in examples()),
                f"{self.libdir}/pkgconfig/zelTagAPI.pc", self.imported_locations()}

    def references(self):
        """The pages that were made, those that always are among them, and the completions."""
        pages = self.build / "packaging" / "man"
        found = {f"share/man/{path.relative_to(pages)}" for path in pages.glob("man*/*")}
        always = {"share/man/man1/zeltag.1", "share/man/man3/zelTagAPI.3",
                  "share/man/man3/GetActiveID.3zeltag"}
        completions = {place.format(program) for program in ("zeltag", "zelsim")
                       for place in ("share/bash-completion/completions/{}",
                                     "share/zsh/site-functions/_{}",
                                     "share/fish/vendor_completions.d/{}.fish")}
        return found | always | completions

    def imported_locations(self):
        """CMake names this file for the build type."""
        cache = (self.build / "CMakeCache.txt").read_text(encoding="utf-8")
        kind = next(line.partition("=")[2] for line in cache.splitlines()
                    if line.startswith("CMAKE_BUILD_TYPE:")) or "noconfig"
        return f"{self.libdir}/cmake/zelTagAPI/zelTagAPITargets-{kind.lower()}.cmake"

    def example(self, case):
        """A fresh copy of the examples, as one takes them to start an application with."""
        folder = self.scratch / case
        shutil.rmtree(folder, ignore_errors=True)
        shutil.copytree(ROOT / "examples", folder)
        return folder

    def simulated(self, program, **environment):
        return run(program, LD_PRELOAD=str(self.lib / "zeltag" / "libzelsim.so"), **environment)


def public_headers():
    return sorted(path.name for path in (ROOT / "frame").glob("zelTag*.h"))


def loaded_library(program, **environment):
    """The library file that a program starts with, None when it needs none."""
    listed = run(program, LD_TRACE_LOADED_OBJECTS="1", **environment)
    found = [line.split("=>")[1].split()[0] for line in listed.splitlines() if "zelTagAPI" in line]
    return pathlib.Path(found[0]).resolve() if found else None


def tree(installed):
    """Installs; the tree is moved afterwards, so that nothing in it can hold on to its place."""
    shutil.rmtree(installed.scratch, ignore_errors=True)
    installed.install(installed.scratch / "first")
    (installed.scratch / "first").rename(installed.prefix)
    installed.expect_files(installed.prefix)


def staged(installed):
    stage = installed.scratch / "stage"
    shutil.rmtree(stage, ignore_errors=True)
    installed.install("/opt/zeltag", DESTDIR=str(stage))
    expect([path.name for path in stage.iterdir()], ["opt"], "the stage holds")
    installed.expect_files(stage / "opt" / "zeltag")


def command_line(installed):
    zeltag = installed.prefix / "bin" / "zeltag"
    expect(run(zeltag, "read", "--sim"), "card   26 bits  0x02341B70  sim:zeltag-0\n", "it reads")
    expect(loaded_library(zeltag).parent, installed.lib.resolve(), "its library is in")


def headers(installed):
    """Each public header alone and by both of its names, as C11 and as C++20."""
    folder = installed.scratch / "headers"
    folder.mkdir(exist_ok=True)
    flags = run("pkg-config", "--cflags", "zelTagAPI", **installed.pkg_config).split()
    for name in public_headers():
        for spelled in (f'"frame/{name}"', f"<{name}>"):
            for ending, compiler in (("c", (CC, "-std=c11")), ("cpp", (CXX, "-std=c++20"))):
                source = folder / f"alone.{ending}"
                source.write_text(f"#include {spelled}\nint main(void) {{ return 0; }}\n",
                                  encoding="utf-8")
                run(*compiler, *STRICT, *flags, source)


def pkg_config(installed):
    """One line of the compiler, with the flags that pkg-config tells."""
    folder = installed.example("pkg_config")
    flags = run("pkg-config", "--cflags", "--libs", "zelTagAPI", **installed.pkg_config).split()
    run(CC, folder / "read_card.c", *flags, "-o", folder / "read_card")
    path = {"LD_LIBRARY_PATH": str(installed.lib)}
    expect(loaded_library(folder / "read_card", **path).parent, installed.lib.resolve(), "loaded")
    expect(installed.simulated(folder / "read_card", **path), CARD, "the example prints")
    expect(run("pkg-config", "--modversion", "zelTagAPI", **installed.pkg_config),
           installed.version + "\n", "the version")


def make(installed):
    if shutil.which("make") is None:
        print("make not found")
        sys.exit(77)
    folder = installed.example("make")
    run("make", "-C", folder, f"CC={CC}", **installed.pkg_config)
    expect(installed.simulated(folder / "read_card", LD_LIBRARY_PATH=str(installed.lib)), CARD,
           "the example prints")


def build_with_find_package(installed, case, *options):
    folder = installed.example(case)
    run(CMAKE, "-S", folder, "-B", folder / "build", f"-DCMAKE_PREFIX_PATH={installed.prefix}",
        *options)
    run(CMAKE, "--build", folder / "build")
    return folder / "build" / "read_card"


def find_package(installed):
    program = build_with_find_package(installed, "find_package")
    expect(loaded_library(program).parent, installed.lib.resolve(), "the library in use is in")
    expect(installed.simulated(program), CARD, "the example prints")


def find_package_static(installed):
    """Exports let the simulator in the same process reach the library inside the program."""
    program = build_with_find_package(installed, "find_package_static", "-DSTATIC_LIBRARY=ON",
                                      "-DCMAKE_ENABLE_EXPORTS=ON")
    expect(loaded_library(program), None, "a library in use")
    expect(installed.simulated(program), CARD, "the example prints")


CASES = {case.__name__: case for case in (tree, staged, command_line, headers, pkg_config, make,
                                          find_package, find_package_static)}


if __name__ == "__main__":
    run_case(__doc__, CASES, Installed)
