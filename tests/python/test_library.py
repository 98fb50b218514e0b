# SPDX-License-Identifier: MIT
"""The bound calls against the library's own lists: names, arguments, layouts, version."""

import ctypes
import inspect
import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree as xml

import pytest

import zeltag
from zeltag import _library
from zeltag._generated import prototypes, structures

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXPORTS = [line.split() for line in (ROOT / "frame" / "exports.txt").read_text("utf-8").splitlines()
           if line[:2] in ("T ", "D ")]
STRUCTS = {name: kind for name, kind in vars(structures).items()
           if inspect.isclass(kind) and issubclass(kind, ctypes.Structure)
           and kind is not ctypes.Structure}


def without_preload(**more):
    """The environment for a program of its own."""
    return {**{name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}, **more}


def declared():
    """The names that the public headers export."""
    text = "".join(path.read_text("utf-8") for path in (ROOT / "frame").glob("zelTag*.h"))
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)
    return set(re.findall(r"ZELTAGAPI_EXPORT\s[^;(#]*?\b(?!__)(\w+)\(", text))


def test_every_declared_call_that_is_exported_is_bound():
    exported = {name for kind, name, *_ in EXPORTS if kind == "T"}
    assert declared() & exported == set(prototypes.FUNCTIONS)
    assert len(prototypes.FUNCTIONS) > 370


def test_bound_calls_take_as_many_arguments_as_the_library():
    tree = xml.parse(ROOT / "tests" / "abi" / "zelTagAPI.abi")
    told = {}
    for function in tree.iter("function-decl"):
        arguments = [one for one in function.findall("parameter")
                     if one.get("is-variadic") != "yes"]
        told[function.get("elf-symbol-id", "").split("@")[0]] = len(arguments)
    for name, (_, arguments) in prototypes.FUNCTIONS.items():
        assert told[name] == len(arguments), name


def test_variables_are_as_large_as_those_of_the_library():
    sizes = {name: int(size) for kind, name, *rest in EXPORTS if kind == "D" for size in rest}
    for name, kind in prototypes.DATA.items():
        assert ctypes.sizeof(kind) == sizes[name], name
    assert len(prototypes.DATA) > 50


def test_records_are_laid_out_as_a_compiler_does(tmp_path):
    compiler = shutil.which("cc") or shutil.which("gcc") or shutil.which("clang")
    if compiler is None:
        pytest.skip("no C compiler")
    rows = [f'printf("{name} %zu\\n", sizeof({name}));' for name in STRUCTS]
    rows += [f'printf("{name}.{field} %zu\\n", offsetof({name}, {field}));'
             for name, kind in STRUCTS.items() for field, *_ in kind._fields_]
    source = tmp_path / "layout.c"
    source.write_text('#include "frame/zelTagFiles.h"\n#include <stddef.h>\n#include <stdio.h>\n'
                      "int main(void) {\n" + "\n".join(rows) + "\nreturn 0;\n}\n")
    subprocess.run([compiler, "-I", ROOT, source, "-o", tmp_path / "layout"], check=True,
                   env=without_preload())
    told = subprocess.run([tmp_path / "layout"], check=True, capture_output=True, text=True,
                          env=without_preload()).stdout
    expected = dict(line.split() for line in told.splitlines())
    actual = {name: str(ctypes.sizeof(kind)) for name, kind in STRUCTS.items()}
    actual.update({f"{name}.{field}": str(getattr(kind, field).offset)
                   for name, kind in STRUCTS.items() for field, *_ in kind._fields_})
    assert actual == expected
    assert sum(name.startswith("s") for name in STRUCTS) >= 10


def test_versions_are_one():
    project = re.search(r"^version = \"(.*)\"", (ROOT / "bindings" / "python" / "pyproject.toml")
                        .read_text("utf-8"), re.MULTILINE).group(1)
    build = re.search(r"project\(zelTagAPI VERSION ([\d.]+)",
                      (ROOT / "CMakeLists.txt").read_text("utf-8")).group(1)
    assert zeltag.__version__ == project == build == zeltag.library_version()


def test_project_names_every_folder_of_the_package():
    folder = ROOT / "bindings" / "python"
    packages = {".".join(path.relative_to(folder).parent.parts)
                for path in folder.rglob("__init__.py")}
    text = (folder / "pyproject.toml").read_text("utf-8")
    told = re.search(r"^packages = \[(\"zeltag\".*)\]", text, re.MULTILINE).group(1)
    assert {name.strip(' "') for name in told.split(",")} == packages


def test_every_public_thing_is_documented():
    for name in zeltag.__all__:
        thing = getattr(zeltag, name)
        if not callable(thing):
            continue
        assert inspect.getdoc(thing), name
        for member, value in vars(thing).items() if inspect.isclass(thing) else ():
            if member.startswith("_") or not (callable(value) or isinstance(value, property)):
                continue
            assert getattr(value, "__doc__", None), f"{name}.{member}"


def test_name_that_no_header_declares_is_told():
    with pytest.raises(AttributeError, match="no public header declares Frobnicate"):
        _library.load().Frobnicate


def run(code, **environment):
    """What a Python of its own says."""
    return subprocess.run([sys.executable, "-c", code], capture_output=True, text=True,
                          env=without_preload(**environment)).stderr


def test_missing_library_is_told():
    told = run("import zeltag; zeltag.connect()", ZELTAG_LIBRARY="/nowhere/libzelTagAPI.so.7")
    assert "LibraryNotFound: libzelTagAPI can't be loaded: /nowhere" in told
    assert "environment variable ZELTAG_LIBRARY" in told


def test_library_of_the_same_tree_is_found(tmp_path):
    modules = tmp_path / "lib" / "python3" / "dist-packages"
    shutil.copytree(pathlib.Path(zeltag.__file__).parent, modules / "zeltag")
    folder = tmp_path / "lib" / "some-triplet"
    folder.mkdir()
    shutil.copy(os.environ["ZELTAG_LIBRARY"], folder / "libzelTagAPI.so.7")
    code = "import sys, zeltag._library as l; print(l.load().path, file=sys.stderr)"
    told = run(code, ZELTAG_LIBRARY="", LD_LIBRARY_PATH="", PYTHONPATH=str(modules))
    assert told == f"{folder}/libzelTagAPI.so.7\n"


def test_another_library_is_told():
    told = run("import zeltag; zeltag.connect(library='libc.so.6')")
    assert "LibraryNotFound: libc.so.6 has no BeepNow" in told


def test_second_library_is_refused(bench):
    assert _library.load(os.environ["ZELTAG_LIBRARY"]) is _library.load()
    with pytest.raises(zeltag.LibraryNotFound, match="a process has one library"):
        zeltag.connect(library="/nowhere/libzelTagAPI.so.7")


def test_import_alone_loads_nothing():
    code = "import zeltag, zeltag._library as l; assert l._loaded is None"
    assert run(code, ZELTAG_LIBRARY="/nowhere/libzelTagAPI.so.7") == ""
