# SPDX-License-Identifier: MIT
"""Rows of figures beside their floors, as one Markdown table."""

import dataclasses

NEAR = 1.5  # what is further from its floor tells why


@dataclasses.dataclass
class Row:
    """A figure, and the least that could do the same in the same run."""

    name: str
    unit: str  # "ns", "instructions", or what is counted
    ours: float | None = None
    floor: float | None = None
    floor_name: str = ""
    why: str = ""  # the ratio is what it is
    note: str = ""  # in any case

    def ratio(self):
        if self.ours is None or not self.floor:
            return ""
        return f"{self.ours / self.floor:.2f}"

    def remark(self):
        far = self.ratio() and self.ours / self.floor > NEAR
        return "; ".join(text for text in (self.note, self.why if far else "") if text)

    def cells(self):
        return [self.name, shown(self.ours, self.unit), shown(self.floor, self.unit),
                self.ratio(), self.floor_name, self.remark()]


def missing(name, package):
    """The row of a figure that can't be had here."""
    return Row(name, "", note=f"not measured: sudo apt-get install {package}, then run again")


def shown_time(nanoseconds):
    for size, unit in ((1e9, "s"), (1e6, "ms"), (1e3, "us")):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.0f} ns"


def shown(number, unit):
    if number is None:
        return "-"
    if unit == "ns":
        return shown_time(number)
    return f"{number:,.0f}" + (f" {unit}" if unit == "KiB" else "")


HEAD = ["Figure", "Ours", "Floor", "Ratio", "The floor is", "Remark"]
RULE = ["---", "--:", "--:", "--:", "---", "---"]


def as_markdown(rows):
    lines = [HEAD, RULE, *(row.cells() for row in rows)]
    return "\n".join("| " + " | ".join(cells) + " |" for cells in lines)
