# SPDX-License-Identifier: MIT
"""The same door in Python."""

import zeltag

BITS, FACILITY, NUMBER = 26, 26, 3512  # with a parity bit on each side of both numbers


def is_open(reader: zeltag.Reader) -> bool:
    """One look into the field; a DeviceError when the reader doesn't answer."""
    card = reader.read()
    if card is None or card.bits != BITS:
        return False
    return (card.id >> 17 & 0xFF, card.id >> 1 & 0xFFFF) == (FACILITY, NUMBER)
