#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds manual pages and completions against the headers and the help, and lets the programs that
they are for read them."""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]


def need(*programs):
    for program in programs:
        if shutil.which(program) is None:
            print(f"{program} not found")
            sys.exit(77)


def output(*command, **options):
    """What a command prints, errors among it; it must succeed."""
    result = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, **options)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\nexit {result.returncode}\n{result.stdout}")
    return result.stdout


def expect(actual, expected, what):
    if actual != expected:
        sys.exit(f"{what}\nexpected: {expected}\nis:       {actual}")


def pages(told):
    """All that aren't links to another one."""
    found = [path for path in told.pages.glob("man*/*") if not path.name.endswith(".3zeltag")]
    expect(len(found) > 15, True, "pages are there")
    return found


def readable(told):
    """No page gives its readers' programs anything to complain of."""
    need("mandoc", "man")
    for page in pages(told):
        expect(output("mandoc", "-T", "lint", "-W", "warning", page), "", page)
        complaints = subprocess.run(["man", "--warnings", "-l", page], capture_output=True,
                                    text=True, env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8"})
        expect(complaints.stderr, "", page)


def texts(told):
    """Each text of docs/man is a page, with its name and its section."""
    need("go-md2man")
    sources = sorted(path.stem for path in (ROOT / "docs" / "man").glob("*.md"))
    expect(len(sources) >= 3, True, "texts are there")
    for name in sources:
        section = name[-1]
        page = (told.pages / f"man{section}" / name).read_text(encoding="utf-8")
        expect(page.count("\n.SH NAME\n" + name[:-2]), 1, f"the name of {name}")
        expect(re.search(r"^\.TH .*$", page, re.MULTILINE)[0].split()[1:3], [name[:-2], section],
               f"the title of {name}")


def headers():
    for header in sorted((ROOT / "frame").glob("zelTag*.h")):
        text = header.read_text(encoding="utf-8")
        yield header.stem, re.findall(r"^ZELTAGAPI_EXPORT [^(;]*?(\w+)\(", text, re.MULTILINE)


def functions(told):
    """Each public function is told in its header's page, with its parameters."""
    for name, declared in headers():
        if not declared:
            continue
        page = (told.pages / "man3" / f"{name}.3").read_text(encoding="utf-8")
        for function in declared:
            expect(bool(re.search(rf"^\\fB.*\b{function}\(", page, re.MULTILINE)), True, function)
        expect("@param" in page or "@return" in page, False, f"marks are left in {name}")
    cards = (told.pages / "man3" / "zelTagCards.3").read_text(encoding="utf-8")
    expect(".TP\n\\fIsize\\fR\nbytes of the identifier wanted, 0 to 32;" in cards, True,
           "a parameter's text")


def links(told):
    """`man FUNCTION` leads to its page."""
    need("man")
    linked = 0
    for name, declared in headers():
        for function in declared:
            link = told.pages / "man3" / f"{function}.3zeltag"
            expect(link.read_text(encoding="utf-8"), f".so man3/{name}.3\n", function)
            linked += 1
    expect(len(list(told.pages.glob("man3/*.3zeltag"))), linked, "links, and functions")
    found = output("man", "-M", told.pages, "-w", "GetActiveID")
    expect(pathlib.Path(found.strip()).name, "zelTagCards.3", "man GetActiveID shows")


def help_of(told, *words):
    return output(told.zeltag, *words, "--help")


def commands_of(told):
    """The words of each command of the table; the first may be that of a family."""
    table = (ROOT / "cli" / "command" / "commands.def").read_text(encoding="utf-8")
    for name in re.findall(r"^COMMAND\((\w+)\)", table, re.MULTILINE):
        whole, (family, _, rest) = name.replace("_", "-"), name.partition("_")
        is_one = f"Usage: zeltag {whole} " in help_of(told, whole)
        yield [whole] if is_one else [family, rest.replace("_", "-")]


def plain_page(told):
    need("man")
    return re.sub(r"\s+", " ", output("mandoc", "-T", "utf8", told.pages / "man1" / "zeltag.1"))


def commands(told):
    """The page tells each command with what it does, in the help's words."""
    need("mandoc")
    page = re.sub(".\b", "", plain_page(told))
    for words in commands_of(told):
        summary = help_of(told, *words).splitlines()[0]
        expect(f"zeltag {' '.join(words)} " in page, True, f"{words} in the page")
        expect(re.sub(r"\s+", " ", summary).replace("`", "").strip() in page, True, summary)


def options(told):
    """No option of the help is missing in the page."""
    page = (told.pages / "man1" / "zeltag.1").read_text(encoding="utf-8").replace("\\-", "-")
    for words in ([], *commands_of(told)):
        found = re.findall(r"^ +(?:-\w,)?(--[\w-]+)" if words else r" (--[\w-]+)",
                           help_of(told, *words), re.MULTILINE)
        expect("--json" in found, True, f"options in the help of {words}")
        for option in found:
            expect(f"\\fB{option}\\fR" in page, True, f"{option} of {words}")


CHOICES = {  # what is typed: some of what is offered, and something that isn't
    "zeltag co": ("config", "list"),
    "zeltag config ": ("export", "zeltag"),
    "zeltag config get iIDHoldT": ("iIDHoldTO", "--sim"),
    "zeltag config set TimeParms.iIDH": ("TimeParms.iIDHoldTO=", "iIDHoldTO="),
    "zeltag file check --kind t": ("template", "keys"),
    "zeltag --json list --dev": ("--device", "--json"),
    "zeltag file check ./here": ("./here.txt", "--kind"),
}


def check_choices(offered):
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "here.txt").touch()
        for typed, (wanted, other) in CHOICES.items():
            choices = offered(typed, folder)
            expect((wanted in choices, other in choices), (True, False), f"{typed}: {choices}")


def bash(told):
    file = told.completions / "bash" / "zeltag"
    expect(output("bash", "-n", file), "", "bash takes it")
    script = ('source "$1"; read -ra COMP_WORDS <<<"$2"; [[ $2 == *" " ]] && COMP_WORDS+=("");'
              'COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zeltag; printf "%s\\n" "${COMPREPLY[@]}"')
    check_choices(lambda typed, folder: output("bash", "-c", script, "bash", file, typed,
                                               cwd=folder).split("\n"))


def fish(told):
    need("fish")
    file = told.completions / "fish" / "zeltag.fish"
    expect(output("fish", "--no-execute", file), "", "fish takes it")

    def offered(typed, folder):
        lines = output("fish", "--no-config", "-c", 'source $argv[1]; complete -C "$argv[2]"',
                       file, typed, cwd=folder, env={"HOME": folder, "PATH": "/usr/bin:/bin"})
        return [line.split("\t")[0] for line in lines.splitlines()]
    check_choices(offered)


def zsh(told):
    """zsh completes at a terminal alone, so this only lets it load the file and take each call."""
    need("zsh")
    file = told.completions / "zsh" / "_zeltag"
    expect(output("zsh", "-f", "-n", file), "", "zsh takes it")
    script = ('fpath=($1 $fpath); autoload -Uz compinit; compinit -u -D; print $_comps[zeltag];'
              'function _arguments { print -r -- "$0: $@" }; function _describe { };'
              'autoload +X -Uz _zeltag; source $1/_zeltag; _zeltag_config_get; _zeltag_file_check')
    lines = output("zsh", "-f", "-c", script, "zsh", file.parent)
    expect(lines.startswith("_zeltag\n"), True, "zsh knows whom it is for")
    for wanted in ("iIDHoldTO", "--kind[", ":FILE:_files", "(template firmware keys"):
        expect(wanted in lines, True, wanted)


CASES = {case.__name__: case for case in (readable, texts, functions, links, commands, options,
                                          bash, fish, zsh)}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pages", type=pathlib.Path, required=True)
    parser.add_argument("--completions", type=pathlib.Path, required=True)
    parser.add_argument("--zeltag", type=pathlib.Path, required=True)
    parser.add_argument("case", choices=CASES)
    told = parser.parse_args()
    told.pages, told.completions = told.pages.resolve(), told.completions.resolve()
    CASES[told.case](told)


if __name__ == "__main__":
    main()
