#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the pages of section 3 from the comments of the public headers: a page a header, and for
each function a link to its page. The pages' names are printed, one a line."""

import argparse
import pathlib
import re
import textwrap

HEADER = re.compile(r"/\*\* @file\n(.*?)\*/", re.DOTALL)
GROUP = re.compile(r"/\*\* @name (.*?)@\{ \*/", re.DOTALL)
COMMENT = re.compile(r"/\*\*(?!<)(.*?)\*/\s*", re.DOTALL)
FUNCTION = re.compile(r"ZELTAGAPI_EXPORT\s+(.*?);", re.DOTALL)
DATA = re.compile(r"ZELTAGAPI_DATA\((.*?), \w+\);(?:\s*/\*\*<(.*?)\*/)?", re.DOTALL)
TYPE = re.compile(r"(?:typedef struct \w+ \{.*?\} \w+|typedef [^{;]*|enum \{.*?\});", re.DOTALL)
MACRO = re.compile(r"(?:#define ZELTAGAPI_\w+ \w+ .*\n)+")
MAKER = r"\s*Made from frame/[^;]*; change the rows there\."  # of use in the sources alone
LINKS = "3zeltag"  # names such as Ping and Debug aren't ours alone


def escaped(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")
    text = text.replace("^", "\\(ha").replace("~", "\\(ti")
    return re.sub(r"^\.", r"\\&.", text, flags=re.MULTILINE)


def prose(text):
    """A paragraph's words, a line each sentence or clause; `code` and calls() in bold."""
    text = escaped(" ".join(text.split()))
    text = re.sub(r"`([^`]*)`", r"\\fB\1\\fR", text)
    text = re.sub(r"\b(\w+)\(\)", r"\\fB\1\\fR()", text)
    return re.sub(r"^\.", r"\\&.", re.sub(r"([.;]) ", r"\1\n", text), flags=re.MULTILINE)


def plain(comment):
    """A comment without its stars."""
    return re.sub(r"^[ \t]*\* ?", "", comment, flags=re.MULTILINE).strip()


def paragraphs(text):
    return [part for part in re.split(r"\n\s*\n", text) if part.strip()]


def tagged(paragraph):
    """What stands before the first @, and the (term, text) of each."""
    before, *tags = re.split(r"@(?=param |return )", paragraph)
    rows = []
    for tag in tags:
        word, _, rest = tag.partition(" ")
        name, _, text = rest.partition(" ") if word == "param" else ("Returns", "", rest)
        rows.append((f"\\fI{name}\\fR" if word == "param" else name, text))
    return before.strip(), rows


def told(comment):
    out = []
    for paragraph in paragraphs(plain(comment)):
        before, rows = tagged(paragraph)
        if before:
            out += [".PP", prose(before)]
        for term, text in rows:
            out += [".TP", term, prose(text)]
    return out


def verbatim(code):
    return [".PP", ".EX", *(escaped(line) for line in code.strip().splitlines()), ".EE"]


def declaration(text):
    whole = text.replace(" ", "\0").replace(",\0", ", ")  # broken behind commas alone
    lines = textwrap.wrap(whole, 76, subsequent_indent="    ", break_long_words=False)
    lines = [line.replace("\0", " ") for line in lines]
    return [".PP", ".nf", *(f"\\fB{escaped(line)}\\fR" for line in lines), ".fi"]


def inside(lines):
    """Lines under a declaration, further to the right."""
    return [".RS", *lines[1 if lines and lines[0] == ".PP" else 0:], ".RE"] if lines else []


class Page:
    """A header's page, made while its text is gone through."""

    def __init__(self, header):
        self.name = header.stem
        self.text = header.read_text(encoding="utf-8")
        self.functions, self.prototypes, self.body = [], [], []
        self.about = re.sub(MAKER, "", plain(HEADER.search(self.text)[1]))
        position = HEADER.search(self.text).end()
        while position < len(self.text):
            position = self.take(position)

    def take(self, position):
        """One thing that is told, if one begins here; where to go on."""
        if group := GROUP.match(self.text, position):
            heading, *rest = paragraphs(plain(group[1]))
            self.body += [".SS " + escaped(" ".join(heading.split())), *told("\n\n".join(rest))]
            return group.end()
        comment = COMMENT.match(self.text, position)
        start = comment.end() if comment else position
        for pattern, add in ((FUNCTION, self.add_function), (DATA, self.add_data),
                             (TYPE, self.add_code), (MACRO, self.add_code)):
            if (self.text[start - 1] == "\n") and (found := pattern.match(self.text, start)):
                add(found, comment[1] if comment else "")
                return found.end()
        return comment.end() if comment else position + 1

    def add_function(self, found, comment):
        prototype = re.sub(r"\s+", " ", re.sub(r"\s+ZELTAGAPI_PRINTF\(.*\)", "", found[1])) + ";"
        self.functions.append(re.search(r"(\w+)\(", prototype)[1])
        self.prototypes += declaration(prototype)[1 if self.prototypes else 0:]
        self.body += [*declaration(prototype), *inside(told(comment))]

    def add_data(self, found, comment):
        self.body += [*declaration(f"extern {found[1]};"), *inside(told(comment or found[2] or ""))]

    def add_code(self, found, comment):
        code = re.sub(r"/\*\*<", "/*", found[0])
        self.body += [*told(comment), *verbatim(code)]

    def summary(self):
        first = re.split(r"[.:](?:\s|$)", self.about)[0]
        return " ".join((first[0].lower() + first[1:]).split())

    def written(self, settings, others):
        synopsis = [".SH SYNOPSIS", ".nf", '\\fB#include "frame/zelTagAPI.h"\\fR']
        if self.name == "zelTagState":
            synopsis.append('\\fB#include "frame/zelTagState.h"\\fR')
        flags = "\\fBpkg\\-config \\-\\-cflags \\-\\-libs zelTagAPI\\fR"
        synopsis += ["", f"Flags to build with: {flags}", ".fi"]
        if 0 < len(self.functions) <= 100:
            synopsis += self.prototypes
        lines = [
            f'.TH {self.name} 3 {settings.date} "libzelTagAPI {settings.version}" '
            '"Library Functions"',
            ".SH NAME", f"{self.name} \\- {escaped(self.summary())}", *synopsis,
            ".SH DESCRIPTION", *told(self.about)[1:], *self.body, ".SH SEE ALSO",
            *(f".BR {name} (3)," for name in others if name != self.name),
            ".BR zeltag (1),", ".BR zelTagAPI (7)"]
        heads = (".SH ", ".SS ")  # begin a paragraph themselves
        return "".join(line + "\n" for before, line in zip([""] + lines, lines)
                       if line != ".PP" or not before.startswith(heads))


def write(folder, name, text):
    (folder / name).write_text(text, encoding="utf-8")
    print(name)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--version", required=True)
    parser.add_argument("--date", required=True)
    parser.add_argument("--to", type=pathlib.Path, required=True)
    parser.add_argument("headers", type=pathlib.Path, nargs="+")
    settings = parser.parse_args()
    settings.to.mkdir(parents=True, exist_ok=True)
    for old in settings.to.iterdir():
        old.unlink()
    pages = [Page(header) for header in settings.headers
             if HEADER.search(header.read_text(encoding="utf-8"))]
    names = [page.name for page in pages]
    for page in pages:
        write(settings.to, f"{page.name}.3", page.written(settings, names))
        for function in page.functions:
            write(settings.to, f"{function}.{LINKS}", f".so man3/{page.name}.3\n")


if __name__ == "__main__":
    main()
