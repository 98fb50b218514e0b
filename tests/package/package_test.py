#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the Debian packages of a build, installs them into an empty root, and uses them there."""

import os
import pathlib
import re
import shutil
import subprocess
import sys

from packages import NAMES, ROOT, Packages, expect, need, run

sys.path.append(str(ROOT / "tests" / "support"))
from run_case import run_case  # noqa: E402

CC, CMAKE, CPACK = (os.environ[name] for name in ("CC", "CMAKE", "CPACK"))
CARD = "26 bits, first byte 0x70\n"


def system_packages(packages):
    """What the packages depend on beside each other, as dpkg of this machine has it."""
    wanted = {re.split(r"[ :(]", part.strip())[0] for name in NAMES
              for part in packages.field(name, "Depends").split(",") if part.strip()}
    rows = []
    for name in sorted(wanted - set(NAMES)):
        version = run("dpkg-query", "-W", "-f", "${Version} ${Architecture}\\n", name).split()
        (packages.root / "var/lib/dpkg/info" / f"{name}.list").touch()
        rows.append(f"Package: {name}\nStatus: install ok installed\nMaintainer: x <x@x>\n"
                    f"Architecture: {version[1]}\nVersion: {version[0]}\nDescription: x\n")
    return "\n".join(rows)


def made(packages):
    """Makes and installs them: dpkg tests what they depend on, and that none has another's file."""
    need("dpkg-deb", "dpkg-shlibdeps", "file", "go-md2man")
    shutil.rmtree(packages.folder, ignore_errors=True)
    subprocess.run([CPACK, "-G", "DEB"], cwd=packages.build, check=True, stdout=subprocess.DEVNULL)
    shutil.rmtree(packages.scratch, ignore_errors=True)
    admin = packages.root / "var" / "lib" / "dpkg"
    for folder in ("updates", "info", "triggers"):
        (admin / folder).mkdir(parents=True)
    (admin / "status").write_text(system_packages(packages), encoding="utf-8")
    run("dpkg", f"--root={packages.root}", "--force-not-root", "--force-script-chrootless",
        "--log=/dev/null", "--path-include=*", "--install", *packages.files().values(),
        env=dict(os.environ, PATH=os.environ["PATH"] + ":/usr/sbin:/sbin"))
    states = run("dpkg-query", f"--admindir={admin}", "-W", "-f", "${Package} ${Status}\\n", *NAMES)
    expect(states.count("install ok installed"), len(NAMES), states)


def linted(packages):
    """No errors; the warnings are told here, each with its reason."""
    need("lintian")
    known = []
    lines = run("lintian", "--allow-root", "--no-cfg", "--tag-display-limit", "0",
                *packages.files().values(), told=["warning: running with root"]).splitlines()
    expect([line for line in lines if not line.endswith(tuple(known))], [], "lintian says")


def fields(packages):
    """Names, versions and dependencies that an application's package can rely on."""
    version = packages.field("libzeltagapi7", "Version")
    expect(version.rpartition("-")[0], packages.version, "the version")
    expect(packages.field("libzeltagapi-dev", "Depends"), f"libzeltagapi7 (= {version})", "dev")
    expect({name: packages.field(name, "Multi-Arch") for name in NAMES},
           {"libzeltagapi-dev": "same", "libzeltagapi7": "same", "python3-zeltag": "foreign",
            "zeltag-tools": "foreign", "zeltag-udev": "foreign"}, "Multi-Arch")
    needed = {part.split()[0] for part in packages.field("libzeltagapi7", "Depends").split(", ")}
    expect(needed - {"libc6", "libstdc++6", "libgcc-s1"}, set(), "the library needs nothing else")
    expect(packages.field("libzeltagapi7", "Recommends"), "zeltag-udev", "the rules come along")
    control = packages.scratch / "control"
    run("dpkg-deb", "--control", packages.files()["libzeltagapi7"], control)
    symbols = set(re.findall(r"^ (\w+)@", (control / "symbols").read_text("utf-8"), re.MULTILINE))
    library = packages.lib / f"libzelTagAPI.so.{packages.version}"
    exported = {line.split()[-1].split("@")[0]
                for line in run("nm", "-D", "--defined-only", library).splitlines()}
    expect(symbols ^ exported, set(), "the names that the symbols file tells")
    expect((control / "triggers").read_text("utf-8"), "activate-noawait ldconfig\n", "triggers")


def contents(packages):
    """What lies in which package, in places of Debian's, with its permissions."""
    triplet = str(packages.lib.relative_to(packages.root))
    expect(re.match(r"usr/lib/\w+-\w+-\w+$", triplet) is not None, True, f"multiarch: {triplet}")
    wanted = {"libzeltagapi7": [f"{triplet}/libzelTagAPI.so.7"],
              "libzeltagapi-dev": [f"{triplet}/libzelTagAPI.so", f"{triplet}/libzelTagAPI.a",
                                   "usr/include/zelTagAPI/frame/zelTagAPI.h",
                                   "usr/share/man/man3/GetActiveID.3zeltag.gz"],
              "zeltag-tools": ["usr/bin/zeltag", f"{triplet}/zeltag/libzelsim.so",
                               "usr/share/zsh/vendor-completions/_zeltag"],
              "zeltag-udev": ["usr/lib/udev/rules.d/70-zeltag.rules"],
              "python3-zeltag": ["usr/lib/python3/dist-packages/zeltag/__init__.py"]}
    for package, files in wanted.items():
        listed = packages.listed(package)
        notices = [f"usr/share/doc/{package}/{name}" for name in ("copyright",
                                                                  "changelog.Debian.gz")]
        expect([name for name in files + notices if name not in listed], [], f"not in {package}")
        for name, mode in listed.items():
            kinds = "-rwxr-xr-x" if name.startswith("usr/bin/") else "-rw-r--r-- lrwxrwxrwx"
            expect(mode in kinds, True, f"{name} has {mode}")
            expect(name.startswith("usr/share/man/") and not name.endswith(".gz"), False, name)


def build_folder(packages):
    """No file tells where it was made."""
    marks = [str(packages.build).encode(), str(ROOT).encode() + b"/"]
    for path in packages.usr.rglob("*"):
        if path.is_file():
            found = [mark for mark in marks if mark in path.read_bytes()]
            expect(found, [], path)


def command_line(packages):
    zeltag = packages.usr / "bin" / "zeltag"
    expect(packages.run(zeltag, "read", "--sim"), "card   26 bits  0x02341B70  sim:zeltag-0\n",
           "it reads")
    expect(packages.library_of(zeltag).parent, packages.lib, "its library is in")
    expect("RUNPATH" in run("readelf", "-d", zeltag), False, "it has a way of its own to a library")


def simulator(packages):
    zelsim = packages.usr / "bin" / "zelsim"
    expect(packages.run(zelsim, "run", "--", packages.usr / "bin" / "zeltag", "read"),
           "card   26 bits  0x02341B70  sim:zeltag-0\n", "it finds the object and the socket")
    preloaded = packages.run(packages.usr / "bin" / "zeltag", "list",
                             LD_PRELOAD=str(packages.lib / "zeltag" / "libzelsim.so"))
    expect("zelTag" in preloaded, True, "the object gives a program a reader")


def pages(packages):
    """`man` finds a page of each section, that of a function by its name."""
    need("man")
    manual = packages.usr / "share" / "man"
    for section, name, shown in (("1", "zeltag", "zeltag.1"), ("1", "zelsim", "zelsim.1"),
                                 ("3", "GetActiveID", "zelTagCards.3"),
                                 ("5", "zeltag-template", "zeltag-template.5"),
                                 ("7", "zelTagAPI", "zelTagAPI.7")):
        found = packages.run("man", "-M", manual, "-w", section, name).strip()
        expect(pathlib.Path(found).resolve().name, f"{shown}.gz", f"man {section} {name}")
    broken = [path for path in manual.rglob("*") if not path.exists()]
    expect(broken, [], "links to no page")
    text = packages.run("man", "-M", manual, "zeltag")
    expect("zeltag config set" in text, True, "the page tells the commands")


def completions(packages):
    share = packages.usr / "share"
    need("zsh", "fish")
    for program in ("zeltag", "zelsim"):
        run("bash", "-n", share / "bash-completion" / "completions" / program)
        run("zsh", "-f", "-n", share / "zsh" / "vendor-completions" / f"_{program}")
        run("fish", "--no-execute", share / "fish" / "vendor_completions.d" / f"{program}.fish")


def python(packages):
    """The module finds the library by itself, and the simulator gives it a reader."""
    modules = packages.usr / "lib" / "python3" / "dist-packages"
    code = "import zeltag\nfor reader in zeltag.readers(): print(reader.read())"
    printed = packages.run(packages.usr / "bin" / "zelsim", "run", "--", "python3", "-c", code,
                           PYTHONPATH=str(modules), PYTHONDONTWRITEBYTECODE="1")
    expect(printed, "26 bits 0x02341B70\n", "the module reads")


def rules(packages):
    expect((packages.usr / "lib/udev/rules.d/70-zeltag.rules").read_text("utf-8"),
           (packages.build / "packaging" / "70-zeltag.rules").read_text("utf-8"), "the rules")


def with_pkg_config(packages, case, *options, **replaced):
    folder = packages.example(case)
    flags = packages.run("pkg-config", "--cflags", "--libs", *options, "zelTagAPI").split()
    flags = [replaced["archive"] if flag == "-lzelTagAPI" and replaced else flag for flag in flags]
    packages.run(CC, folder / "read_card.c", *flags, "-rdynamic", "-o", folder / "read_card")
    return folder / "read_card"


def pkg_config(packages):
    program = with_pkg_config(packages, "pkg_config")
    expect(packages.library_of(program).parent, packages.lib, "the library in use is in")
    expect(packages.simulated(program), CARD, "the example prints")


def pkg_config_static(packages):
    """The archive with what `--static` adds. Exports let the simulator reach it."""
    program = with_pkg_config(packages, "pkg_config_static", "--static",
                              archive="-l:libzelTagAPI.a")
    expect(packages.library_of(program), None, "a library in use")
    expect(packages.simulated(program), CARD, "the example prints")


def with_find_package(packages, case, *options):
    folder = packages.example(case)
    packages.run(CMAKE, "-S", folder, "-B", folder / "build",
                 f"-DCMAKE_PREFIX_PATH={packages.usr}", f"-DCMAKE_C_COMPILER={CC}", *options)
    packages.run(CMAKE, "--build", folder / "build")
    return folder / "build" / "read_card"


def find_package(packages):
    program = with_find_package(packages, "find_package")
    expect(packages.library_of(program).parent, packages.lib, "the library in use is in")
    expect(packages.simulated(program), CARD, "the example prints")


def find_package_static(packages):
    program = with_find_package(packages, "find_package_static", "-DSTATIC_LIBRARY=ON",
                                "-DCMAKE_ENABLE_EXPORTS=ON")
    expect(packages.library_of(program), None, "a library in use")
    expect(packages.simulated(program), CARD, "the example prints")


CASES = {case.__name__: case for case in (
    made, linted, fields, contents, build_folder, command_line, simulator, pages, completions,
    python, rules, pkg_config, pkg_config_static, find_package, find_package_static)}


if __name__ == "__main__":
    run_case(__doc__, CASES, Packages)
